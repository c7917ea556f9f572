#include "platform/forms/form.h"

#include "platform/forms/application.h"
#include "platform/forms/controls.h"
#include "platform/forms/datasource.h"
#include "platform/forms/owner.h"
#include "platform/forms/theme.h"

#include <QApplication>
#include <QCloseEvent>
#include <QEventLoop>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>
#include <QScopedValueRollback>
#include <QScreen>
#include <QScrollArea>
#include <QTimer>
#include <QWindow>

#include <algorithm>

namespace forms {
namespace {

QList<Form*>& LoadedForms() {
    static QList<Form*> forms;
    return forms;
}

// Forms in the order of their last activation, the latest first. Which form is active follows from
// what the program shows and hides, not from what the window system reports: that comes late, and
// also on the way back from another program.
QList<Form*>& ActivationOrder() {
    static QList<Form*> forms;
    return forms;
}

Form* active = nullptr;

// Whether another control lies over its middle.
bool IsCovered(const QWidget& control) {
    const QWidget* window = control.window();
    const QWidget* top = window->childAt(control.mapTo(window, control.rect().center()));
    return top && top != &control && !control.isAncestorOf(top);
}

Qt::WindowFlags FlagsOf(Form::Kind kind) {
    if (kind == Form::Kind::Dialog) {
        return Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
               Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint |
               Qt::MSWindowsFixedSizeDialogHint;
    }
    return Qt::Window | Qt::FramelessWindowHint | Qt::WindowMinimizeButtonHint;
}

}  // namespace

// Everything of the window that is no control: the drawing and the plain colour around it.
class Form::Backdrop : public Zone {
public:
    explicit Backdrop(Form* form) : Zone({}, form), form_(form) {
        setMinimumSize(form->designSize_);
    }
    QColor colour;

protected:
    void resizeEvent(QResizeEvent*) override {
        const QSize free = size() - form_->designSize_;
        form_->picture_->move(free.width() / 2, free.height() / 2);
    }

    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), colour);
        if (const auto& drawing = form_->background_) {
            const QRect whole(QPoint(), drawing->Size());
            drawing->Paint(painter, whole.translated(form_->picture_->pos()), whole,
                           Artwork::State::Rest);
        }
    }

private:
    Form* form_;
};

// On a screen too small for the picture the user reaches the rest with scroll bars: the toolkit
// enlarges evenly, but does not make smaller.
class Form::Surface : public QScrollArea {
public:
    Surface(Form* form, QWidget* backdrop) : QScrollArea(form) {
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
        setWidgetResizable(true);
        setWidget(backdrop);
    }

protected:
    void keyPressEvent(QKeyEvent* event) override { event->ignore(); }  // they are the form's
};

Form::Form(const QString& name, Kind kind, QSize designSize, const QString& artwork)
    : QWidget(nullptr, FlagsOf(kind)), kind_(kind), designSize_(designSize) {
    setObjectName(name);
    setWindowTitle(ProgramTitle());
    if (!artwork.isEmpty()) {
        background_ = Artwork::Load(artwork);
    }
    backdrop_ = new Backdrop(this);
    backdrop_->colour = kind == Kind::Screen ? CurrentTheme().surround : CurrentTheme().window;
    connect(backdrop_, &Zone::Click, this, &Form::Click);
    connect(backdrop_, &Zone::MouseMove, this, &Form::MouseMove);

    picture_ = new QWidget(backdrop_);
    picture_->setMouseTracking(true);
    picture_->resize(designSize);

    surface_ = new Surface(this, backdrop_);
    // Without this the toolkit would give the keyboard to the first box, and entering a box has
    // meaning on some screens.
    picture_->setFocus();
    if (kind != Kind::Screen) {
        setFixedSize(designSize);
    }
}

Form::~Form() {
    LoadedForms().removeAll(this);
    ActivationOrder().removeAll(this);
    if (active == this) {
        active = nullptr;
    }
}

QList<Form*> Form::Loaded() {
    return LoadedForms();
}

Form* Form::Find(const QString& name) {
    const auto& forms = LoadedForms();
    const auto it = std::find_if(forms.begin(), forms.end(),
                                 [&](const Form* form) { return form->Name() == name; });
    return it == forms.end() ? nullptr : *it;
}

Form* Form::Active() {
    return active && active->isVisible() ? active : nullptr;
}

void Form::EnsureLoaded() {
    if (loaded_ || unloading_) {
        return;
    }
    loaded_ = true;
    LoadedForms().append(this);
    try {
        Load();
    } catch (...) {
        loaded_ = false;
        unloading_ = true;
        LoadedForms().removeAll(this);
        deleteLater();
        throw;
    }
}

void Form::Show() {
    EnsureLoaded();
    if (!loaded_) {
        return;  // unloaded itself while loading
    }
    if (!isVisible()) {
        PlaceOnScreen();
    }
    setWindowState(windowState() & ~Qt::WindowMinimized);
    {
        const QScopedValueRollback guard(showing_, true);
        setVisible(true);
        raise();
        activateWindow();
    }
    for (DataSource* source : findChildren<DataSource*>()) {
        source->OpenIfPending();
    }
    BecomeActive();
}

void Form::ShowModal() {
    setWindowModality(Qt::ApplicationModal);
    QEventLoop loop;
    modalLoop_ = &loop;
    const QPointer<Form> self(this);
    Show();
    if (self && loaded_) {
        loop.exec(QEventLoop::DialogExec);
    }
    if (self) {
        modalLoop_ = nullptr;
    }
}

void Form::SetVisible(bool visible) {
    if (visible == isVisible()) {
        return;
    }
    if (visible) {
        Show();
        return;
    }
    const bool wasActive = Active() == this;
    hide();
    if (wasActive) {
        ActivateTheLast();
    }
}

void Form::Minimize() {
    showMinimized();
}

void Form::Unload() {
    if (unloading_) {
        return;
    }
    unloading_ = true;
    const bool wasLoaded = loaded_;
    if (wasLoaded) {
        Unloading();
    }
    loaded_ = false;
    LoadedForms().removeAll(this);
    const bool wasActive = Active() == this;
    ActivationOrder().removeAll(this);
    hide();
    deleteLater();
    if (modalLoop_) {
        modalLoop_->quit();
    }
    if (wasActive) {
        ActivateTheLast();
    }
}

void Form::ActivateTheLast() {
    active = nullptr;
    for (Form* form : ActivationOrder()) {
        if (form->isVisible()) {
            form->activateWindow();
            form->BecomeActive();
            return;
        }
    }
}

void Form::BecomeActive() {
    if (Active() == this) {
        return;
    }
    auto& order = ActivationOrder();
    order.removeAll(this);
    order.prepend(this);
    active = this;
    Activate();
}

void Form::PlaceOnScreen() {
    if (kind_ == Kind::Dialog) {
        PlaceOverActiveForm(*this);
        return;
    }
    const QScreen* place = screen();
    const QRect area = place->availableGeometry();
    if (kind_ == Kind::Splash) {
        move(area.center() - rect().center());
        return;
    }
    // Where panels of the desktop leave too little, the picture goes over them. The state alone
    // would do where a window manager runs; the geometry does where none does.
    const bool tight = area.width() < designSize_.width() || area.height() < designSize_.height();
    if (!isMaximized() && !isFullScreen()) {
        setGeometry(tight ? place->geometry() : area);
        setWindowState(windowState() | (tight ? Qt::WindowFullScreen : Qt::WindowMaximized));
    }
}

// The window takes another size in between: in design pixels it often ends at the one it had, and
// would keep its old surface.
void Form::PlaceAnew() {
    if (kind_ != Kind::Screen) {
        setFixedSize(designSize_ + QSize(1, 1));
        setFixedSize(designSize_);
        PlaceOnScreen();
        return;
    }
    setWindowState(windowState() & ~(Qt::WindowMaximized | Qt::WindowFullScreen));
    if (isVisible()) {
        resize(designSize_);
        PlaceOnScreen();
    }
}

// What is hidden is placed when it is shown.
void Form::PlaceAllAnew() {
    for (Form* form : Loaded()) {
        form->PlaceAnew();
    }
}

void Form::SetSurround(const QColor& colour) {
    backdrop_->colour = colour;
    backdrop_->update();
}

bool Form::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate && loaded_ && !showing_) {
        // Perhaps the user chose another one of the program's windows, perhaps it is late news of
        // what the program has changed again since: asked when all news are in.
        QTimer::singleShot(0, this, [this] {
            const QWidget* modal = QApplication::activeModalWidget();
            if (loaded_ && isVisible() && QApplication::activeWindow() == this &&
                (!modal || modal == this)) {
                BecomeActive();
            }
        });
    }
    return QWidget::event(event);
}

void Form::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    surface_->resize(size());
}

void Form::keyPressEvent(QKeyEvent* event) {
    Q_EMIT KeyDown(event->key());
}

void Form::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (!unloading_) {
        CloseRequested();
    }
}

bool Form::focusNextPrevChild(bool next) {
    // When the control with the keyboard is hidden, the toolkit passes the keyboard on to the next
    // one in the tab order. Here the screen takes it: nobody has entered that box.
    const QWidget* focused = focusWidget();
    if (focused && !focused->isVisible()) {
        picture_->setFocus();
        return true;
    }
    // A button under an open panel is passed over: nobody would see its ring.
    const QWidget* first = nullptr;
    while (QWidget::focusNextPrevChild(next)) {
        const QWidget* reached = focusWidget();
        if (!IsCovered(*reached) || reached == first) {
            return true;
        }
        if (!first) {
            first = reached;
        }
    }
    return false;
}

bool IsBlocked(const QWidget& window) {
    const QWidget* modal = QApplication::activeModalWidget();
    return !window.isEnabled() || (modal && modal != &window);
}

void PlaceOverActiveForm(QWidget& dialog) {
    const Form* form = Form::Active();
    const QRect area = dialog.screen()->availableGeometry();
    const QRect over = form ? form->geometry() : area;
    dialog.move(over.center() - dialog.rect().center());
    dialog.winId();  // makes the native window, which alone can be tied to another
    if (form && form != &dialog && dialog.windowHandle()) {
        dialog.windowHandle()->setTransientParent(form->windowHandle());
    }
}

}  // namespace forms
