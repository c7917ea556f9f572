#include "platform/forms/gridmodel.h"

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

// Blanks in front right-align a stored item number, digit below digit. In a proportional letter a
// blank is narrower than a digit; the figure space is as wide.
QString WithWideBlanks(QString text) {
    for (qsizetype i = 0; i < text.size() && text.at(i) == u' '; ++i) {
        text[i] = QChar(0x2007);
    }
    return text;
}

}  // namespace

namespace forms {
namespace {

constexpr qint64 SmallestPortion = 256;

int RowsOf(const dao::Recordset* recordset) {
    if (!recordset) {
        return 0;
    }
    return static_cast<int>(
        std::min<qint64>(recordset->RecordCount(), std::numeric_limits<int>::max()));
}

}  // namespace

void GridModel::AddColumn(const QString& field, const QString& title, Qt::Alignment alignment) {
    const int at = columnCount();
    beginInsertColumns({}, at, at);
    columns_.push_back({field, title, alignment, recordset_ ? recordset_->FieldIndex(field) : -1});
    endInsertColumns();
}

void GridModel::SetRecordset(dao::Recordset* recordset) {
    beginResetModel();
    recordset_ = recordset;
    rows_ = RowsOf(recordset);
    for (Column& column : columns_) {
        column.index = recordset ? recordset->FieldIndex(column.field) : -1;
    }
    endResetModel();
}

QVariant GridModel::Value(qint64 row, int column) const {
    const int index = columns_.at(static_cast<std::size_t>(column)).index;
    return index < 0 || !recordset_ ? QVariant() : recordset_->Value(row, index);
}

void GridModel::Grow(bool all) {
    const int available = RowsOf(recordset_);
    const qint64 more = available - rows_;
    if (more <= 0 || (!all && more < std::max<qint64>(SmallestPortion, rows_ / 4))) {
        return;
    }
    beginInsertRows({}, rows_, available - 1);
    rows_ = available;
    endInsertRows();
}

int GridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int GridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || !recordset_) {
        return {};
    }
    const Column& column = columns_[static_cast<std::size_t>(index.column())];
    switch (role) {
        case Qt::DisplayRole:
            return column.index < 0 ? QString()
                                    : WithWideBlanks(recordset_->Text(index.row(), column.index));
        case Qt::AccessibleDescriptionRole:
            return Sentence(index.row());
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(column.alignment | Qt::AlignVCenter);
        default:
            return {};
    }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole || section < 0) {
        return {};
    }
    if (orientation == Qt::Horizontal) {
        return section < columnCount() ? columns_[static_cast<std::size_t>(section)].title
                                       : QString();
    }
    return section < rowCount() ? Sentence(section) : QString();
}

QString GridModel::Sentence(int row) const {
    QStringList parts;
    for (const Column& column : columns_) {
        const QString text =
            column.index < 0 ? QString() : recordset_->Text(row, column.index).trimmed();
        if (!text.isEmpty()) {
            parts += column.title + u": "_s + text;
        }
    }
    return parts.join(u", "_s);
}

}  // namespace forms
