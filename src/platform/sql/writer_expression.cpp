#include "platform/sql/collation.h"
#include "platform/sql/errors.h"
#include "platform/sql/writer.h"

namespace sql {

namespace {

bool IsColumn(const Expr& expr) {
    return expr.kind == Expr::Kind::Column;
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
        case Expr::Kind::Date:
            return expr.text.front() != '-';  // two minus signs would begin a comment
        case Expr::Kind::Call:
            return !IsLogical(expr);
        default:
            return false;
    }
}

}  // namespace

void Writer::Name(QByteArrayView name) {
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

bool Writer::MayBeText(const Expr& expr) {
    if (expr.kind == Expr::Kind::Star) {
        return false;  // columns, with their own collation
    }
    const Type type = names_.TypeOf(expr);
    return type == Type::Text || type == Type::Unknown;
}

// The engine knows the case of ASCII letters alone: a name with others is written as it was
// declared.
void Writer::Column(const Expr& expr) {
    if (IsAscii(expr.qualifier) && IsAscii(expr.name)) {
        if (!expr.qualifier.empty()) {
            Name(expr.qualifier);
            Raw(".");
        }
        Name(expr.name);
        return;
    }
    const auto meaning = names_.Find(expr);
    if (!meaning) {
        Throw(Failure::UnknownColumn, ToQString(expr.name));
    }
    if (!expr.qualifier.empty()) {
        Name(meaning->qualifier);
        Raw(".");
    }
    Name(meaning->column.name);
}

void Writer::TextValue(const Expr& expr) {
    if (names_.TypeOf(expr) != Type::Date) {
        Value(expr);
        return;
    }
    Raw("dao_datetext(");
    Value(expr);
    Raw(")");
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
        case Expr::Kind::Date:
            Raw(expr.text);
            break;
        case Expr::Kind::Text:
            Text(expr.text);
            break;
        case Expr::Kind::Column:
            Column(expr);
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

void Writer::FunctionOf(std::string_view name, const Expr& expr, bool texts) {
    Raw(name);
    Raw("(");
    for (std::size_t i = 0; i < expr.args.size(); ++i) {
        Raw(i ? ", " : "");
        if (texts) {
            TextValue(*expr.args[i]);
        } else {
            Value(*expr.args[i]);
        }
    }
    Raw(")");
}

// The engine's own operators would let a number grow beyond all bounds, and take a text that is
// none for 0.
void Writer::Binary(const Expr& expr) {
    switch (expr.op) {
        case Op::Concat:
            FunctionOf("dao_concat", expr, true);
            break;
        case Op::Add:
            FunctionOf("dao_add", expr);
            break;
        case Op::Subtract:
            FunctionOf("dao_subtract", expr);
            break;
        case Op::Multiply:
            FunctionOf("dao_multiply", expr);
            break;
        case Op::Divide:
            // Division by zero gives Null: one row without a value does not take the result away.
            FunctionOf("dao_divide", expr);
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

}  // namespace sql
