#pragma once

#include "platform/sql/writer.h"

#include <optional>
#include <vector>

namespace sql {

// Writes the commands that change rows.
class ChangeWriter {
public:
    ChangeWriter(const Schema& schema, Translation& translation)
        : translation_(translation), writer_(schema), names_(writer_.KnownNames()) {}

    // See Writer::Lift; for a change that becomes one statement.
    void Lift() { writer_.Lift(translation_.parameters); }

    void Write(const Insert& insert);
    void Write(const Update& update);
    void Write(const Delete& deletion);
    void WriteInto(const Query& query);

private:
    TableInfo TableToChange(std::string_view name) const;
    Target TargetOf(const TableInfo& table, QAnyStringView column) const;
    std::vector<Target> TargetsOf(const TableInfo& table, const Insert& insert);
    void Finish();
    void WriteStored(const Target& target, const Expr& value);
    void WriteLiteral(const QVariant& kept);
    template <typename Value>
    void WriteConversion(const Target& target, Type from, Value value);
    void WriteRows(const std::vector<Target>& targets, const Query& query);
    void WriteJoinedUpdate(const Update& update);
    const Source* SourceOf(const Source& source, const Assignment& assignment) const;
    QStringList RowKey(const TableInfo& table) const;
    void WriteRowKey(const QStringList& key, QByteArrayView table);

    Translation& translation_;
    Writer writer_;
    Names& names_;
};

}  // namespace sql
