// Conditions: what the engine computes as 1, 0 or Null.

#include "platform/sql/collation.h"
#include "platform/sql/errors.h"
#include "platform/sql/writer.h"

#include <cmath>

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

bool IsText(Type type) {
    return type == Type::Text;
}

bool IsNumber(Type type) {
    return type == Type::Number || type == Type::Date;
}

bool IsOrdered(Op op) {
    return op != Op::Equal && op != Op::NotEqual;
}

}  // namespace

// Only where the expression is no bare column: a column brings its own.
void Writer::CollationUnlessColumn(const Expr& expr) {
    if (!IsColumn(expr) && MayBeText(expr)) {
        Raw(collation::Clause);
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
            Comparison(expr);
    }
}

// One side of a comparison, in a form in which the engine compares it with the other: a text that
// stands for a number or a date as one, and a computed text as a column of texts would be.
void Writer::Comparand(const Expr& expr, Type against, bool ordered) {
    const Type type = names_.TypeOf(expr);
    const bool mixed = (IsText(type) && IsNumber(against)) || (IsNumber(type) && IsText(against));
    if (!mixed) {
        Operand(expr);
        return;
    }
    if (IsText(type) && against == Type::Date) {
        Raw("dao_cdate(");
        Value(expr);
        Raw(")");
        return;
    }
    if (expr.kind == Expr::Kind::Text) {
        bool ok = false;
        const QString text = ToQString(expr.text).trimmed();
        const double number = text.toDouble(&ok);
        if (!ok || !std::isfinite(number)) {
            Throw(Failure::MixedComparison, text);
        }
        Raw(text.startsWith(u'-') ? "(" : "");
        Raw(QByteArray::number(number, 'g', 17));
        Raw(text.startsWith(u'-') ? ")" : "");
        return;
    }
    if (type == Type::Date && IsText(against)) {
        Operand(expr);
        return;
    }
    if (ordered) {
        Throw(Failure::MixedComparison, ToQString(IsColumn(expr) ? expr.name : expr.text));
    }
    const bool computed = IsText(type) && !IsColumn(expr);
    Raw(computed ? "CAST(" : "");
    Operand(expr);
    Raw(computed ? " AS TEXT)" : "");
}

bool Writer::WriteLifted(const Expr& literal, const std::optional<Target>& target) {
    const bool bindable = target || literal.kind == Expr::Kind::Text ||
                          (literal.kind == Expr::Kind::Number && IsPlainWhole(literal.text));
    if (!lifted_ || literal.token < 0 || !bindable) {
        return false;
    }
    lifted_->push_back({literal.token, literal.negated, target});
    Raw("?");
    Raw(std::to_string(lifted_->size()));
    return true;
}

void Writer::Comparison(const Expr& expr) {
    const Expr& left = *expr.args[0];
    const Expr& right = *expr.args[1];
    const Type leftType = names_.TypeOf(left);
    const Type rightType = names_.TypeOf(right);
    // A text for a number is decided on its own side; then the other is compared as it is.
    const bool leftLiteral = left.kind == Expr::Kind::Text && IsNumber(rightType);
    const bool rightLiteral = right.kind == Expr::Kind::Text && IsNumber(leftType);
    Comparand(left, rightLiteral ? leftType : rightType, IsOrdered(expr.op));
    if (!IsColumn(left) && !IsColumn(right) && MayBeText(left) && MayBeText(right)) {
        Raw(collation::Clause);
    }
    Raw(SignOf(expr.op));
    const bool alike =
        IsText(leftType) == IsText(rightType) && IsNumber(leftType) == IsNumber(rightType);
    if (IsColumn(left) && alike && WriteLifted(right)) {
        return;
    }
    Comparand(right, leftLiteral ? rightType : leftType, IsOrdered(expr.op));
}

void Writer::In(const Expr& expr) {
    const Expr& value = *expr.args[0];
    const Type type = names_.TypeOf(value);
    Type against = type;
    for (std::size_t i = 1; i < expr.args.size(); ++i) {
        against = names_.TypeOf(*expr.args[i]);
    }
    Comparand(value, against, false);
    CollationUnlessColumn(value);
    Raw(expr.negated ? " NOT IN (" : " IN (");
    if (expr.query) {
        WriteQuery(*expr.query);
    }
    for (std::size_t i = 1; i < expr.args.size(); ++i) {
        Raw(i > 1 ? ", " : "");
        Comparand(*expr.args[i], type, false);
    }
    Raw(")");
}

void Writer::Between(const Expr& expr) {
    const Expr& value = *expr.args[0];
    const Type type = names_.TypeOf(value);
    Operand(value);
    CollationUnlessColumn(value);
    Raw(expr.negated ? " NOT BETWEEN " : " BETWEEN ");
    Comparand(*expr.args[1], type, true);
    Raw(" AND ");
    Comparand(*expr.args[2], type, true);
}

}  // namespace sql
