#include "support/test.h"

#include "platform/forms/application.h"
#include "session/global.h"
#include "support/quickkeys.h"

#include <QFileInfo>

using namespace std::string_view_literals;

namespace {

bool fullKeys = false;
Fixture* running = nullptr;

std::vector<RegisteredTest>& Tests() {
    static std::vector<RegisteredTest> tests;
    return tests;
}

std::map<std::string_view, int (*)(int, char**)>& Programs() {
    static std::map<std::string_view, int (*)(int, char**)> programs;
    return programs;
}

void MakeFolderOf(const QString& path) {
    QDir().mkpath(QFileInfo(path).path());
}

// On Windows what a test says goes to a debugger. With TARVO_TEST_LOG each class writes a file that
// begins with it.
QStringList LogOf(std::string_view name) {
    const QString log = qEnvironmentVariable("TARVO_TEST_LOG");
    return log.isEmpty() ? QStringList()
                         : QStringList{u"-o"_s, log + QLatin1String(name) + u",txt"_s};
}

// The tests of one fixture, as one function of Qt Test with a row for each.
class Suite : public QObject {
    Q_OBJECT

public:
    explicit Suite(std::vector<RegisteredTest> tests) : tests_(std::move(tests)) {}

private Q_SLOTS:
    void initTestCase() { tests_.front().initTestCase(); }
    void cleanupTestCase() { tests_.front().cleanupTestCase(); }

    void Run_data() {
        QTest::addColumn<size_t>("index");
        for (size_t i = 0; i < tests_.size(); ++i) {
            QTest::addRow("%s::%s", tests_[i].fixture, tests_[i].name) << i;
        }
    }
    void Run() {
        QFETCH(const size_t, index);
        const auto test = tests_.at(index).make();
        running = test.get();
        // An exception that gets as far as Qt Test ends the tests that were to follow.
        try {
            if (!QTest::currentTestFailed()) {
                running->init();
            }
            if (!QTest::currentTestFailed()) {
                running->TestBody();
            }
        } catch (const Erro& erro) {
            const QString what = QString::number(erro.Number()) + u' ' + erro.Description();
            QTest::qFail(what.toUtf8().constData(), __FILE__, __LINE__);
        }
        running->cleanup();
        running = nullptr;
    }

private:
    std::vector<RegisteredTest> tests_;
};

}  // namespace

bool KeepFullKeys() {
    fullKeys = true;
    return true;
}

bool RegisterProgram(const char* name, int (*program)(int, char**)) {
    return Programs().insert({name, program}).second;
}

bool RegisterTest(const RegisteredTest& test) {
    Tests().push_back(test);
    return true;
}

void StartAnew() {
    running->cleanup();
    running->init();
}

void Write(const QString& path, const QByteArray& content) {
    MakeFolderOf(path);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        qFatal("cannot write %s", qPrintable(path));
    }
}

void WritePicture(const QString& path, QSize size, const QColor& colour, const char* format) {
    MakeFolderOf(path);
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(colour);
    if (!picture.save(path, format)) {
        qFatal("cannot write %s", qPrintable(path));
    }
}

QString OutputOf(const AnyText& program, const AnyTexts& arguments) {
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(program, arguments);
    if (!process.waitForFinished(60000) || process.exitCode() != 0) {
        qFatal("%s: %s", qPrintable(program), qPrintable(process.errorString()));
    }
    return QString::fromUtf8(process.readAllStandardOutput()).replace("\r\n"_L1, "\n"_L1);
}

int main(int argc, char** argv) {
    const int at = argc > 2 && argv[1] == "--play"sv ? 2 : 0;
    const QByteArray called = QFileInfo(QFile::decodeName(argv[at])).fileName().toUtf8();
    if (const auto found = Programs().find(called.constData()); found != Programs().end()) {
        return found->second(argc - at, argv + at);
    }
    // The user's own settings are none of a test's business.
    const QTemporaryDir home;
    qputenv(UserData, QFile::encodeName(home.path()));
    forms::Application application(argc, argv, TituloCatalogo);
    if (!fullKeys) {
        UseQuickKeys();
    }
    QStringList arguments = application.arguments();
    QStringList only;
    while (arguments.size() > 1 && !arguments.at(1).startsWith(u'-')) {
        only += arguments.takeAt(1);
    }
    // Qt Test's own handler raises the signal again and again, and never lets the process end.
    arguments.append(u"-nocrashhandler"_s);
    std::map<std::string_view, std::vector<RegisteredTest>> fixtures;
    for (const RegisteredTest& test : Tests()) {
        if ((only.isEmpty() || only.first() == QLatin1String(test.fixture)) &&
            (only.size() < 2 || only.contains(QLatin1String(test.name)))) {
            fixtures[test.fixture].push_back(test);
        }
    }
    int failures = fixtures.empty() ? 1 : 0;
    for (const auto& [name, tests] : fixtures) {
        Suite suite(tests);
        failures += QTest::qExec(&suite, arguments + LogOf(name));
    }
    return failures == 0 ? 0 : 1;
}

#include "test.moc"
