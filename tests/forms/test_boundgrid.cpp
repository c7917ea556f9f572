#include "scene.h"

#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QHelpEvent>
#include <QToolTip>

using dao::Bookmark;
using forms::BoundGrid;

namespace {

constexpr int Rows = 20000;

constexpr char Definition[] = R"(
CREATE TABLE ITEM (Codigo INTEGER PRIMARY KEY, Nome TEXT);
WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 20000)
INSERT INTO ITEM SELECT i, printf('Peça %05d', i) FROM n;
)";

const QString All = u"SELECT Nome, Codigo FROM ITEM ORDER BY Codigo"_s;
const QString None = u"SELECT Nome, Codigo FROM ITEM WHERE Codigo = -5"_s;

// With a text to read it is shown.
struct Scene : GridScene {
    explicit Scene(const QString& path, const QString& sql = {}) : GridScene(path) {
        grid.AddColumn(u"Nome"_s, u"Peça"_s, 159.987);
        grid.AddColumn(u"CODIGO"_s, u"Código"_s, 355.994, Qt::AlignRight);
        grid.AddColumn(u"Falta"_s, u"Falta"_s, 170.986);
        QObject::connect(&grid, &BoundGrid::RowColChange, [this](const Bookmark& last) {
            changes.append({last, grid.CurrentBookmark()});
        });
        if (!sql.isEmpty()) {
            source.SetRecordSource(sql);
            form->Show();
        }
    }

    void Finish() {
        QTRY_VERIFY(source.GetRecordset()->IsComplete());
        Settle();
    }

    bool CurrentInView() const {
        return grid.viewport()->rect().contains(grid.visualRect(grid.currentIndex()));
    }

    QAbstractItemModelTester tester{grid.model()};
    QList<std::pair<Bookmark, Bookmark>> changes;  // from, to
};

}  // namespace

struct TestBoundGrid : Fixture {
    TestDatabase file_{Definition};
    TestDatabase::Session session_ = file_.Open();
};

// Opens when the screen shows, fills in idle time, and lets the view move without the current row.
TEST(TestBoundGrid, ShowsEveryRow) {
    Scene scene(file_.Path());
    scene.source.SetRecordSource(All);
    QVERIFY(!scene.source.GetRecordset());
    scene.form->Show();
    const QAbstractItemModel& model = *scene.grid.model();
    QVERIFY(model.rowCount() >= 6 && model.rowCount() < Rows);
    scene.Finish();
    QCOMPARE(model.rowCount(), Rows);
    scene.form->SetVisible(false);
    scene.form->SetVisible(true);
    const Bookmark first = scene.source.GetRecordset()->CurrentBookmark();
    QCOMPARE(scene.changes, (QList{std::pair(Bookmark(), first)}));
    QCOMPARE(model.index(2, 0).data(), u"Peça 00003"_s);  // by name, whatever the order
    QCOMPARE(model.index(2, 1).data(), u"3"_s);
    QCOMPARE(model.index(2, 2).data(), QString());
    QCOMPARE(scene.grid.columnWidth(1), 356);
    QCOMPARE(&Find<BoundGrid>(*scene.form, "grdTeste"), &scene.grid);
    QCOMPARE(&Find<forms::DataSource>(*scene.form, "dtcTeste"), &scene.source);

    QAccessibleInterface* told = QAccessible::queryAccessibleInterface(&scene.grid);
    QCOMPARE(told->text(QAccessible::Name), u"Peças"_s);
    QAccessibleTableInterface* table = told->tableInterface();
    QCOMPARE(table->columnDescription(1), u"Código"_s);
    const QString whole = u"Peça: Peça 00002, Código: 2"_s;
    QCOMPARE(table->rowDescription(1), whole);
    QCOMPARE(table->cellAt(1, 0)->text(QAccessible::Description), whole);

    scene.grid.Scroll(0, 100);
    QCOMPARE(scene.grid.rowAt(0), 100);
    QCOMPARE(scene.source.GetRecordset()->AbsolutePosition(), 0);
    scene.grid.Scroll(0, Rows * 2);
    QCOMPARE(scene.grid.VisibleRows(), 5);
    scene.grid.ReBind();
    QVERIFY(scene.CurrentInView());
    QCOMPARE(scene.changes.size(), 1);
    scene.grid.resize(400, 92);
    scene.grid.Scroll(1, 0);
    QCOMPARE(scene.grid.columnAt(5), 1);
}

// The current row and column, moved from either side, step by step on one scene.
TEST(TestBoundGrid, BothSidesMoveTogether) {
    Scene scene(file_.Path(), All);
    auto& records = *scene.source.GetRecordset();
    const auto bookmark = [&](qint64 row) {
        return Bookmark{records.CurrentBookmark().recordset, row};
    };
    const auto click = [&](int row, int column) {
        QTest::mouseClick(scene.grid.viewport(), Qt::LeftButton, Qt::ControlModifier,
                          scene.grid.visualRect(scene.grid.model()->index(row, column)).center());
    };
    const auto key = [&](Qt::Key which) { QTest::keyClick(&scene.grid, which); };
    // The row then, the one that was left (-1: no row change), the column.
    const std::tuple<const char*, std::function<void()>, int, int, int> steps[] = {
        {"click", [&] { click(3, 1); }, 3, 0, 1},
        {"same cell", [&] { click(3, 1); }, 3, -1, 1},
        {"other column", [&] { click(3, 0); }, 3, 3, 0},
        {"down", [&] { key(Qt::Key_Down); }, 4, 3, 0},
        {"seek", [&] { records.SetAbsolutePosition(15000); }, 15000, 4, 0},
        {"seek the same", [&] { records.SetAbsolutePosition(15000); }, 15000, -1, 0},
        {"next", [&] { records.MoveNext(); }, 15001, 15000, 0},
        {"up", [&] { key(Qt::Key_Up); }, 15000, 15001, 0},
        {"end", [&] { key(Qt::Key_End); }, Rows - 1, 15000, 0},
        {"home", [&] { key(Qt::Key_Home); }, 0, Rows - 1, 0},
        {"page", [&] { key(Qt::Key_PageDown); }, 5, 0, 0},
        {"letters", [&] { key(Qt::Key_P); }, 5, -1, 0},
        {"right", [&] { key(Qt::Key_Right); }, 5, 5, 1},
        {"last", [&] { records.MoveLast(); }, Rows - 1, 5, 1},
    };
    for (const auto& [where, act, row, last, column] : steps) {
        scene.changes.clear();
        act();
        QVERIFY2(records.AbsolutePosition() == row, where);
        QVERIFY2(scene.grid.currentIndex() == scene.grid.model()->index(row, column), where);
        QVERIFY2(scene.grid.selectionModel()->isRowSelected(row), where);
        QVERIFY2(scene.CurrentInView(), where);
        QVERIFY2(scene.changes.size() == (last < 0 ? 0 : 1), where);
        QVERIFY2(last < 0 || scene.changes.first() == std::pair(bookmark(last), bookmark(row)),
                 where);
    }
    records.SetAbsolutePosition(9000);  // comes with what stands around it
    QVERIFY(scene.grid.rowAt(0) < 9000 && scene.grid.rowAt(80) > 9000);
    records.MoveLast();
    records.MoveNext();  // behind the last row
    QVERIFY(!scene.grid.currentIndex().isValid() && !scene.grid.selectionModel()->hasSelection());
    QCOMPARE(scene.changes.size(), 4);
    QCOMPARE(scene.changes.last().second, Bookmark());
}

TEST(TestBoundGrid, RefreshAnnouncesARowChangeEvenWithoutRows) {
    Scene scene(file_.Path(), All);
    scene.source.GetRecordset()->SetAbsolutePosition(700);
    const Bookmark before = scene.grid.CurrentBookmark();
    scene.changes.clear();

    scene.source.Refresh();
    QCOMPARE(scene.grid.currentIndex().row(), 0);
    QVERIFY(scene.CurrentInView());
    QCOMPARE(scene.changes.size(), 1);
    QCOMPARE(scene.changes.first().first, before);
    QVERIFY(scene.changes.first().second != before);

    scene.source.SetRecordSource(None);
    scene.source.Refresh();
    QCOMPARE(scene.changes.size(), 2);
    QCOMPARE(scene.changes.last().second, Bookmark());
    QCOMPARE(scene.grid.model()->rowCount(), 0);
    QCOMPARE(scene.grid.VisibleRows(), 0);
    scene.Finish();

    scene.source.SetRecordSource(u"SELECT Nada FROM ITEM"_s);
    QVERIFY(ErrorOf([&] { scene.source.Refresh(); }) != 0 && scene.source.GetRecordset()->Eof());
    scene.source.SetDatabaseName(file_.Folder() + u"/Outro.mdb"_s);
    QCOMPARE(ErrorOf([&] { scene.source.Refresh(); }), 3024);
}

// As a row-change handler may do: run the source's own query again.
TEST(TestBoundGrid, RefreshFromTheRowChange) {
    Scene scene(file_.Path(), All);
    connect(&scene.grid, &BoundGrid::RowColChange, &scene.source, &forms::DataSource::Refresh,
            Qt::SingleShotConnection);
    scene.source.GetRecordset()->FindFirst(u"Codigo = 500"_s);
    QCOMPARE(scene.grid.currentIndex().row(), 0);
    scene.Finish();
    QCOMPARE(scene.grid.model()->rowCount(), Rows);
}

TEST(TestBoundGrid, MouseOnRowsAndBesideThem) {
    Scene scene(file_.Path(), u"SELECT TOP 2 Nome, Codigo FROM ITEM ORDER BY Codigo"_s);
    QStringList heard;  // the grid keeps the mouse to itself
    connect(&scene.grid, &BoundGrid::DblClick, [&] { heard += u"open"_s; });
    connect(&scene.grid, &BoundGrid::MouseMove, [&] { heard += u"grid"_s; });
    connect(scene.form, &forms::Form::MouseMove, [&] { heard += u"form"_s; });
    connect(scene.form, &forms::Form::Click, [&] { heard += u"click"_s; });
    const QPoint place = scene.grid.mapTo(scene.form->Picture(), QPoint(0, 0));
    DoubleClickAt(*scene.form, place + QPoint(20, 25));
    DoubleClickAt(*scene.form, place + QPoint(20, 80));
    QCOMPARE(heard, List("open"));
    QCOMPARE(scene.grid.currentIndex().row(), 1);
    QVERIFY(scene.grid.selectionModel()->isRowSelected(1));
    QCOMPARE(scene.grid.VisibleRows(), 2);
    // A drag takes the current row along, one at a time.
    QTest::mousePress(scene.grid.viewport(), Qt::LeftButton, {}, {20, 5});
    QTest::mouseMove(scene.grid.viewport(), {20, 6});
    QTest::mouseMove(scene.grid.viewport(), {20, 25});
    QCOMPARE(scene.grid.selectionModel()->selectedRows(),
             QModelIndexList{scene.grid.currentIndex()});
    QCOMPARE(scene.grid.currentIndex().row(), 1);
    QTest::mouseRelease(scene.grid.viewport(), Qt::LeftButton, {}, {20, 25});
    MoveTo(*scene.form, place + QPoint(30, 25));
    heard.removeDuplicates();
    QCOMPARE(heard, List("open", "grid"));

    scene.source.SetRecordSource(None);
    scene.source.Refresh();
    DoubleClickAt(*scene.form, place + QPoint(20, 80));
    QCOMPARE(heard, List("open", "grid", "open"));
    scene.grid.setEnabled(false);  // keeps it all the same
    ClickAt(*scene.form, place + QPoint(20, 80));
    scene.grid.setEnabled(true);
    scene.grid.hide();
    scene.grid.show();
    QTest::mouseDClick(scene.grid.viewport(), Qt::LeftButton);  // begun on another screen
    QTest::mouseRelease(scene.grid.viewport(), Qt::LeftButton);
    QCOMPARE(heard.size(), 3);
}

// Rows with a line below each, the current one lit to the edge; what is cut has a tip.
TEST(TestBoundGrid, PaintsRows) {
    const forms::Theme& theme = forms::CurrentTheme();
    Scene scene(file_.Path(),
                u"SELECT TOP 2 'Um nome que não cabe na coluna em que ele está' AS Nome, "
                "Codigo FROM ITEM ORDER BY Codigo"_s);
    QWidget& view = *scene.grid.viewport();
    const QImage image = view.grab().toImage();
    const auto colour = [&](int x, int y) { return image.pixelColor(x, y); };
    for (const int x : {1, 159, 515, image.width() - 1}) {
        QCOMPARE(colour(x, 1), theme.selection);
        QCOMPARE(colour(x, theme.rowPixels - 1), theme.rowLine);
        QCOMPARE(colour(x, theme.rowPixels + 1), theme.base);
    }
    QVERIFY(Shows(view, theme.selectionText, {0, 0, 160, theme.rowPixels}).isValid());
    const QRect cut = Shows(view, theme.text, {0, theme.rowPixels, 160, theme.rowPixels});
    QVERIFY(cut.left() >= 5 && cut.left() < 8 && cut.right() < 155 && cut.right() > 135);
    const QRect code = Shows(view, theme.text, {160, theme.rowPixels, 356, theme.rowPixels});
    QVERIFY2(code.right() < 350 && code.right() > 343, qPrintable(QString::number(code.right())));
    for (const int x : {80, 500}) {
        QHelpEvent ask(QEvent::ToolTip, {x, 27}, view.mapToGlobal(QPoint(x, 27)));
        QApplication::sendEvent(&view, &ask);
        QTRY_COMPARE(QToolTip::isVisible(), x == 80);
    }
    QTest::keyClick(&scene.grid, Qt::Key_Tab);  // out of the grid, not through its cells
    QCOMPARE(scene.grid.currentIndex().column(), 0);
}

// To the ear always, to the eye where there is nothing.
TEST(TestBoundGrid, SaysHowManyRowsThereAreOrWhyNone) {
    for (const auto& [sql, said, seen] : Each<QString, QString, bool>{
             {"many", All, "20.000 linhas", false},
             {"one", "SELECT Nome FROM ITEM WHERE Codigo = 7", "1 linha", false},
             {"none", None, "Nada com esse número.", true},
         }) {
        Scene scene(file_.Path());
        scene.grid.SetEmptyText(u"Nada com esse número."_s);
        QStringList heard;
        connect(&scene.grid, &BoundGrid::Counted, [&](const QString& text) { heard += text; });
        scene.source.SetRecordSource(sql);
        scene.form->Show();
        scene.Finish();
        QTRY_COMPARE(heard.size(), 1);
        QCOMPARE(heard.first(), said);
        QCOMPARE(QAccessible::queryAccessibleInterface(&scene.grid)->text(QAccessible::Description),
                 heard.first());
        QWidget& view = *scene.grid.viewport();
        QCOMPARE(Shows(view, forms::CurrentTheme().disabledText).isValid(), seen);
    }
}
