#include "platform/sql/columntypes.h"
#include "platform/sql/errors.h"
#include "platform/sql/resultcolumns.h"
#include "platform/sql/writer.h"

#include <algorithm>

namespace sql {

namespace {

// Whether rows of the result may lack a row of this table.
bool MayBeMissing(const Source& source, const Source* table) {
    if (source.kind != Source::Kind::Join) {
        return false;
    }
    const bool onLeft = FindTable(*source.left, table->Alias()) == table;
    if ((onLeft && source.join == Source::Join::Right) ||
        (!onLeft && source.join == Source::Join::Left)) {
        return true;
    }
    return MayBeMissing(onLeft ? *source.left : *source.right, table);
}

// The columns that tell the rows of a table apart.
QStringList RowKey(const Schema& schema, std::string_view table) {
    const std::optional<TableInfo> info = InfoOf(schema, table);
    if (info && info->isView) {
        Throw(Failure::NotSupported, ToQString(table));
    }
    if (!info || !info->definition.contains(QLatin1String("WITHOUT ROWID"), Qt::CaseInsensitive)) {
        return {QStringLiteral("rowid")};
    }
    QStringList key;
    for (const ColumnInfo& column : info->columns) {
        if (column.primaryKey > 0) {
            key.append(column.name);
        }
    }
    return key;
}

class ChangeWriter {
public:
    ChangeWriter(const Schema& schema, Translation& translation)
        : schema_(schema), translation_(translation), writer_(schema) {}

    void Write(const Insert& insert);
    void Write(const Update& update);
    void Write(const Delete& deletion);
    void WriteInto(const Query& query);

private:
    void Finish();
    void WriteStored(std::string_view table, std::string_view column, const Expr& value);
    void WriteJoinedUpdate(const Update& update);
    const Source* TargetOf(const Source& source, const Assignment& assignment) const;
    void WriteRowKey(const QStringList& key, std::string_view table);

    const Schema& schema_;
    Translation& translation_;
    Writer writer_;
};

void ChangeWriter::Finish() {
    translation_.statements.append(writer_.Take());
    translation_.tables = writer_.Tables();
}

void ChangeWriter::WriteStored(std::string_view table, std::string_view column, const Expr& value) {
    const bool sameColumn = value.kind == Expr::Kind::Column && EqualWords(value.name, column);
    std::string_view function;
    const std::optional<TableInfo> info =
        sameColumn || value.kind == Expr::Kind::Null ? std::nullopt : InfoOf(schema_, table);
    if (const ColumnInfo* known = info ? info->Column(ToQString(column)) : nullptr) {
        function = StoringFunction(known->declaredType);
    }
    if (function.empty()) {
        writer_.Value(value);
        return;
    }
    writer_.Raw(function);
    writer_.Raw("(");
    writer_.Value(value);
    writer_.Raw(")");
}

void ChangeWriter::Write(const Insert& insert) {
    writer_.NoteTable(insert.table);
    writer_.Raw("INSERT INTO ");
    writer_.Name(insert.table);
    QStringList columns;
    for (const std::string_view column : insert.columns) {
        columns.append(ToQString(column));
    }
    if (insert.query && columns.isEmpty()) {
        // Without a list, the columns of a query are matched by name, not by place.
        columns = NamesOf(schema_, *insert.query);
        if (columns.isEmpty()) {
            Throw(Failure::NotSupported, ToQString(insert.table));
        }
    }
    for (qsizetype i = 0; i < columns.size(); ++i) {
        writer_.Raw(i ? ", " : " (");
        writer_.Name(columns.at(i).toStdString());
    }
    writer_.Raw(columns.isEmpty() ? " " : ") ");
    if (insert.query) {
        writer_.WriteQuery(*insert.query);
        Finish();
        return;
    }
    if (columns.isEmpty()) {
        if (const auto info = InfoOf(schema_, insert.table)) {
            for (const ColumnInfo& column : info->columns) {
                columns.append(column.name);
            }
        }
    }
    writer_.Raw("VALUES (");
    for (std::size_t i = 0; i < insert.values.size(); ++i) {
        writer_.Raw(i ? ", " : "");
        const std::string column = columns.value(static_cast<qsizetype>(i)).toStdString();
        WriteStored(insert.table, column, *insert.values[i]);
    }
    writer_.Raw(")");
    Finish();
}

void ChangeWriter::Write(const Update& update) {
    if (update.target->kind != Source::Kind::Table) {
        WriteJoinedUpdate(update);
        return;
    }
    writer_.Raw("UPDATE ");
    writer_.WriteSource(*update.target);
    std::string_view separator = " SET ";
    for (const Assignment& assignment : update.assignments) {
        if (!assignment.qualifier.empty() && !FindTable(*update.target, assignment.qualifier)) {
            Throw(Failure::UnknownColumn, ToQString(assignment.qualifier));
        }
        writer_.Raw(separator);
        separator = ", ";
        writer_.Name(assignment.column);
        writer_.Raw(" = ");
        WriteStored(update.target->name, assignment.column, *assignment.value);
    }
    writer_.WriteWhere(update.where);
    Finish();
}

const Source* ChangeWriter::TargetOf(const Source& source, const Assignment& assignment) const {
    if (!assignment.qualifier.empty()) {
        return FindTable(source, assignment.qualifier);
    }
    if (source.kind == Source::Kind::Join) {
        const Source* found = TargetOf(*source.left, assignment);
        return found ? found : TargetOf(*source.right, assignment);
    }
    const auto info = InfoOf(schema_, source.name);
    return info && info->Column(ToQString(assignment.column)) ? &source : nullptr;
}

void ChangeWriter::WriteRowKey(const QStringList& key, std::string_view table) {
    for (qsizetype i = 0; i < key.size(); ++i) {
        writer_.Raw(i ? ", " : "");
        writer_.Name(table);
        writer_.Raw(".");
        writer_.Name(key.at(i).toStdString());
    }
}

// The new values are computed over the join first and then written row by row, so that none of them
// sees another one's change.
void ChangeWriter::WriteJoinedUpdate(const Update& update) {
    const Source* target = TargetOf(*update.target, update.assignments.front());
    for (const Assignment& assignment : update.assignments) {
        const Source* other = TargetOf(*update.target, assignment);
        if (!other) {
            Throw(Failure::UnknownColumn, ToQString(assignment.column));
        }
        if (other != target) {
            Throw(Failure::NotSupported, ToQString(assignment.column));
        }
    }
    if (MayBeMissing(*update.target, target)) {
        Throw(Failure::NotSupported, ToQString(target->Alias()));
    }
    const QStringList key = RowKey(schema_, target->name);
    writer_.Raw("UPDATE ");
    writer_.Name(target->name);
    for (std::size_t i = 0; i < update.assignments.size(); ++i) {
        writer_.Raw(i ? ", " : " SET ");
        writer_.Name(update.assignments[i].column);
        writer_.Raw(" = [_new].");
        writer_.Name("v" + std::to_string(i));
    }
    writer_.Raw(" FROM (SELECT ");
    for (qsizetype i = 0; i < key.size(); ++i) {
        WriteRowKey({key.at(i)}, target->Alias());
        writer_.Raw(" AS ");
        writer_.Name("k" + std::to_string(i));
        writer_.Raw(", ");
    }
    for (std::size_t i = 0; i < update.assignments.size(); ++i) {
        const Assignment& assignment = update.assignments[i];
        writer_.Raw(i ? ", " : "");
        WriteStored(target->name, assignment.column, *assignment.value);
        writer_.Raw(" AS ");
        writer_.Name("v" + std::to_string(i));
    }
    writer_.Raw(" FROM ");
    writer_.WriteSource(*update.target);
    writer_.WriteWhere(update.where);
    writer_.Raw(") AS [_new] WHERE ");
    for (qsizetype i = 0; i < key.size(); ++i) {
        writer_.Raw(i ? " AND " : "");
        WriteRowKey({key.at(i)}, target->name);
        writer_.Raw(" = [_new].");
        writer_.Name("k" + std::to_string(i));
    }
    Finish();
}

void ChangeWriter::Write(const Delete& deletion) {
    const Source* target =
        deletion.table.empty()
            ? (deletion.from->kind == Source::Kind::Table ? deletion.from.get() : nullptr)
            : FindTable(*deletion.from, deletion.table);
    if (!target) {
        Throw(Failure::SyntaxError, ToQString(deletion.table));
    }
    writer_.Raw("DELETE FROM ");
    if (deletion.from->kind == Source::Kind::Table) {
        writer_.WriteSource(*deletion.from);
        writer_.WriteWhere(deletion.where);
        Finish();
        return;
    }
    const QStringList key = RowKey(schema_, target->name);
    writer_.Name(target->name);
    writer_.Raw(" WHERE (");
    WriteRowKey(key, target->name);
    writer_.Raw(") IN (SELECT ");
    WriteRowKey(key, target->Alias());
    writer_.Raw(" FROM ");
    writer_.WriteSource(*deletion.from);
    writer_.WriteWhere(deletion.where);
    writer_.Raw(")");
    Finish();
}

// SELECT ... INTO: the engine's own form of it would lose types and collation.
void ChangeWriter::WriteInto(const Query& query) {
    Select& select = *query.arms.front().select;
    const std::string_view table = std::exchange(select.into, {});
    if (query.arms.size() > 1) {
        Throw(Failure::NotSupported, QStringLiteral("INTO, UNION"));
    }
    const QStringList names = NamesOf(schema_, query);
    const bool plain = std::none_of(select.items.begin(), select.items.end(), [](const auto& item) {
        return item.expr->kind == Expr::Kind::Star;
    });
    if (names.isEmpty()) {
        Throw(Failure::NotSupported, QStringLiteral("INTO ") + ToQString(table));
    }
    writer_.NoteTable(table);
    writer_.Raw("CREATE TABLE ");
    writer_.Name(table);
    for (qsizetype i = 0; i < names.size(); ++i) {
        writer_.Raw(i ? ", " : " (");
        writer_.Name(names.at(i).toStdString());
        writer_.Raw(" ");
        Expr byName;
        byName.kind = Expr::Kind::Column;
        const std::string name = names.at(i).toStdString();
        byName.name = name;
        const Expr& expr = plain ? *select.items[static_cast<std::size_t>(i)].expr : byName;
        writer_.Raw(DeclaredType(schema_, select, expr).toStdString());
    }
    writer_.Raw(")");
    Finish();
    writer_.Raw("INSERT INTO ");
    writer_.Name(table);
    writer_.Raw(" ");
    writer_.WriteQuery(query);
    Finish();
}

}  // namespace

Translation WriteStatement(const Statement& statement, const Schema& schema, Accents accents) {
    Translation translation;
    translation.kind = Translation::Kind::Change;
    ChangeWriter changes(schema, translation);
    if (const auto* query = std::get_if<QueryPtr>(&statement.body)) {
        const Query::Arm& first = (*query)->arms.front();
        if (first.select && !first.select->into.empty()) {
            changes.WriteInto(**query);
            return translation;
        }
        Writer writer(schema, accents);
        writer.WriteQuery(**query, Writer::Names::Fixed);
        translation.kind = Translation::Kind::Query;
        translation.statements.append(writer.Take());
        translation.tables = writer.Tables();
    } else if (const auto* insert = std::get_if<Insert>(&statement.body)) {
        changes.Write(*insert);
    } else if (const auto* update = std::get_if<Update>(&statement.body)) {
        changes.Write(*update);
    } else if (const auto* deletion = std::get_if<Delete>(&statement.body)) {
        changes.Write(*deletion);
    } else {
        translation.kind = Translation::Kind::Definition;
        WriteDefinition(statement, schema, translation);
    }
    return translation;
}

}  // namespace sql
