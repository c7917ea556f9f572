#include "platform/system/output.h"
#include "support/test.h"

struct TestPaths : Fixture {
    QTemporaryDir folder_;
    QString Text(const AnyText& rest) const { return folder_.path() + u'\\' + rest; }

    TestPaths() {
        Write(folder_.filePath(u"FotoPeca/Ab12.JPG"_s));
        Write(folder_.filePath(u"dois.txt"_s));
    }
};

TEST(TestPaths, CanRead) {
    for (const auto& [text, expected] : Each<QString, bool>{
             {"file", "fotopeca\\ab12.jpg", true},
             {"folder", "FotoPeca", false},
             {"missing", "Nada", false},
             {"zero inside", u"dois.txt"_s + QChar(0) + u"\\Tarvo.mdb"_s, false},
         }) {
        QCOMPARE(sys::CanRead(Text(text)), expected);
    }
}

TEST(TestPaths, DecodeText) {
    for (const auto& [bytes, text] : Each<QByteArray, QString>{
             {"utf-8", "V\xC3\xA1lvula \xE2\x80\x93", "Válvula –"},
             {"mark in front", "\357\273\277C:\\", "C:\\"},
             {"old machine", "V\xE1lvula \x96 \x80", "Válvula – €"},
             {"cut utf-8", "a\xC3", "aÃ"},
             {"empty place", "\x81\x9F\xFF", u"\u0081Ÿÿ"_s},
             {"zero inside", QByteArray("a\0b", 3), u"a"_s + QChar(0) + u'b'},
         }) {
        QCOMPARE(sys::DecodeText(bytes), text);
    }
}

TEST(TestPaths, Errors) {
    QCOMPARE(ErrorOf([this] { sys::ReadText(Text("nada")); }), 53);
    QCOMPARE(ErrorOf([this] { sys::ReadText(Text("FotoPeca")); }), 75);
    QCOMPARE(ErrorOf([this] { sys::Delete(Text("nada")); }), 53);
    QCOMPARE(ErrorOf([this] { sys::Delete(Text("FotoPeca")); }), 75);
    QCOMPARE(ErrorOf([this] { sys::MakeDirectory(Text("fotopeca")); }), 75);
    QCOMPARE(ErrorOf([this] { sys::MakeDirectory(Text("nada\\aqui")); }), 76);
}

TEST(TestPaths, MakeAndDelete) {
    sys::MakeDirectory(Text("fotopeca\\Nova"));
    const QString made = folder_.filePath(u"FotoPeca/Nova/b.txt"_s);
    Write(made, "conteúdo");
    QVERIFY(QFile::setPermissions(made, QFileDevice::ReadOwner));
    sys::Delete(Text("FotoPeca\\NOVA\\B.txt"));
    QVERIFY(!QFile::exists(made));
}

TEST(TestPaths, IsInside) {
    for (const auto& [folder, path, inside] : Each<QString, QString, bool>{
             {"itself", "FotoPeca", "fotopeca", true},
             {"what is there", "FotoPeca", "fotopeca\\ab12.jpg", true},
             {"what may come", "FotoPeca", "FotoPeca\\nova\\a.png", true},
             {"out again", "FotoPeca", "FotoPeca\\..\\dois.txt", false},
             {"a longer name", "FotoPeca", "FotoPecas\\a.png", false},
             {"in a folder that is not there", "Nada", "Nada\\a.png", false},
         }) {
        QCOMPARE(sys::IsInside(Text(folder), Text(path)), inside);
    }
}

TEST(TestPaths, WholeFiles) {
    const QString path = Text("inteiro.txt");
    for (const auto access : {sys::Access::OwnerOnly, sys::Access::Shared}) {
        sys::WriteWhole(path, "conteúdo", access);
        QCOMPARE(sys::ReadText(path), u"conteúdo"_s);
    }
    QCOMPARE(ErrorOf([&] { sys::WriteWhole(Text("nada\\a.txt"), "x"); }), 76);
    QCOMPARE(ErrorOf([&] { sys::WriteWhole(Text("FotoPeca"), "x"); }), 75);
    sys::Flush(path);
    QCOMPARE(ErrorOf([&] { sys::Flush(Text("nada")); }), 53);
    QCOMPARE(ErrorOf([&] { sys::Replace(Text("nada"), path); }), 53);
    QCOMPARE(ErrorOf([&] { sys::Replace(path, Text("FotoPeca")); }), 75);
    QCOMPARE(ErrorOf([&] { sys::Replace(path, Text("nada\\a.txt")); }), 75);
    sys::Replace(path, Text("DOIS.TXT"));
    QVERIFY(!sys::Exists(path) && sys::ReadText(Text("DOIS.TXT")) == u"conteúdo"_s);
}
