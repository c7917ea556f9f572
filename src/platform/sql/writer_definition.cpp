#include "platform/sql/columntypes.h"
#include "platform/sql/errors.h"
#include "platform/sql/tabledefinition.h"
#include "platform/sql/writer.h"

#include <algorithm>

namespace sql {

namespace {

using Constraint = ConstraintDefinition;

QByteArray Bracketed(std::string_view name) {
    return "[" + QByteArray(name.data(), static_cast<qsizetype>(name.size())) + "]";
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
    TableInfo InfoOf(std::string_view table) const;
    QByteArray ColumnText(const ColumnDefinition& column);
    QByteArray ConstraintText(const Constraint& constraint);
    QByteArray Text(const Expr& expr, bool condition);
    void AddUniqueIndex(std::string_view table, const Constraint& constraint);
    void AddColumn(const AlterTable& alter, const TableInfo& info);
    void AlterColumn(const AlterTable& alter, const TableInfo& info);
    void AddConstraint(const AlterTable& alter, const TableInfo& info);
    void DropNamed(const TableInfo& info, std::string_view name);

    const Schema& schema_;
    Translation& translation_;
};

TableInfo DefinitionWriter::InfoOf(std::string_view table) const {
    const auto info = schema_.table ? schema_.table(ToQString(table)) : std::nullopt;
    if (!info) {
        Throw(Failure::UnknownTable, ToQString(table));
    }
    return *info;
}

QByteArray DefinitionWriter::Text(const Expr& expr, bool condition) {
    Writer writer(schema_);
    if (condition) {
        writer.Condition(expr, false);
    } else {
        writer.Value(expr);
    }
    return writer.Take();
}

QByteArray DefinitionWriter::ColumnText(const ColumnDefinition& column) {
    const QByteArray name = Bracketed(column.name);
    const QString type = EngineType(column.type);
    QByteArray text = name + " " + type.toUtf8();
    const bool sized = type == QLatin1String("TEXT");
    const std::string size = column.type.sizes.empty() ? "255" : column.type.sizes.front();
    if (sized) {
        text += "(" + QByteArray::fromStdString(size) + ") COLLATE TARVO";
    }
    if (type == QLatin1String("DECIMAL")) {
        text +=
            "(" + QByteArray::fromStdString(column.type.sizes.empty() ? "18" : size) + "," +
            QByteArray::fromStdString(column.type.sizes.size() > 1 ? column.type.sizes[1] : "0") +
            ")";
    }
    const bool flag = type == QLatin1String("BIT");  // never Null
    text += (column.notNull || flag) && !IsCounter(column) ? " NOT NULL" : "";
    if (column.defaultValue) {
        text += " DEFAULT (" + Text(*column.defaultValue, false) + ")";
    } else if (flag) {
        text += " DEFAULT 0";
    }
    if (sized) {
        text += " CHECK (length(" + name + ") <= " + QByteArray::fromStdString(size) + ")";
    }
    return text;
}

QByteArray DefinitionWriter::ConstraintText(const Constraint& constraint) {
    QByteArray text =
        constraint.name.empty() ? QByteArray() : "CONSTRAINT " + Bracketed(constraint.name) + " ";
    switch (constraint.kind) {
        case Constraint::Kind::PrimaryKey:
            return text + "PRIMARY KEY " + BracketedList(constraint.columns);
        case Constraint::Kind::Check:
            return text + "CHECK (" + Text(*constraint.check, true) + ")";
        case Constraint::Kind::ForeignKey:
            text += "FOREIGN KEY " + BracketedList(constraint.columns) + " REFERENCES " +
                    Bracketed(constraint.foreignTable);
            text += constraint.foreignColumns.empty()
                        ? QByteArray()
                        : " " + BracketedList(constraint.foreignColumns);
            text += constraint.cascadeUpdate ? " ON UPDATE CASCADE" : "";
            text += constraint.cascadeDelete ? " ON DELETE CASCADE" : "";
            return text;
        default:
            return {};
    }
}

QByteArray IndexName(std::string_view table, std::string_view index) {
    return Bracketed(std::string(table) + "." + std::string(index));
}

// As an index, so that it can be dropped without building the table anew.
void DefinitionWriter::AddUniqueIndex(std::string_view table, const Constraint& constraint) {
    const std::string_view name =
        constraint.name.empty() ? constraint.columns.front() : constraint.name;
    Add("CREATE UNIQUE INDEX " + IndexName(table, name) + " ON " + Bracketed(table) + " " +
        BracketedList(constraint.columns));
}

void DefinitionWriter::Write(const CreateTable& create) {
    Note(create.table);
    std::vector<const Constraint*> constraints;
    for (const ColumnDefinition& column : create.columns) {
        for (const Constraint& constraint : column.constraints) {
            constraints.push_back(&constraint);
        }
    }
    for (const Constraint& constraint : create.constraints) {
        constraints.push_back(&constraint);
    }
    const auto counter = std::find_if(create.columns.begin(), create.columns.end(), IsCounter);
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
        text += (text.isEmpty() ? "" : ", ") + ColumnText(column);
        const bool has = column.notNull || IsCounter(column) || text.endsWith("NOT NULL");
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

void DefinitionWriter::AddColumn(const AlterTable& alter, const TableInfo& info) {
    const ColumnDefinition& column = alter.column;
    const auto is = [](Constraint::Kind kind) {
        return [kind](const Constraint& c) { return c.kind == kind; };
    };
    const auto& constraints = column.constraints;
    const bool onlyUnique =
        std::all_of(constraints.begin(), constraints.end(), is(Constraint::Kind::Unique));
    const bool flag = EngineType(column.type) == QLatin1String("BIT");
    const QString name = ToQString(column.name);
    if (onlyUnique && !column.notNull && !IsCounter(column) && (flag || !column.defaultValue)) {
        Add("ALTER TABLE " + Bracketed(alter.table) + " ADD COLUMN " + ColumnText(column));
    } else {
        TableDefinition table(info);
        const bool key =
            std::any_of(constraints.begin(), constraints.end(), is(Constraint::Kind::PrimaryKey));
        if ((key || IsCounter(column)) && table.HasPrimaryKey()) {
            Throw(Failure::ObjectExists, QStringLiteral("PRIMARY KEY"));
        }
        table.SetColumn(name, ColumnText(column));
        for (const Constraint& constraint : constraints) {
            if (constraint.kind != Constraint::Kind::Unique) {
                table.AddConstraint(ConstraintText(constraint));
            }
        }
        // A default is for rows to come: those that are there have no value.
        const bool computed = IsCounter(column) || flag;
        translation_.statements +=
            table.Rebuild(computed ? QList<TableDefinition::NewValue>()
                                   : QList<TableDefinition::NewValue>{{name, "NULL"}});
    }
    for (const Constraint& constraint : constraints) {
        if (constraint.kind == Constraint::Kind::Unique) {
            AddUniqueIndex(alter.table, constraint);
        }
    }
}

void DefinitionWriter::AlterColumn(const AlterTable& alter, const TableInfo& info) {
    const QString name = ToQString(alter.column.name);
    if (!info.Column(name)) {
        Throw(Failure::UnknownColumn, name);
    }
    TableDefinition table(info);
    table.SetColumn(name, ColumnText(alter.column));
    const QString type = EngineType(alter.column.type);
    const std::string_view convert =
        type.contains(QLatin1String("TEXT")) ? "dao_cstr" : StoringFunction(type);
    QList<TableDefinition::NewValue> values;
    if (!convert.empty()) {
        values.append({name, QByteArray(convert.data(), static_cast<qsizetype>(convert.size())) +
                                 "(" + Bracketed(alter.column.name) + ")"});
    }
    translation_.statements += table.Rebuild(values);
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
            Throw(Failure::ObjectExists, QStringLiteral("PRIMARY KEY"));
        }
        for (const std::string_view column : constraint.columns) {
            table.RequireValue(ToQString(column));
        }
    }
    if (constraint.kind == Constraint::Kind::NotNull) {
        for (const std::string_view column : constraint.columns) {
            table.RequireValue(ToQString(column));
        }
    } else {
        table.AddConstraint(ConstraintText(constraint));
    }
    translation_.statements += table.Rebuild({});
}

// A constraint or an index: which of the two the name is, the table knows.
void DefinitionWriter::DropNamed(const TableInfo& info, std::string_view name) {
    const QString index = EngineIndexName(info, ToQString(name));
    if (!index.isEmpty()) {
        Add("DROP INDEX " + Bracketed(index.toStdString()));
        return;
    }
    TableDefinition table(info);
    if (!table.DropConstraint(ToQString(name))) {
        Throw(Failure::ItemNotFound, ToQString(name));
    }
    translation_.statements += table.Rebuild({});
}

void DefinitionWriter::Write(const AlterTable& alter) {
    Note(alter.table);
    const TableInfo info = InfoOf(alter.table);
    switch (alter.action) {
        case AlterTable::Action::AddColumn:
            AddColumn(alter, info);
            break;
        case AlterTable::Action::AlterColumn:
            AlterColumn(alter, info);
            break;
        case AlterTable::Action::DropColumn:
            Add("ALTER TABLE " + Bracketed(alter.table) + " DROP COLUMN " +
                Bracketed(alter.dropped));
            break;
        case AlterTable::Action::AddConstraint:
            AddConstraint(alter, info);
            break;
        case AlterTable::Action::DropConstraint:
            DropNamed(info, alter.dropped);
            break;
    }
}

void DefinitionWriter::Write(const CreateIndex& create) {
    Note(create.table);
    if (!EngineIndexName(InfoOf(create.table), ToQString(create.index)).isEmpty()) {
        Throw(Failure::ObjectExists, ToQString(create.index));
    }
    if (create.option == CreateIndex::Option::Primary ||
        create.option == CreateIndex::Option::DisallowNull) {
        const TableInfo info = InfoOf(create.table);
        TableDefinition table(info);
        Constraint key;
        key.name = create.index;
        for (const auto& [column, descending] : create.columns) {
            table.RequireValue(ToQString(column));
            key.columns.push_back(column);
        }
        const bool primary = create.option == CreateIndex::Option::Primary;
        if (primary && table.HasPrimaryKey()) {
            Throw(Failure::ObjectExists, QStringLiteral("PRIMARY KEY"));
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
        columns +=
            (columns.isEmpty() ? "" : ", ") + Bracketed(column) + (descending ? " DESC" : "");
    }
    Add((create.unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ") +
        IndexName(create.table, create.index) + " ON " + Bracketed(create.table) + " (" + columns +
        ")");
}

void DefinitionWriter::Write(const DropIndex& drop) {
    Note(drop.table);
    DropNamed(InfoOf(drop.table), drop.index);
}

void DefinitionWriter::Write(const DropTable& drop) {
    Note(drop.table);
    const auto info = schema_.table ? schema_.table(ToQString(drop.table)) : std::nullopt;
    Add((info && info->isView ? "DROP VIEW " : "DROP TABLE ") + Bracketed(drop.table));
}

void DefinitionWriter::Write(const CreateView& create) {
    Writer writer(schema_);
    writer.WriteQuery(*create.query, Writer::Names::Fixed);
    Add("CREATE VIEW " + Bracketed(create.view) +
        (create.columns.empty() ? QByteArray() : " " + BracketedList(create.columns)) + " AS " +
        writer.Take());
    translation_.tables = writer.Tables();
}

}  // namespace

void WriteDefinition(const Statement& statement, const Schema& schema, Translation& translation) {
    DefinitionWriter writer(schema, translation);
    std::visit(
        [&](const auto& body) {
            if constexpr (requires { writer.Write(body); }) {
                writer.Write(body);
            }
        },
        statement.body);
}

}  // namespace sql
