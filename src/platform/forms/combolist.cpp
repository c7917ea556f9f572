#include "platform/erro.h"
#include "platform/forms/chevron.h"
#include "platform/forms/controls.h"
#include "platform/forms/elide.h"
#include "platform/forms/theme.h"
#include "platform/forms/tip.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QPainter>
#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

namespace forms {
namespace {

constexpr int ArrowBreadth = 16;
constexpr int VisibleRows = 14;
constexpr int WidestPopup = 480;

}  // namespace

ComboList::ComboList(const QString& name, const QString& accessibleName, QWidget* parent)
    : QComboBox(parent) {
    setObjectName(name);
    setAccessibleName(accessibleName);
    // On Unix the toolkit calls a list by the row that it shows, so that the name would be lost.
    setAccessibleDescription(accessibleName);
    setAttribute(Qt::WA_NoMousePropagation);
    // The toolkit's own policy takes the keyboard by the wheel, too.
    setFocusPolicy(Qt::StrongFocus);
    setMaxVisibleItems(VisibleRows);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    connect(this, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (index < 0) {
            return;
        }
        announced_ = true;
        Q_EMIT Click();
    });
    // Comes after the change, if there was one, whenever the user picks a row.
    connect(this, &QComboBox::activated, this, [this] {
        if (!std::exchange(announced_, false)) {
            Q_EMIT Click();
        }
    });
}

void ComboList::AddItem(const QString& text, qint32 itemData) {
    // The toolkit selects the first row of an empty list by itself.
    const QSignalBlocker quiet(this);
    const int selected = currentIndex();
    addItem(text, itemData);
    setCurrentIndex(selected);
}

void ComboList::SetListIndex(int index) {
    if (index < -1 || index >= count()) {
        throw Erro(Erro::SubscriptOutOfRange);
    }
    setCurrentIndex(index);
    announced_ = false;
}

qint32 ComboList::ItemData(int index) const {
    if (index < 0 || index >= count()) {
        throw Erro(Erro::SubscriptOutOfRange);
    }
    return itemData(index).toInt();
}

QSize ComboList::sizeHint() const {
    return {QComboBox::sizeHint().width(), CurrentTheme().boxPixels};
}

void ComboList::showPopup() {
    // Wide enough for the longest row, within reason; the toolkit makes it as wide as the box.
    int widest = 0;
    for (int i = 0; i < count(); ++i) {
        widest = std::max(widest, fontMetrics().horizontalAdvance(itemText(i)));
    }
    constexpr int BesideTheText = 20;  // margins of list and row
    const int wanted = widest + CurrentTheme().scrollPixels + BesideTheText;
    view()->setMinimumWidth(std::clamp(wanted, width(), std::max(width(), WidestPopup)));
    // The toolkit made the list before it knew that no arrows stand at its ends, and sets both anew
    // with each style.
    view()->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    view()->setTextElideMode(Qt::ElideRight);
    QComboBox::showPopup();
}

void ComboList::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    option.currentText = ElidedLine(currentText(), fontMetrics(), width() - ArrowBreadth - 8);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
    if (currentText().isEmpty()) {
        // An empty row says nothing of what there is to choose.
        painter.setPen(CurrentTheme().disabledText);
        painter.drawText(
            rect().adjusted(6, 0, -ArrowBreadth - 2, 0), Qt::AlignVCenter,
            fontMetrics().elidedText(accessibleName(), Qt::ElideRight, width() - ArrowBreadth - 8));
    }
    PaintChevron(
        painter, {width() - (ArrowBreadth + 1) / 2.0, (height() + 1) / 2.0},
        palette().color(isEnabled() ? QPalette::Normal : QPalette::Disabled, QPalette::ButtonText));
}

void ComboList::wheelEvent(QWheelEvent* event) {
    // A wheel turned while the pointer merely passes must not run a search.
    if (hasFocus()) {
        QComboBox::wheelEvent(event);
    } else {
        event->ignore();
    }
}

bool ComboList::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip || !toolTip().isEmpty()) {
        return QComboBox::event(event);
    }
    const bool cut = fontMetrics().horizontalAdvance(currentText()) > width() - ArrowBreadth - 8;
    const auto* help = static_cast<QHelpEvent*>(event);
    ShowTip(help->globalPos(), cut ? currentText() : QString(), this);
    return true;
}

}  // namespace forms
