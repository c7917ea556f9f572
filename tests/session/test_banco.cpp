#include "support/catalogo.h"
#include "support/database.h"
#include "support/peer.h"
#include "support/windows.h"

#include <QCryptographicHash>
#include <QStandardPaths>

const QString Vehicles = u"SELECT Count(*) FROM VEICULO"_s;
const QString Spread =
    u"SELECT Max(CodigoClienteConcorrente) - Min(CodigoClienteConcorrente) FROM VEICULO"_s;
const QString Advance =
    u"UPDATE VEICULO SET CodigoClienteConcorrente = CodigoClienteConcorrente + 1"_s;

struct TestBanco : Fixture {
    CatalogoDeTeste catalogue_;

    // How often this program holds the catalogue open, where a system tells.
    static qsizetype Handles() {
        const auto files = QDir(u"/proc/self/fd"_s).entryInfoList(QDir::System | QDir::Files);
        return std::ranges::count_if(files, [](const QFileInfo& file) {
            return file.symLinkTarget().endsWith("Tarvo.mdb"_L1);
        });
    }

    TestBanco() {
        gDB->GetConnection()->Run(
            "WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 2000) "
            "INSERT INTO VEICULO SELECT i, 'Caminhão ' || i, 1 FROM n");
        catalogue_.Executar(Inserir("PECA", {"1, 'A1', 'Válvula', NULL, 30, 40",
                                             "2, 'A2', 'Cilindro', NULL, 31, NULL"}) +
                            Inserir("PECA_COMPONENTE", {"1, '   1', 10, 2"}) +
                            Inserir("PECA_COMPONENTE_JOGOREPARO", {"1, '   1', 20"}) +
                            Inserir("VEICULO_PECA", {"5, 1"}));
    }
};

TEST(TestBanco, AnOldCatalogueIsToldFromOtherFiles) {
    FecharBancoDados(gWS, gDB);
    const auto complaint = [this](const QByteArray& content) {
        Write(catalogue_.Pasta() + u"/Tarvo.mdb"_s, content);
        return SaidBy([] { OutroComputador(); });
    };
    const QByteArray mark("\0\1\0\0Standard Jet DB\0", 20);
    const QString old = complaint(mark + QByteArray(9000, 'x'));
    QVERIFY(old.startsWith(u"3343 "_s));
    QVERIFY(
        old.endsWith(u"\nÉ um catálogo antigo: o tarvo-importar faz dele um catálogo de hoje."_s));
    QVERIFY(!complaint(QByteArray(9000, 'x')).contains(u"tarvo-importar"_s));
}

// A release with another password could not open the catalogues that are out there.
TEST(TestBanco, ThePasswordStays) {
    QCOMPARE(
        QCryptographicHash::hash(SenhaBancoDados().toUtf8(), QCryptographicHash::Sha256).toHex(),
        "f6d69d0126a032721d7415d3ffb49b4d06a6200271d8dd6afe8988c573eba375"_ba);
}

TEST(TestBanco, TellsWhatIsInUseAndWhatAPartHas) {
    for (const auto& [kind, code] :
         {std::pair(u"COM"_s, 10), {u"JRE"_s, 20}, {u"VEI"_s, 5}, {u"FPC"_s, 31}}) {
        QVERIFY2(CodigoEmUso(kind, code) && !CodigoEmUso(kind, 1), qPrintable(kind));
    }
    QVERIFY(CodigoEmUso(u"PCA"_s, 777));  // any part is
    QCOMPARE(ErrorOf([] { CodigoEmUso(u"XXX"_s, 1); }), 3129);
    QVERIFY(PossuiFiguraDetalhada(1) && PossuiListaComponentes(1));
    QVERIFY(!PossuiFiguraDetalhada(2) && !PossuiFiguraDetalhada(3));  // Null, no such part
    QVERIFY(!PossuiListaComponentes(2));
}

TEST(TestBanco, WritesTheLastCheckForAllToSee) {
    // A result of which the grid has read no more than it shows.
    const auto pending = gDB->OpenRecordset(u"SELECT * FROM VEICULO"_s);
    pending->ReadUpTo(10);
    int rounds = 0;  // what waits runs twice, one after the other
    QTimer::singleShot(0, [&] {
        ++rounds;
        QTimer::singleShot(0, [&] { ++rounds; });
    });
    GravarUltimaVerificacao(u"DateSerial(2024,2,29)+TimeSerial(12,0,0)"_s, u"1"_s);
    QCOMPARE(rounds, 2);
    QCOMPARE(Valor("SELECT DataUltimaVerificacao FROM UMREGISTRO").toDouble(), 45351.5);
    pending->MoveLast();
    QCOMPARE(pending->RecordCount(), 2000);
    // Somebody else's writing is waited for, and the window is painted meanwhile.
    OutroComputador outro;
    outro.sessao->BeginTrans();
    outro.banco->Execute(u"UPDATE UMREGISTRO SET VersaoAnterior = 5"_s);
    QTimer::singleShot(200, [&outro] { outro.sessao->Rollback(); });
    GravarUltimaVerificacao(QString(), u"0"_s);
    QCOMPARE(Valor("SELECT FlagErroUltimaVerificacao FROM UMREGISTRO"), u"0"_s);
    QCOMPARE(Valor("SELECT DataUltimaVerificacao FROM UMREGISTRO").toDouble(), 45351.5);
    gCaminho = u"\\nada\\"_s;
    GravarUltimaVerificacao(QString(), QString());  // opens nothing
    QCOMPARE(ErrorOf([] { GravarUltimaVerificacao(QString(), u"1"_s); }), 3044);
    gCaminho = catalogue_.Pasta() + u'\\';
}

TEST(TestBanco, EachProgramHasItsOwnCustomer) {
    const QString number = u"SELECT NumeroClienteConcorrente FROM REFERENCIACRUZADA1"_s;
    const QString chosen = u"SELECT CodigoClienteConcorrente FROM CODIGOCLIENTECONCORRENTE"_s;
    catalogue_.Executar(Inserir("REFERENCIACRUZADA", {"17, 'A1', 'MEU'", "18, 'A1', 'SEU'"}));
    const QString file = catalogue_.Pasta() + u"/Tarvo.mdb"_s;
    Peer peer(catalogue_.Pasta());
    const QByteArray before = sys::ReadBytes(file);
    GravarClienteConcorrente(17);
    QCOMPARE(peer.Ask("run UPDATE CODIGOCLIENTECONCORRENTE SET CodigoClienteConcorrente = 18"),
             u"0"_s);
    QCOMPARE(Valor(number), u"MEU"_s);
    QCOMPARE(peer.Ask("value "_L1 + number), u"SEU"_s);
    QCOMPARE(sys::ReadBytes(file), before);

    // A script has the file's own row, and a view that it changes is seen after the renewal.
    OutroComputador script;
    QCOMPARE(script.banco->OpenRecordset(chosen)->Fields(0).Value(), QVariant(-5));
    script.banco->GetConnection()->Run(
        "DROP VIEW REFERENCIACRUZADA1; CREATE VIEW REFERENCIACRUZADA1 AS SELECT NumeroTarvo,"
        " 'NOVO' AS NumeroClienteConcorrente FROM REFERENCIACRUZADA");
    RenovarSessao();
    QCOMPARE(Valor(number), u"NOVO"_s);
}

TEST(TestBanco, ChoosesWhereNobodyMayWrite) {
    BoxAnswers boxes;
    FecharBancoDados(gWS, gDB);
    QVERIFY(!gWS && !gDB);
    AbrirBancoDados(gWS, u"gWS"_s, gDB, true);
    RenovarSessao();
    GravarClienteConcorrente(18);
    QVERIFY(boxes.Boxes().isEmpty());
    gDB->Close();
    GravarClienteConcorrente(18);
    FecharBancoDados(gWS, gDB);
    AbrirSessao();
    QCOMPARE(boxes.Texts().size(), 1);
    QVERIFY(boxes.Texts().first().startsWith(u"Erro nº: 3420\n"_s));
}

TEST(TestBanco, LocksOutOneComputerAtATime) {
    Peer peer(catalogue_.Pasta());
    QCOMPARE(peer.Opened(), u"0"_s);
    QCOMPARE(peer.Ask("lock True"), u"1"_s);
    QVERIFY(!BloquearBancoDados(true));
    // Everything else goes on meanwhile, on both sides.
    GravarUltimaVerificacao(QString(), u"1"_s);
    BoxAnswers boxes;
    GravarClienteConcorrente(17);
    QVERIFY(boxes.Boxes().isEmpty());
    QCOMPARE(peer.Ask("run "_L1 + Advance), u"0"_s);
    QCOMPARE(peer.Ask("lock False"), u"1"_s);

    const qsizetype handles = Handles();
    QVERIFY(BloquearBancoDados(true));
    QCOMPARE(peer.Ask("lock True"), u"0"_s);
    QVERIFY(BloquearBancoDados(false));
    QCOMPARE(Handles(), handles);

    QCOMPARE(peer.Ask("lock True"), u"1"_s);
    peer.Kill();
    QVERIFY(BloquearBancoDados(true));
    QVERIFY(BloquearBancoDados(false));
    QCOMPARE(Valor("SELECT Count(*) FROM CONTROLETRAN"), u"1"_s);
}

TEST(TestBanco, ReadsAndWritesOnTwoComputersAtOnce) {
    constexpr int Times = 30;
    const QString count = u"SELECT CodigoClienteConcorrente FROM VEICULO WHERE CodigoVeiculo = 9"_s;
    const int before = Valor(count).toInt();
    Peer peer(catalogue_.Pasta());
    for (int i = 0; i < Times; ++i) {
        peer.Tell("run "_L1 + Advance);
        const auto pending = gDB->OpenRecordset(u"SELECT * FROM VEICULO"_s);
        pending->ReadUpTo(5);
        gDB->Execute(Advance, dao::dbFailOnError);
        QCOMPARE(Valor(Spread), u"0"_s);
    }
    for (int i = 0; i < Times; ++i) {
        QCOMPARE(peer.Answer(), u"0"_s);
    }
    QCOMPARE(Valor(count).toInt(), before + 2 * Times);
}

TEST(TestBanco, StaysSoundWhenAWriterDies) {
    for (int round = 0; round < 8; ++round) {
        Peer peer(catalogue_.Pasta());
        peer.Tell("loop "_L1 + Advance);
        QCOMPARE(peer.Answer(), u"0"_s);
        QTest::qSleep(3 + 5 * round);
        peer.Kill();
        QCOMPARE(Valor(Spread), u"0"_s);
        QCOMPARE(Valor(Vehicles), u"2000"_s);
    }
    dao::Connection& connection = *gDB->GetConnection();
    QCOMPARE(connection.Value("PRAGMA integrity_check"), QVariant(u"ok"_s));
    QVERIFY(!connection.Value("PRAGMA cipher_integrity_check").isValid());
}

TEST(TestBanco, TellsAFolderThatCannotBeWritten) {
    FecharBancoDados(gWS, gDB);
    const QString folder = catalogue_.Pasta();
    QFile::setPermissions(folder + u"/Tarvo.mdb"_s, QFile::Permissions(0x4044));  // r--r--r--
    QFile::setPermissions(folder, QFile::Permissions(0x5055));                    // r-xr-xr-x
    // Permissions bind nobody who is root, so the other computer is somebody else.
    const QString other = QStandardPaths::findExecutable(u"setpriv"_s);
    QStringList through;
    if (QFile(folder + u"/nova"_s).open(QIODevice::WriteOnly)) {
        if (other.isEmpty()) {
            QSKIP("this user may write everywhere, and there is no setpriv to become another");
        }
        through = {other, u"--reuid=65534"_s, u"--regid=65534"_s, u"--clear-groups"_s};
    }
    Peer peer(folder, through);
    QCOMPARE(peer.Opened(), u"0"_s);
    QCOMPARE(peer.Ask("value "_L1 + Vehicles), u"2000"_s);
    QCOMPARE(peer.Ask("run "_L1 + Advance), u"erro 3027"_s);
    QCOMPARE(peer.Ask("lock True"), u"0"_s);
    QFile::setPermissions(folder, QFile::Permissions(0x7000));
}
