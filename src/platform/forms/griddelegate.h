#pragma once

#include <QStyledItemDelegate>

namespace forms {

// Paints a cell of a bound grid: text elided, the current row on the same ground whether the grid
// has the keyboard or not, a line under each row. What was elided comes up as a tool tip.
class GridDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
};

}  // namespace forms
