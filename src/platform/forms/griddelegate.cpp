#include "platform/forms/griddelegate.h"

#include "platform/forms/theme.h"
#include "platform/forms/tip.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QPainter>

namespace forms {
namespace {

// The text stands right below that of a box over the column.
constexpr int Margin = 5;

QString TextOf(const QModelIndex& index) {
    return index.data().toString().replace(u'\n', u' ');
}

QRect TextRect(const QRect& cell) {
    return cell.adjusted(Margin, 0, -Margin, -1);
}

}  // namespace

void GridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    const Theme& theme = CurrentTheme();
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    painter->fillRect(option.rect, selected ? theme.selection : theme.base);
    painter->fillRect(QRect(option.rect.left(), option.rect.bottom(), option.rect.width(), 1),
                      theme.rowLine);

    const QRect place = TextRect(option.rect);
    painter->setPen(selected ? theme.selectionText : theme.text);
    painter->drawText(
        place, index.data(Qt::TextAlignmentRole).toInt() | Qt::TextSingleLine | Qt::TextDontClip,
        option.fontMetrics.elidedText(TextOf(index), Qt::ElideRight, place.width()));
}

bool GridDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                             const QStyleOptionViewItem& option, const QModelIndex& index) {
    if (event->type() != QEvent::ToolTip) {
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    }
    const QString text = TextOf(index);
    const bool cut =
        option.fontMetrics.horizontalAdvance(text) > TextRect(view->visualRect(index)).width();
    ShowTip(event->globalPos(), cut ? text : QString(), view);
    return true;
}

}  // namespace forms
