#include "platform/sql/errors.h"
#include "platform/sql/writer.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace sql {

namespace {

// Of TOP; throws Erro 3075 for another number.
std::string_view WholeNumber(std::string_view text) {
    if (text.empty() || text.size() > 9 ||
        text.find_first_not_of("0123456789") != std::string_view::npos) {
        Throw(Failure::SyntaxError, u"TOP "_s + ToQString(text));
    }
    return text;
}

bool IsWholeNumber(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

bool HasRightJoin(const Source& source) {
    return source.kind == Source::Kind::Join &&
           (source.join == Source::Join::Right || HasRightJoin(*source.left) ||
            HasRightJoin(*source.right));
}

}  // namespace

void Writer::NoteTable(std::string_view name) {
    const QString upper = ToQString(name).toUpper();
    if (!tables_.contains(upper)) {
        tables_.append(upper);
    }
}

void Writer::WriteQuery(const Query& query, Naming naming) {
    if (query.arms.size() == 1) {
        const Query::Arm& arm = query.arms.front();
        if (arm.select) {
            WriteSelect(*arm.select, query.order, naming);
        } else if (query.order.empty()) {
            WriteQuery(*arm.nested, naming);
        } else {
            Raw("SELECT * FROM (");
            WriteQuery(*arm.nested, naming);
            Raw(")");
            WriteOrder(query.order);
        }
        return;
    }
    for (std::size_t i = 0; i < query.arms.size(); ++i) {
        const Query::Arm& arm = query.arms[i];
        if (i > 0) {
            Raw(arm.all ? " UNION ALL " : " UNION ");
        }
        // The engine takes neither brackets nor a limit in an arm.
        const bool wrapped = arm.nested || !arm.select->top.empty();
        Raw(wrapped ? "SELECT * FROM (" : "");
        if (arm.nested) {
            WriteQuery(*arm.nested, naming);
        } else {
            WriteSelect(*arm.select, {}, i == 0 ? naming : Naming::AsTheyCome);
        }
        Raw(wrapped ? ")" : "");
    }
    WriteOrder(query.order);
}

void Writer::WriteSelect(const Select& select, const std::vector<OrderTerm>& order, Naming naming) {
    if (!select.into.empty()) {
        Throw(Failure::SyntaxError, u"INTO"_s);
    }
    const Names::Scope scope(names_, select);
    CheckGroups(select, order, names_);
    if (!select.top.empty() && (!order.empty() || select.topPercent)) {
        WriteTop(select, order);
        return;
    }
    Raw(select.distinct ? "SELECT DISTINCT " : "SELECT ");
    for (std::size_t i = 0; i < select.items.size(); ++i) {
        Raw(i ? ", " : "");
        WriteItem(select.items[i], i, naming);
    }
    Body(select);
    WriteOrder(order);
    if (!select.top.empty()) {
        Raw(" LIMIT ");
        Raw(WholeNumber(select.top));
    }
}

void Writer::WriteItem(const SelectItem& item, std::size_t place, Naming naming) {
    CollatedValue(*item.expr);
    const bool column = item.expr->kind == Expr::Kind::Column;
    if (!item.alias.empty()) {
        Raw(" AS ");
        Name(item.alias);
    } else if (column && naming == Naming::Fixed) {
        Raw(" AS ");
        Name(item.expr->name);
    } else if (!column && item.expr->kind != Expr::Kind::Star) {
        Raw(" AS ");
        Name(ComputedName(place));
    }
}

void Writer::Body(const Select& select) {
    WriteFrom(select.from);
    WriteWhere(select.where);
    if (select.distinctRow && !select.distinct && select.groupBy.empty()) {
        DistinctRowGroups(select);
    }
    for (std::size_t i = 0; i < select.groupBy.size(); ++i) {
        Raw(i ? ", " : " GROUP BY ");
        CollatedValue(*select.groupBy[i]);
    }
    if (select.having) {
        Raw(" HAVING ");
        Condition(*select.having, true);
    }
}

void Writer::WriteFrom(const std::vector<SourcePtr>& sources) {
    for (std::size_t i = 0; i < sources.size(); ++i) {
        Raw(i ? ", " : " FROM ");
        // Behind a comma a right join would take in the tables before it.
        const bool bracketed = i > 0 && HasRightJoin(*sources[i]);
        Raw(bracketed ? "(" : "");
        WriteSource(*sources[i]);
        Raw(bracketed ? ")" : "");
    }
}

void Writer::WriteSource(const Source& source) {
    if (source.kind == Source::Kind::Join) {
        WriteSource(*source.left);
        Raw(source.join == Source::Join::Left    ? " LEFT JOIN "
            : source.join == Source::Join::Right ? " RIGHT JOIN "
                                                 : " INNER JOIN ");
        const bool bracketed = source.right->kind == Source::Kind::Join;
        // Brackets on the left say nothing, and the engine would make a subquery of them.
        Raw(bracketed ? "(" : "");
        WriteSource(*source.right);
        Raw(bracketed ? ")" : "");
        if (source.on) {
            Raw(" ON ");
            Condition(*source.on, true);
        }
        return;
    }
    if (source.kind == Source::Kind::Derived) {
        Raw("(");
        WriteQuery(*source.query, Naming::Fixed);
        Raw(")");
    } else {
        NoteTable(source.name);
        TableName(source.name);
    }
    if (!source.alias.empty()) {
        Raw(" AS ");
        Name(source.alias);
    }
}

void Writer::TableName(std::string_view name) {
    const std::optional<TableInfo> info = IsAscii(name) ? std::nullopt : names_.InfoOf(name);
    if (info) {
        Name(info->name);
    } else {
        Name(name);
    }
}

void Writer::WriteWhere(const ExprPtr& where) {
    if (where) {
        Raw(" WHERE ");
        Condition(*where, true);
    }
}

void Writer::WriteOrder(const std::vector<OrderTerm>& order) {
    for (std::size_t i = 0; i < order.size(); ++i) {
        Raw(i ? ", " : " ORDER BY ");
        CollatedValue(*order[i].expr);
        Raw(order[i].descending ? " DESC" : "");
    }
}

// What a term of ORDER BY stands for: an ordinal or an alias is an item.
const Expr& Writer::OrderKey(const Select& select, const OrderTerm& term) const {
    const Expr& expr = *term.expr;
    if (expr.kind == Expr::Kind::Number && IsWholeNumber(expr.text)) {
        const std::size_t place = ToQString(expr.text).toUInt();
        const bool starBefore =
            std::any_of(select.items.begin(), select.items.end(),
                        [](const SelectItem& item) { return item.expr->kind == Expr::Kind::Star; });
        if (place < 1 || place > select.items.size() || starBefore) {
            Throw(Failure::NotSupported, u"TOP, ORDER BY "_s + ToQString(expr.text));
        }
        return *select.items[place - 1].expr;
    }
    for (const SelectItem& item : select.items) {
        if (expr.kind == Expr::Kind::Column && expr.qualifier.empty() &&
            EqualWords(item.alias, expr.name)) {
            return *item.expr;
        }
    }
    return expr;
}

// Rows that the order cannot tell from the last one are kept: the limit is one of ranks. The text
// of the query is written once, however queries of this kind stand in each other.
void Writer::WriteTop(const Select& select, const std::vector<OrderTerm>& order) {
    const std::string_view top = WholeNumber(select.top);
    const std::vector<ResultColumn> columns = names_.ColumnsOf(select);
    if (columns.empty()) {
        Throw(Failure::NotSupported, u"TOP"_s);
    }
    const auto list = [&](auto write) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            Raw(i ? ", " : "");
            write(i);
        }
    };
    Raw("SELECT ");
    list([&](std::size_t i) {
        Name("c" + std::to_string(i));
        Raw(" AS ");
        Name(columns[i].name);
    });
    Raw(" FROM (SELECT *, ");
    Raw(order.empty() ? "row_number() OVER (" : "rank() OVER (ORDER BY ");
    for (std::size_t i = 0; i < order.size(); ++i) {
        Raw(i ? ", " : "");
        Name("k" + std::to_string(i));
        Raw(order[i].descending ? " DESC" : "");
    }
    Raw(") AS dao_place");
    Raw(select.topPercent ? ", count(*) OVER () AS dao_total" : "");
    Raw(select.distinct ? " FROM (SELECT DISTINCT " : " FROM (SELECT ");
    list([&](std::size_t i) {
        if (columns[i].expr) {
            CollatedValue(*columns[i].expr);
        } else {
            Name(columns[i].qualifier);
            Raw(".");
            Name(columns[i].name);
        }
        Raw(" AS ");
        Name("c" + std::to_string(i));
    });
    for (std::size_t i = 0; i < order.size(); ++i) {
        Raw(", ");
        CollatedValue(OrderKey(select, order[i]));
        Raw(" AS ");
        Name("k" + std::to_string(i));
    }
    Body(select);
    Raw(")) WHERE dao_place ");
    // Rounded up: 10 percent of 15 rows are 2 rows.
    Raw(select.topPercent ? "< dao_total * " : "<= ");
    Raw(top);
    Raw(select.topPercent ? " / 100.0 + 1" : "");
    Raw(" ORDER BY dao_place");
}

// One row for each combination of rows of those tables from which something is selected.
void Writer::DistinctRowGroups(const Select& select) {
    std::vector<const Source*> tables;
    for (const SourcePtr& source : select.from) {
        CollectTables(*source, tables);
    }
    std::vector<bool> used(tables.size(), false);
    for (const SelectItem& item : select.items) {
        const Expr& expr = *item.expr;
        const bool star = expr.kind == Expr::Kind::Star;
        const bool anyTable = star && expr.qualifier.empty();
        if (!anyTable && tables.size() > 1 &&
            (expr.qualifier.empty() || !(star || expr.kind == Expr::Kind::Column))) {
            Throw(Failure::NotSupported, u"DISTINCTROW"_s);
        }
        for (std::size_t i = 0; i < tables.size(); ++i) {
            used[i] = used[i] || anyTable || tables.size() == 1 ||
                      EqualWords(tables[i]->Alias(), expr.qualifier);
        }
    }
    if (std::find(used.begin(), used.end(), false) == used.end()) {
        return;
    }
    std::string_view separator = " GROUP BY ";
    for (std::size_t i = 0; i < tables.size(); ++i) {
        if (!used[i]) {
            continue;
        }
        const std::optional<TableInfo> info = names_.InfoOf(tables[i]->name);
        if (tables[i]->kind != Source::Kind::Table || (info && info->isView)) {
            Throw(Failure::NotSupported, u"DISTINCTROW"_s);
        }
        Raw(separator);
        Name(tables[i]->Alias());
        Raw(".rowid");
        separator = ", ";
    }
}

}  // namespace sql
