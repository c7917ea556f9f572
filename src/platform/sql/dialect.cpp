#include "platform/sql/dialect.h"

#include "platform/sql/token.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace sql {

const ColumnInfo* TableInfo::Column(QAnyStringView wanted) const {
    const auto column = std::find_if(columns.begin(), columns.end(), [&](const ColumnInfo& known) {
        return SameName(known.name, wanted);
    });
    return column == columns.end() ? nullptr : &*column;
}

const ColumnInfo* TableInfo::RowNumber() const {
    const auto isKey = [](const ColumnInfo& column) { return column.primaryKey > 0; };
    const auto key = std::find_if(columns.begin(), columns.end(), isKey);
    const bool number = hasRowid && std::count_if(columns.begin(), columns.end(), isKey) == 1 &&
                        key->declaredType.compare("INTEGER"_L1, Qt::CaseInsensitive) == 0;
    return number ? &*key : nullptr;
}

}  // namespace sql
