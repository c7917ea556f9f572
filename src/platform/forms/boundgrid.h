#pragma once

#include "platform/forms/datasource.h"

#include <QTableView>

namespace forms {

class GridModel;
class ListExport;

// A read-only grid bound by column name to a data source. No header row, no record selector, fixed
// column widths, the whole current row highlighted, a line between rows, scroll bars as needed. The
// grid's current row is the recordset's current row, whichever of them moves.
class BoundGrid : public QTableView {
    Q_OBJECT

public:
    BoundGrid(const QString& name, const QString& accessibleName, QWidget* parent);
    ~BoundGrid() override;
    QString Tag;

    // `title` is what assistive technology calls the column, and what it is called where the list
    // is copied or saved. Width in design pixels. Widths are rounded so that the columns' edges,
    // not the columns, are nearest to where they should be; the last column goes to the grid's
    // edge.
    void AddColumn(const QString& field, const QString& title, double width,
                   Qt::Alignment alignment = Qt::AlignLeft);
    void SetDataSource(DataSource* source);

    // How its rows leave it, by keys and menu.
    ListExport& Export() { return *export_; }

    // Stands in the grid while it is empty: why there is nothing.
    void SetEmptyText(const QString& text);

    int VisibleRows() const;                // rows wholly or partly in view
    dao::Bookmark CurrentBookmark() const;  // equal to none of any recordset without a current row
    void ReBind();                          // shows the same recordset anew; no row change
    void Scroll(int columns, qint64 rows);  // moves the view, not the current row

Q_SIGNALS:
    // After the current row or column became another one, by the user or through the recordset, and
    // after a refresh of the data source even if there is no row; `last` is the previous row's
    // bookmark, `lastColumn` the previous column, -1 for none.
    void RowColChange(const dao::Bookmark& last, int lastColumn);
    void DblClick();  // on a row, or anywhere in an empty grid
    // All rows are there; `text` says how many, or why there is none. It also is the grid's
    // accessible description.
    void Counted(const QString& text);
    void MouseMove();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;
    void keyboardSearch(const QString&) override {}  // would go through every row

private:
    void Bind();
    void FollowRecordset();
    void ReadAhead(qint64 rows);
    void TellSource();
    void Count();
    dao::Recordset* Records() const;

    DataSource* source_ = nullptr;
    QString emptyText_;
    GridModel* model_ = nullptr;
    ListExport* export_ = nullptr;
    double columnEdge_ = 0;
    dao::Bookmark bookmark_;
    int column_ = -1;
    bool binding_ = false;
    bool pressedBefore_ = false;
};

}  // namespace forms
