#include "platform/forms/application.h"

#include "platform/erro.h"

namespace forms {

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {}

bool Application::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const Erro& erro) {
        Fail(QString::number(erro.Number()), erro.Description());
    }
    return false;
}

void Application::Fail(const QString&, const QString&) {
    if (failing_) {
        return;
    }
    failing_ = true;
    if (emergencyExit_) {
        emergencyExit_();
    }
    exit(1);
}

void DoEvents() {
    QCoreApplication::processEvents();
}

}  // namespace forms
