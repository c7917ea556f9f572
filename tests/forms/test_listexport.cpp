#include "platform/forms/listexport.h"
#include "platform/forms/progressbox.h"
#include "scene.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QFileDialog>
#include <QMenu>
#include <QPushButton>
#include <QRegularExpression>

namespace {

constexpr char Definition[] = R"(
CREATE TABLE ITEM (Item TEXT, Quantidade NUMERIC, Nome TEXT);
INSERT INTO ITEM VALUES ('   1', 2.5, '=1+1'), ('  12a', -3, 'Anel; "O"'), ('  13', NULL, NULL),
    ('  14', 1e-7, 'duas
linhas');
CREATE TABLE MUITOS (Nome TEXT);
WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 300000)
INSERT INTO MUITOS SELECT printf('Peça %06d', i) FROM n;
)";

const QString Few = u"SELECT Item, Quantidade, Nome FROM ITEM ORDER BY Item"_s;
const QString All = u"SELECT Nome FROM MUITOS"_s;

struct Scene : GridScene {
    Scene(const QString& database, const QString& sql) : GridScene(database) {
        grid.AddColumn(u"Item"_s, u"Item"_s, 60);
        grid.AddColumn(u"Quantidade"_s, u"Quantidade"_s, 60);
        grid.AddColumn(u"Nome"_s, u"Descrição; nome"_s, 300);
        source.SetRecordSource(sql);
        form->Show();
        Settle();
        grid.setFocus();
        forms::SetSavePathHandler([this](const QString&) { return this->path; });
    }
    ~Scene() { forms::SetSavePathHandler({}); }

    QMenu* Menu() const { return grid.findChild<QMenu*>(u"ListMenu"_s); }
    QStringList Names() const { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden); }

    QTemporaryDir folder;
    QString path = folder.filePath(u"lista.csv"_s);
};

}  // namespace

struct TestListExport : Fixture {
    TestDatabase file_{Definition};
    TestDatabase::Session session_ = file_.Open();
    const int delay_ = forms::ProgressBox::SetDelay(0);

    static QString Clipboard() { return QGuiApplication::clipboard()->text(); }
    ~TestListExport() override { forms::ProgressBox::SetDelay(delay_); }
    void init() override { QGuiApplication::clipboard()->setText(u"antes"_s); }
};

TEST(TestListExport, CopiesAndSaves) {
    Scene scene(file_.Path(), Few);
    QTest::keyClick(&scene.grid, Qt::Key_End);
    QTest::keyClick(&scene.grid, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(Clipboard(), u"14\t0,0000001\tduas linhas"_s);
    QTest::keyClick(&scene.grid, Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    const QString list =
        u"Item\tQuantidade\tDescrição; nome\n1\t2,5\t=1+1\n12a\t-3\tAnel; \"O\"\n13\t\t\n"
        "14\t0,0000001\tduas linhas\n"_s;
    QCOMPARE(Clipboard(), list);
    QCOMPARE(scene.grid.currentIndex().row(), 3);

    scene.grid.Export().SetNote([] { return u"Só os do jogo \"X\""_s; });
    scene.grid.Export().CopyList();
    QCOMPARE(Clipboard(), u"Só os do jogo \"X\"\n"_s + list);
    scene.grid.Export().SaveList();  // for a spreadsheet
    const QByteArray rows =
        "Item;Quantidade;\"Descrição; nome\"\r\n1;2,5;'=1+1\r\n"
        "12a;-3;\"Anel; \"\"O\"\"\"\r\n13;;\r\n14;0,0000001;\"duas\nlinhas\"\r\n";
    QCOMPARE(sys::ReadBytes(scene.path), "\xEF\xBB\xBF\"Só os do jogo \"\"X\"\"\"\r\n" + rows);
    QCOMPARE(scene.Names(), List("lista.csv"));

    forms::SetSavePathHandler({});
    WithNextBox([&](QDialog& box) {
        auto& dialog = dynamic_cast<QFileDialog&>(box);
        QCOMPARE(dialog.windowTitle() + dialog.nameFilters().join(u'|'),
                 u"Salvar listaPlanilhas CSV (*.csv)"_s);
        QCOMPARE(QFileInfo(dialog.selectedFiles().first()).fileName(), u"lista.csv"_s);
        dialog.selectFile(scene.folder.filePath(u"outra"_s));
        box.accept();
    });
    scene.grid.Export().SaveList();
    QCOMPARE(scene.Names(), List("lista.csv", "outra.csv"));
}

TEST(TestListExport, MenuByMouseAndByKeys) {
    for (const int how : {0, 1, 2}) {  // the mouse, the menu key, Shift+F10
        Scene scene(file_.Path(), Few);
        const QPoint place(100, 27);
        QWidget* viewport = scene.grid.viewport();
        if (how == 0) {
            QTest::mouseClick(viewport, Qt::RightButton, {}, place);
            QContextMenuEvent event(QContextMenuEvent::Mouse, place, viewport->mapToGlobal(place));
            QApplication::sendEvent(viewport, &event);
        } else if (how == 1) {
            QTest::keyClick(&scene.grid, Qt::Key_Menu);
        } else {
            QTest::keyClick(&scene.grid, Qt::Key_F10, Qt::ShiftModifier);
        }
        QVERIFY(scene.Menu() && scene.Menu()->isVisible());
        QCOMPARE(viewport->mapFromGlobal(scene.Menu()->pos()).x(), how == 0 ? 100 : 0);
        QStringList texts;
        for (const QAction* action : scene.Menu()->actions()) {
            QVERIFY(action->isEnabled());
            texts += action->text().remove(u'&').section(u'\t', 0, 0);
        }
        QCOMPARE(texts, List("Copiar linha", "Copiar lista", "Salvar lista…"));
        for (int i = 0; i < 3; ++i) {
            scene.Menu()->actions().at(i)->trigger();
            Settle();
            QCOMPARE(Clipboard().count(u'\n'), i == 0 ? 0 : 5);
        }
        QCOMPARE(scene.Names(), List("lista.csv"));
        scene.Menu()->close();
    }
}

TEST(TestListExport, NothingToTake) {
    Scene scene(file_.Path(), u"SELECT Nome FROM MUITOS WHERE Nome = 'x'"_s);
    QTest::keyClick(&scene.grid, Qt::Key_C, Qt::ControlModifier);
    QTest::keyClick(&scene.grid, Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    QTest::keyClick(&scene.grid, Qt::Key_F9, Qt::ShiftModifier);
    QVERIFY(!scene.Menu());
    QTest::keyClick(&scene.grid, Qt::Key_F10, Qt::ShiftModifier);
    for (const QAction* action : scene.Menu()->actions()) {
        QVERIFY(!action->isEnabled());
    }
    scene.Menu()->close();
    scene.grid.Export().SaveList();
    QCOMPARE(Clipboard(), u"antes"_s);
    QCOMPARE(scene.Names(), QStringList());
}

// A long list is whole; one that gives way to another result meanwhile, and one that is cancelled,
// leave everything as it was.
TEST(TestListExport, LongLists) {
    Scene scene(file_.Path(), All);
    BoxAnswers boxes;
    QSet<QString> said;
    QTimer watch;
    connect(&watch, &QTimer::timeout, this, [&said] {
        if (const QWidget* box = QApplication::activeModalWidget()) {
            said += box->accessibleName().replace(QRegularExpression(u"\\b[\\d.]+ (de|l)"_s),
                                                  u"# \\1"_s);
        }
    });
    watch.start(1);
    WithNextBox([&scene](QDialog&) { scene.source.Refresh(); });
    scene.grid.Export().SaveList();
    WithNextBox([&scene](QDialog&) { scene.source.Refresh(); });
    scene.grid.Export().CopyList();
    QCOMPARE(boxes.Texts().join(u'|'),
             u"A lista não foi salva em \"%1\".\nA lista mudou no meio do caminho.|"
             "A lista não foi copiada.\nA lista mudou no meio do caminho."_s.arg(scene.path));
    QCOMPARE(scene.Names(), QStringList());

    QVERIFY(!scene.source.GetRecordset()->IsComplete());
    Write(scene.path, "velha");
    WithNextBox([](QDialog& box) { box.findChild<QPushButton*>()->click(); });
    scene.grid.Export().SaveList();
    QCOMPARE(sys::ReadBytes(scene.path), "velha"_ba);
    WithNextBox([](QDialog& box) { box.reject(); });
    scene.grid.Export().CopyList();
    QCOMPARE(Clipboard(), u"antes"_s);
    scene.grid.Export().SaveList();
    QVERIFY(said.contains(u"Salvando a lista: # de # linhas"_s));
    const QByteArray saved = sys::ReadBytes(scene.path);
    QCOMPARE(saved.count('\n'), 300001);
    QVERIFY(saved.endsWith("\r\n;;Peça 300000\r\n"));
    QCOMPARE(scene.Names(), List("lista.csv"));

    scene.path.clear();  // no name is chosen
    scene.grid.Export().SaveList();
    QCOMPARE(boxes.Texts().size(), 2);
}
