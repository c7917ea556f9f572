#include "platform/system/paths.h"
#include "support/test.h"

#include <fcntl.h>

class TestPaths : public QObject {
    Q_OBJECT

    QTemporaryDir folder_;
    QString Text(const AnyText& rest) const { return folder_.path() + u'\\' + rest; }

private Q_SLOTS:
    void initTestCase() {
        for (const auto& name : {u"FotoPeca/Ab12.JPG"_s, u"FotoPeca/Séries/Válvula É.bmp"_s,
                                 u"dois.txt"_s, u"DOIS.txt"_s}) {
            Write(folder_.filePath(name));
        }
    }

    void ToNative_data() {
        const Table<QString, QString> row("text", "native");
        row("as written", "FotoPeca\\Ab12.JPG", "FotoPeca/Ab12.JPG");
        row("another case", "FOTOPECA\\aB12.jpg", "FotoPeca/Ab12.JPG");
        row("accents", "fotopeca\\SÉRIES\\VÁLVULA é.BMP", "FotoPeca/Séries/Válvula É.bmp");
        row("an accent counts", u"fotopeca\\series\\x"_s, "FotoPeca/series/x");
        row("missing file", "fotopeca\\Nada.jpg", "FotoPeca/Nada.jpg");
        row("missing folder", "Figuras\\Nada.jpg", "Figuras/Nada.jpg");
        row("exact name wins", "dois.txt", "dois.txt");
        row("one of two", "Dois.txt", "DOIS.txt");
        row("final separator", "fotopeca\\", "FotoPeca/");
        row("both separators", "FotoPeca/ab12.jpg", "FotoPeca/Ab12.JPG");
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
        QCOMPARE(sys::VolumeSerial(Text("nada")), 0U);
    }

    void CanRead_data() {
        const Table<QString, bool> row("text", "expected");
        row("file", "fotopeca\\ab12.jpg", true);
        row("folder", "FotoPeca", false);
        row("missing", "Nada", false);
        row("line end", "dois.txt\r\n", false);
        row("zero inside", u"dois.txt"_s + QChar(0) + u"\\Tarvo.mdb"_s, false);
        row("endless", QString(100'000, u'a'), false);
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
        const Table<QByteArray, QString> row("bytes", "text");
        row("utf-8", "V\xC3\xA1lvula \xE2\x80\x93", "Válvula –");
        row("mark in front",
            "\xEF\xBB\xBF"
            "C:\\",
            "C:\\");
        row("old machine", "V\xE1lvula \x96 \x80", "Válvula – €");
        row("cut utf-8", "a\xC3", "aÃ");
        row("empty place", "\x81\x9F\xFF", u"\u0081Ÿÿ"_s);
        row("zero inside", QByteArray("a\0b", 3), u"a"_s + QChar(0) + u'b');
        row("line ends stay", "a\r\n", "a\r\n");
    }
    void DecodeText() {
        QFETCH(QByteArray, bytes);
        QTEST(sys::DecodeText(bytes), "text");
    }

    void Errors() {
        QCOMPARE(ErrorOf([this] { sys::ReadText(Text("nada")); }), 53);
        QCOMPARE(ErrorOf([this] { sys::ReadText(Text("FotoPeca")); }), 75);
        QCOMPARE(ErrorOf([this] { sys::Delete(Text("nada")); }), 53);
        QCOMPARE(ErrorOf([this] { sys::Delete(Text("FotoPeca")); }), 75);
        QCOMPARE(ErrorOf([this] { sys::MakeDirectory(Text("fotopeca")); }), 75);
        QCOMPARE(ErrorOf([this] { sys::MakeDirectory(Text("nada\\aqui")); }), 76);
    }

    void MakeAndDelete() {
        sys::MakeDirectory(Text("fotopeca\\Nova"));
        const QString made = folder_.filePath(u"FotoPeca/Nova/b.txt"_s);
        Write(made, "conteúdo");
        QVERIFY(QFile::setPermissions(made, QFileDevice::ReadOwner));
        sys::Delete(Text("FotoPeca\\NOVA\\B.txt"));
        QVERIFY(!QFile::exists(made));
    }
};

TARVO_TEST(TestPaths);
#include "test_paths.moc"
