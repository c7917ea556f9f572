#include "instalacoes.h"
#include "platform/dao/connection.h"
#include "support/quickkeys.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QTextStream>
#include <QThread>

#ifdef Q_OS_UNIX
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace {

constexpr int Patience = 60000;  // milliseconds
constexpr int Files = 32;
constexpr int Rows = 20;
const QString Whole = Done + u"\n2 20 ok"_s;

// A killed process loses nothing that it has handed to the system, so the disk need not be waited
// for.
QString InMemory() {
    const QString memory = u"/dev/shm"_s;
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + u"/tarvo-XXXXXX"_s;
}

QString FileName(int number) {
    return u"FotoPeca/%1.png"_s.arg(number);
}

// The file in whose place nothing comes any more: the process dies instead of renaming.
int death = 0;

// One update from version 1 to 2, which can be killed: "update FOLDER [DEATH]". Takes the update
// lock, or says that another has it, prints each message box and, when the update has come to its
// end, the catalogue's version, its number of customers and whether it is sound.
int PlayUpdate(int argc, char** argv) {
    const forms::Application application(argc, argv, TituloCatalogo);
    UseQuickKeys();
    QTextStream out(stdout);
    death = QCoreApplication::arguments().value(2).toInt();
    gCaminho = QCoreApplication::arguments().at(1) + u'\\';
    AbrirBancoDados(gWS, u"gWS"_s, gDB, false);
    forms::SetMsgBoxHandler([&out](QString text, int, const QString&) {
        out << text.replace(u'\n', u'|') << '\n' << Qt::flush;
        return forms::vbOK;
    });
    out << (BloquearBancoDados(true) ? "" : "locked\n");
    ParametroFormulario = u"1|2"_s;
    (new frmAtualizando)->ShowModal();
    out << Valor("SELECT Versao FROM UMREGISTRO") << ' '
        << Valor("SELECT Count(*) FROM CLIENTECONCORRENTE") << ' '
        << gDB->GetConnection()->Value("PRAGMA integrity_check").toString()
        << gDB->GetConnection()->Value("PRAGMA cipher_integrity_check").toString() << '\n';
    BloquearBancoDados(false);
    FecharBancoDados(gWS, gDB);
    return 0;
}
TARVO_PROGRAM("update.exe", PlayUpdate);

}  // namespace

#ifdef Q_OS_UNIX
static constexpr bool DiesByItself = true;  // between two files
// In the place of the system's own, for all libraries of this process.
extern "C" int rename(const char* from, const char* to) noexcept {
    static int renamed = 0;
    if (++renamed == death) {
        kill(getpid(), SIGKILL);
    }
    return renameat(AT_FDCWD, from, AT_FDCWD, to);
}
#else
static constexpr bool DiesByItself = false;
#endif

// Updates that a power switch, a full disk or a hand on the wrong button ends.
struct TestBroken : Fixture {
    QTemporaryDir folder_{InMemory()};
    QTemporaryDir programs_;
    const QString program_ = programs_.filePath(u"update.exe"_s);
    WrongServer server_;
    const ProxySetting proxy_{server_.Port()};
    QByteArray list_;

    QString Path(const AnyText& name) const { return folder_.filePath(name); }

    // A data folder of version 1 with old files.
    QString NewData(const AnyText& name) const {
        const QString data = Path(name);
        QDir(data).removeRecursively();
        for (int i = 0; i < Files; ++i) {
            Write(data + u'/' + FileName(i), "velha");
        }
        QFile::copy(Path("modelo.mdb"), data + "/Tarvo.mdb"_L1);
        return data;
    }

    // Runs an update to its end; what it printed.
    QString Update(const QString& data) const { return OutputOf(program_, {data}).trimmed(); }

    void ExpectWhole(const QString& data) const {
        QCOMPARE(Update(data), Whole);
        QCOMPARE(NewFiles(data), Files);
        QCOMPARE(QDir(data).entryList({u"*.tmp"_s}), QStringList());
    }

    // Every file is wholly the old or wholly the new one.
    static int NewFiles(const QString& data) {
        int fresh = 0;
        for (int i = 0; i < Files; ++i) {
            QFile file(data + u'/' + FileName(i));
            const QByteArray content = file.open(QIODevice::ReadOnly) ? file.readAll() : "gone";
            if (content == QByteArray(20000, 'n')) {
                ++fresh;
            } else if (content != "velha") {
                return -1;
            }
        }
        return fresh;
    }

    enum Phase { Lists, Downloads, Placing, Scripts, Phases };

    // Whether an update has come as far as the given piece of its phase.
    static bool Reached(int phase, int piece, const QString& data) {
        return phase == Downloads ? QDir(data).entryList({u"*.tmp"_s}).size() >= piece
               : phase == Placing ? !DiesByItself && NewFiles(data) >= piece
                                  : phase == Lists || NewFiles(data) == Files;
    }

    TestBroken() {
        QVERIFY(QFile::copy(QCoreApplication::applicationFilePath(), program_));
        const CatalogoDeTeste model;
        Executar({"UPDATE UMREGISTRO SET Versao = 1, UrlAtualizacao = 'atualiza.exemplo'"});
        QVERIFY(QFile::copy(model.Pasta() + u"/Tarvo.mdb"_s, Path("modelo.mdb")));

        for (int i = 0; i < Files; ++i) {
            list_ += "FOTO;FotoPeca\\" + QByteArray::number(i) + ".png;20000\r\n";
            server_.Put(FileName(i), QByteArray(20000, 'n'));
        }
        // Between its first and its last line the catalogue has no version.
        QByteArray script =
            "E:DELETE FROM UMREGISTRO\r\n"
            "B:INSERT INTO CLIENTECONCORRENTE VALUES (1?, '2?', 'C')\r\n";
        for (int i = 0; i < Rows; ++i) {
            script += QByteArray::number(100 + i) + "<<;>>Nome " + QByteArray::number(i) + "\r\n";
        }
        script +=
            "E:INSERT INTO UMREGISTRO (DataEmissao, Versao, VersaoAnterior, UrlAtualizacao) "
            "VALUES (46000, 1, 0, 'atualiza.exemplo')\r\n";
        list_ += "SDB;dois.txt;1\r\n";
        server_.Put("ListVersao2.txt", list_);
        server_.Put("dois.txt", script);
    }
};

TEST(TestBroken, KilledAtAnyMoment) {
    for (const bool signedSite : {false, true}) {
        const auto signers = Signers(u"p"_s);
        if (signedSite) {
            Write(programs_.filePath(u"ChavesAtualizacao.txt"_s),
                  "Site: loja\nChave: " + sys::OpenKeyOf(signers.front().key).toHex());
            QVERIFY(Update(NewData("inteira")).startsWith(u"Erro nº: -110"_s));  // not yet signed
            server_.Put("Versao.txt", "2");
            publicar::SignAgain(server_.Folder(), signers);
        }
        QElapsedTimer clock;
        clock.start();
        ExpectWhole(NewData("inteira"));
        const auto whole = quint32(clock.elapsed());

        const quint32 seed = QRandomGenerator::global()->generate();
        QRandomGenerator chance(seed);
        // Enough for every run of the tests; a long one has 1000. Every fourth of them hits the
        // step that puts files in place.
        const int rounds = qEnvironmentVariable("TARVO_KILL_ROUNDS", u"200"_s).toInt();
        for (int round = 0; round < rounds / 2; ++round) {
            const QString data = NewData("morta");
            const int phase = round % Phases;
            const int piece = 1 + chance.bounded(Files - 1);
            QProcess process;
            process.start(program_, {data, QString::number(phase == Placing ? piece + 1 : 0)});
            QVERIFY(process.waitForStarted(Patience));
            QDeadlineTimer patience(Patience);
            while (!Reached(phase, piece, data) && process.state() == QProcess::Running &&
                   !patience.hasExpired()) {
                process.waitForFinished(1);
            }
            QThread::usleep(chance.bounded(phase == Scripts ? whole * 300 : 20'000));
            process.kill();
            process.waitForFinished(Patience);

            const int fresh = NewFiles(data);
            const auto where =
                u"seed %1, round %2, phase %3"_s.arg(seed).arg(round).arg(phase).toUtf8();
            QVERIFY2(phase == Placing && DiesByItself ? fresh == piece : fresh >= 0,
                     where.constData());
            // The next one has the same way before it, whatever was left behind, and takes that
            // away.
            ExpectWhole(data);
            QVERIFY2(!QTest::currentTestFailed(), where.constData());
        }
    }
}

// Small disks for one process alone. Printed: the boxes and the catalogue, the bytes of the
// pictures, the files on their way that are left.
TEST(TestBroken, OwnDisks) {
    for (const auto& [list, disk, printed] : Each<QByteArray, QString, QString>{
             // A file cannot be renamed into another disk.
             {"pictures elsewhere", list_, "/FotoPeca", Whole + u"\n%1\n0"_s.arg(Files * 20000)},
             {"full: downloads", "FOTO;FotoPeca\\0.png;1\r\nFOTO;gordo.png;1\r\n", "",
              "Erro nº: -104|InternetReadFile:0;61;Disco cheio (gordo.png)\n1 0 ok\n160\n0"},
             // Not the statement fails but the disk, so the update must not pass over it.
             {"full: scripts", "SDB;gordo.txt;1\r\n", "", "Erro nº: 3183|*\n1 * ok\n160\n0"},
         }) {
        QByteArray script =
            "B:INSERT INTO CLIENTECONCORRENTE VALUES (1?, '" + QByteArray(250, 'x') + "', 'C')\r\n";
        for (int i = 0; i < 6000; ++i) {
            script += QByteArray::number(1000 + i) + "\r\n";
        }
        server_.Put("gordo.txt", script);
        server_.Put("gordo.png", QByteArray(8'000'000, 'g'));
        server_.Put("ListVersao2.txt", list);
        const QStringList alone = List("--user", "--map-root-user", "--mount");
        if (QProcess::execute(u"unshare"_s, alone + List("true")) != 0) {
            QSKIP("no disk of one's own to be had here");
        }
        const QString command =
            u"mount -t tmpfs -o size=2m tmpfs '%2%3' && cp -r '%1'/. '%2' && "
            "'%4' '%2'; cat '%2'/FotoPeca/*.png | wc -c; ls '%2' '%2/FotoPeca' | grep -c tmp || true"_s
                .arg(NewData("dados"), NewData("disco"), disk, program_);
        const QString output = OutputOf("unshare", alone + List("sh", "-c", command)).trimmed();
        QCOMPARE(Like(output, printed), printed);
    }
}
