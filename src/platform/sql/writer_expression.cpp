#include "platform/sql/collation.h"
#include "platform/sql/errors.h"
#include "platform/sql/writer.h"

namespace sql {

namespace {

std::string_view SignOf(Op op) {
    switch (op) {
        case Op::Equal:
            return " = ";
        case Op::NotEqual:
            return " <> ";
        case Op::Less:
            return " < ";
        case Op::LessEqual:
            return " <= ";
        case Op::Greater:
            return " > ";
        case Op::GreaterEqual:
            return " >= ";
        default:
            return {};
    }
}

bool IsColumn(const Expr& expr) {
    return expr.kind == Expr::Kind::Column;
}

bool MayBeText(const Expr& expr) {
    if (expr.kind == Expr::Kind::Star) {
        return false;  // columns, with their own collation
    }
    const Type type = TypeOf(expr);
    return type == Type::Text || type == Type::Unknown;
}

// Whether the text needs no brackets as an operand.
bool IsAtom(const Expr& expr) {
    switch (expr.kind) {
        case Expr::Kind::Null:
        case Expr::Kind::Text:
        case Expr::Kind::Column:
        case Expr::Kind::Subquery:
            return true;
        case Expr::Kind::Number:
            return expr.text.front() != '-';  // two minus signs would begin a comment
        case Expr::Kind::Call:
            return !IsLogical(expr);
        default:
            return false;
    }
}

}  // namespace

void Writer::Name(std::string_view name) {
    Raw("[");
    Raw(name);
    Raw("]");
}

void Writer::Text(std::string_view text) {
    Raw("'");
    for (std::size_t quote = text.find('\''); quote != std::string_view::npos;
         quote = text.find('\'')) {
        Raw(text.substr(0, quote));
        Raw("''");
        text.remove_prefix(quote + 1);
    }
    Raw(text);
    Raw("'");
}

void Writer::Operand(const Expr& expr) {
    if (IsAtom(expr)) {
        Value(expr);
        return;
    }
    Raw("(");
    Value(expr);
    Raw(")");
}

void Writer::CollatedValue(const Expr& expr) {
    if (IsColumn(expr) || !MayBeText(expr)) {
        Value(expr);
        return;
    }
    Operand(expr);
    Raw(collation::Clause);
}

// Only where the expression is no bare column: a column brings its own.
void Writer::CollationUnlessColumn(const Expr& expr) {
    if (!IsColumn(expr) && MayBeText(expr)) {
        Raw(collation::Clause);
    }
}

void Writer::Value(const Expr& expr) {
    if (IsLogical(expr)) {
        Raw("-(");
        Logical(expr, false);
        Raw(")");
        return;
    }
    switch (expr.kind) {
        case Expr::Kind::Null:
            Raw("NULL");
            break;
        case Expr::Kind::Number:
            Raw(expr.text);
            break;
        case Expr::Kind::Text:
            Text(expr.text);
            break;
        case Expr::Kind::Column:
            if (!expr.qualifier.empty()) {
                Name(expr.qualifier);
                Raw(".");
            }
            Name(expr.name);
            break;
        case Expr::Kind::Star:
            if (!expr.qualifier.empty()) {
                Name(expr.qualifier);
                Raw(".");
            }
            Raw("*");
            break;
        case Expr::Kind::Unary:
            Raw("-");
            Operand(*expr.args[0]);
            break;
        case Expr::Kind::Binary:
            Binary(expr);
            break;
        case Expr::Kind::Call:
            Call(expr);
            break;
        case Expr::Kind::Subquery:
            Raw("(");
            WriteQuery(*expr.query);
            Raw(")");
            break;
        default:
            Throw(Failure::NotSupported);
    }
}

void Writer::FunctionOf(std::string_view name, const Expr& expr) {
    Raw(name);
    Raw("(");
    Arguments(expr);
    Raw(")");
}

void Writer::Arguments(const Expr& expr) {
    for (std::size_t i = 0; i < expr.args.size(); ++i) {
        Raw(i ? ", " : "");
        Value(*expr.args[i]);
    }
}

void Writer::Binary(const Expr& expr) {
    const Expr& left = *expr.args[0];
    const Expr& right = *expr.args[1];
    const auto infix = [&](std::string_view sign) {
        if (left.kind == Expr::Kind::Binary && left.op == expr.op) {
            Value(left);  // a chain is written flat: the engine's own nesting is limited
        } else {
            Operand(left);
        }
        Raw(sign);
        Operand(right);
    };
    switch (expr.op) {
        case Op::Concat:
            FunctionOf("dao_concat", expr);
            break;
        case Op::Add:
            if (TypeOf(expr) == Type::Unknown) {
                FunctionOf("dao_add", expr);
            } else {
                infix(TypeOf(expr) == Type::Text ? " || " : " + ");
            }
            break;
        case Op::Subtract:
            infix(" - ");
            break;
        case Op::Multiply:
            infix(" * ");
            break;
        case Op::Divide:
            // Division by zero gives Null: one row without a value does not take the result away.
            Raw("CAST(");
            Value(left);
            Raw(" AS REAL) / ");
            Operand(right);
            break;
        case Op::IntDivide:
            FunctionOf("dao_idiv", expr);
            break;
        case Op::Mod:
            FunctionOf("dao_mod", expr);
            break;
        case Op::Power:
            FunctionOf("dao_pow", expr);
            break;
        default:
            Throw(Failure::NotSupported);
    }
}

void Writer::Condition(const Expr& expr, bool met) {
    if (IsLogical(expr)) {
        Logical(expr, met);
    } else {
        Value(expr);
    }
}

void Writer::ConditionOperand(const Expr& expr, bool met) {
    Raw("(");
    Condition(expr, met);
    Raw(")");
}

// 1, 0 or Null of any expression.
void Writer::Truth(const Expr& expr) {
    ConditionOperand(expr, false);
    if (!IsLogical(expr)) {
        Raw(" <> 0");
    }
}

void Writer::Logical(const Expr& expr, bool met) {
    switch (expr.kind) {
        case Expr::Kind::Like:
            Like(expr, met);
            return;
        case Expr::Kind::In:
            In(expr);
            return;
        case Expr::Kind::Between:
            Between(expr);
            return;
        case Expr::Kind::IsNull:
        case Expr::Kind::Call:
            if (expr.args.size() != 1) {
                Throw(Failure::SyntaxError, ToQString(expr.text));
            }
            Operand(*expr.args[0]);
            Raw(expr.negated ? " IS NOT NULL" : " IS NULL");
            return;
        case Expr::Kind::Exists:
            Raw("EXISTS (");
            WriteQuery(*expr.query);
            Raw(")");
            return;
        default:
            break;
    }
    switch (expr.op) {
        case Op::Not:
            Raw("NOT ");
            ConditionOperand(*expr.args[0], false);
            return;
        case Op::And:
        case Op::Or: {
            const Expr& left = *expr.args[0];
            if (left.kind == Expr::Kind::Binary && left.op == expr.op) {
                Logical(left, met);
            } else {
                ConditionOperand(left, met);
            }
            Raw(expr.op == Op::And ? " AND " : " OR ");
            ConditionOperand(*expr.args[1], met);
            return;
        }
        case Op::Xor:
        case Op::Eqv:
            Raw("(");
            Truth(*expr.args[0]);
            Raw(expr.op == Op::Xor ? ") <> (" : ") = (");
            Truth(*expr.args[1]);
            Raw(")");
            return;
        case Op::Imp:
            Raw("NOT ");
            ConditionOperand(*expr.args[0], false);
            Raw(" OR ");
            ConditionOperand(*expr.args[1], false);
            return;
        default:
            Comparison(expr, SignOf(expr.op));
    }
}

void Writer::Comparison(const Expr& expr, std::string_view sign) {
    const Expr& left = *expr.args[0];
    const Expr& right = *expr.args[1];
    Operand(left);
    if (!IsColumn(left) && !IsColumn(right) && MayBeText(left) && MayBeText(right)) {
        Raw(collation::Clause);
    }
    Raw(sign);
    Operand(right);
}

void Writer::In(const Expr& expr) {
    Operand(*expr.args[0]);
    CollationUnlessColumn(*expr.args[0]);
    Raw(expr.negated ? " NOT IN (" : " IN (");
    if (expr.query) {
        WriteQuery(*expr.query);
    }
    for (std::size_t i = 1; i < expr.args.size(); ++i) {
        Raw(i > 1 ? ", " : "");
        Value(*expr.args[i]);
    }
    Raw(")");
}

void Writer::Between(const Expr& expr) {
    Operand(*expr.args[0]);
    CollationUnlessColumn(*expr.args[0]);
    Raw(expr.negated ? " NOT BETWEEN " : " BETWEEN ");
    Operand(*expr.args[1]);
    Raw(" AND ");
    Operand(*expr.args[2]);
}

}  // namespace sql
