#include "platform/system/paths.h"
#include "support/test.h"

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

    void DecodeText_data() {
        const Table<QByteArray, QString> row("bytes", "text");
        row("utf-8", "V\xC3\xA1lvula \xE2\x80\x93", "Válvula –");
        row("mark in front", "\357\273\277C:\\", "C:\\");
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
