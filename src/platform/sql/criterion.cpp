#include "platform/convert.h"
#include "platform/sql/collation.h"
#include "platform/sql/dialect.h"
#include "platform/sql/errors.h"
#include "platform/sql/functiontable.h"
#include "platform/sql/parser.h"

#include <algorithm>

namespace sql {

Criterion::Criterion(const QString& text, const QStringList& columns) {
    const QByteArray source = text.toUtf8();
    const ExprPtr expr = Parser::ParseCriterion(source);
    orBehind_ = expr->op == Op::GreaterEqual;
    const bool comparison =
        expr->kind == Expr::Kind::Binary && (orBehind_ || expr->op == Op::Equal) &&
        expr->args[0]->kind == Expr::Kind::Column &&
        (expr->args[1]->kind == Expr::Kind::Text || expr->args[1]->kind == Expr::Kind::Number);
    if (!comparison) {
        Throw(Failure::NotSupported, text);
    }
    const QString name = ToQString(expr->args[0]->name);
    const auto found = std::find_if(columns.begin(), columns.end(), [&](const QString& column) {
        return column.compare(name, Qt::CaseInsensitive) == 0;
    });
    if (found == columns.end()) {
        Throw(Failure::UnknownColumn, name);
    }
    column_ = static_cast<int>(found - columns.begin());
    const QString value = ToQString(expr->args[1]->text);
    value_ = expr->args[1]->kind == Expr::Kind::Text ? QVariant(value) : value.toDouble();
}

bool Criterion::Matches(const ColumnReader& read) const {
    const QVariant value = read(column_);
    if (convert::IsNull(value)) {
        return false;
    }
    if (IsText(value) != IsText(value_)) {
        Throw(Failure::MixedComparison, value_.toString());
    }
    if (IsText(value)) {
        const int order = collation::Compare(value.toString(), value_.toString());
        return orBehind_ ? order >= 0 : order == 0;
    }
    return orBehind_ ? value.toDouble() >= value_.toDouble()
                     : value.toDouble() == value_.toDouble();
}

}  // namespace sql
