#pragma once

#include "platform/forms/datasource.h"

#include <QTableView>

namespace forms {

// A read-only grid bound by column name to a data source. No header row, no record selector, fixed
// column widths, the whole current row highlighted, a line between rows, scroll bars as needed. The
// grid's current row is the recordset's current row, whichever of them moves.
class BoundGrid : public QTableView {
    Q_OBJECT

public:
    BoundGrid(const QString& name, const QString& accessibleName, QWidget* parent);
    ~BoundGrid() override;

    // Width in design pixels.
    void AddColumn(const QString& field, double width, Qt::Alignment alignment = Qt::AlignLeft);
    void SetDataSource(DataSource* source);

    int VisibleRows() const;  // rows wholly or partly in view
    dao::Bookmark CurrentBookmark() const;
    void ReBind();
    void Scroll(int columns, qint64 rows);  // moves the view, not the current row
    QString Tag;

Q_SIGNALS:
    // After the current row or column became another one, a rebind included; `last` is the previous
    // row's bookmark.
    void RowColChange(const dao::Bookmark& last, int lastColumn);
    void DblClick();  // on a row
    void MouseMove();

protected:
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    struct Private;
    std::unique_ptr<Private> d_;
};

}  // namespace forms
