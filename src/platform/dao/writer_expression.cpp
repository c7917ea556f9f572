#include "platform/dao/errors.h"
#include "platform/dao/pattern.h"
#include "platform/dao/writer.h"

#include <algorithm>

namespace dao::dialect {

namespace {

constexpr std::string_view Collation = " COLLATE TARVO";

// Sorts behind every other character: the end of a range of beginnings (collation::Last).
constexpr std::string_view LastCharacter = "\xF4\x8F\xBF\xBF";

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

bool IsLogicalOp(Op op) {
    return op <= Op::GreaterEqual;
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

Type Common(const Expr& a, const Expr& b) {
    const Type first = TypeOf(a);
    const Type second = TypeOf(b);
    if (first == second || second == Type::Null) {
        return first;
    }
    return first == Type::Null ? second : Type::Unknown;
}

Type TypeOfCall(const Expr& expr) {
    const Function* function = FindFunction(expr.text);
    if (!function) {
        return Type::Unknown;
    }
    if (function->type != Type::Unknown) {
        return function->type == Type::Logical ? Type::Number : function->type;
    }
    const std::size_t count = expr.args.size();
    if (expr.text == "IIF" && count == 3) {
        return Common(*expr.args[1], *expr.args[2]);
    }
    if (expr.text == "NZ" && count == 2) {
        return Common(*expr.args[0], *expr.args[1]);
    }
    const bool passesOn = function->form == Function::Form::Aggregate ||
                          function->form == Function::Form::First ||
                          function->form == Function::Form::Last;
    return passesOn && count == 1 ? TypeOf(*expr.args[0]) : Type::Unknown;
}

}  // namespace

bool IsLogical(const Expr& expr) {
    switch (expr.kind) {
        case Expr::Kind::Like:
        case Expr::Kind::In:
        case Expr::Kind::Between:
        case Expr::Kind::IsNull:
        case Expr::Kind::Exists:
            return true;
        case Expr::Kind::Unary:
        case Expr::Kind::Binary:
            return IsLogicalOp(expr.op);
        case Expr::Kind::Call:
            return expr.text == "ISNULL";
        default:
            return false;
    }
}

Type TypeOf(const Expr& expr) {
    if (IsLogical(expr)) {
        return Type::Number;
    }
    switch (expr.kind) {
        case Expr::Kind::Null:
            return Type::Null;
        case Expr::Kind::Number:
        case Expr::Kind::Unary:
            return Type::Number;
        case Expr::Kind::Text:
            return Type::Text;
        case Expr::Kind::Binary: {
            if (expr.op == Op::Concat) {
                return Type::Text;
            }
            if (expr.op != Op::Add) {
                return Type::Number;
            }
            const Type left = TypeOf(*expr.args[0]);
            const Type right = TypeOf(*expr.args[1]);
            if (left == Type::Number || right == Type::Number) {
                return Type::Number;
            }
            return left == Type::Text && right == Type::Text ? Type::Text : Type::Unknown;
        }
        case Expr::Kind::Call:
            return TypeOfCall(expr);
        case Expr::Kind::Subquery: {
            const Query::Arm& arm = expr.query->arms.front();
            const bool plain = arm.select && arm.select->items.size() == 1;
            return plain ? TypeOf(*arm.select->items.front().expr) : Type::Unknown;
        }
        default:
            return Type::Unknown;
    }
}

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
    Raw(Collation);
}

// Only where the expression is no bare column: a column brings its own.
void Writer::CollationUnlessColumn(const Expr& expr) {
    if (!IsColumn(expr) && MayBeText(expr)) {
        Raw(Collation);
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
        Raw(Collation);
    }
    Raw(sign);
    Operand(right);
}

void Writer::Like(const Expr& expr, bool met) {
    const Expr& value = *expr.args[0];
    const Expr& pattern = *expr.args[1];
    if (pattern.kind == Expr::Kind::Text) {
        const dao::Pattern refusesBadOnes(ToQString(pattern.text));
        if (met && !expr.negated && pattern.text == "*") {
            Operand(value);
            Raw(" IS NOT NULL");
            return;
        }
        const std::size_t wildcard = pattern.text.find_first_of("*?#[");
        const std::size_t prefix = std::min(wildcard, pattern.text.size());
        // A number below zero begins with a minus sign and sorts the other way round.
        if (!expr.negated && IsColumn(value) && prefix > 0 && pattern.text.front() != '-') {
            LikePrefix(value, pattern.text, prefix);
            return;
        }
    }
    Raw(expr.negated ? "NOT " : "");
    FunctionOf("dao_like", expr);
}

// The range lets the column's index be used, the pattern decides.
void Writer::LikePrefix(const Expr& column, const std::string& pattern, std::size_t prefix) {
    const std::string begin = pattern.substr(0, prefix);
    Value(column);
    Raw(" >= ");
    Text(begin);
    Raw(Collation);
    Raw(" AND ");
    Value(column);
    const bool whole = prefix == pattern.size();
    Raw(whole ? " <= " : " < ");
    Text(whole ? begin : begin + std::string(LastCharacter));
    Raw(Collation);
    Raw(" AND dao_like(");
    Value(column);
    Raw(", ");
    Text(pattern);
    Raw(")");
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

void Writer::Call(const Expr& expr) {
    const Function* function = FindFunction(expr.text);
    if (!function) {
        Throw(Failure::UnknownFunction, ToQString(expr.text));
    }
    const bool star = !expr.args.empty() && expr.args[0]->kind == Expr::Kind::Star;
    const auto count = static_cast<int>(expr.args.size());
    if (count < function->least || count > function->most || (star && expr.text != "COUNT")) {
        Throw(Failure::SyntaxError, ToQString(expr.text));
    }
    switch (function->form) {
        case Function::Form::Written:
            WrittenCall(expr);
            break;
        case Function::Form::Native:
            FunctionOf(function->name, expr);
            break;
        case Function::Form::Aggregate:
            Raw(function->name);
            Raw("(");
            // Min and Max compare texts.
            if (star) {
                Raw("*");
            } else {
                CollatedValue(*expr.args[0]);
            }
            Raw(")");
            break;
        default:
            Raw("dao_");
            FunctionOf(function->name, expr);
    }
}

void Writer::WrittenCall(const Expr& expr) {
    const auto& args = expr.args;
    if (expr.text == "NZ") {
        Raw("ifnull(");
        Value(*args[0]);
        Raw(", ");
        if (args.size() == 2) {
            Value(*args[1]);
        } else {
            Raw("''");
        }
        Raw(")");
        return;
    }
    Raw("CASE");
    if (expr.text == "CHOOSE") {
        Raw(" dao_clng(");
        Value(*args[0]);
        Raw(")");
        for (std::size_t i = 1; i < args.size(); ++i) {
            Raw(" WHEN ");
            Raw(std::to_string(i));
            Raw(" THEN ");
            Value(*args[i]);
        }
    } else {  // IIF and SWITCH: condition, value, ...
        std::size_t i = 0;
        for (; i + 1 < args.size(); i += 2) {
            Raw(" WHEN ");
            Condition(*args[i], true);
            Raw(" THEN ");
            Value(*args[i + 1]);
        }
        if (i < args.size()) {
            if (expr.text == "SWITCH") {
                Throw(Failure::SyntaxError, ToQString(expr.text));
            }
            Raw(" ELSE ");
            Value(*args[i]);
        }
    }
    Raw(" END");
}

}  // namespace dao::dialect
