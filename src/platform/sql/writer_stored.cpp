// What is stored: VALUES, rows of a query, and tables made of them.

#include "platform/convert.h"
#include "platform/sql/changewriter.h"
#include "platform/sql/collation.h"
#include "platform/sql/errors.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace sql {

QByteArray StoreArguments(const ColumnType& type, const QString& table, const QString& column) {
    QByteArray name = (table + u'.' + column).toUtf8();
    return ", " + type.Code() + ", '" + name.replace("'", "''") + "'";
}

namespace {

// A literal's value; nothing for what has to be computed.
std::optional<QVariant> LiteralOf(const Expr& expr) {
    switch (expr.kind) {
        case Expr::Kind::Null:
            return QVariant();
        case Expr::Kind::Text:
            return ToQString(expr.text);
        case Expr::Kind::Number:
            return NumberOf(ToQString(expr.text));
        default:
            return std::nullopt;
    }
}

// How a column of a new table is declared that takes the values of a query's column.
QByteArray DeclarationFor(const ResultColumn& column) {
    const auto declared = [&](const QString& type) {
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
            return declared(u"DATETIME"_s);
        case Type::Text:
            return declared(u"MEMO"_s);
        default:
            return QByteArray(collation::Clause.data(),
                              collation::Clause.size());  // harmless on numbers, needed on texts
    }
}

}  // namespace

Target ChangeWriter::TargetOf(const TableInfo& table, QAnyStringView column) const {
    const ColumnInfo* known = table.Column(column);
    if (!known) {
        if (!table.columns.isEmpty()) {
            Throw(Failure::UnknownColumn, column.toString());
        }
        return {table.name, column.toString(), ColumnType::OfDeclaration({})};
    }
    return {table.name, known->name, ColumnType::OfDeclaration(known->declaredType),
            known == table.RowNumber() && !table.numbersRows};
}

void ChangeWriter::WriteLiteral(const QVariant& kept) {
    if (convert::IsNull(kept)) {
        writer_.Raw("NULL");
    } else if (IsText(kept)) {
        const QByteArray text = kept.toString().toUtf8();
        writer_.Text({text.constData(), static_cast<std::size_t>(text.size())});
    } else if (kept.typeId() == QMetaType::Double) {
        writer_.Raw(QByteArray::number(kept.toDouble(), 'g', 17));
    } else {
        writer_.Raw(QByteArray::number(kept.toLongLong()));
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
    writer_.Raw(StoreArguments(target.type, target.table, target.name));
    writer_.Raw(")");
}

void ChangeWriter::WriteStored(const Target& target, const Expr& value) {
    if (const std::optional<QVariant> literal = LiteralOf(value)) {
        const QVariant kept = target.Kept(*literal);
        if (!writer_.WriteLifted(value, target)) {
            WriteLiteral(kept);
        }
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
std::vector<Target> ChangeWriter::TargetsOf(const TableInfo& table, const Insert& insert) {
    std::vector<Target> targets;
    for (const std::string_view column : insert.columns) {
        targets.push_back(TargetOf(table, column));
    }
    if (targets.empty() && insert.query) {
        // Without a list, the columns of a query are matched by name, not by place.
        for (const ResultColumn& column : names_.ColumnsOf(*insert.query)) {
            targets.push_back(TargetOf(table, column.name));
        }
        if (targets.empty()) {
            Throw(Failure::NotSupported, table.name);
        }
    } else if (targets.empty()) {
        for (const ColumnInfo& column : table.columns) {
            targets.push_back(TargetOf(table, column.name));
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
        writer_.Raw(DeclarationFor(columns[i]));
    }
    writer_.Raw(")");
    Finish();
    writer_.Raw("INSERT INTO ");
    writer_.Name(table);
    writer_.Raw(" ");
    writer_.WriteQuery(query);
    Finish();
}

}  // namespace sql
