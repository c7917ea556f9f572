#include "platform/system/child.h"
#include "platform/system/enginelocks.h"
#include "platform/system/filelocks_native.h"
#include "platform/system/http.h"
#include "platform/system/http_address.h"
#include "platform/system/output.h"
#include "platform/system/sockets.h"
#include "support/frailfolder.h"

#include <QScopeGuard>
#include <QTimer>

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace std::chrono_literals;

// What only a system of this kind has: names that differ in case, one root, locks of a process.
struct TestSystem : Fixture {
    QTemporaryDir folder_;
    const QString file_ = folder_.filePath(u"dois.txt"_s);

    TestSystem() { Write(file_); }
};

TEST(TestSystem, ToNative) {
    for (const AnyText name : {"FotoPeca/Ab12.JPG", "FotoPeca/Séries/Válvula É.bmp", "DOIS.txt"}) {
        Write(folder_.filePath(name));
    }
    const QScopeGuard back([before = QDir::currentPath()] { QDir::setCurrent(before); });
    QVERIFY(QDir::setCurrent(folder_.path()));
    for (const auto& [text, native] : Each<QString, QString>{
             {"another case", "FOTOPECA\\aB12.jpg", "FotoPeca/Ab12.JPG"},
             {"accents", "fotopeca\\SÉRIES\\VÁLVULA é.BMP", "FotoPeca/Séries/Válvula É.bmp"},
             {"an accent counts", u"fotopeca\\series\\x"_s, "FotoPeca/series/x"},
             {"missing folder", "Figuras\\Nada.jpg", "Figuras/Nada.jpg"},
             {"exact name wins", "dois.txt", "dois.txt"},
             {"one of two", "Dois.txt", "DOIS.txt"},
             {"final separator", "fotopeca\\", "FotoPeca/"},
         }) {
        QCOMPARE(sys::ToNative(text), native);
        const sys::FolderListings kept;
        QCOMPARE(sys::ToNative(folder_.path() + u'\\' + text), folder_.filePath(native));
    }
}

TEST(TestSystem, MakesPrograms) {
    sys::MakeExecutable(file_);
    QCOMPARE(int(QFile::permissions(file_)) & 0x1111, 0x1111);
    QCOMPARE(ErrorOf([] { sys::MakeExecutable(u"/nada"_s); }), 53);
}

TEST(TestSystem, TellsWhatAFileLiesOn) {
    QVERIFY(!sys::MountOf(file_).type.isEmpty());
    QCOMPARE(sys::ToNative(u"C:\\"_s), u"/"_s);
    QCOMPARE(sys::VolumeSerial(u"C:\\"_s), sys::VolumeSerial(u"/"_s));
}

// Where closing any descriptor of a file frees the process's locks on it, asking about an open
// catalogue must not.
TEST(TestSystem, CanReadKeepsLocks) {
    QFile holder(file_);
    QVERIFY(holder.open(QIODevice::ReadWrite));
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    QCOMPARE(fcntl(holder.handle(), F_SETLK, &lock), 0);
    QVERIFY(sys::CanRead(file_));

    QFile other(file_);
    QVERIFY(other.open(QIODevice::ReadWrite));
    QCOMPARE(sys::TryLock(other), sys::Outcome::Taken);
}

// As on SMB: one's own shared lock would be in the way, and each open file has its own.
TEST(TestSystem, EngineLocksWhereTheyBelongToOpenFiles) {
    const FrailFolder frail({"handle-locks"});
    if (!frail.IsThere()) {
        QSKIP("this system mounts no file system for this user");
    }
    Write(frail.Behind() + u"/a"_s);
    QFile files[3];
    for (QFile& file : files) {
        file.setFileName(frail.Seen() + u"/a"_s);
        QVERIFY(file.open(QIODevice::ReadWrite));
    }
    const auto engine = reinterpret_cast<int (*)(int, int, ...)>(sys::EngineLockCall());
    const auto lock = [&](auto call, int file, int type, off_t from, off_t bytes) {
        struct flock range = {};
        range.l_type = short(type);
        range.l_start = from;
        range.l_len = bytes;
        return call(files[file].handle(), F_SETLK, &range) == 0;
    };
    const auto others = [&](int type, off_t from = 0) { return lock(fcntl, 2, type, from, 1); };
    QVERIFY(lock(engine, 0, F_RDLCK, 0, 10) && lock(engine, 1, F_RDLCK, 0, 10));
    QVERIFY(others(F_RDLCK) && !lock(engine, 0, F_WRLCK, 0, 10) && errno == EAGAIN);
    QVERIFY(others(F_UNLCK) && !others(F_WRLCK));
    QVERIFY(lock(engine, 0, F_WRLCK, 0, 10) && !others(F_RDLCK));
    QVERIFY(lock(engine, 1, F_RDLCK, 0, 10) && others(F_RDLCK) && others(F_UNLCK));
    QVERIFY(lock(engine, 1, F_WRLCK, 20, 0) && !others(F_WRLCK, 1000) && others(F_WRLCK, 15));
    QVERIFY(lock(engine, 0, F_UNLCK, 0, 0) && others(F_WRLCK) && others(F_WRLCK, 1000));
    // Whoever comes next locks by his own file.
    QVERIFY(others(F_UNLCK) && lock(engine, 1, F_WRLCK, 0, 10));
    files[0].close();
    QVERIFY(!others(F_RDLCK));
    QCOMPARE(engine(files[1].handle(), F_GETFL), fcntl(files[1].handle(), F_GETFL));
}

TEST(TestSystem, ReadsWhatAChildPrints) {
    sys::Child child(u"/bin/sh"_s, List("-c", "cat; printf abc; sleep 0.1; printf def"), 10s);
    QByteArray read(6, ' ');
    QVERIFY(child.Read(read.data(), 2) && child.Read(read.data() + 2, 4));
    QCOMPARE(read, QByteArray("abcdef"));
    QVERIFY(!child.Read(read.data(), 1) && !child.IsSilent());
    sys::Child silent(u"/bin/sleep"_s, List("600"), 20ms);
    QVERIFY(!silent.Read(read.data(), 1) && silent.IsSilent());
    QCOMPARE(ErrorOf([] { sys::Child(u"/nao/ha"_s, {}, 1s); }), 53);
    QCOMPARE(ErrorOf([] { sys::Child(u"/etc/passwd"_s, {}, 1s); }), 70);
}

TEST(TestSystem, WaitsForSockets) {
    int ends[2];
    QCOMPARE(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
    fd_set set = {};
    FD_SET(ends[1], &set);
    QVERIFY(sys::SocketsIn(set, ends[1] - 1).empty());
    const auto reading = sys::SocketsIn(set, ends[1]);
    QCOMPARE(reading, std::vector<sys::Socket>{ends[1]});
    sys::WaitForSockets(reading, {}, 10ms);
    sys::WaitForSockets({}, {ends[0]}, 1h);
    QTimer::singleShot(10ms, [&] { QCOMPARE(write(ends[0], "x", 1), 1); });
    sys::WaitForSockets(reading, {}, 1h);
}

// Before anything goes over a network.
TEST(TestSystem, HttpTellsWhatIsWrong) {
    using namespace sys::http;
    Session session(u"p"_s, {});
    Connection nowhere(session, QString());
    QVERIFY(!Request(nowhere, "GET", u"a"_s).IsOpen() && LastCode() == InvalidAddress);
    Connection host(session, u"exemplo.invalid"_s);
    QVERIFY(host.IsOpen() && LastCode() == Ok);
    Request request(host, "GET", u"?a"_s);
    QVERIFY(request.IsOpen() && request.AddHeader("A: b") && LastCode() == Ok);
}

TEST(TestSystem, ProxiesAndPaths) {
    for (const auto& [variable, value, proxy] : Each<QByteArray, QByteArray, QString>{
             {"plain", "http_proxy", "proxy.exemplo:3128", "proxy.exemplo:3128"},
             {"no port", "all_proxy", "https://proxy.exemplo", "proxy.exemplo"},
             {"of all", "ALL_PROXY", "http://p:80/", "p:80"},
             {"none", "http_proxy", "", ""},
         }) {
        qputenv(variable.constData(), value);
        QCOMPARE(sys::http::ProxyOfTheSystem(), proxy);
        qunsetenv(variable.constData());
    }
    QCOMPARE(sys::http::EscapePath(u"a ç%20%2x%"_s), QByteArray("a%20%C3%A7%20%252x%25"));
    QCOMPARE(sys::http::EscapePath(u"/?=&:@!$'()*+,;%09%af%AF%0/%0:%0G%0g%0@%0`"_s),
             QByteArray("/?=&:@!$'()*+,;%09%af%AF%250/%250:%250G%250g%250@%250%60"));
}
