#include "platform/erro.h"
#include "platform/system/paths.h"
#include "support/testmain.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

void Write(const QString& native, const QByteArray& bytes = "x") {
    QFile file(native);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

int ErrorOf(const std::function<void()>& act) {
    try {
        act();
    } catch (const Erro& erro) {
        return erro.Number();
    }
    return 0;
}

}  // namespace

class TestPaths : public QObject {
    Q_OBJECT

    QTemporaryDir folder_;
    QString Text(const QString& rest) const { return folder_.path() + u'\\' + rest; }

private Q_SLOTS:
    void initTestCase() {
        QVERIFY(folder_.isValid());
        QVERIFY(QDir(folder_.path()).mkpath(u"FotoPeca/Séries"_s));
        for (const auto& name : {u"FotoPeca/Ab12.JPG"_s, u"FotoPeca/Séries/Válvula É.bmp"_s,
                                 u"dois.txt"_s, u"DOIS.txt"_s}) {
            Write(folder_.filePath(name));
        }
    }

    void ToNative_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("native");
        QTest::newRow("as written") << u"FotoPeca\\Ab12.JPG"_s << u"FotoPeca/Ab12.JPG"_s;
        QTest::newRow("another case") << u"FOTOPECA\\aB12.jpg"_s << u"FotoPeca/Ab12.JPG"_s;
        QTest::newRow("accents") << u"fotopeca\\SÉRIES\\VÁLVULA é.BMP"_s
                                 << u"FotoPeca/Séries/Válvula É.bmp"_s;
        QTest::newRow("an accent counts") << u"fotopeca\\series\\x"_s << u"FotoPeca/series/x"_s;
        QTest::newRow("missing file") << u"fotopeca\\Nada.jpg"_s << u"FotoPeca/Nada.jpg"_s;
        QTest::newRow("missing folder") << u"Figuras\\Nada.jpg"_s << u"Figuras/Nada.jpg"_s;
        QTest::newRow("exact name wins") << u"dois.txt"_s << u"dois.txt"_s;
        QTest::newRow("one of two") << u"Dois.txt"_s << u"DOIS.txt"_s;
        QTest::newRow("final separator") << u"fotopeca\\"_s << u"FotoPeca/"_s;
        QTest::newRow("both separators") << u"FotoPeca/ab12.jpg"_s << u"FotoPeca/Ab12.JPG"_s;
    }
    void ToNative() {
        QFETCH(QString, text);
        QFETCH(QString, native);
        QCOMPARE(sys::ToNative(Text(text)), folder_.filePath(native));

        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(folder_.path()));
        QCOMPARE(sys::ToNative(text), native);
        QDir::setCurrent(before);
    }

    void VolumeOfDrive() {
        QCOMPARE(sys::ToNative(u"C:\\"_s), u"/"_s);
        QCOMPARE(sys::VolumeSerial(u"C:\\"_s), sys::VolumeSerial(u"/"_s));
        QCOMPARE(sys::VolumeSerial(Text(u"nada"_s)), 0U);
    }

    void CanRead_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("expected");
        QTest::newRow("file") << u"fotopeca\\ab12.jpg"_s << true;
        QTest::newRow("folder") << u"FotoPeca"_s << false;
        QTest::newRow("missing") << u"Nada"_s << false;
        QTest::newRow("line end") << u"dois.txt\r\n"_s << false;
        QTest::newRow("zero inside") << u"dois.txt"_s + QChar(0) + u"\\Tarvo.mdb"_s << false;
        QTest::newRow("endless") << QString(100'000, u'a') << false;
    }
    void CanRead() {
        QFETCH(QString, text);
        QTEST(sys::CanRead(Text(text)), "expected");
    }

    // Where closing any descriptor of a file frees the process's locks on it, asking about an open
    // catalogue must not.
    void CanReadKeepsLocks() {
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

    void DecodeText_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("utf-8") << QByteArray("V\xC3\xA1lvula \xE2\x80\x93") << u"Válvula –"_s;
        QTest::newRow("mark in front") << QByteArray(
                                              "\xEF\xBB\xBF"
                                              "C:\\")
                                       << u"C:\\"_s;
        QTest::newRow("old machine") << QByteArray("V\xE1lvula \x96 \x80") << u"Válvula – €"_s;
        QTest::newRow("cut utf-8") << QByteArray("a\xC3") << u"aÃ"_s;
        QTest::newRow("empty place") << QByteArray("\x81\x9F\xFF") << u"\u0081Ÿÿ"_s;
        QTest::newRow("zero inside") << QByteArray("a\0b", 3) << u"a"_s + QChar(0) + u'b';
        QTest::newRow("line ends stay") << QByteArray("a\r\n") << u"a\r\n"_s;
    }
    void DecodeText() {
        QFETCH(QByteArray, bytes);
        QTEST(sys::DecodeText(bytes), "text");
    }

    void Errors() {
        QCOMPARE(ErrorOf([this] { sys::ReadText(Text(u"nada"_s)); }), 53);
        QCOMPARE(ErrorOf([this] { sys::ReadText(Text(u"FotoPeca"_s)); }), 75);
        QCOMPARE(ErrorOf([this] { sys::Delete(Text(u"nada"_s)); }), 53);
        QCOMPARE(ErrorOf([this] { sys::Delete(Text(u"FotoPeca"_s)); }), 75);
        QCOMPARE(ErrorOf([this] { sys::MakeDirectory(Text(u"fotopeca"_s)); }), 75);
        QCOMPARE(ErrorOf([this] { sys::MakeDirectory(Text(u"nada\\aqui"_s)); }), 76);
    }

    void MakeAndDelete() {
        sys::MakeDirectory(Text(u"fotopeca\\Nova"_s));
        const QString made = folder_.filePath(u"FotoPeca/Nova/b.txt"_s);
        Write(made, "conteúdo");
        QVERIFY(QFile::setPermissions(made, QFileDevice::ReadOwner));
        sys::Delete(Text(u"FotoPeca\\NOVA\\B.txt"_s));
        QVERIFY(!QFile::exists(made));
    }
};

TARVO_TEST(TestPaths);
#include "test_paths.moc"
