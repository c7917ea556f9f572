#include "platform/system/filelocks.h"
#include "platform/system/paths.h"
#include "support/test.h"

#include <fcntl.h>

// What only a system of this kind has: names that differ in case, one root, locks of a process.
struct TestSystem : Fixture {
    QTemporaryDir folder_;
    QString Text(const AnyText& rest) const { return folder_.path() + u'\\' + rest; }

    TestSystem() {
        for (const auto& name : {u"FotoPeca/Ab12.JPG"_s, u"FotoPeca/Séries/Válvula É.bmp"_s,
                                 u"dois.txt"_s, u"DOIS.txt"_s}) {
            Write(folder_.filePath(name));
        }
    }
};

TEST(TestSystem, ToNative) {
    for (const auto& [text, native] : Each<QString, QString>{
             {"as written", "FotoPeca\\Ab12.JPG", "FotoPeca/Ab12.JPG"},
             {"another case", "FOTOPECA\\aB12.jpg", "FotoPeca/Ab12.JPG"},
             {"accents", "fotopeca\\SÉRIES\\VÁLVULA é.BMP", "FotoPeca/Séries/Válvula É.bmp"},
             {"an accent counts", u"fotopeca\\series\\x"_s, "FotoPeca/series/x"},
             {"missing file", "fotopeca\\Nada.jpg", "FotoPeca/Nada.jpg"},
             {"missing folder", "Figuras\\Nada.jpg", "Figuras/Nada.jpg"},
             {"exact name wins", "dois.txt", "dois.txt"},
             {"one of two", "Dois.txt", "DOIS.txt"},
             {"final separator", "fotopeca\\", "FotoPeca/"},
             {"both separators", "FotoPeca/ab12.jpg", "FotoPeca/Ab12.JPG"},
         }) {
        QCOMPARE(sys::ToNative(Text(text)), folder_.filePath(native));

        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(folder_.path()));
        QCOMPARE(sys::ToNative(text), native);
        QDir::setCurrent(before);
    }
}

TEST(TestSystem, VolumeOfDrive) {
    QCOMPARE(sys::ToNative(u"C:\\"_s), u"/"_s);
    QCOMPARE(sys::VolumeSerial(u"C:\\"_s), sys::VolumeSerial(u"/"_s));
    QCOMPARE(sys::VolumeSerial(Text("nada")), 0U);
}

// Where closing any descriptor of a file frees the process's locks on it, asking about an open
// catalogue must not.
TEST(TestSystem, CanReadKeepsLocks) {
    const QString native = folder_.filePath(u"dois.txt"_s);
    QFile holder(native);
    QVERIFY(holder.open(QIODevice::ReadWrite));
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    QCOMPARE(fcntl(holder.handle(), F_SETLK, &lock), 0);
    QVERIFY(sys::CanRead(native));

    QFile other(native);
    QVERIFY(other.open(QIODevice::ReadWrite));
    struct flock probe = {};
    probe.l_type = F_WRLCK;
    QCOMPARE(fcntl(other.handle(), F_OFD_GETLK, &probe), 0);
    QCOMPARE(probe.l_type, short(F_WRLCK));
}

TEST(TestSystem, TellsWhatAFileLiesOn) {
    QVERIFY(!sys::MountOf(folder_.filePath(u"dois.txt"_s)).type.isEmpty());
}
