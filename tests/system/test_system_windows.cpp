#include "platform/dao/connection.h"
#include "platform/system/output.h"
#include "support/test.h"

#include <thread>
#include <windows.h>

namespace {

// A file that another program has open; it lets others do what `share` says.
class Held {
public:
    Held(const QString& path, DWORD share)
        : handle_(CreateFileW(path.toStdWString().c_str(), GENERIC_READ, share, nullptr,
                              OPEN_EXISTING, 0, nullptr)) {}
    ~Held() { CloseHandle(handle_); }
    bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }

private:
    HANDLE handle_;
};

// The error of `work` on a file that is held when it begins, and let go soon after.
template <typename Work>
int ErrorWhileHeld(const QString& path, DWORD share, Work&& work) {
    auto held = std::make_unique<Held>(path, share);
    if (!held->IsOpen()) {
        return -1;
    }
    std::thread other([&held] {
        Sleep(400);
        held.reset();
    });
    const int error = ErrorOf(work);
    other.join();
    return error;
}

}  // namespace

// What only a system of this kind has: drives and servers in paths, limits of their length, files
// that do not go away while somebody has them open.
struct TestSystem : Fixture {
    QTemporaryDir folder_;
    QString Path(const AnyText& name) const { return folder_.filePath(name); }
};

TEST(TestSystem, Notations) {
    const QString many = u"\\pasta"_s.repeated(50);
    for (const auto& [text, system] : Each<QString, QString>{
             {"drive", "C:\\Dados\\a.png", "C:\\Dados\\a.png"},
             {"server", "\\\\casa\\dados\\a.png", "\\\\casa\\dados\\a.png"},
             {"steps", "C:\\Dados\\..\\x", "C:\\x"},
             {"long", u"C:"_s + many, u"\\\\?\\C:"_s + many},
             {"long, on a server", u"\\\\casa\\dados"_s + many,
              u"\\\\?\\UNC\\casa\\dados"_s + many},
         }) {
        QCOMPARE(sys::ToNative(text), QString(text).replace(u'\\', u'/'));
        QCOMPARE(sys::ToSystem(text), system);
    }
}

// Of a folder whose own path is longer than the system's calls take without more ado.
TEST(TestSystem, LongPaths) {
    QString folder = folder_.path();
    for (int i = 0; i < 12; ++i) {
        folder += u"\\uma pasta de nome comprido"_s;
        sys::MakeDirectory(folder);
    }
    QVERIFY(folder.size() > 300);
    const QString file = folder + u"\\texto.txt"_s;
    sys::WriteWhole(file, "velho");
    sys::WriteWhole(file + u".novo"_s, "novo");
    sys::Flush(file + u".novo"_s);
    sys::Replace(file + u".novo"_s, file);
    QCOMPARE(sys::ReadText(file), u"novo"_s);
    QVERIFY(sys::IsInside(folder_.path(), file));
    {
        dao::Connection made(sys::ToNative(folder + u"\\Tarvo.mdb"_s), "x",
                             dao::Connection::Mode::Create);
        made.Run("CREATE TABLE a (b); INSERT INTO a VALUES (7)");
        QCOMPARE(made.Value("SELECT b FROM a").toInt(), 7);
    }
    sys::Delete(file);
    QVERIFY(!sys::Exists(file));
}

// Another computer that shows a picture, two programs of one user at his settings, a guard
// against viruses.
TEST(TestSystem, WaitsForWhatIsHeldForAMoment) {
    const QString path = Path("a.png");
    Write(path, "velha");
    Write(Path("nova.tmp"), "nova");
    QVERIFY(QFile::setPermissions(path, QFileDevice::ReadOwner));
    const auto replace = [this, path] { sys::Replace(Path("nova.tmp"), path); };
    QCOMPARE(ErrorWhileHeld(path, FILE_SHARE_READ, replace), 0);
    QCOMPARE(sys::ReadText(path), u"nova"_s);
    QVERIFY(!QFile::exists(Path("nova.tmp")));
    const auto write = [path] { sys::WriteWhole(path, "outra"); };
    QCOMPARE(ErrorWhileHeld(path, FILE_SHARE_READ, write), 0);
    QCOMPARE(sys::ReadText(path), u"outra"_s);
    QString text;
    const auto read = [path, &text] { text = sys::ReadText(path); };
    QCOMPARE(ErrorWhileHeld(path, 0, read), 0);
    QCOMPARE(text, u"outra"_s);
}

// Who gives a download up takes it away before the program that writes it has let go.
TEST(TestSystem, OutputGoesWhileItIsWritten) {
    const QString path = Path("resposta.tmp");
    {
        sys::Output output(path);
        output.Write("meia", 4);
        sys::Delete(path);
    }
    QVERIFY(!QFile::exists(path));
}

TEST(TestSystem, RefusesWhatIsHeldForGood) {
    Write(Path("b.png"), "velha");
    Write(Path("nova.tmp"), "nova");
    const Held held(Path("b.png"), FILE_SHARE_READ);
    QCOMPARE(ErrorOf([this] { sys::Replace(Path("nova.tmp"), Path("b.png")); }), 70);
    QCOMPARE(sys::ReadText(Path("b.png")), u"velha"_s);
    QCOMPARE(sys::ReadText(Path("nova.tmp")), u"nova"_s);
    QCOMPARE(ErrorOf([this] { sys::WriteWhole(Path("b.png"), "outra"); }), 75);
    QCOMPARE(sys::ReadText(Path("b.png")), u"velha"_s);
    const QStringList left = {u"b.png"_s, u"nova.tmp"_s};
    QCOMPARE(QDir(folder_.path()).entryList({u"b.*"_s, u"n*"_s}, QDir::Files), left);
}

// An update may bring the program that runs, on this computer or another one.
TEST(TestSystem, ReplacesAProgramThatRuns) {
    const QString program = Path("programa.exe");
    QVERIFY(QFile::copy(u"C:/windows/system32/notepad.exe"_s, program));
    QProcess process;
    process.start(program, {});
    QVERIFY(process.waitForStarted());
    Write(Path("novo.tmp"), "novo");
    QCOMPARE(ErrorOf([&] { sys::Replace(Path("novo.tmp"), program); }), 0);
    QCOMPARE(process.state(), QProcess::Running);
    QCOMPARE(sys::ReadText(program), u"novo"_s);
    process.kill();
    QVERIFY(process.waitForFinished());
}
