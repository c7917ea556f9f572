#include "platform/sql/writer.h"

namespace sql {

namespace {

bool IsLogicalOp(Op op) {
    return op <= Op::GreaterEqual;
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

}  // namespace sql
