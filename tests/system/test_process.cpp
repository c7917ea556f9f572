#include "platform/erro.h"
#include "platform/system/process.h"
#include "support/testmain.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <signal.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class TestProcess : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ExitCodes_data() {
        QTest::addColumn<QString>("commandLine");
        QTest::addColumn<int>("exitCode");
        QTest::newRow("quoted") << u"\"/bin/sh\" -c \"exit 7\""_s << 7;
        QTest::newRow("path text") << u"\\bin\\sh -c \"exit 3\""_s << 3;
        QTest::newRow("name alone") << u"  sh -c \"exit 0\""_s << 0;
        QTest::newRow("no arguments") << u"false"_s << 1;
        QTest::newRow("killed") << u"sh -c \"kill -9 $$\""_s << 137;
    }
    void ExitCodes() {
        QFETCH(QString, commandLine);
        const sys::ProcessId process = sys::Start(commandLine, 1);
        sys::WaitForEnd(process);
        QTEST(sys::ExitCode(process), "exitCode");
        QVERIFY(!sys::IsRunning(process));
        QTEST(sys::ExitCode(process), "exitCode");
    }

    void BlanksInProgramAndArguments() {
        const QTemporaryDir folder;
        const QString program = folder.filePath(u"com espaço.sh"_s);
        QFile script(program);
        QVERIFY(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\n[ \"$1\" = '1|/a  b/c.tmp' ] && exit 100\nexit $#\n");
        script.close();
        script.setPermissions(script.permissions() | QFileDevice::ExeOwner);
        const auto process = sys::Start(u"\"%1\" 1|/a b/c.tmp \"d e\""_s.arg(program), 1);
        sys::WaitForEnd(process);
        QCOMPARE(sys::ExitCode(process), 3);

        const auto whole = sys::Start(u"\"%1\" 1|/a  b/c.tmp"_s.arg(program), 1, sys::Rest::Whole);
        sys::WaitForEnd(whole);
        QCOMPARE(sys::ExitCode(whole), 100);
    }

    void StartErrors_data() {
        QTest::addColumn<QString>("commandLine");
        QTest::addColumn<int>("number");
        QTest::newRow("empty") << u" "_s << 5;
        QTest::newRow("empty quotes") << u"\"\" 12"_s << 5;
        QTest::newRow("missing path") << u"\"/nao/existe.exe\" 1"_s << 53;
        QTest::newRow("missing name") << u"nao-existe-aqui"_s << 53;
        QTest::newRow("folder") << u"/etc"_s << 70;
        QTest::newRow("no program") << u"/etc/passwd"_s << 70;
    }
    void StartErrors() {
        QFETCH(QString, commandLine);
        int number = 0;
        try {
            sys::Start(commandLine, 1);
        } catch (const Erro& erro) {
            number = erro.Number();
        }
        QTEST(number, "number");
    }

    void RunningChild() {
        const sys::ProcessId process = sys::Start(u"sleep 600"_s, 1);
        QCOMPARE(sys::ExitCode(process), sys::StillActive);
        QVERIFY(sys::IsRunning(process));
        // A session of its own: neither our end nor our terminal's reaches it.
        QCOMPARE(getsid(static_cast<pid_t>(process)), static_cast<pid_t>(process));
        QCOMPARE(kill(static_cast<pid_t>(process), SIGTERM), 0);
        sys::WaitForEnd(process);
        QCOMPARE(sys::ExitCode(process), 128 + SIGTERM);
    }

    void ProcessOfSomebodyElse() {
        QProcess other;
        other.start(u"cat"_s, QStringList());
        QVERIFY(other.waitForStarted());
        const sys::ProcessId process = other.processId();
        QVERIFY(sys::IsRunning(process));
        QCOMPARE(sys::ExitCode(process), sys::StillActive);
        other.closeWriteChannel();
        sys::WaitForEnd(process);
        // Ended, but not yet fetched by the parent.
        QVERIFY(!sys::IsRunning(process));
        QCOMPARE(sys::ExitCode(process), 0);
        QVERIFY(other.waitForFinished());
    }

    void NoProcess() {
        for (const sys::ProcessId process : {0LL, -1LL, 1LL << 40}) {
            QVERIFY(!sys::IsRunning(process));
            sys::WaitForEnd(process);
        }
        QVERIFY(sys::IsRunning(sys::OwnProcessId()));
    }
};

TARVO_TEST(TestProcess);
#include "test_process.moc"
