#include "help/helpwindow.h"
#include "platform/printer/paperprinter.h"
#include "platform/printer/printdialog.h"
#include "support/test.h"
#include "support/windows.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPrinter>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTreeWidget>

using help::HelpWindow;

namespace {

constexpr char Html[] =
    "<h1>Ajuda</h1><p>Peças e <a href='#sair'>sair</a><a href='http://exemplo.invalid/'>fora</a> "
    "<img src='Figuras/FOTO.png'></p><h3>Sem nível dois</h3><p>PEÇA</p><h2>Sair</h2><p><a "
    "name='sair'></a>peca</p><h3>Fim</h3>";

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

struct TestHelpWindow : Fixture {};

TEST(TestHelpWindow, ShowsThePageItsContentsAndWhatIsSearched) {
    QTemporaryDir folder;
    WritePicture(folder.filePath(u"figuras/foto.png"_s), {30, 20});
    Write(folder.filePath(u"Ajuda.hlp"_s), Html);
    const QString path = folder.path() + u"\\Ajuda.hlp"_s;

    QCOMPARE(ErrorOf([&] { HelpWindow::Open(folder.path() + u"\\Outra.hlp"_s, {}); }), 53);
    QVERIFY(!Window());
    HelpWindow::Open(path, u"Ajuda do Catálogo"_s);
    HelpWindow::Open(path, u"Ajuda do Catálogo"_s);
    const QPointer<QWidget> window = Window();
    QCOMPARE(window->windowTitle(), u"Ajuda do Catálogo"_s);

    auto* contents = window->findChild<QTreeWidget*>();
    QCOMPARE(Tree(contents->invisibleRootItem()),
             List("Ajuda", "-Sem nível dois", "-Sair", "--Fim"));

    auto* page = window->findChild<QTextBrowser*>();
    const auto picture_of = [&](const char* name) {
        return page->loadResource(QTextDocument::ImageResource, QUrl(QLatin1String(name)));
    };
    QCOMPARE(picture_of("Figuras/FOTO.png").value<QImage>().size(), QSize(30, 20));
    for (const char* outside : {"../fora.png", "/fora.png", "file:///fora.png", "//host/fora.png",
                                "http://host/fora.png"}) {
        QVERIFY2(!picture_of(outside).isValid(), outside);
    }

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

// A picture taken at twice its size stands in its own on the page, and with all its pixels on
// paper; the page goes on over several sheets.
TEST(TestHelpWindow, PrintsThePage) {
    QTemporaryDir folder;
    WritePicture(folder.filePath(u"foto-2x.png"_s), {300, 200});
    Write(folder.filePath(u"Ajuda.hlp"_s), "<h1>Primeira</h1><p><img src='foto-2x.png'></p>" +
                                               QByteArray("<p>linha</p>").repeated(60) +
                                               "<p>última</p>");
    HelpWindow::Open(folder.path() + u"\\Ajuda.hlp"_s, u"Ajuda"_s);
    const QPointer<QWidget> window = Window();
    auto* page = window->findChild<QTextBrowser*>();
    const auto seen =
        page->loadResource(QTextDocument::ImageResource, QUrl(u"foto-2x.png"_s)).value<QImage>();
    QCOMPARE(seen.size(), QSize(150, 100) * page->devicePixelRatioF());
    const QTextBlock block = page->document()->findBlockByNumber(1);
    QVERIFY(page->document()->documentLayout()->blockBoundingRect(block).height() < 110);

    const QString paper = folder.filePath(u"ajuda.pdf"_s);
    printer::SetPrintDialogHandler([&](int) {
        auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
        printer->setOutputFileName(paper);
        printer->setResolution(600);
        return std::make_unique<printer::PaperPrinter>(std::move(printer));
    });
    QTest::keyClick(window, Qt::Key_P, Qt::ControlModifier);
    printer::SetPrintDialogHandler([](int) { return nullptr; });
    QTest::keyClick(window, Qt::Key_P, Qt::ControlModifier);  // cancelled: no box, no harm
    printer::SetPrintDialogHandler({});

    const QStringList pages =
        OutputOf("pdftotext", {"-layout", paper, "-"}).split(u'\f', Qt::SkipEmptyParts);
    QCOMPARE(pages.size(), 2);
    QVERIFY(pages.first().contains(u"Primeira"_s) && pages.first().contains(u"1/2"_s));
    QVERIFY(pages.last().contains(u"última"_s) && pages.last().contains(u"2/2"_s));
    QCOMPARE(pages.join(QString()).count(u"linha"_s), 60);
    const QString pictures = OutputOf("pdfimages", {"-list", paper});
    QVERIFY2(pictures.contains(QRegularExpression(u" 300 +200 "_s)), qPrintable(pictures));
    window->close();
    Settle();
}
