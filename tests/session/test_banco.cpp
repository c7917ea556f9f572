#include "platform/dao/sqlite.h"
#include "platform/erro.h"
#include "session/banco.h"
#include "session/esquema.h"
#include "session/global.h"
#include "support/database.h"
#include "support/testmain.h"
#include "support/windows.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using testing_support::ErrorOf;

namespace {

// Another computer; see peer.cpp for what it can be told.
class Peer {
public:
    explicit Peer(const QString& folder, const QStringList& through = {}) {
        QStringList command = through;
        command << QStringLiteral(TARVO_PEER) << folder;
        process_.start(command.takeFirst(), command);
        opened_ = Answer();
    }
    ~Peer() { Kill(); }

    const QString& Opened() const { return opened_; }

    void Tell(const QString& line) { process_.write(line.toUtf8() + '\n'); }

    QString Answer() {
        while (!process_.canReadLine()) {
            if (!process_.waitForReadyRead(20000)) {
                return QStringLiteral("no answer");
            }
        }
        return QString::fromUtf8(process_.readLine()).trimmed();
    }

    QString Ask(const QString& line) {
        Tell(line);
        return Answer();
    }

    // As a power cut would: nothing is let go in order.
    void Kill() {
        process_.kill();
        process_.waitForFinished();
    }

private:
    QProcess process_;
    QString opened_;
};

QVariant Value(const QString& sql) {
    return gDB->OpenRecordset(sql)->Fields(0).Value();
}

const QString Vehicles = QStringLiteral("SELECT Count(*) FROM VEICULO");
const QString Spread = QStringLiteral(
    "SELECT Max(CodigoClienteConcorrente) - Min(CodigoClienteConcorrente) FROM VEICULO");
const QString Advance =
    QStringLiteral("UPDATE VEICULO SET CodigoClienteConcorrente = CodigoClienteConcorrente + 1");

}  // namespace

class TestBanco : public QObject {
    Q_OBJECT

private:
    QTemporaryDir folder_;

private Q_SLOTS:
    void initTestCase() {
        gCaminho = folder_.path() + u'\\';
        CriarCatalogo(gCaminho + QLatin1String("Tarvo.mdb"), SenhaBancoDados());
        AbrirBancoDados(gWS, QStringLiteral("gWS"), gDB, false);
        gDB->GetConnection()->Run(
            "WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 2000)"
            "INSERT INTO VEICULO SELECT i, 'Caminhão ' || i, 0 FROM n;"
            "INSERT INTO PECA VALUES (1, 'A1', 'Válvula', NULL, 30, 40);"
            "INSERT INTO PECA VALUES (2, 'A2', 'Cilindro', NULL, 31, NULL);"
            "INSERT INTO PECA_COMPONENTE VALUES (1, '   1', 10, 2);"
            "INSERT INTO PECA_COMPONENTE_JOGOREPARO VALUES (1, '   1', 20);"
            "INSERT INTO VEICULO_PECA VALUES (5, 1);");
    }

    void cleanupTestCase() { FecharBancoDados(gWS, gDB); }

    void TellsWhatIsInUse_data() {
        QTest::addColumn<QString>("tipo");
        QTest::addColumn<int>("codigo");
        QTest::addColumn<bool>("emUso");
        QTest::newRow("COM") << QStringLiteral("COM") << 10 << true;
        QTest::newRow("COM none") << QStringLiteral("COM") << 1 << false;
        QTest::newRow("JRE") << QStringLiteral("JRE") << 20 << true;
        QTest::newRow("JRE none") << QStringLiteral("JRE") << 1 << false;
        QTest::newRow("VEI") << QStringLiteral("VEI") << 5 << true;
        QTest::newRow("VEI none") << QStringLiteral("VEI") << 1 << false;
        QTest::newRow("FPC") << QStringLiteral("FPC") << 31 << true;
        QTest::newRow("FPC none") << QStringLiteral("FPC") << 1 << false;
        QTest::newRow("PCA any") << QStringLiteral("PCA") << 777 << true;
    }

    void TellsWhatIsInUse() {
        QFETCH(QString, tipo);
        QFETCH(int, codigo);
        QFETCH(bool, emUso);
        QCOMPARE(CodigoEmUso(tipo, codigo), emUso);
    }

    void TellsWhatAPartHas() {
        QVERIFY(PossuiFiguraDetalhada(1));
        QVERIFY(!PossuiFiguraDetalhada(2));  // Null
        QVERIFY(!PossuiFiguraDetalhada(3));  // no such part
        QVERIFY(PossuiListaComponentes(1));
        QVERIFY(!PossuiListaComponentes(2));
        QCOMPARE(ErrorOf([] { CodigoEmUso(QStringLiteral("XXX"), 1); }), 3129);
    }

    void WritesTheLastCheckForAllToSee() {
        // A result of which the grid has read no more than it shows.
        const auto pending = gDB->OpenRecordset(QStringLiteral("SELECT * FROM VEICULO"));
        pending->ReadUpTo(10);
        GravarUltimaVerificacao(QStringLiteral("DateSerial(2024,2,29)+TimeSerial(12,0,0)"),
                                QStringLiteral("1"));
        QCOMPARE(Value(QStringLiteral("SELECT DataUltimaVerificacao FROM UMREGISTRO")).toDouble(),
                 45351.5);
        pending->MoveLast();
        QCOMPARE(pending->RecordCount(), 2000);
        GravarUltimaVerificacao(QString(), QStringLiteral("0"));
        QCOMPARE(Value(QStringLiteral("SELECT FlagErroUltimaVerificacao FROM UMREGISTRO")), 0);
        QCOMPARE(Value(QStringLiteral("SELECT DataUltimaVerificacao FROM UMREGISTRO")).toDouble(),
                 45351.5);
        gCaminho = QStringLiteral("\\nada\\");
        GravarUltimaVerificacao(QString(), QString());  // opens nothing
        QCOMPARE(ErrorOf([] { GravarUltimaVerificacao(QString(), QStringLiteral("1")); }), 3044);
        gCaminho = folder_.path() + u'\\';
    }

    void GoesOnWhenTheSelectionCannotBeWritten() {
        GravarClienteConcorrente(17);
        QCOMPARE(
            Value(QStringLiteral("SELECT CodigoClienteConcorrente FROM CODIGOCLIENTECONCORRENTE")),
            17);
        testing_support::BoxAnswers boxes;
        FecharBancoDados(gWS, gDB);
        AbrirBancoDados(gWS, QStringLiteral("gWS"), gDB, true);
        GravarClienteConcorrente(18);
        AbrirBancoDados(gWS, QStringLiteral("gWS"), gDB, false);
        QCOMPARE(boxes.Boxes().size(), 1);
        QVERIFY(boxes.Boxes().first().text.startsWith(QStringLiteral("Erro nº: 3027\n")));
    }

    void LocksOutOneComputerAtATime() {
        Peer peer(folder_.path());
        QCOMPARE(peer.Opened(), QStringLiteral("0"));
        QCOMPARE(peer.Ask(QStringLiteral("lock True")), QStringLiteral("1"));
        QVERIFY(!BloquearBancoDados(true));
        // Everything else goes on meanwhile, on both sides.
        GravarUltimaVerificacao(QString(), QStringLiteral("1"));
        testing_support::BoxAnswers boxes;
        GravarClienteConcorrente(17);
        QVERIFY(boxes.Boxes().isEmpty());
        QCOMPARE(peer.Ask(QLatin1String("run ") + Advance), QStringLiteral("0"));
        QCOMPARE(peer.Ask(QStringLiteral("lock False")), QStringLiteral("1"));

        QVERIFY(BloquearBancoDados(true));
        QCOMPARE(peer.Ask(QStringLiteral("lock True")), QStringLiteral("0"));
        QVERIFY(BloquearBancoDados(false));

        QCOMPARE(peer.Ask(QStringLiteral("lock True")), QStringLiteral("1"));
        peer.Kill();
        QVERIFY(BloquearBancoDados(true));
        QVERIFY(BloquearBancoDados(false));
        QCOMPARE(Value(QStringLiteral("SELECT Count(*) FROM CONTROLETRAN")), 1);
    }

    void ReadsAndWritesOnTwoComputersAtOnce() {
        constexpr int Times = 30;
        const QString count =
            QStringLiteral("SELECT CodigoClienteConcorrente FROM VEICULO WHERE CodigoVeiculo = 9");
        const int before = Value(count).toInt();
        Peer peer(folder_.path());
        for (int i = 0; i < Times; ++i) {
            peer.Tell(QLatin1String("run ") + Advance);
            const auto pending = gDB->OpenRecordset(QStringLiteral("SELECT * FROM VEICULO"));
            pending->ReadUpTo(5);
            gDB->Execute(Advance, dao::dbFailOnError);
            QCOMPARE(Value(Spread), 0);
        }
        for (int i = 0; i < Times; ++i) {
            QCOMPARE(peer.Answer(), QStringLiteral("0"));
        }
        QCOMPARE(Value(count).toInt(), before + 2 * Times);
    }

    void StaysSoundWhenAWriterDies() {
        for (int round = 0; round < 8; ++round) {
            Peer peer(folder_.path());
            peer.Tell(QLatin1String("loop ") + Advance);
            QCOMPARE(peer.Answer(), QStringLiteral("0"));
            QTest::qSleep(3 + 5 * round);
            peer.Kill();
            QCOMPARE(Value(Spread), 0);
            QCOMPARE(Value(Vehicles), 2000);
        }
        dao::Connection& connection = *gDB->GetConnection();
        QCOMPARE(connection.Value("PRAGMA integrity_check"), QVariant(QStringLiteral("ok")));
        QVERIFY(!connection.Value("PRAGMA cipher_integrity_check").isValid());
    }

    void TellsAFolderThatCannotBeWritten() {
        FecharBancoDados(gWS, gDB);
        using F = QFileDevice;
        QFile::setPermissions(folder_.filePath(QStringLiteral("Tarvo.mdb")),
                              F::ReadOwner | F::ReadGroup | F::ReadOther);
        QFile::setPermissions(folder_.path(), F::ReadOwner | F::ExeOwner | F::ReadGroup |
                                                  F::ExeGroup | F::ReadOther | F::ExeOther);
        // Permissions bind nobody who is root, so the other computer is somebody else.
        const QString other = QStandardPaths::findExecutable(QStringLiteral("setpriv"));
        QFile probe(folder_.filePath(QStringLiteral("nova")));
        QStringList through;
        if (probe.open(QIODevice::WriteOnly)) {
            if (other.isEmpty()) {
                QSKIP("this user may write everywhere, and there is no setpriv to become another");
            }
            through = {other, QStringLiteral("--reuid=65534"), QStringLiteral("--regid=65534"),
                       QStringLiteral("--clear-groups")};
        }
        Peer peer(folder_.path(), through);
        QCOMPARE(peer.Opened(), QStringLiteral("0"));
        QCOMPARE(peer.Ask(QLatin1String("value ") + Vehicles), QStringLiteral("2000"));
        QCOMPARE(peer.Ask(QLatin1String("run ") + Advance), QStringLiteral("erro 3027"));
        QCOMPARE(peer.Ask(QStringLiteral("lock True")), QStringLiteral("0"));
        QFile::setPermissions(folder_.path(), F::ReadOwner | F::WriteOwner | F::ExeOwner);
    }
};

TARVO_TEST(TestBanco);

#include "test_banco.moc"
