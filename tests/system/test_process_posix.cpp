#include "platform/system/process.h"
#include "support/test.h"

#include <QProcess>

#include <signal.h>
#include <unistd.h>

struct TestProcess : Fixture {};

TEST(TestProcess, ExitCodes) {
    for (const auto& [commandLine, exitCode] : Each<QString, int>{
             {"quoted", "\"/bin/sh\" -c \"exit 7\"", 7},
             {"path text", "\\bin\\sh -c \"exit 3\"", 3},
             {"name alone", "  sh -c \"exit 0\"", 0},
             {"no arguments", "false", 1},
             {"killed", "sh -c \"kill -9 $$\"", 137},
         }) {
        const sys::ProcessId process = sys::Start(commandLine, 1);
        sys::WaitForEnd(process);
        QCOMPARE(sys::ExitCode(process), exitCode);
        QVERIFY(!sys::IsRunning(process));
        QCOMPARE(sys::ExitCode(process), exitCode);
    }
}

TEST(TestProcess, BlanksInProgramAndArguments) {
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

TEST(TestProcess, StartErrors) {
    for (const auto& [commandLine, number] : Each<QString, int>{
             {"empty", " ", 5},
             {"empty quotes", "\"\" 12", 5},
             {"missing path", "\"/nao/existe.exe\" 1", 53},
             {"missing name", "nao-existe-aqui", 53},
             {"folder", "/etc", 70},
             {"no program", "/etc/passwd", 70},
         }) {
        QCOMPARE(ErrorOf([&] { sys::Start(commandLine, 1); }), number);
    }
}

TEST(TestProcess, RunningChild) {
    const sys::ProcessId process = sys::Start(u"sleep 600"_s, 1);
    QCOMPARE(sys::ExitCode(process), sys::StillActive);
    QVERIFY(sys::IsRunning(process));
    // A session of its own: neither our end nor our terminal's reaches it.
    QCOMPARE(getsid(static_cast<pid_t>(process)), static_cast<pid_t>(process));
    QCOMPARE(kill(static_cast<pid_t>(process), SIGTERM), 0);
    sys::WaitForEnd(process);
    QCOMPARE(sys::ExitCode(process), 128 + SIGTERM);
}

TEST(TestProcess, ProcessOfSomebodyElse) {
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

TEST(TestProcess, NoProcess) {
    for (const sys::ProcessId process : {0LL, -1LL, 1LL << 40}) {
        QVERIFY(!sys::IsRunning(process));
        sys::WaitForEnd(process);
    }
    QVERIFY(sys::IsRunning(sys::OwnProcessId()));
}
