#include "support/test.h"

#include "platform/forms/application.h"
#include "session/global.h"
#include "support/quickkeys.h"

#include <QFileInfo>
#include <QProcess>

#include <vector>

namespace {

bool fullKeys = false;

std::vector<QObject* (*)()>& Makers() {
    static std::vector<QObject* (*)()> makers;
    return makers;
}

void MakeFolderOf(const QString& path) {
    QDir().mkpath(QFileInfo(path).path());
}

// On Windows what a test says goes to a debugger. With TARVO_TEST_LOG each class writes a file that
// begins with it.
QStringList LogOf(const char* name) {
    const QString log = qEnvironmentVariable("TARVO_TEST_LOG");
    return log.isEmpty() ? QStringList()
                         : QStringList{u"-o"_s, log + QLatin1String(name) + u",txt"_s};
}

}  // namespace

bool testing_support::KeepFullKeys() {
    fullKeys = true;
    return true;
}

bool testing_support::RegisterTest(QObject* (*make)()) {
    Makers().push_back(make);
    return true;
}

void testing_support::Write(const QString& path, const QByteArray& content) {
    MakeFolderOf(path);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        qFatal("cannot write %s", qPrintable(path));
    }
}

void testing_support::WritePicture(const QString& path, QSize size, const QColor& colour,
                                   const char* format) {
    MakeFolderOf(path);
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(colour);
    if (!picture.save(path, format)) {
        qFatal("cannot write %s", qPrintable(path));
    }
}

QString testing_support::OutputOf(const AnyText& program, const AnyTexts& arguments) {
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(program, arguments);
    if (!process.waitForFinished(60000) || process.exitCode() != 0) {
        qFatal("%s: %s", qPrintable(program), qPrintable(process.errorString()));
    }
    return QString::fromUtf8(process.readAllStandardOutput());
}

int main(int argc, char** argv) {
    // The user's own settings are none of a test's business.
    const QTemporaryDir home;
    qputenv(UserData, QFile::encodeName(home.path()));
    forms::Application application(argc, argv, TituloCatalogo);
    if (!fullKeys) {
        UseQuickKeys();
    }
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
        failures += QTest::qExec(test.get(), arguments + LogOf(test->metaObject()->className()));
    }
    return any && failures == 0 ? 0 : 1;
}
