#include "support/testmain.h"

#include "platform/forms/application.h"

#include <QTemporaryDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

std::vector<QObject* (*)()>& Makers() {
    static std::vector<QObject* (*)()> makers;
    return makers;
}

}  // namespace

bool testing_support::RegisterTest(QObject* (*make)()) {
    Makers().push_back(make);
    return true;
}

int main(int argc, char** argv) {
    // The settings of whoever runs the tests stay as they are.
    const QTemporaryDir userData;
    qputenv("XDG_DATA_HOME", userData.path().toUtf8());
    // The user's own settings are none of a test's business.
    const QTemporaryDir home;
    qputenv("XDG_DATA_HOME", QFile::encodeName(home.path()));
    forms::Application application(argc, argv);
    QStringList arguments = application.arguments();
    const QString only =
        arguments.size() > 1 && !arguments.at(1).startsWith(u'-') ? arguments.takeAt(1) : QString();
    // Qt Test's own handler raises the signal again and again, and never lets the process end.
    arguments.append(u"-nocrashhandler"_s);
    int failures = 0;
    bool any = false;
    for (auto make : Makers()) {
        const std::unique_ptr<QObject> test(make());
        if (!only.isEmpty() && only != QLatin1String(test->metaObject()->className())) {
            continue;
        }
        any = true;
        failures += QTest::qExec(test.get(), arguments);
    }
    return any && failures == 0 ? 0 : 1;
}
