#include "platform/system/process.h"
#include "support/test.h"

#include <QProcess>

#include <signal.h>
#include <unistd.h>

class TestProcess : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ExitCodes_data() {
        const Table<QString, int> row("commandLine", "exitCode");
        row("quoted", "\"/bin/sh\" -c \"exit 7\"", 7);
        row("path text", "\\bin\\sh -c \"exit 3\"", 3);
        row("name alone", "  sh -c \"exit 0\"", 0);
        row("no arguments", "false", 1);
        row("killed", "sh -c \"kill -9 $$\"", 137);
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
        Write(program, "#!/bin/sh\n[ \"$1\" = '1|/a  b/c.tmp' ] && exit 100\nexit $#\n");
        QFile::setPermissions(program, QFile::permissions(program) | QFileDevice::ExeOwner);
        const auto process = sys::Start(u"\"%1\" 1|/a b/c.tmp \"d e\""_s.arg(program), 1);
        sys::WaitForEnd(process);
        QCOMPARE(sys::ExitCode(process), 3);

        const auto whole = sys::Start(u"\"%1\" 1|/a  b/c.tmp"_s.arg(program), 1, sys::Rest::Whole);
        sys::WaitForEnd(whole);
        QCOMPARE(sys::ExitCode(whole), 100);
    }

    void StartErrors_data() {
        const Table<QString, int> row("commandLine", "number");
        row("empty", " ", 5);
        row("empty quotes", "\"\" 12", 5);
        row("missing path", "\"/nao/existe.exe\" 1", 53);
        row("missing name", "nao-existe-aqui", 53);
        row("folder", "/etc", 70);
        row("no program", "/etc/passwd", 70);
    }
    void StartErrors() {
        QFETCH(QString, commandLine);
        QTEST(ErrorOf([&] { sys::Start(commandLine, 1); }), "number");
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
#include "test_process_posix.moc"
