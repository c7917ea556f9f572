#include "session/travas.h"
#include "support/catalogo.h"
#include "support/frailfolder.h"
#include "support/peer.h"
#include "support/quickkeys.h"
#include "verificar/network.h"

#include <QDirIterator>

namespace {

constexpr char OtherSide[] = "verificar_other_side";

// The other program of the locks' trial.
int PlayOther(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    UseQuickKeys();
    verificar::PlayOther(application.arguments().at(2));
    return 0;
}

}  // namespace

struct TestNetwork : Fixture {
    static verificar::Network Check(const QString& folder) {
        const QTemporaryDir programs;
        const QString other = programs.filePath(QLatin1String(OtherSide));
        QFile::link(QCoreApplication::applicationFilePath(), other);
        return verificar::CheckNetwork(folder, other);
    }

    // With a catalogue in it.
    static std::unique_ptr<FrailFolder> Frail(const char* option) {
        auto frail = std::make_unique<FrailFolder>(List(option));
        const CatalogoDeTeste catalogo;
        QFile::copy(catalogo.Pasta() + u"/Tarvo.mdb"_s, frail->Behind() + u"/Tarvo.mdb"_s);
        return frail;
    }
};

TEST(TestNetwork, anOrdinaryFolder) {
    const CatalogoDeTeste catalogo;
    FecharBancoDados(gWS, gDB);
    const QStringList before = QDir(catalogo.Pasta()).entryList(QDir::AllEntries);
    const verificar::Network network = Check(catalogo.Pasta());
    QCOMPARE(network.faults.join(u'\n'), QString());
    QVERIFY(network.searchPages > 0 && network.searchPages <= network.openPages);
    QCOMPARE(QDir(catalogo.Pasta()).entryList(QDir::AllEntries), before);
    QCOMPARE(network.hints.join(u'\n').remove(QRegularExpression(u"^Gravar com descarga leva.*"_s)),
             QString());
    QCOMPARE(ErrorOf([] { Check(u"/nada"_s); }), int(Erro::FileNotFound));
}

// As on SMB: a lock belongs to the open file.
TEST(TestNetwork, locksOfOpenFiles) {
    const auto frail = Frail("handle-locks");
    if (!frail->IsThere()) {
        QSKIP("this system mounts no file system for this user");
    }
    const verificar::Network network = Check(frail->Seen());
    QCOMPARE((network.faults + network.hints).join(u'\n'), QString());
    // Two of our own read, the first to come is the first to go, and nothing stays locked.
    gCaminho = frail->Seen() + u'\\';
    AbrirSessao();
    {
        const auto two =
            u"SELECT Versao FROM UMREGISTRO UNION ALL "
            "SELECT Versao FROM UMREGISTRO"_s;
        auto first = gDB->OpenRecordset(two, dao::dbOpenForwardOnly);
        const OutroComputador other;
        const auto second = other.banco->OpenRecordset(two, dao::dbOpenForwardOnly);
        first.reset();
    }
    Peer peer(frail->Seen());
    QCOMPARE(peer.Ask("execute UPDATE UMREGISTRO SET VersaoAnterior = 7"), u"0"_s);
    FecharBancoDados(gWS, gDB);
}

TEST(TestNetwork, locksThatHoldNobody) {
    const auto frail = Frail("ignore-locks");
    if (!frail->IsThere()) {
        QSKIP("this system mounts no file system for this user");
    }
    const QString why = FaltaDeTravas(frail->Seen() + u'\\');
    QVERIFY2(why.contains(u"duas vezes"_s), qPrintable(why));
    const QStringList faults = Check(frail->Seen()).faults;
    QCOMPARE(faults.size(), 3);
    QCOMPARE(faults.first(), why);
    QVERIFY(faults.at(1).contains(u"trava de gravação"_s));
    QVERIFY(faults.at(2).contains(u"trava de leitura"_s));
}

TARVO_PROGRAM(OtherSide, PlayOther);
