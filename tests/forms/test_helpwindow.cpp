#include "platform/forms/helpwindow.h"
#include "support/database.h"
#include "support/testmain.h"
#include "support/windows.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTreeWidget>

using namespace Qt::StringLiterals;
using namespace testing_support;
using forms::HelpWindow;

namespace {

constexpr char Html[] =
    "<h1>Ajuda</h1><p>Peças e <a href='#sair'>sair</a>"
    "<a href='http://exemplo.invalid/'>fora</a> <img src='Figuras/FOTO.png'></p>"
    "<h3>Sem nível dois</h3><p>PEÇA</p><h2>Sair</h2><p><a name='sair'></a>peca</p><h3>Fim</h3>";

QWidget* Window() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (qobject_cast<HelpWindow*>(widget)) {
            return widget;
        }
    }
    return nullptr;
}

QStringList Tree(const QTreeWidgetItem* item, int depth = 0) {
    QStringList lines;
    for (int i = 0; i < item->childCount(); ++i) {
        lines += QString(depth, u'-') + item->child(i)->text(0);
        lines += Tree(item->child(i), depth + 1);
    }
    return lines;
}

}  // namespace

class TestHelpWindow : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ShowsThePageItsContentsAndWhatIsSearched() {
        QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkdir(u"figuras"_s));
        QImage picture(30, 20, QImage::Format_RGB32);
        picture.fill(Qt::red);
        QVERIFY(picture.save(folder.filePath(u"figuras/foto.png"_s)));
        QFile file(folder.filePath(u"Ajuda.hlp"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(Html);
        file.close();
        const QString path = folder.path() + u"\\Ajuda.hlp"_s;

        QCOMPARE(ErrorOf([&] { HelpWindow::Open(folder.path() + u"\\Outra.hlp"_s, {}); }), 53);
        QVERIFY(!Window());
        HelpWindow::Open(path, u"Ajuda do Catálogo"_s);
        HelpWindow::Open(path, u"Ajuda do Catálogo"_s);
        const QPointer<QWidget> window = Window();
        QCOMPARE(window->windowTitle(), u"Ajuda do Catálogo"_s);

        auto* contents = window->findChild<QTreeWidget*>();
        QCOMPARE(Tree(contents->invisibleRootItem()),
                 (QStringList{u"Ajuda"_s, u"-Sem nível dois"_s, u"-Sair"_s, u"--Fim"_s}));

        auto* page = window->findChild<QTextBrowser*>();
        const auto picture_of = [&](const char* name) {
            return page->loadResource(QTextDocument::ImageResource, QUrl(QLatin1String(name)));
        };
        QCOMPARE(picture_of("Figuras/FOTO.png").value<QImage>().size(), QSize(30, 20));
        QVERIFY(!picture_of("../fora.png").isValid());
        QVERIFY(!picture_of("/fora.png").isValid());
        QVERIFY(!picture_of("file:///fora.png").isValid());
        QVERIFY(!picture_of("//host/fora.png").isValid());
        QVERIFY(!picture_of("http://host/fora.png").isValid());

        auto* find = window->findChild<QLineEdit*>();
        auto* count = window->findChild<QLabel*>();
        QTest::keyClicks(find, u"peca"_s);
        QCOMPARE(count->text(), u"1 de 3"_s);
        QCOMPARE(page->extraSelections().size(), 3);
        QTest::keyClick(find, Qt::Key_Return);
        QCOMPARE(page->textCursor().block().text(), u"PEÇA"_s);
        QTest::keyClick(window, Qt::Key_F3, Qt::ShiftModifier);
        QTest::keyClick(window, Qt::Key_F3, Qt::ShiftModifier);
        QCOMPARE(count->text(), u"3 de 3"_s);
        find->setText(u"nada disso"_s);
        QCOMPARE(count->text(), u"Nenhuma ocorrência"_s);
        QCOMPARE(page->extraSelections().size(), 0);

        Q_EMIT page->anchorClicked(QUrl(u"http://exemplo.invalid/"_s));
        Q_EMIT page->anchorClicked(QUrl(u"#sair"_s));
        QCOMPARE(page->textCursor().block().text(), u"peca"_s);
        QTest::keyClick(window, Qt::Key_Left, Qt::AltModifier);
        QCOMPARE(page->textCursor().position(), 0);

        QTest::keyClick(window, Qt::Key_Escape);
        Settle();
        QVERIFY(!window);
    }
};

TARVO_TEST(TestHelpWindow);
#include "test_helpwindow.moc"
