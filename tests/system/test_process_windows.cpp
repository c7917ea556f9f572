#include "platform/system/process.h"
#include "support/test.h"

#include <QProcess>

#include <windows.h>

class TestProcess : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ExitCodes_data() {
        const Table<QString, int> row("commandLine", "exitCode");
        row("quoted", "\"C:\\windows\\system32\\cmd.exe\" /c exit 7", 7);
        row("without ending", "\"C:\\windows\\system32\\cmd\" /c exit 3", 3);
        row("other separators", "C:/windows/system32/cmd.exe /c exit 5", 5);
        row("name alone", "  cmd /c exit 0", 0);
    }
    void ExitCodes() {
        QFETCH(QString, commandLine);
        const sys::ProcessId process = sys::Start(commandLine, 0);
        sys::WaitForEnd(process);
        QTEST(sys::ExitCode(process), "exitCode");
        QVERIFY(!sys::IsRunning(process));
        QTEST(sys::ExitCode(process), "exitCode");
    }

    // A program there gets the text as it stands, letters of every code page in it.
    void TheRestArrivesAsItStands() {
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

    void StartErrors_data() {
        const Table<QString, int> row("commandLine", "number");
        row("empty", " ", 5);
        row("empty quotes", "\"\" 12", 5);
        row("missing path", "\"C:\\nao\\existe.exe\" 1", 53);
        row("missing name", "nao-existe-aqui", 53);
        row("no program", "\"%1\"", 5);
    }
    void StartErrors() {
        QFETCH(QString, commandLine);
        const QTemporaryDir folder;
        Write(folder.filePath(u"texto.exe"_s), "no program at all");
        commandLine.replace("%1"_L1, folder.filePath(u"texto.exe"_s));
        QTEST(ErrorOf([&] { sys::Start(commandLine, 1); }), "number");
    }

    void RunningChild() {
        const sys::ProcessId process = sys::Start(u"notepad"_s, 0);
        QCOMPARE(sys::ExitCode(process), sys::StillActive);
        QVERIFY(sys::IsRunning(process));
        const HANDLE handle = OpenProcess(PROCESS_TERMINATE, FALSE, DWORD(process));
        QVERIFY(TerminateProcess(handle, 9));
        CloseHandle(handle);
        sys::WaitForEnd(process);
        QCOMPARE(sys::ExitCode(process), 9);
    }

    void ProcessOfSomebodyElse() {
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

    void NoProcess() {
        for (const sys::ProcessId process : {0LL, -1LL, 1LL << 40}) {
            QVERIFY(!sys::IsRunning(process));
            sys::WaitForEnd(process);
        }
        QVERIFY(sys::IsRunning(sys::OwnProcessId()));
    }
};

TARVO_TEST(TestProcess);
#include "test_process_windows.moc"
