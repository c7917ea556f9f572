#include "session/banco.h"
#include "session/global.h"
#include "session/travas.h"
#include "support/catalogo.h"
#include "support/frailfolder.h"
#include "verificar/network.h"

#include <QDirIterator>

class TestNetwork : public QObject {
    Q_OBJECT

    static verificar::Network Check(const QString& folder) {
        return verificar::CheckNetwork(folder, QStringLiteral(TARVO_OTHER_SIDE));
    }

private Q_SLOTS:
    void anOrdinaryFolder() {
        const CatalogoDeTeste catalogo;
        FecharBancoDados(gWS, gDB);
        const QStringList before = QDir(catalogo.Pasta()).entryList(QDir::AllEntries);
        const verificar::Network network = Check(catalogo.Pasta());
        QCOMPARE(network.faults.join(u'\n'), QString());
        QVERIFY(network.openPages > 0 && network.searchPages > 0);
        QCOMPARE(QDir(catalogo.Pasta()).entryList(QDir::AllEntries), before);
        QVERIFY(verificar::Report(catalogo.Pasta(), network)
                    .contains(u"As travas de arquivo valem nesta pasta."_s));
        QCOMPARE(ErrorOf([] { Check(u"/nada"_s); }), int(Erro::FileNotFound));
    }

    void locksThatHoldNobody() {
        FrailFolder frail(List("ignore-locks"));
        if (!frail.IsThere()) {
            QSKIP("this system mounts no file system for this user");
        }
        {
            const CatalogoDeTeste catalogo;
            QVERIFY(
                QFile::copy(catalogo.Pasta() + u"/Tarvo.mdb"_s, frail.Behind() + u"/Tarvo.mdb"_s));
        }
        const QString why = FaltaDeTravas(frail.Seen() + u'\\');
        QVERIFY2(why.contains(u"duas vezes"_s), qPrintable(why));
        const QStringList faults = Check(frail.Seen()).faults;
        QCOMPARE(faults.size(), 3);
        QCOMPARE(faults.first(), why);
        QVERIFY(faults.at(1).contains(u"trava de gravação"_s));
        QVERIFY(faults.at(2).contains(u"trava de leitura"_s));
    }
};

TARVO_TEST(TestNetwork);
#include "test_network.moc"
