#include "platform/sql/columntypes.h"
#include "platform/sql/errors.h"
#include "platform/sql/tabledefinition.h"
#include "platform/sql/writer.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace sql {

namespace {

using Constraint = ConstraintDefinition;

QByteArray Bracketed(QByteArrayView name) {
    return '[' + name.toByteArray() + ']';
}

QByteArray BracketedList(const std::vector<std::string_view>& names) {
    QByteArray list;
    for (const std::string_view name : names) {
        list += (list.isEmpty() ? "(" : ", ") + Bracketed(name);
    }
    return list + ")";
}

class DefinitionWriter {
public:
    DefinitionWriter(const Schema& schema, Translation& translation)
        : schema_(schema), translation_(translation) {}

    void Write(const CreateTable& create);
    void Write(const AlterTable& alter);
    void Write(const CreateIndex& create);
    void Write(const DropIndex& drop);
    void Write(const DropTable& drop);
    void Write(const CreateView& create);

private:
    void Add(const QByteArray& statement) { translation_.statements.append(statement); }
    void Note(std::string_view table) { translation_.tables.append(ToQString(table).toUpper()); }
    void Define(std::string_view table) { translation_.defined = ToQString(table).toUpper(); }
    TableInfo TableToChange(std::string_view table) const;
    // As the table declares them, where it is there already.
    QByteArray TableText(std::string_view table) const;
    QByteArray ColumnName(std::string_view table, std::string_view column) const;
    QByteArray ColumnText(std::string_view table, const ColumnDefinition& column);
    QByteArray DefaultText(std::string_view table, std::string_view column, const ColumnType& type,
                           const Expr& value);
    QByteArray ConstraintText(const Constraint& constraint);
    QByteArray ConditionText(const Expr& expr);
    void AddUniqueIndex(std::string_view table, const Constraint& constraint);
    void AddColumns(const AlterTable& alter, const TableInfo& info);
    void BuildWith(const AlterTable& alter, const TableInfo& info);
    void AlterColumn(const AlterTable& alter, const TableInfo& info);
    void SetDefault(const AlterTable& alter, const TableInfo& info);
    void AddConstraint(const AlterTable& alter, const TableInfo& info);
    void DropNamed(const TableInfo& info, std::string_view name);

    const Schema& schema_;
    Translation& translation_;
};

TableInfo DefinitionWriter::TableToChange(std::string_view table) const {
    const auto info = schema_.table ? schema_.table(ToQString(table)) : std::nullopt;
    if (!info) {
        Throw(Failure::UnknownTable, ToQString(table));
    }
    return *info;
}

QByteArray DefinitionWriter::TableText(std::string_view table) const {
    const auto info = schema_.table ? schema_.table(ToQString(table)) : std::nullopt;
    return info ? Bracketed(info->name.toUtf8()) : Bracketed(table);
}

QByteArray DefinitionWriter::ColumnName(std::string_view table, std::string_view column) const {
    const auto info = schema_.table ? schema_.table(ToQString(table)) : std::nullopt;
    const ColumnInfo* known = info ? info->Column(column) : nullptr;
    return known ? Bracketed(known->name.toUtf8()) : Bracketed(column);
}

QByteArray DefinitionWriter::ConditionText(const Expr& expr) {
    Writer writer(schema_);
    writer.Condition(expr, false);
    return writer.Take();
}

QByteArray DefinitionWriter::ColumnText(std::string_view table, const ColumnDefinition& column) {
    const QByteArray name = Bracketed(column.name);
    const ColumnType type = ColumnType::OfDialect(column.type);
    QByteArray text = name + " " + type.Declaration();
    text += (column.notNull || type.IsFlag()) && !type.IsCounter() ? " NOT NULL" : "";
    if (column.defaultValue) {
        text += " DEFAULT (" + DefaultText(table, column.name, type, *column.defaultValue) + ")";
    } else if (type.IsFlag()) {
        text += " DEFAULT 0";
    }
    if (type.Length() > 0) {
        text += " CHECK (length(" + name + ") <= " + QByteArray::number(type.Length()) + ")";
    }
    return text;
}

// The value as the column keeps it. A date that is a default is computed for each row.
QByteArray DefinitionWriter::DefaultText(std::string_view table, std::string_view column,
                                         const ColumnType& type, const Expr& value) {
    Writer writer(schema_);
    if (type.Reads() == Type::Text) {
        writer.TextValue(value);
    } else {
        writer.Value(value);
    }
    if (!type.Converts()) {
        return writer.Take();
    }
    return "dao_store(" + writer.Take() +
           StoreArguments(type, ToQString(table), ToQString(column)) + ")";
}

QByteArray DefinitionWriter::ConstraintText(const Constraint& constraint) {
    QByteArray text =
        constraint.name.empty() ? QByteArray() : "CONSTRAINT " + Bracketed(constraint.name) + " ";
    switch (constraint.kind) {
        case Constraint::Kind::PrimaryKey:
            return text + "PRIMARY KEY " + BracketedList(constraint.columns);
        case Constraint::Kind::Check:
            return text + "CHECK (" + ConditionText(*constraint.check) + ")";
        default:
            return {};
    }
}

QByteArray IndexName(std::string_view table, std::string_view index) {
    return Bracketed((ToQString(table) + u'.' + ToQString(index)).toUtf8());
}

// As an index, so that it can be dropped without building the table anew.
void DefinitionWriter::AddUniqueIndex(std::string_view table, const Constraint& constraint) {
    const std::string_view name =
        constraint.name.empty() ? constraint.columns.front() : constraint.name;
    QByteArray columns;
    for (const std::string_view column : constraint.columns) {
        columns += (columns.isEmpty() ? "" : ", ") + ColumnName(table, column);
    }
    Add("CREATE UNIQUE INDEX " + IndexName(table, name) + " ON " + TableText(table) + " (" +
        columns + ")");
}

void DefinitionWriter::Write(const CreateTable& create) {
    Define(create.table);
    std::vector<const Constraint*> constraints;
    for (const ColumnDefinition& column : create.columns) {
        for (const Constraint& constraint : column.constraints) {
            constraints.push_back(&constraint);
        }
    }
    for (const Constraint& constraint : create.constraints) {
        constraints.push_back(&constraint);
    }
    const auto counter = std::find_if(create.columns.begin(), create.columns.end(),
                                      [](const ColumnDefinition& column) {
                                          return ColumnType::OfDialect(column.type).IsCounter();
                                      });
    const auto required = [&](const ColumnDefinition& column) {
        return std::any_of(constraints.begin(), constraints.end(), [&](const Constraint* c) {
            const bool requiring =
                c->kind == Constraint::Kind::PrimaryKey || c->kind == Constraint::Kind::NotNull;
            return requiring && std::any_of(c->columns.begin(), c->columns.end(), [&](auto name) {
                       return EqualWords(name, column.name);
                   });
        });
    };
    QByteArray text;
    for (const ColumnDefinition& column : create.columns) {
        const ColumnType type = ColumnType::OfDialect(column.type);
        const bool has = column.notNull || type.IsCounter() || type.IsFlag();
        text += (text.isEmpty() ? "" : ", ") + ColumnText(create.table, column);
        text += required(column) && !has ? " NOT NULL" : "";
    }
    std::vector<const Constraint*> unique;
    for (const Constraint* constraint : constraints) {
        const bool key = constraint->kind == Constraint::Kind::PrimaryKey;
        if (key && counter != create.columns.end()) {
            // A counter is the table's key to the engine. Another key is as good as unique values.
            const bool own = constraint->columns.size() == 1 &&
                             EqualWords(constraint->columns.front(), counter->name);
            if (!own) {
                unique.push_back(constraint);
            }
        } else if (constraint->kind == Constraint::Kind::Unique) {
            unique.push_back(constraint);
        } else if (constraint->kind != Constraint::Kind::NotNull) {
            text += ", " + ConstraintText(*constraint);
        }
    }
    Add("CREATE TABLE " + Bracketed(create.table) + " (" + text + ")");
    for (const Constraint* constraint : unique) {
        AddUniqueIndex(create.table, *constraint);
    }
}

// The engine itself adds a column without conditions; for any other one the table is built anew.
void DefinitionWriter::AddColumns(const AlterTable& alter, const TableInfo& info) {
    const auto isPlain = [](const ColumnDefinition& column) {
        const ColumnType type = ColumnType::OfDialect(column.type);
        return !column.notNull && !type.IsCounter() && (type.IsFlag() || !column.defaultValue) &&
               std::all_of(column.constraints.begin(), column.constraints.end(),
                           [](const Constraint& c) { return c.kind == Constraint::Kind::Unique; });
    };
    if (std::all_of(alter.columns.begin(), alter.columns.end(), isPlain)) {
        for (const ColumnDefinition& column : alter.columns) {
            Add("ALTER TABLE " + TableText(alter.table) + " ADD COLUMN " +
                ColumnText(alter.table, column));
        }
    } else {
        BuildWith(alter, info);
    }
    for (const ColumnDefinition& column : alter.columns) {
        for (const Constraint& constraint : column.constraints) {
            if (constraint.kind == Constraint::Kind::Unique) {
                AddUniqueIndex(alter.table, constraint);
            }
        }
    }
}

void DefinitionWriter::BuildWith(const AlterTable& alter, const TableInfo& info) {
    TableDefinition table(info);
    QList<TableDefinition::NewValue> values;
    bool hasKey = table.HasPrimaryKey();
    for (const ColumnDefinition& column : alter.columns) {
        const ColumnType type = ColumnType::OfDialect(column.type);
        if (info.Column(column.name)) {
            Throw(Failure::DuplicateColumn, ToQString(column.name));
        }
        table.SetColumn(column.name, ColumnText(alter.table, column));
        bool key = type.IsCounter();
        for (const Constraint& constraint : column.constraints) {
            // A counter is the key by its type.
            const bool isKey = constraint.kind == Constraint::Kind::PrimaryKey && !type.IsCounter();
            if (isKey) {
                table.RequireValue(column.name);
            }
            if (isKey || constraint.kind == Constraint::Kind::Check) {
                table.AddConstraint(ConstraintText(constraint));
            }
            key = key || isKey;
        }
        if (key && std::exchange(hasKey, true)) {
            Throw(Failure::ObjectExists, u"PRIMARY KEY"_s);
        }
        // A default is for rows to come: those that are there have no value.
        if (!type.IsCounter() && !type.IsFlag()) {
            values.append({ToQString(column.name), "NULL"});
        }
    }
    translation_.statements += table.Rebuild(values);
}

// A column that needs a value goes on needing one unless NULL is said: a new length must not open
// what the table's maker has closed.
void DefinitionWriter::AlterColumn(const AlterTable& alter, const TableInfo& info) {
    const ColumnDefinition& column = alter.columns.front();
    const ColumnInfo* known = info.Column(column.name);
    if (!known) {
        Throw(Failure::UnknownColumn, ToQString(column.name));
    }
    TableDefinition table(info);
    table.SetColumn(column.name, ColumnText(alter.table, column));
    if (known->notNull && !column.mayBeNull) {
        table.RequireValue(column.name);
    }
    const ColumnType type = ColumnType::OfDialect(column.type);
    const bool fromDate = ColumnType::OfDeclaration(known->declaredType).Reads() == Type::Date;
    QByteArray value = Bracketed(known->name.toUtf8());
    if (fromDate && type.Reads() == Type::Text) {
        value = "dao_datetext(" + value + ")";
    }
    QList<TableDefinition::NewValue> values;
    if (type.Converts()) {
        values.append({known->name,
                       "dao_store(" + value + StoreArguments(type, info.name, known->name) + ")"});
    }
    translation_.statements += table.Rebuild(values);
}

void DefinitionWriter::SetDefault(const AlterTable& alter, const TableInfo& info) {
    const ColumnDefinition& column = alter.columns.front();
    const ColumnInfo* known = info.Column(column.name);
    if (!known) {
        Throw(Failure::UnknownColumn, ToQString(column.name));
    }
    const ColumnType type = ColumnType::OfDeclaration(known->declaredType);
    TableDefinition table(info);
    table.SetDefault(column.name, column.defaultValue ? DefaultText(alter.table, column.name, type,
                                                                    *column.defaultValue)
                                                      : QByteArray());
    translation_.statements += table.Rebuild({});
}

void DefinitionWriter::AddConstraint(const AlterTable& alter, const TableInfo& info) {
    const Constraint& constraint = alter.constraint;
    if (constraint.kind == Constraint::Kind::Unique) {
        AddUniqueIndex(alter.table, constraint);
        return;
    }
    TableDefinition table(info);
    if (constraint.kind == Constraint::Kind::PrimaryKey) {
        if (table.HasPrimaryKey()) {
            Throw(Failure::ObjectExists, u"PRIMARY KEY"_s);
        }
        for (const std::string_view column : constraint.columns) {
            table.RequireValue(column);
        }
    }
    if (constraint.kind == Constraint::Kind::NotNull) {
        for (const std::string_view column : constraint.columns) {
            table.RequireValue(column);
        }
    } else {
        table.AddConstraint(ConstraintText(constraint));
    }
    translation_.statements += table.Rebuild({});
}

// A constraint or an index: which of the two the name is, the table knows.
void DefinitionWriter::DropNamed(const TableInfo& info, std::string_view name) {
    const QString index = EngineIndexName(info, name);
    if (!index.isEmpty()) {
        Add("DROP INDEX " + Bracketed(index.toUtf8()));
        return;
    }
    TableDefinition table(info);
    if (!table.DropConstraint(name)) {
        Throw(Failure::ItemNotFound, ToQString(name));
    }
    translation_.statements += table.Rebuild({});
}

void DefinitionWriter::Write(const AlterTable& alter) {
    Note(alter.table);
    const TableInfo info = TableToChange(alter.table);
    switch (alter.action) {
        case AlterTable::Action::AddColumns:
            AddColumns(alter, info);
            break;
        case AlterTable::Action::AlterColumn:
            AlterColumn(alter, info);
            break;
        case AlterTable::Action::SetDefault:
            SetDefault(alter, info);
            break;
        case AlterTable::Action::DropColumns:
            for (const std::string_view name : alter.dropped) {
                Add("ALTER TABLE " + TableText(alter.table) + " DROP COLUMN " +
                    ColumnName(alter.table, name));
            }
            break;
        case AlterTable::Action::AddConstraint:
            AddConstraint(alter, info);
            break;
        case AlterTable::Action::DropConstraint:
            DropNamed(info, alter.dropped.front());
            break;
    }
}

void DefinitionWriter::Write(const CreateIndex& create) {
    Note(create.table);
    if (!EngineIndexName(TableToChange(create.table), create.index).isEmpty()) {
        Throw(Failure::ObjectExists, ToQString(create.index));
    }
    if (create.option == CreateIndex::Option::Primary ||
        create.option == CreateIndex::Option::DisallowNull) {
        const TableInfo info = TableToChange(create.table);
        TableDefinition table(info);
        Constraint key;
        key.name = create.index;
        for (const auto& [column, descending] : create.columns) {
            table.RequireValue(column);
            key.columns.push_back(column);
        }
        const bool primary = create.option == CreateIndex::Option::Primary;
        if (primary && table.HasPrimaryKey()) {
            Throw(Failure::ObjectExists, u"PRIMARY KEY"_s);
        }
        if (primary) {
            table.AddConstraint(ConstraintText(key));
        }
        translation_.statements += table.Rebuild({});
        if (primary) {
            return;
        }
    }
    // Rows without a value never count as equal here, so IGNORE NULL asks for nothing.
    QByteArray columns;
    for (const auto& [column, descending] : create.columns) {
        columns += (columns.isEmpty() ? "" : ", ") + ColumnName(create.table, column) +
                   (descending ? " DESC" : "");
    }
    Add((create.unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ") +
        IndexName(create.table, create.index) + " ON " + TableText(create.table) + " (" + columns +
        ")");
}

void DefinitionWriter::Write(const DropIndex& drop) {
    Note(drop.table);
    DropNamed(TableToChange(drop.table), drop.index);
}

void DefinitionWriter::Write(const DropTable& drop) {
    Note(drop.table);
    const auto info = schema_.table ? schema_.table(ToQString(drop.table)) : std::nullopt;
    Add((info && info->isView ? "DROP VIEW " : "DROP TABLE ") + TableText(drop.table));
}

void DefinitionWriter::Write(const CreateView& create) {
    Define(create.view);
    Writer writer(schema_);
    writer.WriteQuery(*create.query, Writer::Naming::Fixed);
    Add("CREATE VIEW " + Bracketed(create.view) +
        (create.columns.empty() ? QByteArray() : " " + BracketedList(create.columns)) + " AS " +
        writer.Take());
    translation_.tables = writer.Tables();
}

}  // namespace

void WriteDefinition(const Command& command, const Schema& schema, Translation& translation) {
    DefinitionWriter writer(schema, translation);
    std::visit(
        [&](const auto& body) {
            if constexpr (requires { writer.Write(body); }) {
                writer.Write(body);
            }
        },
        command.body);
}

}  // namespace sql
