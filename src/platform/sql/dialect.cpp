#include "platform/sql/dialect.h"

#include <algorithm>

namespace sql {

const ColumnInfo* TableInfo::Column(const QString& wanted) const {
    const auto column = std::find_if(columns.begin(), columns.end(), [&](const ColumnInfo& known) {
        return known.name.compare(wanted, Qt::CaseInsensitive) == 0;
    });
    return column == columns.end() ? nullptr : &*column;
}

}  // namespace sql
