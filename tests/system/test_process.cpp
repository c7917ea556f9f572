#include "platform/system/process.h"
#include "support/test.h"

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <signal.h>
#include <unistd.h>
#endif

namespace {

using Commands = std::initializer_list<Each<QString, int>::Row>;

#ifdef Q_OS_WIN
const QString Endless = u"notepad"_s;
constexpr int Ended = 9;
constexpr int NoProgram = 5;
const Commands Ends = {
    {"quoted", "\"C:\\windows\\system32\\cmd.exe\" /c exit 7", 7},
    {"without ending", "\"C:\\windows\\system32\\cmd\" /c exit 3", 3},
    {"other separators", "C:/windows/system32/cmd.exe /c exit 5", 5},
    {"name alone", "  cmd /c exit 0", 0},
};

void End(sys::ProcessId process) {
    const HANDLE handle = OpenProcess(PROCESS_TERMINATE, FALSE, DWORD(process));
    QVERIFY(TerminateProcess(handle, Ended));
    CloseHandle(handle);
}
#else
const QString Endless = u"sleep 600"_s;
constexpr int Ended = 128 + SIGTERM;
constexpr int NoProgram = 70;
const Commands Ends = {
    {"quoted", "\"/bin/sh\" -c \"exit 7\"", 7}, {"path text", "\\bin\\sh -c \"exit 3\"", 3},
    {"name alone", "  sh -c \"exit 0\"", 0},    {"no arguments", "false", 1},
    {"killed", "sh -c \"kill -9 $$\"", 137},
};

// A session of its own: neither our end nor our terminal's reaches it.
void End(sys::ProcessId process) {
    QCOMPARE(getsid(static_cast<pid_t>(process)), static_cast<pid_t>(process));
    QCOMPARE(kill(static_cast<pid_t>(process), SIGTERM), 0);
}
#endif

}  // namespace

struct TestProcess : Fixture {};

TEST(TestProcess, ExitCodes) {
    for (const auto& [commandLine, exitCode] : Each<QString, int>(Ends)) {
        const sys::ProcessId process = sys::Start(commandLine, 0);
        sys::WaitForEnd(process);
        QCOMPARE(sys::ExitCode(process), exitCode);
        QVERIFY(!sys::IsRunning(process));
        QCOMPARE(sys::ExitCode(process), exitCode);
    }
}

TEST(TestProcess, StartErrors) {
    const QTemporaryDir folder;
    const QString noProgram = folder.filePath(u"texto.exe"_s);
    Write(noProgram, "no program at all");
    for (const auto& [commandLine, number] : Each<QString, int>{
             {"missing path", "\"C:\\nao\\existe.exe\" 1", 53},
             {"no program", u'"' + noProgram + u'"', NoProgram},
             {"empty", " ", 5},
             {"empty quotes", "\"\" 12", 5},
             {"missing name", "nao-existe-aqui", 53},
         }) {
        QCOMPARE(ErrorOf([&, line = commandLine] { sys::Start(line, 1); }), number);
    }
}

#ifdef Q_OS_WIN
// A program there gets the text as it stands, letters of every code page in it.
TEST(TestProcess, TheRestArrivesAsItStands) {
    const QTemporaryDir folder;
    const QString script = folder.filePath(u"com espaço.cmd"_s);
    Write(script, "@echo %*>\"%~dp0resto.txt\"\r\n");
    const auto process =
        sys::Start(u"cmd /c \"\"%1\" 1+/a  b/c.tmp\""_s.arg(QDir::toNativeSeparators(script)), 0,
                   sys::Rest::Whole);
    sys::WaitForEnd(process);
    QCOMPARE(sys::ReadText(folder.filePath(u"resto.txt"_s)).trimmed(), u"1+/a  b/c.tmp"_s);
}
#else
TEST(TestProcess, BlanksInProgramAndArguments) {
    const QTemporaryDir folder;
    const QString program = folder.filePath(u"com espaço.sh"_s);
    Write(program, "#!/bin/sh\n[ \"$1\" = '1|/a  b \"c d\"' ] && exit 100\nexit $#\n");
    QFile::setPermissions(program, QFile::permissions(program) | QFileDevice::ExeOwner);
    const QString line = u"\"%1\" 1|/a  b \"c d\""_s.arg(program);
    for (const auto& [rest, code] : {std::pair(sys::Rest::Pieces, 3), {sys::Rest::Whole, 100}}) {
        const auto process = sys::Start(line, 1, rest);
        sys::WaitForEnd(process);
        QCOMPARE(sys::ExitCode(process), code);
    }
}
#endif

TEST(TestProcess, RunningChild) {
    const sys::ProcessId process = sys::Start(Endless, 0);
    QCOMPARE(sys::ExitCode(process), sys::StillActive);
    QVERIFY(sys::IsRunning(process));
    End(process);
    sys::WaitForEnd(process);
    QCOMPARE(sys::ExitCode(process), Ended);
}

TEST(TestProcess, ProcessOfSomebodyElse) {
    QProcess other;
    other.startCommand(Endless);
    QVERIFY(other.waitForStarted());
    const sys::ProcessId process = other.processId();
    QVERIFY(sys::IsRunning(process));
    QCOMPARE(sys::ExitCode(process), sys::StillActive);
    other.kill();
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
