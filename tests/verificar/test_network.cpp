#include "support/cases.h"
#include "support/catalogo.h"
#include "support/frailfolder.h"
#include "support/peer.h"
#include "support/quickkeys.h"
#include "support/servers.h"
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
    // What is wrong, and behind a slash what may be meant so.
    static QString Check(const QString& folder) {
        const QTemporaryDir programs;
        const QString other = programs.filePath(QLatin1String(OtherSide));
        QFile::link(QCoreApplication::applicationFilePath(), other);
        const verificar::Network network = verificar::CheckNetwork(folder, other);
        return (network.faults + List("/") + network.hints).join(u'\n');
    }

    // With a catalogue in it.
    static std::unique_ptr<FrailFolder> Frail(const AnyText& option) {
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
    QCOMPARE(Check(catalogo.Pasta()), u"/"_s);
    QCOMPARE(ErrorOf([] { Check(u"/nada"_s); }), int(Erro::FileNotFound));
    // With another side that never gets at the file.
    const verificar::Network network = verificar::CheckNetwork(catalogo.Pasta(), u"/bin/false"_s);
    QCOMPARE(network.faults,
             List("Um arquivo que ninguém mais usa continua travado ou não pode ser "
                  "aberto por outro programa."));
    QVERIFY(network.searchPages > 0 && network.searchPages <= network.openPages);
    QVERIFY(network.searchMs > 0 && network.flushMs > 0 && network.openMs < 1e6);
    QCOMPARE(QDir(catalogo.Pasta()).entryList(QDir::AllEntries), before);
}

// As on SMB: a lock belongs to the open file.
TEST(TestNetwork, locksOfOpenFiles) {
    const auto frail = Frail("handle-locks");
    if (!frail->IsThere()) {
        QSKIP("this system mounts no file system for this user");
    }
    QCOMPARE(Check(frail->Seen()), u"/"_s);
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
    for (auto [one] : Cases(TARVO_CASES "/locks.data")) {
        const auto frail = Frail(one.Take(u'<').first());
        if (!frail->IsThere()) {
            QSKIP("this system mounts no file system for this user");
        }
        const QString told = one.lines.join(u'\n');
        QCOMPARE(Like(Check(frail->Seen()), told), told);
    }
}

TARVO_PROGRAM(OtherSide, PlayOther);
