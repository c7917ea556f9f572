#include "platform/sql/searchshape.h"

#include "platform/sql/likepattern.h"
#include "platform/sql/names.h"
#include "platform/sql/token.h"

#include <algorithm>

namespace sql {

namespace {

// Splits at AND. False when a part is no term.
bool CollectTerms(const Expr& expr, Arm& arm, Names& names) {
    if (expr.kind == Expr::Kind::Binary && expr.op == Op::And) {
        return CollectTerms(*expr.args[0], arm, names) && CollectTerms(*expr.args[1], arm, names);
    }
    const bool like = expr.kind == Expr::Kind::Like && !expr.negated;
    const bool equal = expr.kind == Expr::Kind::Binary && expr.op == Op::Equal;
    if ((!like && !equal) || expr.args[0]->kind != Expr::Kind::Column) {
        return false;
    }
    const Expr& value = *expr.args[1];
    const bool text = value.kind == Expr::Kind::Text;
    if (!text && (like || value.kind != Expr::Kind::Number)) {
        return false;
    }
    const Expr& column = *expr.args[0];
    const Type type = names.TypeOf(column);
    const bool beginning =
        text && BoundsARange(value.text) && (type == Type::Text || type == Type::Unknown);
    const bool joined = arm.IsJoined(column);
    arm.terms.push_back(
        {&expr, &column, joined, (equal || beginning) && (joined || arm.IsIndexed(column))});
    return true;
}

}  // namespace

bool Arm::IsJoined(const Expr& column) const {
    if (!joined) {
        return false;
    }
    if (!column.qualifier.empty()) {
        return EqualWords(column.qualifier, joined->Alias());
    }
    return !info.Column(column.name);
}

// Whether an index begins with the column, so that the rows can be walked in its order.
bool Arm::IsIndexed(const Expr& column) const {
    const ColumnInfo* known = info.Column(column.name);
    if (known && known->primaryKey == 1) {
        return true;
    }
    return std::any_of(info.indexes.begin(), info.indexes.end(), [&](const IndexInfo& index) {
        return !index.partial && SameName(index.columns.value(0), column.name);
    });
}

std::optional<Arm> TakeApart(const Select& select, const Schema& schema) {
    const bool plain = !select.distinct && !select.distinctRow && select.top.empty() &&
                       select.into.empty() && select.groupBy.empty() && !select.having &&
                       select.from.size() == 1;
    if (!plain || !schema.table) {
        return {};
    }
    Arm arm;
    arm.select = &select;
    const Source& from = *select.from.front();
    const bool join = from.kind == Source::Kind::Join;
    arm.table = join ? from.left.get() : &from;
    arm.joined = join ? from.right.get() : nullptr;
    if (arm.table->kind != Source::Kind::Table ||
        (join && (from.join != Source::Join::Left || arm.joined->kind != Source::Kind::Table))) {
        return {};
    }
    const std::optional<TableInfo> info = schema.table(ToQString(arm.table->name));
    if (!info || info->isView) {
        return {};
    }
    arm.info = *info;
    if (join) {
        const Expr& on = *from.on;
        const bool equality = on.kind == Expr::Kind::Binary && on.op == Op::Equal &&
                              on.args[0]->kind == Expr::Kind::Column &&
                              on.args[1]->kind == Expr::Kind::Column;
        if (!equality) {
            return {};
        }
        arm.tableColumn = on.args[0].get();
        arm.joinedColumn = on.args[1].get();
        if (arm.IsJoined(*arm.tableColumn)) {
            std::swap(arm.tableColumn, arm.joinedColumn);
        }
        if (arm.IsJoined(*arm.tableColumn) || !arm.IsJoined(*arm.joinedColumn)) {
            return {};
        }
    }
    Names names(schema);
    const Names::Scope scope(names, select);
    const bool itemsPlain =
        std::all_of(select.items.begin(), select.items.end(), [](const SelectItem& item) {
            return item.expr->kind == Expr::Kind::Column || item.expr->kind == Expr::Kind::Text;
        });
    if (!itemsPlain || (select.where && !CollectTerms(*select.where, arm, names))) {
        return {};
    }
    return arm;
}

bool NeedsPartner(const Arm& arm) {
    return std::any_of(arm.terms.begin(), arm.terms.end(),
                       [](const Term& term) { return term.joined; });
}

}  // namespace sql
