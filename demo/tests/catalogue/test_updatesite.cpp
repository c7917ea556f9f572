#include "catalogue/updatesite.h"
#include "orders.h"
#include "platform/system/paths.h"
#include "support/test.h"
#include "update/prova.h"

// What is published has been tried out by the publisher's checks, which throw.
struct DemoUpdateSite : Fixture {};

TEST(DemoUpdateSite, HasTwoVersionsOfOneCatalogue) {
    const QTemporaryDir root;
    const demo::Order& order = Pictured();
    const QString site = root.filePath(u"site/tarvo"_s);
    demo::MakeUpdateSite(order, site);

    QCOMPARE(sys::ReadText(site + u"/Versao.txt"_s).trimmed(), u"3"_s);
    const auto keys = LerTextoDasChaves(sys::ReadText(site + u"/ChavesAtualizacao.txt"_s));
    QCOMPARE(ConferirVersao(keys, sys::ReadBytes(site + u"/Versao.sig"_s)).numero, 3);
    QVERIFY(!QFile::exists(site + u"/ChaveSecreta.txt"_s));
    QSet<QString> kinds;
    QString scripts;
    for (const int release : {2, 3}) {
        const QString list = sys::ReadText(site + u"/ListVersao%1.txt"_s.arg(release));
        const QByteArray signatures =
            sys::ReadBytes(site + u"/ListVersao%1.txt.sig"_s.arg(release));
        ConferirLista(keys, release, list.toUtf8(), signatures);  // throws
        for (const QString& line : list.split("\r\n"_L1, Qt::SkipEmptyParts)) {
            const QStringList fields = line.split(u';');
            const QFileInfo file(sys::ToNative(site + u'\\' + fields.at(1)));
            QCOMPARE(file.size(), fields.at(2).toLongLong());
            QVERIFY(!QFileInfo::exists(sys::ToNative(order.folder + u'\\' + fields.at(1))));
            kinds += QString::number(release) + fields.at(1).section(u'\\', 0, 0);
            if (fields.at(0) == "SDB"_L1) {
                scripts += sys::ReadText(file.filePath());
            }
        }
    }
    // Each of the two with its companion for dense screens.
    QCOMPARE(QDir(site + u"/Figuras"_s).entryList({u"*@3x.png"_s}).size(), 2);
    QCOMPARE(kinds, (QSet<QString>{u"2Atualizacao"_s, u"2Figuras"_s, u"2FotoPeca"_s,
                                   u"3Atualizacao"_s, u"3Figuras"_s, u"3FotoPeca"_s}));
    QVERIFY(scripts.endsWith("R:\r\n"_L1));
    QVERIFY(scripts.contains("INSERT INTO PECA "_L1));
    const auto catalogue = Open(order.folder);
    QCOMPARE(catalogue->Value("SELECT Versao FROM UMREGISTRO").toInt(), 1);
    QCOMPARE(catalogue->Value("SELECT Count(*) FROM PECA").toInt(), 60);

    catalogue->Run("UPDATE UMREGISTRO SET Versao = 3");
    QVERIFY_THROWS_EXCEPTION(Erro, demo::MakeUpdateSite(order, site));
}
