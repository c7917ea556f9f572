#include "platform/sql/changewriter.h"
#include "platform/sql/errors.h"
#include "platform/sql/parser.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace sql {

namespace {

// Whether rows of the result may lack a row of this table.
bool MayBeMissing(const Source& source, const Source* table) {
    if (source.kind != Source::Kind::Join) {
        return false;
    }
    const bool onLeft = TableNamed(*source.left, table->Alias()) == table;
    if ((onLeft && source.join == Source::Join::Right) ||
        (!onLeft && source.join == Source::Join::Left)) {
        return true;
    }
    return MayBeMissing(onLeft ? *source.left : *source.right, table);
}

// Where the rows of a view come from, for a message.
QString TablesBehind(const TableInfo& view) {
    QStringList tables;
    try {
        const Command command = Parser::ParseCommand(view.definition.toUtf8());
        const auto& query = *std::get<CreateView>(command.body).query;
        std::vector<const Source*> sources;
        if (query.arms.front().select) {
            for (const SourcePtr& source : query.arms.front().select->from) {
                CollectTables(*source, sources);
            }
        }
        for (const Source* source : sources) {
            tables.append(ToQString(source->name));
        }
    } catch (const Erro&) {
        // A view of other words than the dialect's.
    }
    return view.name + (tables.isEmpty() ? QString() : u"; grave em "_s + tables.join(u" ou "_s));
}

}  // namespace

void ChangeWriter::Finish() {
    translation_.statements.append(writer_.Take());
    translation_.tables = writer_.Tables();
}

TableInfo ChangeWriter::TableToChange(std::string_view name) const {
    std::optional<TableInfo> info = names_.InfoOf(name);
    if (!info) {
        // A table that is kept apart is attached only when the statement runs.
        info.emplace();
        info->name = ToQString(name);
    }
    if (info->isView) {
        Throw(Failure::NotUpdatable, TablesBehind(*info));
    }
    return *info;
}

void ChangeWriter::Write(const Update& update) {
    if (update.target->kind != Source::Kind::Table) {
        WriteJoinedUpdate(update);
        return;
    }
    const TableInfo table = TableToChange(update.target->name);
    const Names::Scope scope(names_, *update.target);
    writer_.Raw("UPDATE ");
    writer_.WriteSource(*update.target);
    std::string_view separator = " SET ";
    for (const Assignment& assignment : update.assignments) {
        if (!assignment.qualifier.empty() && !TableNamed(*update.target, assignment.qualifier)) {
            Throw(Failure::UnknownColumn, ToQString(assignment.qualifier));
        }
        const Target target = TargetOf(table, assignment.column);
        writer_.Raw(separator);
        separator = ", ";
        writer_.Name(target.name);
        writer_.Raw(" = ");
        WriteStored(target, *assignment.value);
    }
    writer_.WriteWhere(update.where);
    Finish();
}

const Source* ChangeWriter::SourceOf(const Source& source, const Assignment& assignment) const {
    if (!assignment.qualifier.empty()) {
        return TableNamed(source, assignment.qualifier);
    }
    if (source.kind == Source::Kind::Join) {
        const Source* found = SourceOf(*source.left, assignment);
        return found ? found : SourceOf(*source.right, assignment);
    }
    const auto info = names_.InfoOf(source.name);
    return info && info->Column(assignment.column) ? &source : nullptr;
}

// The columns that tell the rows of a table apart.
QStringList ChangeWriter::RowKey(const TableInfo& table) const {
    if (table.hasRowid) {
        return {u"rowid"_s};
    }
    QStringList key;
    for (const ColumnInfo& column : table.columns) {
        if (column.primaryKey > 0) {
            key.append(column.name);
        }
    }
    return key;
}

void ChangeWriter::WriteRowKey(const QStringList& key, QByteArrayView table) {
    for (qsizetype i = 0; i < key.size(); ++i) {
        writer_.Raw(i ? ", " : "");
        writer_.Name(table);
        writer_.Raw(".");
        writer_.Name(key.at(i));
    }
}

// The new values are computed over the join first and then written row by row, so that none of them
// sees another one's change.
void ChangeWriter::WriteJoinedUpdate(const Update& update) {
    const Source* target = SourceOf(*update.target, update.assignments.front());
    for (const Assignment& assignment : update.assignments) {
        const Source* other = SourceOf(*update.target, assignment);
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
    const TableInfo table = TableToChange(target->name);
    const QStringList key = RowKey(table);
    const Names::Scope scope(names_, *update.target);
    writer_.Raw("UPDATE ");
    writer_.Name(table.name);
    for (std::size_t i = 0; i < update.assignments.size(); ++i) {
        writer_.Raw(i ? ", " : " SET ");
        writer_.Name(TargetOf(table, update.assignments[i].column).name);
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
        WriteStored(TargetOf(table, assignment.column), *assignment.value);
        writer_.Raw(" AS ");
        writer_.Name("v" + std::to_string(i));
    }
    writer_.Raw(" FROM ");
    writer_.WriteSource(*update.target);
    writer_.WriteWhere(update.where);
    writer_.Raw(") AS [_new] WHERE ");
    for (qsizetype i = 0; i < key.size(); ++i) {
        writer_.Raw(i ? " AND " : "");
        WriteRowKey({key.at(i)}, table.name.toUtf8());
        writer_.Raw(" = [_new].");
        writer_.Name("k" + std::to_string(i));
    }
    Finish();
}

void ChangeWriter::Write(const Delete& deletion) {
    const bool single = deletion.from->kind == Source::Kind::Table;
    const Source* target = deletion.table.empty() ? (single ? deletion.from.get() : nullptr)
                                                  : TableNamed(*deletion.from, deletion.table);
    for (const std::string_view column : deletion.columns) {
        const Source* other = SourceOf(*deletion.from, {{}, column, nullptr});
        if (!other || (target && other != target)) {
            Throw(Failure::UnknownColumn, ToQString(column));
        }
        target = other;
    }
    if (!target) {
        Throw(Failure::SyntaxError, ToQString(deletion.table));
    }
    const TableInfo table = TableToChange(target->name);
    const Names::Scope scope(names_, *deletion.from);
    writer_.Raw("DELETE FROM ");
    if (single) {
        writer_.WriteSource(*deletion.from);
        writer_.WriteWhere(deletion.where);
        Finish();
        return;
    }
    const QStringList key = RowKey(table);
    writer_.Name(table.name);
    writer_.Raw(" WHERE (");
    WriteRowKey(key, table.name.toUtf8());
    writer_.Raw(") IN (SELECT ");
    WriteRowKey(key, target->Alias());
    writer_.Raw(" FROM ");
    writer_.WriteSource(*deletion.from);
    writer_.WriteWhere(deletion.where);
    writer_.Raw(")");
    Finish();
}

Translation WriteCommand(const Command& command, const Schema& schema, Accents accents,
                         Literals literals) {
    Translation translation;
    translation.kind = Translation::Kind::Change;
    ChangeWriter changes(schema, translation);
    if (literals == Literals::Lifted && !std::holds_alternative<QueryPtr>(command.body)) {
        changes.Lift();
    }
    if (const auto* query = std::get_if<QueryPtr>(&command.body)) {
        const Query::Arm& first = (*query)->arms.front();
        if (first.select && !first.select->into.empty()) {
            changes.WriteInto(**query);
            return translation;
        }
        Writer writer(schema, accents);
        writer.WriteQuery(**query, Writer::Naming::Fixed);
        translation.kind = Translation::Kind::Query;
        translation.statements.append(writer.Take());
        translation.tables = writer.Tables();
    } else if (const auto* insert = std::get_if<Insert>(&command.body)) {
        changes.Write(*insert);
    } else if (const auto* update = std::get_if<Update>(&command.body)) {
        changes.Write(*update);
    } else if (const auto* deletion = std::get_if<Delete>(&command.body)) {
        changes.Write(*deletion);
    } else {
        translation.kind = Translation::Kind::Definition;
        WriteDefinition(command, schema, translation);
    }
    return translation;
}

}  // namespace sql
