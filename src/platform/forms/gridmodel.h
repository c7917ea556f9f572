#pragma once

#include "platform/dao/dao.h"

#include <QAbstractTableModel>
#include <QPointer>

#include <vector>

namespace forms {

// The rows of a recordset as a grid's view wants them. Rows that are read later are announced in
// growing portions, not as they come: each announcement costs the view time that grows with the
// number of rows it has.
class GridModel : public QAbstractTableModel {
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    void AddColumn(const QString& field, const QString& title, Qt::Alignment alignment);

    // Takes the place of the former one; the rows that are read already are there at once.
    void SetRecordset(dao::Recordset* recordset);

    // One value as the recordset has it, announced or not. Null beyond its columns; throws what
    // Recordset::Value does.
    QVariant Value(qint64 row, int column) const;
    dao::Recordset* Records() const { return recordset_; }

    // Announces what has been read: all of it, or only when it is worth it.
    void Grow(bool all);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    // Of a column its title, of a row the whole of it: nobody sees them, assistive technology
    // reads them.
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    struct Column {
        QString field;
        QString title;
        Qt::Alignment alignment;
        int index = -1;  // in the recordset; -1: it has no such field
    };

    QString Sentence(int row) const;  // each cell behind its column's title, empty ones left out

    QPointer<dao::Recordset> recordset_;
    std::vector<Column> columns_;
    int rows_ = 0;
};

}  // namespace forms
