#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "platform/forms/theme.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace forms {
namespace {

class AccessibleButton : public QAccessibleWidget {
public:
    explicit AccessibleButton(ClickZone* zone)
        : QAccessibleWidget(zone, QAccessible::Button), zone_(zone) {}

    QAccessible::Role role() const override {
        return zone_->Ticked() ? QAccessible::CheckBox : QAccessible::Button;
    }

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = zone_->Ticked().has_value();
        state.checked = zone_->Ticked().value_or(false);
        return state;
    }

    QStringList actionNames() const override { return {pressAction()}; }

    void doAction(const QString& action) override {
        // The keyboard and the mouse do not get past a modal window either.
        if (action == pressAction() && zone_->isEnabled() && zone_->isVisible() &&
            !IsBlocked(*zone_->window())) {
            // Queued: what a click does may take long or open a box, and the caller waits.
            QMetaObject::invokeMethod(
                zone_, [zone = zone_] { zone->Press(); }, Qt::QueuedConnection);
        }
    }

private:
    ClickZone* zone_;
};

QAccessibleInterface* MakeAccessible(const QString&, QObject* object) {
    if (auto* zone = qobject_cast<ClickZone*>(object)) {
        return new AccessibleButton(zone);
    }
    if (auto* label = qobject_cast<Label*>(object)) {
        return new QAccessibleWidget(label, QAccessible::StaticText);
    }
    if (auto* picture = qobject_cast<Picture*>(object)) {
        return new QAccessibleWidget(picture, QAccessible::Graphic);
    }
    return nullptr;
}

// Two lines, one dark and one light: seen on light buttons and on dark ones.
void PaintFocusRing(QPainter& painter, const QRectF& box) {
    constexpr qreal Corner = 3;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(CurrentTheme().focus, 2));
    painter.drawRoundedRect(box.adjusted(1, 1, -1, -1), Corner, Corner);
    painter.setPen(CurrentTheme().base);
    painter.drawRoundedRect(box.adjusted(2.5, 2.5, -2.5, -2.5), Corner - 1, Corner - 1);
}

}  // namespace

Zone::Zone(const QString& name, QWidget* parent) : QWidget(parent) {
    [[maybe_unused]] static const bool installed = [] {
        QAccessible::installFactory(MakeAccessible);
        return true;
    }();
    setObjectName(name);
    setAttribute(Qt::WA_NoMousePropagation);
    setMouseTracking(true);
}

void Zone::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    pressed_ = pressedBefore_ = true;
    Q_EMIT MouseDown();
}

void Zone::mouseDoubleClickEvent(QMouseEvent* event) {
    // The first half went to another screen that stood here: not meant for this one.
    if (event->button() != Qt::LeftButton || !pressedBefore_) {
        return;
    }
    if (fastClicks_) {
        mousePressEvent(event);
        return;
    }
    Q_EMIT DblClick();
}

void Zone::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !std::exchange(pressed_, false)) {
        return;
    }
    if (rect().contains(event->position().toPoint())) {
        Q_EMIT Click();
    }
}

void Zone::mouseMoveEvent(QMouseEvent*) {
    Q_EMIT MouseMove();
}

void Zone::hideEvent(QHideEvent*) {
    pressed_ = pressedBefore_ = false;
}

ClickZone::ClickZone(const QString& name, const QString& accessibleName, QWidget* parent)
    : Zone(name, parent) {
    setAccessibleName(accessibleName);
    setCursor(Qt::PointingHandCursor);
    SetFastClicks();
}

void ClickZone::SetDrawing(std::shared_ptr<Artwork> artwork, const QRect& part) {
    artwork_ = std::move(artwork);
    part_ = part;
    update();
}

void ClickZone::SetTicked(bool ticked) {
    if (ticked_ == ticked) {
        return;
    }
    ticked_ = ticked;
    QAccessible::State changed;
    changed.checked = true;
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
}

void ClickZone::Press() {
    const QPointer<ClickZone> self(this);
    Q_EMIT MouseDown();
    if (self) {
        Q_EMIT Click();
    }
}

void ClickZone::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->isAutoRepeat() || !(event->key() == Qt::Key_Space || (enter && !ticked_))) {
        Zone::keyPressEvent(event);
        return;
    }
    Press();
}

void ClickZone::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (artwork_) {
        artwork_->Paint(painter, rect(), part_, Artwork::State::Rest);
    }
    if (!hasFocus()) {
        return;
    }
    if (ticked_) {
        // As under a text box: a ring would run through the painted box.
        painter.fillRect(QRect(0, height() - 2, width(), 2), CurrentTheme().focus);
    } else {
        PaintFocusRing(painter, rect());
    }
}

LitPicture::LitPicture(const QString& name, std::shared_ptr<Artwork> artwork, QWidget* parent,
                       QPoint origin)
    : QWidget(parent), artwork_(std::move(artwork)), origin_(origin) {
    setObjectName(name);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void LitPicture::FixSource() {
    fixed_ = Source();
}

QRect LitPicture::Source() const {
    return fixed_.isEmpty() ? QRect(pos() - origin_, size()) : fixed_;
}

void LitPicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    artwork_->Paint(painter, rect(), Source(), Artwork::State::Lit);
}

Panel::Panel(const QString& name, const QString& artwork, QWidget* parent) : Zone(name, parent) {
    if (!artwork.isEmpty()) {
        artwork_ = Artwork::Load(artwork);
    }
    setFocusPolicy(Qt::ClickFocus);
}

void Panel::paintEvent(QPaintEvent*) {
    if (!artwork_) {
        return;
    }
    QPainter painter(this);
    artwork_->Paint(painter, QRect(QPoint(), artwork_->Size()), QRect(QPoint(), artwork_->Size()),
                    Artwork::State::Rest);
}

void Panel::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    Q_EMIT GotFocus();
}

void Panel::keyPressEvent(QKeyEvent* event) {
    Q_EMIT KeyDown(event->key());
}

}  // namespace forms
