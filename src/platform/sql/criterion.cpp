#include "platform/convert.h"
#include "platform/sql/collation.h"
#include "platform/sql/dialect.h"
#include "platform/sql/errors.h"
#include "platform/sql/functiontable.h"
#include "platform/sql/likepattern.h"
#include "platform/sql/parser.h"

#include <optional>
#include <vector>

namespace sql {

namespace {

using Truth = std::optional<bool>;  // nothing: Null

Truth Not(Truth truth) {
    return truth ? Truth(!*truth) : truth;
}

QVariant ValueOf(Truth truth) {
    return truth ? QVariant(*truth ? -1 : 0) : QVariant();
}

// Neither is Null. A text and a number are compared as numbers; Erro 13 when the text is none.
int Compare(const QVariant& a, const QVariant& b) {
    if (IsText(a) && IsText(b)) {
        return collation::Compare(a.toString(), b.toString());
    }
    const double left = convert::ToDouble(a);
    const double right = convert::ToDouble(b);
    return left < right ? -1 : (left > right ? 1 : 0);
}

bool Holds(Op op, int order) {
    switch (op) {
        case Op::Equal:
            return order == 0;
        case Op::NotEqual:
            return order != 0;
        case Op::Less:
            return order < 0;
        case Op::LessEqual:
            return order <= 0;
        case Op::Greater:
            return order > 0;
        default:
            return order >= 0;
    }
}

QVariant Arithmetic(Op op, const QVariant& a, const QVariant& b) {
    switch (op) {
        case Op::Concat:
            return Concat(a, b);
        case Op::Add:
            return Add(a, b);
        case Op::Mod:
            return Modulo(a, b);
        case Op::IntDivide:
            return IntDivide(a, b);
        case Op::Power:
            return Power(a, b);
        default:
            break;
    }
    if (convert::IsNull(a) || convert::IsNull(b)) {
        return {};
    }
    const double left = convert::ToDouble(a);
    const double right = convert::ToDouble(b);
    if (op == Op::Subtract) {
        return left - right;
    }
    if (op == Op::Multiply) {
        return left * right;
    }
    return right == 0 ? QVariant() : QVariant(left / right);
}

}  // namespace

// A condition made ready: columns by index, literals and patterns as values.
struct Criterion::Node {
    Node(const Expr& expr, const QStringList& columns);

    QVariant Value(const ColumnReader& read) const;
    Truth Check(const ColumnReader& read) const;

private:
    void BindCall(const Expr& expr);
    QVariant Call(const ColumnReader& read) const;
    Truth CheckOperator(const ColumnReader& read) const;
    Truth CheckIn(const ColumnReader& read) const;
    bool IsLogical() const;

    Expr::Kind kind_;
    Op op_;
    bool negated_;
    int column_ = -1;
    QVariant constant_;
    std::optional<Pattern> pattern_;
    const Function* function_ = nullptr;
    std::vector<Node> args_;
};

Criterion::Node::Node(const Expr& expr, const QStringList& columns)
    : kind_(expr.kind), op_(expr.op), negated_(expr.negated) {
    for (const ExprPtr& arg : expr.args) {
        args_.emplace_back(*arg, columns);
    }
    switch (kind_) {
        case Expr::Kind::Number: {
            const QString text = ToQString(expr.text);
            bool whole = false;
            const qlonglong number = text.toLongLong(&whole);
            constant_ = whole ? QVariant(number) : QVariant(text.toDouble());
            break;
        }
        case Expr::Kind::Text:
            constant_ = ToQString(expr.text);
            break;
        case Expr::Kind::Column: {
            const QString name = ToQString(expr.name);
            for (qsizetype i = 0; i < columns.size() && column_ < 0; ++i) {
                if (columns.at(i).compare(name, Qt::CaseInsensitive) == 0) {
                    column_ = static_cast<int>(i);
                }
            }
            if (column_ < 0) {
                Throw(Failure::UnknownColumn, name);
            }
            break;
        }
        case Expr::Kind::Like:
            if (expr.args[1]->kind == Expr::Kind::Text) {
                pattern_.emplace(ToQString(expr.args[1]->text));
            }
            break;
        case Expr::Kind::Call:
            BindCall(expr);
            break;
        case Expr::Kind::Star:
        case Expr::Kind::Subquery:
        case Expr::Kind::Exists:
            Throw(Failure::NotSupported, QStringLiteral("SELECT"));
        default:
            break;
    }
    if (expr.query) {
        Throw(Failure::NotSupported, QStringLiteral("SELECT"));
    }
}

void Criterion::Node::BindCall(const Expr& expr) {
    const QString name = ToQString(expr.text);
    function_ = FindFunction(expr.text);
    if (!function_) {
        Throw(Failure::UnknownFunction, name);
    }
    const auto count = static_cast<int>(args_.size());
    if (count < function_->least || count > function_->most) {
        Throw(Failure::SyntaxError, name);
    }
    const bool carried =
        function_->evaluate || expr.text == "IIF" || expr.text == "ISNULL" || expr.text == "NZ";
    if (!carried) {
        Throw(Failure::NotSupported, name);
    }
}

bool Criterion::Node::IsLogical() const {
    switch (kind_) {
        case Expr::Kind::Like:
        case Expr::Kind::In:
        case Expr::Kind::Between:
        case Expr::Kind::IsNull:
            return true;
        case Expr::Kind::Unary:
        case Expr::Kind::Binary:
            return op_ <= Op::GreaterEqual;
        case Expr::Kind::Call:
            return function_->name == "ISNULL";
        default:
            return false;
    }
}

QVariant Criterion::Node::Value(const ColumnReader& read) const {
    if (IsLogical()) {
        return ValueOf(Check(read));
    }
    switch (kind_) {
        case Expr::Kind::Column:
            return read(column_);
        case Expr::Kind::Unary: {
            const QVariant value = args_[0].Value(read);
            if (convert::IsNull(value)) {
                return {};
            }
            return IsWhole(value) ? QVariant(-value.toLongLong())
                                  : QVariant(-convert::ToDouble(value));
        }
        case Expr::Kind::Binary:
            return Arithmetic(op_, args_[0].Value(read), args_[1].Value(read));
        case Expr::Kind::Call:
            return Call(read);
        default:
            return constant_;
    }
}

QVariant Criterion::Node::Call(const ColumnReader& read) const {
    if (function_->name == "IIF") {
        const bool met = args_[0].Check(read).value_or(false);
        return met ? args_[1].Value(read) : (args_.size() > 2 ? args_[2].Value(read) : QVariant());
    }
    if (function_->name == "NZ") {
        const QVariant value = args_[0].Value(read);
        if (!convert::IsNull(value)) {
            return value;
        }
        return args_.size() > 1 ? args_[1].Value(read) : QVariant(QString());
    }
    QList<QVariant> arguments;
    for (const Node& arg : args_) {
        arguments.append(arg.Value(read));
    }
    return Evaluate(*function_, arguments);
}

Truth Criterion::Node::Check(const ColumnReader& read) const {
    if (!IsLogical()) {
        const QVariant value = Value(read);
        return convert::IsNull(value) ? Truth() : Truth(convert::ToDouble(value) != 0);
    }
    switch (kind_) {
        case Expr::Kind::Like: {
            const QVariant text = args_[0].Value(read);
            const QVariant pattern = args_[1].Value(read);
            if (convert::IsNull(text) || convert::IsNull(pattern)) {
                return {};
            }
            const bool matches =
                pattern_ ? pattern_->Matches(convert::ToText(text))
                         : collation::Like(convert::ToText(text), convert::ToText(pattern));
            return matches != negated_;
        }
        case Expr::Kind::In:
            return negated_ ? Not(CheckIn(read)) : CheckIn(read);
        case Expr::Kind::Between: {
            const QVariant value = args_[0].Value(read);
            const QVariant low = args_[1].Value(read);
            const QVariant high = args_[2].Value(read);
            if (convert::IsNull(value) || convert::IsNull(low) || convert::IsNull(high)) {
                return {};
            }
            return (Compare(value, low) >= 0 && Compare(value, high) <= 0) != negated_;
        }
        case Expr::Kind::IsNull:
        case Expr::Kind::Call:
            return convert::IsNull(args_[0].Value(read)) != negated_;
        default:
            return CheckOperator(read);
    }
}

Truth Criterion::Node::CheckIn(const ColumnReader& read) const {
    const QVariant value = args_[0].Value(read);
    if (convert::IsNull(value)) {
        return {};
    }
    bool sawNull = false;
    for (std::size_t i = 1; i < args_.size(); ++i) {
        const QVariant listed = args_[i].Value(read);
        if (convert::IsNull(listed)) {
            sawNull = true;
        } else if (Compare(value, listed) == 0) {
            return true;
        }
    }
    return sawNull ? Truth() : Truth(false);
}

Truth Criterion::Node::CheckOperator(const ColumnReader& read) const {
    if (op_ == Op::Not) {
        return Not(args_[0].Check(read));
    }
    if (op_ >= Op::Equal) {
        const QVariant left = args_[0].Value(read);
        const QVariant right = args_[1].Value(read);
        if (convert::IsNull(left) || convert::IsNull(right)) {
            return {};
        }
        return Holds(op_, Compare(left, right));
    }
    const Truth left = args_[0].Check(read);
    const Truth right = args_[1].Check(read);
    switch (op_) {
        case Op::And:
            return left == Truth(false) || right == Truth(false) ? Truth(false)
                   : left && right                               ? Truth(true)
                                                                 : Truth();
        case Op::Or:
            return left == Truth(true) || right == Truth(true) ? Truth(true)
                   : left && right                             ? Truth(false)
                                                               : Truth();
        case Op::Imp:
            return left == Truth(false) || right == Truth(true) ? Truth(true)
                   : left && right                              ? Truth(false)
                                                                : Truth();
        default:  // Xor, Eqv
            return left && right ? Truth((*left == *right) == (op_ == Op::Eqv)) : Truth();
    }
}

Criterion::Criterion(const QString& text, const QStringList& columns) {
    const QByteArray source = text.toUtf8();
    root_ = std::make_unique<Node>(*Parser::ParseCriterion(source), columns);
}

Criterion::~Criterion() = default;

bool Criterion::Matches(const ColumnReader& value) const {
    return root_->Check(value).value_or(false);
}

}  // namespace sql
