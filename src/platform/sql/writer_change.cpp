#include "platform/convert.h"
#include "platform/sql/collation.h"
#include "platform/sql/errors.h"
#include "platform/sql/parser.h"
#include "platform/sql/writer.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace sql {

QByteArray StoreArguments(const ColumnType& type, const QString& table, const QString& column) {
    QByteArray name = (table + u'.' + column).toUtf8();
    return ", " + type.Code() + ", '" + name.replace("'", "''") + "'";
}

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

// A literal's value; nothing for what has to be computed.
std::optional<QVariant> LiteralOf(const Expr& expr) {
    switch (expr.kind) {
        case Expr::Kind::Null:
            return QVariant();
        case Expr::Kind::Text:
            return ToQString(expr.text);
        case Expr::Kind::Number: {
            bool whole = false;
            const qlonglong number = ToQString(expr.text).toLongLong(&whole);
            return whole ? QVariant(number) : QVariant(ToQString(expr.text).toDouble());
        }
        default:
            return std::nullopt;
    }
}

class ChangeWriter {
public:
    ChangeWriter(const Schema& schema, Translation& translation)
        : translation_(translation), writer_(schema), names_(writer_.KnownNames()) {}

    void Write(const Insert& insert);
    void Write(const Update& update);
    void Write(const Delete& deletion);
    void WriteInto(const Query& query);

private:
    // A column that something is stored in.
    struct Target {
        QString table;
        QString name;
        ColumnType type;
        bool required = false;  // the engine would make up a value in the place of Null
    };

    TableInfo TableToChange(std::string_view name) const;
    Target TargetOf(const TableInfo& table, std::string_view column) const;
    std::vector<Target> TargetsOf(const TableInfo& table, const Insert& insert);
    void Finish();
    void WriteStored(const Target& target, const Expr& value);
    void WriteLiteral(const Target& target, const QVariant& value);
    template <typename Value>
    void WriteConversion(const Target& target, Type from, Value value);
    void WriteRows(const std::vector<Target>& targets, const Query& query);
    void WriteJoinedUpdate(const Update& update);
    const Source* SourceOf(const Source& source, const Assignment& assignment) const;
    QStringList RowKey(const TableInfo& table) const;
    void WriteRowKey(const QStringList& key, std::string_view table);

    Translation& translation_;
    Writer writer_;
    Names& names_;
};

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

ChangeWriter::Target ChangeWriter::TargetOf(const TableInfo& table, std::string_view column) const {
    const ColumnInfo* known = table.Column(column);
    if (!known) {
        if (!table.columns.isEmpty()) {
            Throw(Failure::UnknownColumn, ToQString(column));
        }
        return {table.name, ToQString(column), ColumnType::OfDeclaration({})};
    }
    return {table.name, known->name, ColumnType::OfDeclaration(known->declaredType),
            known == table.RowNumber() && !table.numbersRows};
}

void ChangeWriter::WriteLiteral(const Target& target, const QVariant& value) {
    QVariant kept;
    try {
        kept = target.type.Store(value);
    } catch (const Erro& erro) {
        throw Erro(erro.Number(), erro.Description() + u' ' + target.name);
    }
    if (convert::IsNull(kept) && target.required) {
        Throw(Failure::NotNull, target.table + u'.' + target.name);
    }
    if (convert::IsNull(kept)) {
        writer_.Raw("NULL");
    } else if (IsText(kept)) {
        writer_.Text(kept.toString().toStdString());
    } else if (kept.typeId() == QMetaType::Double) {
        writer_.Raw(QByteArray::number(kept.toDouble(), 'g', 17).toStdString());
    } else {
        writer_.Raw(std::to_string(kept.toLongLong()));
    }
}

// `value` writes what is stored, of a type known or not; true: as a text.
template <typename Value>
void ChangeWriter::WriteConversion(const Target& target, Type from, Value value) {
    const bool text = target.type.Reads() == Type::Text;
    const bool asItIs = !target.required && (!target.type.Converts() || from == Type::Null ||
                                             (text && from == Type::Text && !target.type.Length()));
    if (asItIs) {
        value(text);
        return;
    }
    writer_.Raw(target.required ? "dao_storekey(" : "dao_store(");
    value(text);
    writer_.Raw(StoreArguments(target.type, target.table, target.name).toStdString());
    writer_.Raw(")");
}

void ChangeWriter::WriteStored(const Target& target, const Expr& value) {
    if (const std::optional<QVariant> literal = LiteralOf(value)) {
        WriteLiteral(target, *literal);
        return;
    }
    WriteConversion(target, names_.TypeOf(value), [&](bool text) {
        if (text) {
            writer_.TextValue(value);
        } else {
            writer_.Value(value);
        }
    });
}

// The columns that an INSERT names or means. A key that the engine would make up must be there.
std::vector<ChangeWriter::Target> ChangeWriter::TargetsOf(const TableInfo& table,
                                                          const Insert& insert) {
    std::vector<Target> targets;
    for (const std::string_view column : insert.columns) {
        targets.push_back(TargetOf(table, column));
    }
    if (targets.empty() && insert.query) {
        // Without a list, the columns of a query are matched by name, not by place.
        for (const ResultColumn& column : names_.ColumnsOf(*insert.query)) {
            targets.push_back(TargetOf(table, column.name.toStdString()));
        }
        if (targets.empty()) {
            Throw(Failure::NotSupported, table.name);
        }
    } else if (targets.empty()) {
        for (const ColumnInfo& column : table.columns) {
            targets.push_back(TargetOf(table, column.name.toStdString()));
        }
    }
    const ColumnInfo* key = table.numbersRows ? nullptr : table.RowNumber();
    if (key && std::none_of(targets.begin(), targets.end(),
                            [](const Target& target) { return target.required; })) {
        Throw(Failure::NotNull, table.name + u'.' + key->name);
    }
    return targets;
}

void ChangeWriter::Write(const Insert& insert) {
    const TableInfo table = TableToChange(insert.table);
    const std::vector<Target> targets = TargetsOf(table, insert);
    writer_.NoteTable(insert.table);
    writer_.Raw("INSERT INTO ");
    writer_.Name(table.name);
    const bool listed = !insert.columns.empty() || insert.query;
    for (std::size_t i = 0; listed && i < targets.size(); ++i) {
        writer_.Raw(i ? ", " : " (");
        writer_.Name(targets[i].name);
    }
    writer_.Raw(listed ? ") " : " ");
    if (insert.query) {
        WriteRows(targets, *insert.query);
        Finish();
        return;
    }
    if (!targets.empty() && targets.size() != insert.values.size()) {
        Throw(Failure::ValueCount);
    }
    writer_.Raw("VALUES (");
    for (std::size_t i = 0; i < insert.values.size(); ++i) {
        writer_.Raw(i ? ", " : "");
        if (targets.empty()) {
            writer_.Value(*insert.values[i]);
        } else {
            WriteStored(targets[i], *insert.values[i]);
        }
    }
    writer_.Raw(")");
    Finish();
}

// The rows of a query, each value made what its column keeps.
void ChangeWriter::WriteRows(const std::vector<Target>& targets, const Query& query) {
    const std::vector<ResultColumn>& columns = names_.ColumnsOf(query);
    if (!columns.empty() && columns.size() != targets.size()) {
        Throw(Failure::ValueCount);
    }
    for (std::size_t i = 0; i < targets.size(); ++i) {
        writer_.Raw(i ? ", " : "WITH dao_rows (");
        writer_.Name("c" + std::to_string(i));
    }
    writer_.Raw(") AS (");
    writer_.WriteQuery(query);
    writer_.Raw(") ");
    for (std::size_t i = 0; i < targets.size(); ++i) {
        writer_.Raw(i ? ", " : "SELECT ");
        const Type from = i < columns.size() ? columns[i].type : Type::Unknown;
        WriteConversion(targets[i], from, [&](bool text) {
            const bool date = text && from == Type::Date;
            writer_.Raw(date ? "dao_datetext(" : "");
            writer_.Name("c" + std::to_string(i));
            writer_.Raw(date ? ")" : "");
        });
    }
    writer_.Raw(" FROM dao_rows");
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

void ChangeWriter::WriteRowKey(const QStringList& key, std::string_view table) {
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
        WriteRowKey({key.at(i)}, table.name.toStdString());
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
    WriteRowKey(key, table.name.toStdString());
    writer_.Raw(") IN (SELECT ");
    WriteRowKey(key, target->Alias());
    writer_.Raw(" FROM ");
    writer_.WriteSource(*deletion.from);
    writer_.WriteWhere(deletion.where);
    writer_.Raw(")");
    Finish();
}

// How a column of a new table is declared that takes the values of a query's column.
QByteArray DeclarationFor(const ResultColumn& column) {
    const auto declared = [&](const char* type) {
        return ColumnType::OfDialect({type, {}}).Declaration();
    };
    if (!column.declared.isEmpty()) {
        const ColumnType type = ColumnType::OfDeclaration(column.declared);
        const bool text = type.Reads() == Type::Text;
        return column.declared.toUtf8() +
               (text ? QByteArray(collation::Clause.data(), collation::Clause.size())
                     : QByteArray());
    }
    switch (column.type) {
        case Type::Number:
            return "NUMERIC";
        case Type::Date:
            return declared("DATETIME");
        case Type::Text:
            return declared("MEMO");
        default:
            return QByteArray(collation::Clause.data(),
                              collation::Clause.size());  // harmless on numbers, needed on texts
    }
}

// SELECT ... INTO: the engine's own form of it would lose types and collation.
void ChangeWriter::WriteInto(const Query& query) {
    Select& select = *query.arms.front().select;
    const std::string_view table = std::exchange(select.into, {});
    if (query.arms.size() > 1) {
        Throw(Failure::NotSupported, u"INTO, UNION"_s);
    }
    const std::vector<ResultColumn>& columns = names_.ColumnsOf(query);
    if (columns.empty()) {
        Throw(Failure::NotSupported, u"INTO "_s + ToQString(table));
    }
    writer_.NoteTable(table);
    translation_.defined = ToQString(table).toUpper();
    writer_.Raw("CREATE TABLE ");
    writer_.Name(table);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        writer_.Raw(i ? ", " : " (");
        writer_.Name(columns[i].name);
        writer_.Raw(" ");
        writer_.Raw(DeclarationFor(columns[i]).toStdString());
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

Translation WriteCommand(const Command& command, const Schema& schema, Accents accents) {
    Translation translation;
    translation.kind = Translation::Kind::Change;
    ChangeWriter changes(schema, translation);
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
