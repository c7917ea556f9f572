#include "platform/dao/dao.h"
#include "platform/dao/errors.h"
#include "platform/dao/sqlite.h"
#include "support/database.h"
#include "support/testmain.h"

#include <QFile>
#include <QTest>

#include <functional>

using namespace dao;
using namespace testing_support;

namespace {

constexpr int PageSize = 4096;

// Several pages of table and of index, and a text that needs overflow pages.
constexpr char Definition[] = R"(
CREATE TABLE PECA (Codigo INTEGER PRIMARY KEY, Numero TEXT NOT NULL COLLATE TARVO, Foto TEXT,
    Ano INTEGER CHECK (Ano > 1900));
CREATE UNIQUE INDEX PECA_NUMERO ON PECA (Numero);
WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 300)
INSERT INTO PECA SELECT i, 'NUMERO' || (1000 + i), 'foto', 1950 FROM n;
INSERT INTO PECA VALUES (301, 'A', hex(zeroblob(4500)), 1950);
)";

QByteArray ReadAll(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void Write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

QByteArray Flipped(QByteArray bytes, qsizetype at) {
    bytes[at] = static_cast<char>(bytes.at(at) ^ 0x10);
    return bytes;
}

// Everything that stands in the database, by the table and by its index.
QStringList Content(Database& database, QStringList& rowsSoFar) {
    for (const char* sql : {"SELECT * FROM PECA", "SELECT Numero FROM PECA ORDER BY Numero"}) {
        const auto rows = database.OpenRecordset(QString::fromUtf8(sql), dbOpenForwardOnly);
        for (; !rows->Eof(); rows->MoveNext()) {
            QStringList cells;
            for (int i = 0; i < rows->FieldCount(); ++i) {
                cells.append(rows->Fields(i).Value().toString());
            }
            rowsSoFar.append(cells.join(u'|'));
        }
    }
    return rowsSoFar;
}

}  // namespace

class TestErrors : public QObject {
    Q_OBJECT

private:
    TestDatabase file_{Definition};
    const QByteArray whole_ = ReadAll(file_.Path());
    TestDatabase::Session session_ = file_.Open();

    std::unique_ptr<Workspace> workspace_ = DBEngine::Instance().CreateWorkspace(
        QStringLiteral("teste"), QStringLiteral("admin"), QString(), dbUseJet);

    std::unique_ptr<Database> Open(const QString& path, const QString& password) {
        return workspace_->OpenDatabase(path, false, false, QLatin1String(";pwd=") + password);
    }

private Q_SLOTS:
    void TellsWhyAFileDoesNotOpen_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("password");
        QTest::addColumn<int>("number");
        const QString right = QStringLiteral("segredo");
        QTest::newRow("empty") << QByteArray() << right << 3343;
        QTest::newRow("text") << QByteArray("Peças\r\n").repeated(2000) << right << 3343;
        QTest::newRow("picture") << QByteArray("BM6\0\0\0\0\0", 8).repeated(999) << right << 3343;
        QTest::newRow("open database")
            << QByteArray("SQLite format 3\0", 16) + whole_.mid(16) << right << 3343;
        QTest::newRow("wrong password") << whole_ << QStringLiteral("Segredo") << 3031;
        QTest::newRow("no password") << whole_ << QString() << 3031;
        QTest::newRow("first page") << Flipped(whole_, 1000) << right << 3049;
        QTest::newRow("cut in the seal") << whole_.first(9) << right << 3049;
        QTest::newRow("cut in the first page") << whole_.first(700) << right << 3049;
        for (const int i : {0, 3, 4, 8, 13, 14, 15}) {
            QTest::addRow("seal byte %d", i) << Flipped(whole_, i) << right << 3049;
        }
    }

    void TellsWhyAFileDoesNotOpen() {
        QFETCH(QByteArray, content);
        QFETCH(QString, password);
        QFETCH(int, number);
        const QString path = file_.Folder() + QLatin1String("/outro.mdb");
        Write(path, content);
        QCOMPARE(ErrorOf([&] { Open(path, password); }), number);
        QVERIFY(ReadAll(path) == content);
    }

    void TellsWhyAPathDoesNotOpen() {
        const QString folder = file_.Folder();
        const QString right = QStringLiteral("segredo");
        QCOMPARE(ErrorOf([&] { Open(folder + QLatin1String("\\nada\\Tarvo.mdb"), right); }), 3044);
        QCOMPARE(ErrorOf([&] { Open(folder + QLatin1String("\\nada.mdb"), right); }), 3024);
        QVERIFY(!QFile::exists(folder + QLatin1String("/nada.mdb")));
        QCOMPARE(ErrorOf([&] { Open(folder, right); }), 3024);
        QCOMPARE(ErrorOf([&] { Open(folder + QLatin1String("\\TARVO.MDB"), right); }), 0);
    }

    // With the file open in this process already, it must not be opened by other means: that would
    // drop the locks of the open connection.
    void TellsAWrongPasswordWhileTheFileIsOpen() {
        session_.workspace->BeginTrans();
        session_.database->Execute(QStringLiteral("UPDATE PECA SET Ano = 1951 WHERE Codigo = 1"));
        QCOMPARE(ErrorOf([&] { Open(file_.Path(), QStringLiteral("x")); }), 3031);
        auto other = file_.Open();
        QCOMPARE(ErrorOf([&] {
                     other.database->Execute(QStringLiteral("DELETE FROM PECA WHERE Codigo = 2"),
                                             dbFailOnError + dbSeeChanges);
                 }),
                 3260);
        session_.workspace->Rollback();
    }

    void OpensACatalogueWithoutASeal() {
        const QString path = file_.Folder() + QLatin1String("/alheio.mdb");
        Write(path, QByteArray());
        session_.database->GetConnection()->Run("ATTACH '" + path.toUtf8() +
                                                "' AS alheio KEY 'outra';"
                                                "CREATE TABLE alheio.T (a INTEGER);"
                                                "INSERT INTO alheio.T VALUES (7);"
                                                "DETACH alheio");
        const auto database = Open(path, QStringLiteral("outra"));
        const auto rows = database->OpenRecordset(QStringLiteral("SELECT a FROM T"));
        QCOMPARE(rows->Fields(0).Value().toInt(), 7);
    }

    void NeverReadsADamagedPage() {
        QStringList good;
        Content(*session_.database, good);
        QCOMPARE(good.size(), 602);
        const QString path = file_.Folder() + QLatin1String("/dano.mdb");
        const qsizetype pages = whole_.size() / PageSize;
        QVERIFY(pages > 8);
        for (qsizetype page = 0; page < pages; ++page) {
            // Another place in each page; data, initialisation vector or HMAC, all count.
            Write(path, Flipped(whole_, page * PageSize + 16 + page * 997 % (PageSize - 16)));
            QStringList rows;
            QString said;
            try {
                Content(*Open(path, QStringLiteral("segredo")), rows);
            } catch (const Erro& erro) {
                QCOMPARE(erro.Number(), 3049);
                said = erro.Description();
            }
            QVERIFY2(said.startsWith(QStringLiteral("O catálogo está danificado")),
                     qPrintable(QStringLiteral("page %1 of %2").arg(page + 1).arg(pages)));
            QCOMPARE(rows, good.first(rows.size()));
        }
        Write(path, whole_.first(whole_.size() - 2 * PageSize));
        QStringList rows;
        QCOMPARE(ErrorOf([&] { Content(*Open(path, QStringLiteral("segredo")), rows); }), 3049);
    }

    void NumbersWhatTheEngineRefuses_data() {
        QTest::addColumn<QString>("sql");
        QTest::addColumn<int>("number");
        const auto row = [](const char* sql, int number) {
            QTest::newRow(sql) << QString::fromUtf8(sql) << number;
        };
        row("", 3129);
        row("UPDATE NADA SET a = 1", 3078);
        row("UPDATE PECA SET Nada = 1", 3061);
        row("UPDATE PECA SET Numero = Nada(1)", 3085);
        row("UPDATE PECA SET Codigo = = 1", 3075);
        row("INSERT INTO PECA (Codigo, Numero) VALUES (1, 'X')", 3022);
        row("INSERT INTO PECA (Codigo, Numero) VALUES (999, 'numero1001')", 3022);
        row("INSERT INTO PECA (Codigo) VALUES (999)", 3314);
        row("UPDATE PECA SET Ano = 1 WHERE Codigo = 300", 3317);
        row("INSERT INTO PECA (Codigo, Numero) VALUES (999)", 3346);
        row("SELECT * FROM PECA", 3065);
    }

    void NumbersWhatTheEngineRefuses() {
        QFETCH(QString, sql);
        QFETCH(int, number);
        QCOMPARE(ErrorOf([&] { session_.database->Execute(sql, dbFailOnError); }), number);
    }

    void NumbersRefusedDefinitions() {
        Connection& connection = *session_.database->GetConnection();
        for (const auto& [sql, number] : std::initializer_list<std::pair<QByteArray, int>>{
                 {"CREATE TABLE PECA (a INTEGER)", 3010},
                 {"CREATE INDEX PECA_NUMERO ON PECA (Ano)", 3012},
                 {"ALTER TABLE PECA ADD COLUMN Ano INTEGER", 3191}}) {
            const QByteArray text = sql;
            QCOMPARE(ErrorOf([&] { connection.Run(text); }), number);
        }
    }

    void ChangesAllRowsOrNone() {
        const auto session = file_.Open();
        const auto count = [&](const char* where) {
            return session.database
                ->OpenRecordset(QLatin1String("SELECT Count(*) FROM PECA WHERE ") +
                                QLatin1String(where))
                ->Fields(0)
                .Value()
                .toInt();
        };
        QCOMPARE(ErrorOf([&] {
                     session.database->Execute(
                         QStringLiteral("UPDATE PECA SET Codigo = Codigo + 1000, Ano = "
                                        "IIf(Codigo = 300, 1, 1960)"));
                 }),
                 3317);
        QCOMPARE(count("Codigo > 1000"), 0);
        session.database->Execute(QStringLiteral("UPDATE PECA SET Ano = 1970 WHERE Codigo <= 12"));
        QCOMPARE(session.database->RecordsAffected(), 12);

        session.workspace->BeginTrans();
        session.database->Execute(QStringLiteral("UPDATE PECA SET Ano = 1980"));
        QCOMPARE(count("Ano = 1980"), 301);
        session.workspace->Rollback();
        QCOMPARE(count("Ano = 1970"), 12);
        QCOMPARE(ErrorOf([&] { session.workspace->CommitTrans(); }), 3034);

        session.workspace->BeginTrans();
        session.database->Execute(QStringLiteral("UPDATE PECA SET Ano = 1990"));
        session.workspace->Close();
        QCOMPARE(ErrorOf([&] { count("Ano = 1990"); }), 3420);
        const auto other = file_.Open();
        QVERIFY(other.database->OpenRecordset(QStringLiteral("SELECT * FROM PECA WHERE Ano = 1990"))
                    ->Eof());
    }

    void ReadsOnlyWhereAskedTo() {
        const auto session = file_.Open(true);
        QVERIFY(!session.database->OpenRecordset(QStringLiteral("SELECT * FROM PECA"))->Eof());
        QCOMPARE(ErrorOf([&] { session.database->Execute(QStringLiteral("DELETE FROM PECA")); }),
                 3027);
    }
};

TARVO_TEST(TestErrors);

#include "test_errors.moc"
