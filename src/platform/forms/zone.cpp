#include "platform/forms/controls.h"
#include "platform/forms/form.h"

#include <QAccessible>
#include <QAccessibleWidget>
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

    QStringList actionNames() const override { return {pressAction()}; }

    void doAction(const QString& action) override {
        // The keyboard and the mouse do not get past a modal window either.
        if (action == pressAction() && zone_->isEnabled() && zone_->isVisible() &&
            !IsBlocked(*zone_->window())) {
            // Queued: what a click does may take long or open a box, and the caller waits.
            QMetaObject::invokeMethod(
                zone_, [zone = QPointer(zone_)] { Press(zone); }, Qt::QueuedConnection);
        }
    }

private:
    static void Press(const QPointer<ClickZone>& zone) {
        Q_EMIT zone->MouseDown();
        if (zone) {
            Q_EMIT zone->Click();
        }
    }

    ClickZone* zone_;
};

class AccessibleText : public QAccessibleWidget {
public:
    explicit AccessibleText(Label* label)
        : QAccessibleWidget(label, QAccessible::StaticText), label_(label) {}

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? label_->Text() : QAccessibleWidget::text(kind);
    }

private:
    Label* label_;
};

QAccessibleInterface* MakeAccessible(const QString&, QObject* object) {
    if (auto* zone = qobject_cast<ClickZone*>(object)) {
        return new AccessibleButton(zone);
    }
    if (auto* label = qobject_cast<Label*>(object)) {
        return new AccessibleText(label);
    }
    if (auto* picture = qobject_cast<Picture*>(object)) {
        return new QAccessibleWidget(picture, QAccessible::Graphic);
    }
    return nullptr;
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

void Zone::hideEvent(QHideEvent* event) {
    pressed_ = pressedBefore_ = false;
    QWidget::hideEvent(event);
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

void ClickZone::paintEvent(QPaintEvent*) {
    if (artwork_) {
        QPainter painter(this);
        artwork_->Paint(painter, rect(), part_, Artwork::State::Rest);
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
