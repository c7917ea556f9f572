#include "platform/dao/errors.h"
#include "platform/dao/statement.h"
#include "support/cases.h"
#include "support/database.h"
#include "support/quickkeys.h"

#include <QScopeGuard>

#include <cerrno>
#include <cstdio>
#include <sqlite3.h>

using namespace dao;

namespace {

constexpr int PageSize = 4096;

// Several pages of table and of index, and a text that needs overflow pages.
constexpr char Definition[] = R"(
CREATE TABLE PECA (Codigo INTEGER PRIMARY KEY, Numero TEXT NOT NULL COLLATE TARVO, Foto TEXT(4),
    Ano INTEGER CHECK (Ano > 1900));
CREATE UNIQUE INDEX PECA_NUMERO ON PECA (Numero);
WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 300)
INSERT INTO PECA SELECT i, 'NUMERO' || (1000 + i), 'foto', 1950 FROM n;
INSERT INTO PECA VALUES (301, 'A', hex(zeroblob(4500)), 1950);
)";

QByteArray Flipped(QByteArray bytes, qsizetype at) {
    bytes[at] = static_cast<char>(bytes.at(at) ^ 0x10);
    return bytes;
}

// Everything that stands in the database, by the table and by its index.
void Content(Database& database, QStringList& rows) {
    ReadRows(database, "SELECT * FROM PECA", rows);
    ReadRows(database, "SELECT Numero FROM PECA ORDER BY Numero", rows);
}

// Begins to read a file, and lives on.
int PlayReader(int, char** argv) {
    UseQuickKeys();
    Connection connection(QString::fromUtf8(argv[1]), "segredo", Connection::Mode::ReadOnly);
    Statement reading(connection, "SELECT * FROM PECA");
    std::puts(reading.Step() ? "reads" : "empty");
    std::fflush(stdout);
    return std::getchar();
}
TARVO_PROGRAM("reader", PlayReader);

}  // namespace

struct TestErrors : Fixture {
    TestDatabase file_{Definition};
    const QByteArray whole_ = sys::ReadBytes(file_.Path());
    TestDatabase::Session session_ = file_.Open();
    TestDatabase::Session another_ = file_.Open();

    std::unique_ptr<Database> Open(const AnyText& path, const AnyText& password = u"segredo"_s) {
        return another_.workspace->OpenDatabase(path, false, false, u";pwd="_s + password);
    }
};

TEST(TestErrors, TellsWhyAFileDoesNotOpen) {
    const QString right = u"segredo"_s;
    // A password is told by the seals of all times.
    const QByteArray other =
        QByteArray::fromHex("c354561a0123abcd927c5572f55c62a4") + whole_.mid(16);
    Each<QByteArray, QString, int> row{
        {"empty", {}, right, 3343},
        {"text", QByteArray("Peças\r\n").repeated(2000), right, 3343},
        {"open database", QByteArray("SQLite format 3\0", 16) + whole_.mid(16), right, 3343},
        {"two bytes of the seal", Flipped(Flipped(whole_, 0), 1), right, 3343},
        {"wrong password", whole_, "Segredo", 3031},
        {"no password", whole_, {}, 3031},
        {"first page", Flipped(whole_, 1000), right, 3049},
        {"cut in the seal", whole_.first(9), right, 3049},
        {"cut in the first page", whole_.first(700), right, 3049},
        {"seal of another", other, right, 3049},
        {"seal of another, wrong password", other, "Segredo", 3031},
    };
    for (const int i : {0, 3, 4, 8, 13, 14, 15}) {
        row("seal byte " + QByteArray::number(i), Flipped(whole_, i), right, 3049);
    }
    for (const auto& [content, password, number] : row) {
        const QString path = file_.Folder() + "/outro.mdb"_L1;
        Write(path, content);
        QCOMPARE(ErrorOf([&] { Open(path, password); }), number);
        QVERIFY(sys::ReadBytes(path) == content);
    }
}

// Another's lock is waited for as long as there is patience, and with dbSeeChanges not at all.
TEST(TestErrors, WaitsAsLongAsItIsTold) {
    int asked = 0;
    std::chrono::milliseconds waited{};
    session_.database->SetPatience([&](std::chrono::milliseconds time) {
        waited = std::max(waited, time);
        return ++asked % 3 != 0;
    });
    const auto change = [&](int options) {
        return ErrorOf(
            [&] { session_.database->Execute(u"DELETE FROM PECA WHERE Codigo = 2"_s, options); });
    };
    another_.workspace->BeginTrans();
    another_.Execute("UPDATE PECA SET Ano = 1951 WHERE Codigo = 1");
    // Opened by other means, the file would lose the locks of its open connection.
    QCOMPARE(SaidBy([&] { Open(file_.Path(), u"x"_s); }),
             u"3031 A senha do catálogo não confere: %1."_s.arg(file_.Path()));
    QCOMPARE(change(dbFailOnError), 3260);
    QVERIFY(asked == 3 && waited > std::chrono::milliseconds(40) &&
            waited < std::chrono::seconds(10));
    QCOMPARE(change(dbFailOnError + dbSeeChanges), 3260);
    QCOMPARE(asked, 3);
    // Who commits waits for the reads of this very connection, which come to their end first.
    const auto ours =
        session_.database->OpenRecordset(u"SELECT Numero FROM PECA ORDER BY 1"_s, dbOpenDynaset);
    session_.database->SetPatience([&](std::chrono::milliseconds) {
        another_.workspace->CommitTrans();
        return true;
    });
    QCOMPARE(change(dbFailOnError), 0);
    ours->MoveLast();
    QCOMPARE(ours->RecordCount(), 301);
    // So do those of others in this program.
    const auto theirs = another_.database->OpenRecordset(u"SELECT * FROM PECA"_s);
    QCOMPARE(change(dbFailOnError + dbSeeChanges), 0);
    session_.database->SetPatience([&](std::chrono::milliseconds) { return ++asked % 3 != 0; });
    session_.workspace->BeginTrans();
    session_.Execute("UPDATE PECA SET Ano = 1952 WHERE Codigo = 1");
    const auto later = another_.database->OpenRecordset(u"SELECT * FROM PECA"_s);
    session_.workspace->CommitTrans();
    {
        Statement reading(*another_.database->GetConnection(), "SELECT * FROM PECA");
        reading.Step();
        session_.workspace->BeginTrans();
        QCOMPARE(change(0), 0);
        QCOMPARE(ErrorOf([&] { session_.workspace->CommitTrans(); }), 3260);
        QCOMPARE(asked, 6);
        // The commit itself, which keeps all others from reading, waits no longer than that.
        session_.database->SetPatience([&](std::chrono::milliseconds time) {
            waited = time;
            return time < 2 * Connection::Patience;
        });
        QCOMPARE(ErrorOf([&] { session_.workspace->CommitTrans(); }), 3260);
        QVERIFY(waited >= Connection::Patience && waited < 2 * Connection::Patience);
    }
    session_.workspace->CommitTrans();
    QCOMPARE(another_.Value("SELECT Count(*) FROM PECA"), u"300"_s);
    another_.database->Execute(u"DELETE FROM PECA WHERE Codigo = 3"_s, dbSeeChanges);
    QCOMPARE(another_.database->GetConnection()->Value("PRAGMA busy_timeout").toInt(),
             int(Connection::Patience.count()));
}

// Until it has read, everybody else still reads.
TEST(TestErrors, ACommitWaitsForAnotherProgram) {
    QProcess reader;
    reader.start(QCoreApplication::applicationFilePath(), List("--play", "reader", file_.Path()));
    QVERIFY(reader.waitForReadyRead(60000));
    int asked = 0;
    const auto stays = [&](std::chrono::milliseconds waited) {
        return waited < std::chrono::seconds(10) && ++asked < 3;
    };
    session_.database->SetPatience(stays);
    session_.workspace->BeginTrans();
    session_.Execute("DELETE FROM PECA WHERE Codigo = 9");
    QCOMPARE(ErrorOf([&] { session_.workspace->CommitTrans(); }), 3260);
    QCOMPARE(asked, 3);
    QCOMPARE(another_.Value("SELECT Count(*) FROM PECA"), u"301"_s);
    session_.database->SetPatience([&](std::chrono::milliseconds) {
        reader.kill();
        return reader.waitForFinished();
    });
    session_.workspace->CommitTrans();
    QVERIFY(asked == 3 && !session_.database->Reader());
    const Connection& engine = *session_.database->GetConnection();
    const qint64 pages = engine.PagesRead();
    QVERIFY(pages > 2 && engine.PagesRead() == pages);
}

// Nothing is made, or left behind, by what is refused.
TEST(TestErrors, RefusesWhatIsNotInOrder) {
    DBEngine& engine = DBEngine::Instance();
    const QString folder = file_.Folder() + u'\\';
    const QString path = folder + "novo.mdb"_L1;
    const auto readOnly = file_.Open(true);
    const auto closed = file_.Open();
    closed.Execute("DELETE FROM PECA WHERE False");
    closed.workspace->Close();
    const auto create = [&](const QString& where, const QString& password, const char* text = "") {
        engine.CreateDatabase(where, u";PWD="_s + password, text);
    };
    session_.workspace->BeginTrans();
    for (const auto& [use, number] : Each<std::function<void()>, int>{
             {"other kind", [&] { engine.CreateWorkspace({}, {}, {}, dbUseJet + 1); }, 5},
             {"other action", [&] { engine.Idle(dbRefreshCache + 1); }, 5},
             {"path in no folder", [&] { Open(folder + "nada\\Tarvo.mdb"_L1); }, 3044},
             {"no such file", [&] { Open(path); }, 3024},
             {"gone", [&] { Connection(path, "x", Connection::Mode::ReadWrite); }, 3051},
             {"a folder", [&] { Open(file_.Folder()); }, 3024},
             {"other letters", [&] { Open(folder + "TARVO.MDB"_L1); }, 0},
             {"without a password", [&] { create(path, {}); }, 5},
             {"no folder", [&] { create(folder + "a\\b.mdb"_L1, u"x"_s); }, 3044},
             {"there already", [&] { create(file_.Path(), u"x"_s); }, 3012},
             {"bad definition", [&] { create(path, u"x"_s, "CREATE TABLE T (a); NADA"); }, 3075},
             {"good definition", [&] { create(path, u"x"_s, "CREATE TABLE T (a)"); }, 0},
             {"what was made", [&] { Open(path, u"x"_s); }, 0},
             {"change as a result", [&] { session_.Value("DELETE FROM PECA"); }, 3219},
             {"transaction in another", [&] { session_.workspace->BeginTrans(); }, 3219},
             {"commit of none", [&] { another_.workspace->CommitTrans(); }, 3034},
             {"end of none", [&] { another_.workspace->Rollback(); }, 3034},
             {"change by a reader", [&] { readOnly.Execute("DELETE FROM PECA"); }, 3027},
             {"no text", [&] { readOnly.database->GetConnection()->Value("-- nada"); }, 3129},
             {"closed: open", [&] { closed.workspace->OpenDatabase(path, {}, {}, {}); }, 3420},
             {"closed: begin", [&] { closed.workspace->BeginTrans(); }, 3420},
             {"closed: close", [&] { closed.workspace->Close(); }, 3420},
             {"closed: commit", [&] { closed.workspace->CommitTrans(); }, 3034},
             {"closed: change", [&] { closed.Execute("DELETE FROM PECA WHERE False"); }, 3420},
             {"closed: ask", [&] { closed.Value("SELECT 1 FROM PECA"); }, 3420},
             {"closed: engine", [&] { closed.database->GetConnection()->Run("SELECT 1"); }, 3420},
         }) {
        QCOMPARE(ErrorOf(use), number);
    }
    // Named as the platform writes it, not half and half.
    QVERIFY(SaidBy([&] {
                Open(folder + "nada.mdb"_L1);
            }).contains(QDir::toNativeSeparators(file_.Folder() + "/nada.mdb"_L1)));
    QVERIFY(sys::ReadBytes(path).first(8) != whole_.first(8));  // each its own salt
    QVERIFY(QFile::exists(file_.Folder() + "/novo.ldb"_L1));
    QCOMPARE(engine.SharedConnection(file_.Path()), session_.database->GetConnection());
    QVERIFY(!engine.SharedConnection(path));
}

TEST(TestErrors, OpensACatalogueWithoutASeal) {
    const QString path = file_.Folder() + "/alheio.mdb"_L1;
    Write(path, QByteArray());
    Connection& connection = *session_.database->GetConnection();
    connection.Run("ATTACH '" + path.toUtf8() + "' AS alheio KEY 'outra'");
    connection.Run("CREATE TABLE alheio.T (a INTEGER); INSERT INTO alheio.T VALUES (7)");
    connection.Run("DETACH alheio");
    const auto database = Open(path, u"outra"_s);
    QCOMPARE(database->OpenRecordset(u"SELECT a FROM T"_s)->Fields(0).Value().toInt(), 7);
}

TEST(TestErrors, NeverReadsADamagedPage) {
    QStringList good;
    Content(*session_.database, good);
    QCOMPARE(good.size(), 602);
    const QString path = file_.Folder() + "/dano.mdb"_L1;
    const qsizetype pages = whole_.size() / PageSize;
    QVERIFY(pages > 8);
    for (qsizetype page = 0; page < pages; ++page) {
        // Another place in each page; data, initialisation vector or HMAC, all count.
        Write(path, Flipped(whole_, page * PageSize + 16 + page * 997 % (PageSize - 16)));
        QStringList rows;
        const QString said = SaidBy([&] { Content(*Open(path), rows); });
        QVERIFY2(said.startsWith(u"3049 O catálogo está danificado"_s),
                 qPrintable(u"page %1 of %2"_s.arg(page + 1).arg(pages)));
        QCOMPARE(rows, good.first(rows.size()));
    }
    Write(path, whole_.first(whole_.size() - 2 * PageSize));
    QStringList rows;
    QCOMPARE(ErrorOf([&] { Content(*Open(path), rows); }), 3049);
}

// A share whose server has gone is no damage.
TEST(TestErrors, TellsARefusedReadFromDamage) {
    static int reason = 0;
    const auto refuse = reinterpret_cast<sqlite3_syscall_ptr>(+[] {
        errno = reason;
        return -1;
    });
    sqlite3_vfs* files = sqlite3_vfs_find(nullptr);
    for (const auto& [number] : Each<int>{{EIO}, {ENXIO}, {ERANGE}, {EACCES}}) {
        const auto session = file_.Open();
        reason = number;
        const auto whole = qScopeGuard([&] { files->xSetSystemCall(files, nullptr, nullptr); });
        for (const char* read : {"read", "pread", "pread64"}) {
            files->xSetSystemCall(files, read, refuse);
        }
        QCOMPARE(ErrorOf([&] { session.Value("SELECT Max(Foto) FROM PECA"); }), 3043);
    }
}

// Of the dialect, or in the engine's own language below it.
TEST(TestErrors, NumbersWhatTheEngineRefuses) {
    for (const auto& [cells] : Lines(TARVO_DAO_CASES "/recusas.tsv")) {
        const bool own = cells.at(1) == "engine"_L1;
        const QString& sql = cells.at(2);
        const auto session = file_.Open();
        Connection& connection = *session.database->GetConnection();
        const auto refused = [&] {
            return SaidBy([&] { own ? connection.Run(sql.toUtf8()) : session.Execute(sql); });
        };
        QVERIFY(!refused().isEmpty());  // the lock's own file is not attached yet
        QCOMPARE(session.Value("SELECT Count(*) FROM CONTROLETRAN"), u"1"_s);
        QCOMPARE(refused(), cells.first());
    }
}

TEST(TestErrors, ChangesAllRowsOrNone) {
    const auto change = [this](const AnyText& text) {
        return ErrorOf([&] { session_.Execute(text); });
    };
    const auto count = [](const TestDatabase::Session& session, const AnyText& where) {
        return session.Value(u"SELECT Count(*) FROM PECA WHERE "_s + where).toInt();
    };
    QCOMPARE(change("UPDATE PECA SET Codigo = Codigo + 1000, Ano = IIf(Codigo = 300, 1, 1960)"),
             3317);
    QCOMPARE(count(session_, "Codigo > 1000"), 0);
    QCOMPARE(change("SELECT CLng(Numero) AS a INTO NOVA FROM PECA"), 13);
    QCOMPARE(change("DROP TABLE NOVA"), 3078);
    session_.Execute("UPDATE PECA SET Ano = 1970 WHERE Codigo <= 12");

    session_.workspace->BeginTrans();
    session_.Execute("UPDATE PECA SET Ano = 1980");
    QCOMPARE(count(session_, "Ano = 1980"), 301);
    const auto rows = session_.database->OpenRecordset(u"SELECT Ano FROM PECA"_s);
    session_.workspace->Rollback();
    rows->MoveLast();
    QCOMPARE(rows->Fields(0).Value().toInt(), 1980);
    QCOMPARE(count(session_, "Ano = 1970"), 12);
    QCOMPARE(ErrorOf([&] { session_.workspace->CommitTrans(); }), 3034);
    session_.Execute("UPDATE PECA SET Ano = 1960 WHERE Codigo = 1");
    QCOMPARE(count(another_, "Ano = 1960"), 1);

    session_.workspace->BeginTrans();
    const auto within =
        session_.workspace->OpenDatabase(file_.Path(), false, false, TestDatabase::Connect());
    within->Execute(u"UPDATE PECA SET Ano = 1990"_s);
    session_.workspace->Close();
    QCOMPARE(ErrorOf([&] { count(session_, "Ano = 1990"); }), 3420);
    QCOMPARE(count(another_, "Ano = 1990"), 0);
}
