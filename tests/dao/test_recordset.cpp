#include "platform/dao/rowreader.h"
#include "support/database.h"

#include <QSignalSpy>
#include <QThread>

using namespace dao;

namespace {

constexpr qint64 Rows = 5000;
constexpr std::chrono::milliseconds Budget{100};

// Every third Valor is Null; the text of row 7 is longer than a block of cells, that of row 8
// empty.
constexpr char Definition[] = R"(
CREATE TABLE ITEM (Codigo INTEGER PRIMARY KEY, Nome TEXT COLLATE TARVO, Valor REAL);
WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000)
INSERT INTO ITEM SELECT i, 'Peça ' || i, iif(i % 3 = 0, NULL, i / 2.0) FROM n;
UPDATE ITEM SET Nome = replace(hex(zeroblob(1500)), '0', 'é') WHERE Codigo = 7;
UPDATE ITEM SET Nome = '' WHERE Codigo = 8;
)";

const QString AllItems = u"SELECT Codigo, Nome AS Descricao, Valor FROM ITEM ORDER BY Codigo"_s;
const QString NoItem = u"SELECT Codigo FROM ITEM WHERE Codigo = -5"_s;

}  // namespace

struct TestRecordset : Fixture {
    TestDatabase file_{Definition};
    TestDatabase::Session session_ = file_.Open();

    std::unique_ptr<Recordset> Open(const AnyText& sql, RecordsetType type = dbOpenSnapshot) {
        return session_.database->OpenRecordset(sql, type);
    }
};

TEST(TestRecordset, ReadsNoMoreThanAskedFor) {
    using Step = std::function<void(Recordset&)>;
    const auto rows = Open(AllItems);
    for (const auto& [step, read, position] : Each<Step, qint64, qint64>{
             {"begin", Step([](auto& r) { QVERIFY(!r.Eof()); }), 1, 0},
             {"next", Step([](auto& r) { r.MoveNext(); }), 2, 1},
             {"some more", Step([](auto& r) { QCOMPARE(r.ReadUpTo(100), 100); }), 100, 1},
             {"far", Step([](auto& r) { r.SetAbsolutePosition(149); }), 150, 149},
             {"last", Step([](auto& r) { r.MoveLast(); }), Rows, Rows - 1},
             {"end", Step([](auto& r) { r.MoveNext(); }), Rows, -1},
             {"first again", Step([](auto& r) { r.SetAbsolutePosition(0); }), Rows, 0},
         }) {
        step(*rows);
        QCOMPARE(rows->RecordCount(), read);
        QCOMPARE(rows->AbsolutePosition(), position);
        QCOMPARE(rows->Eof(), position < 0);
        QCOMPARE(rows->IsComplete(), read == Rows);
    }
    QCOMPARE(rows->Fields(0).Value().toLongLong(), 1);
}

TEST(TestRecordset, KeepsValuesAsTheyAre) {
    const auto rows = Open(AllItems);
    rows->MoveLast();
    QCOMPARE(rows->Value(0, 0), QVariant(qlonglong{1}));
    QCOMPARE(rows->Value(0, 1), QVariant(u"Peça 1"_s));
    QCOMPARE(rows->Value(0, 2), QVariant(0.5));
    QVERIFY(!rows->Value(2, 2).isValid() && rows->Value(7, 1).isValid());
    QCOMPARE(rows->Text(2, 2), QString());
    QCOMPARE(rows->Text(1, 2), u"1"_s);
    QCOMPARE(rows->Text(6, 1), QString(3000, QChar(u'é')));
    QCOMPARE(rows->Text(7, 1), QString());
    for (qint64 row = 8; row < Rows; ++row) {
        QCOMPARE(rows->Text(row, 1), u"Peça %1"_s.arg(row + 1));
    }
    // Short texts and long ones lie differently.
    const auto lengths = Open("SELECT String(Codigo, 'a') AS T FROM ITEM ORDER BY Codigo");
    lengths->ReadUpTo(300);
    for (qint64 row = 0; row < 300; ++row) {
        QCOMPARE(lengths->Text(row, 0), QString(row + 1, u'a'));
    }
    for (const auto& [row, column] :
         QList<std::pair<qint64, int>>{{Rows, 0}, {-1, 0}, {0, 3}, {0, -1}}) {
        QCOMPARE(ErrorOf([&, r = row, c = column] { rows->Text(r, c); }), 9);
    }
}

TEST(TestRecordset, NamesFields) {
    const auto rows = Open(AllItems);
    QCOMPARE(rows->FieldCount(), 3);
    QCOMPARE(rows->FieldIndex(u"Descricao"_s), 1);
    QCOMPARE(rows->Fields(u"DESCRICAO"_s).Value().toString(), u"Peça 1"_s);
    // Reads at the time of the call, not of its making.
    const Field code = rows->Fields(u"codigo"_s);
    rows->MoveNext();
    QCOMPARE(code.Value().toLongLong(), 2);
    QCOMPARE(ErrorOf([&] { rows->Fields(u"Nome"_s); }), 3265);
    QCOMPARE(rows->FieldIndex(u"Nome"_s), -1);
    rows->Close();
    QCOMPARE(ErrorOf([&] { code.Value(); }), 3420);
    const auto unnamed = Open("SELECT ITEM.Codigo, 1 + 1 FROM ITEM WHERE False");
    QCOMPARE(unnamed->FieldIndex(u"Codigo"_s), 0);
    QCOMPARE(unnamed->FieldIndex(u"Expr1001"_s), 1);
}

TEST(TestRecordset, ForwardOnlyKeepsOneRow) {
    // Far more than the memory that one result may have.
    const auto rows = Open("SELECT Codigo, Space(Codigo * 20) AS T FROM ITEM", dbOpenForwardOnly);
    qint64 sum = 0;
    for (; !rows->Eof(); rows->MoveNext()) {
        sum += rows->Fields(0).Value().toLongLong();
    }
    QCOMPARE(sum, Rows * (Rows + 1) / 2);
    QCOMPARE(rows->RecordCount(), Rows);
    QCOMPARE(ErrorOf([&] { rows->Text(0, 0); }), 9);
}

TEST(TestRecordset, FindsAndMarksRows) {
    const auto rows = Open(AllItems);
    rows->FindFirst(u"Codigo = 40"_s);
    QVERIFY(!rows->NoMatch());
    QCOMPARE(rows->AbsolutePosition(), 39);
    QCOMPARE(rows->RecordCount(), 40);  // read on no further than the match
    const Bookmark found = rows->CurrentBookmark();
    rows->FindFirst(u"Descricao = 'Peça 3'"_s);
    QCOMPARE(rows->AbsolutePosition(), 2);
    QVERIFY(rows->CurrentBookmark() != found);
    rows->FindFirst(u"Codigo = -5"_s);
    QVERIFY(rows->NoMatch() && rows->IsComplete());
    QCOMPARE(rows->AbsolutePosition(), 2);
    // A bookmark belongs to one recordset.
    const auto others = Open(AllItems);
    others->SetAbsolutePosition(39);
    rows->SetAbsolutePosition(39);
    QVERIFY(rows->CurrentBookmark() == found && others->CurrentBookmark() != found);
    const auto none = Open(NoItem);
    none->FindFirst(u"Codigo = 1"_s);
    QVERIFY(none->NoMatch());
}

TEST(TestRecordset, TellsTheGridOfRowsAndMoves) {
    const auto rows = Open(AllItems);
    QSignalSpy read(rows.get(), &Recordset::RowsRead);
    QSignalSpy moved(rows.get(), &Recordset::CurrentChanged);
    rows->ReadUpTo(100);
    rows->ReadUpTo(200, std::chrono::minutes(1));
    rows->SetAbsolutePosition(299);
    while (!rows->ReadFor(std::chrono::microseconds(200))) {
    }
    rows->MoveLast();
    qint64 next = 0;
    for (const QList<QVariant>& call : read) {
        QCOMPARE(call.at(0).toLongLong(), next);
        QVERIFY(next > 299 || call.at(1).toLongLong() == next + 99);
        next = call.at(1).toLongLong() + 1;
        QVERIFY(next > call.at(0).toLongLong());
    }
    QCOMPARE(next, Rows);
    QCOMPARE(moved.count(), 2);
    rows->MoveLast();
    QCOMPARE(moved.count(), 2);
}

TEST(TestRecordset, RefusesWhatCannotBe) {
    using Use = std::function<void(Recordset&)>;
    for (const auto& [use, onEmpty, onForward] : Each<Use, int, int>{
             {"value", Use([](auto& r) { r.Fields(0).Value(); }), 3021, 0},
             {"bookmark", Use([](auto& r) { r.CurrentBookmark(); }), 3021, 0},
             {"next", Use([](auto& r) { r.MoveNext(); }), 3021, 0},
             {"last", Use([](auto& r) { r.MoveLast(); }), 3021, 3219},
             {"position", Use([](auto& r) { r.SetAbsolutePosition(0); }), 3021, 3219},
             {"no position", Use([](auto& r) { r.SetAbsolutePosition(-1); }), 3021, 3219},
             {"field", Use([](auto& r) { r.Fields(0); }), 0, 0},
             {"field by name", Use([](auto& r) { r.Fields(u"Codigo"_s); }), 0, 0},
             {"find", Use([](auto& r) { r.FindFirst(u"Codigo = 3"_s); }), 0, 3219},
             {"read up to", Use([](auto& r) { r.ReadUpTo(3); }), 0, 3219},
             {"read in time", Use([](auto& r) { r.ReadUpTo(3, Budget); }), 0, 3219},
             {"read for", Use([](auto& r) { r.ReadFor(Budget); }), 0, 3219},
             {"end", Use([](auto& r) { r.Eof(); }), 0, 0},
             {"count", Use([](auto& r) { r.RecordCount(); }), 0, 0},
             {"place", Use([](auto& r) { r.AbsolutePosition(); }), 0, 0},
             {"complete", Use([](auto& r) { r.IsComplete(); }), 0, 0},
             {"text", Use([](auto& r) { r.Text(0, 0); }), 9, 0},
             {"value of a row", Use([](auto& r) { r.Value(0, 0); }), 9, 0},
             {"no such field", Use([](auto& r) { r.Fields(-1); }), 3265, 3265},
             {"behind the fields", Use([](auto& r) { r.Fields(1); }), 3265, 3265},
         }) {
        const auto empty = Open(NoItem);
        QVERIFY(empty->Eof());
        QCOMPARE(ErrorOf([&] { use(*empty); }), onEmpty);
        empty->Close();
        QCOMPARE(ErrorOf([&] { use(*empty); }), 3420);
        const auto forward = Open("SELECT Codigo FROM ITEM", dbOpenForwardOnly);
        QCOMPARE(ErrorOf([&] { use(*forward); }), onForward);
    }
}

TEST(TestRecordset, OutlivesItsDatabase) {
    auto other = file_.Open();
    const auto rows = other.database->OpenRecordset(AllItems);
    rows->ReadUpTo(10);
    Statement statement(*other.database->GetConnection(), "SELECT * FROM ITEM");
    statement.Step();
    Connection& writer = *session_.database->GetConnection();
    writer.SetBusyTimeout(std::chrono::milliseconds(0));
    const auto write = [&] {
        return ErrorOf([&] { writer.Run("DELETE FROM ITEM WHERE Codigo < 9"); });
    };
    QCOMPARE(write(), 3260);
    other.database.reset();
    QCOMPARE(write(), 0);
    QCOMPARE(ErrorOf([&] { statement.Step(); }), 3420);
    rows->SetAbsolutePosition(9);
    QCOMPARE(rows->ReadUpTo(10), 10);
    QCOMPARE(rows->Text(9, 1), u"Peça 10"_s);  // a grid may still paint it
    QVERIFY(rows->ReadFor(std::chrono::microseconds(100)));
    QCOMPARE(ErrorOf([&] { rows->MoveLast(); }), 3420);

    other = file_.Open();
    const auto left = other.database->OpenRecordset(AllItems);
    QCOMPARE(write(), 3260);
    left->Close();
    QCOMPARE(write(), 0);
}

TEST(TestRecordset, JoinsStatementsAndDropsFlaggedRows) {
    sql::Translation query;
    query.statements = {"SELECT Codigo, Codigo % 2 FROM ITEM WHERE Codigo <= 4 ORDER BY 1",
                        "SELECT Codigo, NULL FROM ITEM WHERE Codigo = 5",
                        "SELECT Codigo, 1, -Codigo FROM ITEM WHERE Codigo IN (6, 7) ORDER BY 3"};
    query.resultColumns = 1;
    RowStore store;
    const auto connection = session_.database->GetConnection();
    RowReader reader(connection, query, store);
    reader.Read(1);
    QCOMPARE(reader.Columns(), List("Codigo"));
    // The lock is held from one statement to the next.
    auto other = file_.Open();
    Connection& writer = *other.database->GetConnection();
    writer.SetBusyTimeout(std::chrono::milliseconds(0));
    for (int slice = 0; slice < 6; ++slice) {
        reader.Read(9, Connection::Clock::time_point());
        QCOMPARE(ErrorOf([&] { writer.Run("DELETE FROM ITEM WHERE Codigo = 7"); }), 3260);
    }
    reader.Read(9);
    QVERIFY(reader.Done());
    QCOMPARE(ErrorOf([&] { writer.Run("UPDATE ITEM SET Codigo = Codigo WHERE Codigo = 7"); }), 0);
    QStringList codes;
    for (qint64 row = 0; row < store.Rows(); ++row) {
        codes.append(store.Text(row, 0));
    }
    QCOMPARE(codes.join(u' '), u"1 3 7 6"_s);
    // One that broke off stays so, without a lock.
    query.statements[2] = "SELECT Codigo, 1 << Codigo, abs(-9223372036854775807 - 1) FROM ITEM";
    RowReader broken(connection, query, store);
    QCOMPARE(ErrorOf([&] { broken.Read(99); }) + ErrorOf([&] { broken.Read(1); }), 12);
    QCOMPARE(ErrorOf([&] { writer.Run("UPDATE ITEM SET Codigo = Codigo WHERE Codigo = 7"); }), 0);
}

// A grid's result comes back before a first row that is far away. Who needs the row waits for it,
// and the grid is told when it has come.
TEST(TestRecordset, TheFirstRowMayComeLate) {
    session_.Execute("CREATE INDEX ITEM_NOME ON ITEM (Nome)");
    const QString far = u"SELECT Nome, Codigo FROM ITEM WHERE Nome LIKE '*a 4999' ORDER BY 1"_s;
    using Use = std::function<QVariant(Recordset&)>;
    for (const auto& [use, value, changes] : Each<Use, QVariant, int>{
             {"end", [](Recordset& r) { return r.Eof(); }, false, 1},
             {"value", [](Recordset& r) { return r.Fields(1).Value(); }, 4999, 1},
             {"bookmark", [](Recordset& r) { return r.CurrentBookmark().row; }, 0, 1},
             {"next", [](Recordset& r) { return r.MoveNext(), r.Eof(); }, true, 2},
             {"last", [](Recordset& r) { return r.MoveLast(), r.Text(0, 1); }, u"4999"_s, 1},
         }) {
        session_.database->SetIdle([] {
            QThread::msleep(5);
            return true;
        });
        const auto rows = Open(far, dbOpenDynaset);
        session_.database->SetIdle({});
        QCOMPARE(rows->FieldCount(), 2);
        QSignalSpy changed(rows.get(), &Recordset::CurrentChanged);
        rows->ReadFor(std::chrono::microseconds(1));
        QCOMPARE(rows->RecordCount() + changed.count(), 0);
        QCOMPARE(use(*rows), value);
        QVERIFY(rows->ReadFor(std::chrono::minutes(1)));
        QCOMPARE(changed.count(), changes);
    }
}

// What the engine itself lacks, by the names under which the dialect calls it.
TEST(TestRecordset, Computes) {
    QStringList rows;
    ReadRows(
        *session_.database,
        "SELECT 7 \\ 2, 7 Mod 4, 2 ^ 3, 7 / 2, '5' + 2, '5' - 2, '2' * 3, 'a' & 'é', 1 & Null, "
        "UCase('é'), 'x' & #3/5/2024#, 'a' & 6 / 2, 'Á' Like 'á*', 2.5 Like '2?5', 6 / 3 Like '2', "
        "Null Like 'a', 2.5 Like '3*', "
        "6 / 2 & 'a', 'a' Like Null, Sgn(-2), Year(#3/5/2024#), "
        "IIf(True, Null, #3/5/2024#) & 'x', IIf(True, 'y', #3/5/2024#) & 'x'",
        rows);
    rows += dao::OpenRecordset(session_.database->GetConnection(), u"SELECT 'É' Like 'e'"_s,
                               dbOpenSnapshot, Accents::AsTyped)
                ->Text(0, 0);
    ReadRows(*session_.database,
             "SELECT First(Valor), Last(Valor), First(Nome), Last(Nome), (SELECT First(Nome) FROM "
             "ITEM WHERE Codigo < 0) FROM ITEM WHERE Codigo BETWEEN 2 AND 6",
             rows);
    QCOMPARE(rows, List("3|3|8|3.5|7|3|6|aé|1|É|x05/03/2024|a3|-1|-1|-1||0|3a||-1|2024|x|yx", "-1",
                        "1||Peça 2|Peça 6|"));
    Statement bound(*session_.database->GetConnection(), "SELECT typeof(?1) || typeof(?2)");
    bound.Bind(1, QByteArray("1"));
    bound.Bind(2, 7);
    QVERIFY(bound.Step());
    QCOMPARE(bound.Column(0), QVariant(u"textinteger"_s));
}
