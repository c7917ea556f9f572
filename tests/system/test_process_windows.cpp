#include "platform/system/process.h"
#include "support/test.h"

#include <QProcess>

#include <windows.h>

struct TestProcess : Fixture {};

TEST(TestProcess, ExitCodes) {
    for (const auto& [commandLine, exitCode] : Each<QString, int>{
             {"quoted", "\"C:\\windows\\system32\\cmd.exe\" /c exit 7", 7},
             {"without ending", "\"C:\\windows\\system32\\cmd\" /c exit 3", 3},
             {"other separators", "C:/windows/system32/cmd.exe /c exit 5", 5},
             {"name alone", "  cmd /c exit 0", 0},
         }) {
        const sys::ProcessId process = sys::Start(commandLine, 0);
        sys::WaitForEnd(process);
        QCOMPARE(sys::ExitCode(process), exitCode);
        QVERIFY(!sys::IsRunning(process));
        QCOMPARE(sys::ExitCode(process), exitCode);
    }
}

// A program there gets the text as it stands, letters of every code page in it.
TEST(TestProcess, TheRestArrivesAsItStands) {
    const QTemporaryDir folder;
    const QString script = folder.filePath(u"com espaço.cmd"_s);
    const QString result = QDir::toNativeSeparators(folder.filePath(u"resto.txt"_s));
    Write(script, "@echo %*>\"%~dp0resto.txt\"\r\n");
    const auto process =
        sys::Start(u"cmd /c \"\"%1\" 1|/a  b/c.tmp\""_s.arg(QDir::toNativeSeparators(script))
                       .replace(u'|', u'+'),
                   0, sys::Rest::Whole);
    sys::WaitForEnd(process);
    QFile file(result);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll().trimmed(), QByteArray("1+/a  b/c.tmp"));
}

TEST(TestProcess, StartErrors) {
    for (const auto& [commandLine, number] : Each<QString, int>{
             {"empty", " ", 5},
             {"empty quotes", "\"\" 12", 5},
             {"missing path", "\"C:\\nao\\existe.exe\" 1", 53},
             {"missing name", "nao-existe-aqui", 53},
             {"no program", "\"%1\"", 5},
         }) {
        const QTemporaryDir folder;
        Write(folder.filePath(u"texto.exe"_s), "no program at all");
        const QString noProgram = folder.filePath(u"texto.exe"_s);
        const QString line = QString(commandLine).replace("%1"_L1, noProgram);
        QCOMPARE(ErrorOf([&] { sys::Start(line, 1); }), number);
    }
}

TEST(TestProcess, RunningChild) {
    const sys::ProcessId process = sys::Start(u"notepad"_s, 0);
    QCOMPARE(sys::ExitCode(process), sys::StillActive);
    QVERIFY(sys::IsRunning(process));
    const HANDLE handle = OpenProcess(PROCESS_TERMINATE, FALSE, DWORD(process));
    QVERIFY(TerminateProcess(handle, 9));
    CloseHandle(handle);
    sys::WaitForEnd(process);
    QCOMPARE(sys::ExitCode(process), 9);
}

TEST(TestProcess, ProcessOfSomebodyElse) {
    QProcess other;
    other.start(u"notepad"_s, QStringList());
    QVERIFY(other.waitForStarted());
    const sys::ProcessId process = other.processId();
    QVERIFY(sys::IsRunning(process));
    QCOMPARE(sys::ExitCode(process), sys::StillActive);
    other.kill();
    sys::WaitForEnd(process);
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
