#include "platform/forms/application.h"

#include "platform/erro.h"
#include "platform/forms/form.h"
#include "platform/forms/msgbox.h"
#include "platform/forms/scale.h"
#include "platform/forms/theme.h"
#include "platform/forms/translation.h"

#include <QElapsedTimer>
#include <QStyleFactory>

using namespace Qt::StringLiterals;

namespace forms {
namespace {

QString programTitle;

}  // namespace

QString ProgramTitle() {
    return programTitle;
}

Application::Application(int& argc, char** argv, const QString& title) : QApplication(argc, argv) {
    programTitle = title;
    connect(new ScreenScale(this), &ScreenScale::Changed, this, &Form::PlaceAllAnew);
    setQuitOnLastWindowClosed(false);
    setStyle(QStyleFactory::create(u"Fusion"_s));
    SetTheme(CurrentTheme());
    InstallTranslation();
}

int Application::Run(std::function<void()> start) {
    // Queued, so that an error in it passes through notify() like any other.
    QMetaObject::invokeMethod(this, std::move(start), Qt::QueuedConnection);
    return exec();
}

bool Application::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const Erro& erro) {
        Fail(QString::number(erro.Number()), erro.Description());
    } catch (const std::exception& other) {
        const Erro internal(Erro::InternalError);
        Fail(QString::number(internal.Number()),
             internal.Description() + u" ("_s + QString::fromLocal8Bit(other.what()) + u')');
    }
    return false;
}

void Application::Fail(const QString& number, const QString& description) {
    if (failing_) {
        return;
    }
    failing_ = true;
    SetMousePointer(0);
    MsgBox(ErrorText(number, describe_ ? describe_(number, description) : description), vbCritical,
           ProgramTitle());
    if (emergencyExit_) {
        try {
            emergencyExit_();
        } catch (const std::exception&) {
            // Nothing can be done for it any more; the program must end.
        }
    }
    exit(1);
}

QString ErrorText(const QString& number, const QString& description) {
    return u"Erro nº: "_s + number + u'\n' + description;
}

void DoEvents() {
    QCoreApplication::processEvents();
}

void DoEventsButInput() {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void DoEventsInTime() {
    constexpr qint64 Interval = 10;  // milliseconds
    static QElapsedTimer since;
    if (!since.isValid() || since.elapsed() >= Interval) {
        DoEvents();
        since.start();
    }
}

void SetMousePointer(int pointer) {
    if (pointer == MousePointer()) {
        return;
    }
    if (pointer == 0) {
        QGuiApplication::restoreOverrideCursor();
    } else {
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    }
}

int MousePointer() {
    return QGuiApplication::overrideCursor() ? 11 : 0;
}

}  // namespace forms
