#include "platform/sql/names.h"

#include "platform/sql/functiontable.h"
#include "platform/sql/token.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace sql {

using Form = Function::Form;

void CollectTables(const Source& source, std::vector<const Source*>& tables) {
    if (source.kind != Source::Kind::Join) {
        tables.push_back(&source);
        return;
    }
    CollectTables(*source.left, tables);
    CollectTables(*source.right, tables);
}

const Source* TableNamed(const Source& source, std::string_view name) {
    std::vector<const Source*> tables;
    CollectTables(source, tables);
    for (const Source* table : tables) {
        const bool named = SameName(table->Alias(), name) || SameName(table->name, name);
        if (table->kind == Source::Kind::Table && named) {
            return table;
        }
    }
    return nullptr;
}

namespace {

// Of a column or a star: whether what stands in front of it, if anything does, is this table.
bool IsMeant(const Expr& column, const Source& table) {
    return column.qualifier.empty() || SameName(table.Alias(), column.qualifier);
}

}  // namespace

QString ComputedName(std::size_t place) {
    return u"Expr%1"_s.arg(1000 + place);
}

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
            return expr.op <= Op::GreaterEqual;
        case Expr::Kind::Call:
            return expr.function->form == Form::IsNull;
        default:
            return false;
    }
}

std::vector<const Expr*> Choices(const Expr& call) {
    std::vector<const Expr*> choices;
    const bool all = call.function->form == Form::Nz;
    const bool pairs = call.function->form == Form::Switch;
    for (std::size_t i = all ? 0 : 1; i < call.args.size(); i += pairs ? 2 : 1) {
        choices.push_back(call.args[i].get());
    }
    return choices;
}

// --- Names

Names::Scope::Scope(Names& names, const Select& select) : names_(names) {
    Frame frame;
    frame.select = &select;
    for (const SourcePtr& source : select.from) {
        CollectTables(*source, frame.tables);
    }
    names_.frames_.push_back(std::move(frame));
}

Names::Scope::Scope(Names& names, const Source& source) : names_(names) {
    Frame frame;
    CollectTables(source, frame.tables);
    names_.frames_.push_back(std::move(frame));
}

std::optional<TableInfo> Names::InfoOf(std::string_view table) const {
    return schema_.table ? schema_.table(ToQString(table)) : std::nullopt;
}

// Without an alias, a table's own name, which the text may have in other letters.
QString Names::Qualifier(const Source& table) const {
    if (table.alias.empty() && table.kind == Source::Kind::Table && !IsAscii(table.name)) {
        if (const std::optional<TableInfo> info = InfoOf(table.name)) {
            return info->name;
        }
    }
    return ToQString(table.Alias());
}

std::optional<ResultColumn> Names::FindIn(const Source& table, std::string_view name) {
    if (table.kind == Source::Kind::Table) {
        const std::optional<TableInfo> info = InfoOf(table.name);
        const ColumnInfo* column = info ? info->Column(name) : nullptr;
        if (!column) {
            return std::nullopt;
        }
        const Type type = ColumnType::OfDeclaration(column->declaredType).Reads();
        return ResultColumn{column->name, type, column->declaredType, {}, nullptr};
    }
    for (const ResultColumn& column : ColumnsOf(*table.query)) {
        if (SameName(column.name, name)) {
            return column;
        }
    }
    return std::nullopt;
}

std::optional<Names::Meaning> Names::Find(const Expr& column) {
    for (std::size_t i = frames_.size(); i-- > 0;) {
        for (std::size_t j = 0; j < frames_[i].tables.size(); ++j) {
            const Source& table = *frames_[i].tables[j];
            if (!IsMeant(column, table)) {
                continue;
            }
            if (auto found = FindIn(table, column.name)) {
                return Meaning{Qualifier(table), *found};
            }
        }
        // A name of the select list, which may be used behind it.
        const Select* select = frames_[i].select;
        if (!select || !column.qualifier.empty() || amongAliases_) {
            continue;
        }
        for (const SelectItem& item : select->items) {
            if (!item.alias.empty() && SameName(item.alias, column.name)) {
                amongAliases_ = true;
                const Type type = TypeOf(*item.expr);
                amongAliases_ = false;
                return Meaning{{}, {ToQString(item.alias), type, {}, {}, item.expr.get()}};
            }
        }
    }
    return std::nullopt;
}

std::optional<std::size_t> Names::DepthOf(const Expr& column) {
    for (std::size_t depth = frames_.size(); depth > 0; --depth) {
        const std::vector<const Source*> tables = frames_[depth - 1].tables;
        if (std::any_of(tables.begin(), tables.end(), [&](const Source* table) {
                return IsMeant(column, *table) && FindIn(*table, column.name);
            })) {
            return depth;
        }
    }
    return std::nullopt;
}

std::vector<ResultColumn> Names::ColumnsOf(const Source& table) {
    if (table.kind == Source::Kind::Derived) {
        std::vector<ResultColumn> columns = ColumnsOf(*table.query);
        for (ResultColumn& column : columns) {
            column.qualifier = Qualifier(table);
            column.expr = nullptr;
        }
        return columns;
    }
    std::vector<ResultColumn> columns;
    if (const std::optional<TableInfo> info = InfoOf(table.name)) {
        for (const ColumnInfo& column : info->columns) {
            const Type type = ColumnType::OfDeclaration(column.declaredType).Reads();
            columns.push_back({column.name, type, column.declaredType, Qualifier(table), nullptr});
        }
    }
    return columns;
}

const std::vector<ResultColumn>& Names::ColumnsOf(const Query& query) {
    if (const auto known = known_.find(&query); known != known_.end()) {
        return known->second;
    }
    const auto ofArm = [this](const Query::Arm& arm) {
        return arm.nested ? ColumnsOf(*arm.nested) : ColumnsOf(*arm.select);
    };
    std::vector<ResultColumn> columns = ofArm(query.arms.front());
    for (std::size_t i = 1; i < query.arms.size(); ++i) {
        const std::vector<ResultColumn> others = ofArm(query.arms[i]);
        for (std::size_t j = 0; j < columns.size(); ++j) {
            const Type other = j < others.size() ? others[j].type : Type::Unknown;
            Type& type = columns[j].type;
            if (type == Type::Null) {
                type = other;
            } else if (other != type && other != Type::Null) {
                type = Type::Unknown;
            }
        }
    }
    return known_.emplace(&query, std::move(columns)).first->second;
}

std::vector<ResultColumn> Names::ColumnsOf(const Select& select) {
    const Scope scope(*this, select);
    const std::vector<const Source*> tables = frames_.back().tables;
    std::vector<ResultColumn> columns;
    for (std::size_t i = 0; i < select.items.size(); ++i) {
        const Expr& expr = *select.items[i].expr;
        if (expr.kind == Expr::Kind::Star) {
            bool any = false;
            for (const Source* table : tables) {
                if (!IsMeant(expr, *table)) {
                    continue;
                }
                const std::vector<ResultColumn> all = ColumnsOf(*table);
                columns.insert(columns.end(), all.begin(), all.end());
                any = !all.empty();
            }
            if (!any) {
                return {};
            }
            continue;
        }
        ResultColumn column;
        column.expr = &expr;
        column.name = !select.items[i].alias.empty()    ? ToQString(select.items[i].alias)
                      : expr.kind == Expr::Kind::Column ? ToQString(expr.name)
                                                        : ComputedName(i);
        column.type = TypeOf(expr);
        if (expr.kind == Expr::Kind::Column) {
            const auto meaning = Find(expr);
            column.declared = meaning ? meaning->column.declared : QString();
        }
        columns.push_back(std::move(column));
    }
    return columns;
}

// A date among texts becomes a text.
Type Names::Common(const std::vector<const Expr*>& values) {
    Type common = Type::Null;
    for (const Expr* value : values) {
        const Type type = TypeOf(*value);
        if (common == Type::Null) {
            common = type;
        } else if (type != common && type != Type::Null) {
            const bool dated = (type == Type::Text && common == Type::Date) ||
                               (type == Type::Date && common == Type::Text);
            common = dated ? Type::Text : Type::Unknown;
        }
        if (common == Type::Unknown) {
            return common;
        }
    }
    return common;
}

Type Names::TypeOfCall(const Expr& call) {
    const Function& function = *call.function;
    if (function.type != Type::Unknown) {
        return function.type;
    }
    if (function.IsAggregate()) {
        return TypeOf(*call.args.front());
    }
    const Type common = Common(Choices(call));
    // Nz alone gives an empty text for Null.
    if (function.form == Form::Nz && call.args.size() == 1 && common != Type::Text) {
        return common == Type::Date ? Type::Text : Type::Unknown;
    }
    return common;
}

Type Names::TypeOf(const Expr& expr) {
    if (IsLogical(expr)) {
        return Type::Number;
    }
    switch (expr.kind) {
        case Expr::Kind::Null:
            return Type::Null;
        case Expr::Kind::Number:
        case Expr::Kind::Unary:
            return Type::Number;
        case Expr::Kind::Date:
            return Type::Date;
        case Expr::Kind::Text:
            return Type::Text;
        case Expr::Kind::Column: {
            const auto meaning = Find(expr);
            return meaning ? meaning->column.type : Type::Unknown;
        }
        case Expr::Kind::Binary: {
            if (expr.op == Op::Concat) {
                return Type::Text;
            }
            if (expr.op != Op::Add && expr.op != Op::Subtract) {
                return Type::Number;
            }
            const Type left = TypeOf(*expr.args[0]);
            const Type right = TypeOf(*expr.args[1]);
            if (left == Type::Date || right == Type::Date) {
                const bool span = left == right && expr.op == Op::Subtract;
                return span ? Type::Number : Type::Date;
            }
            if (expr.op == Op::Subtract || left == Type::Number || right == Type::Number) {
                return Type::Number;
            }
            return left == Type::Text && right == Type::Text ? Type::Text : Type::Unknown;
        }
        case Expr::Kind::Call:
            return TypeOfCall(expr);
        case Expr::Kind::Subquery: {
            const std::vector<ResultColumn>& columns = ColumnsOf(*expr.query);
            return columns.size() == 1 ? columns.front().type : Type::Unknown;
        }
        default:
            return Type::Unknown;
    }
}

}  // namespace sql
