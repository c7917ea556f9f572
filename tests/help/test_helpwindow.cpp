#include "help/helpwindow.h"
#include "platform/printer/paperprinter.h"
#include "platform/printer/printdialog.h"
#include "support/windows.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPrinter>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QToolButton>
#include <QTreeWidget>

#include <map>

using help::HelpWindow;

namespace {

// Each part is longer than the window is high.
QByteArray Html() {
    const QByteArray lines = QByteArray("<p>linha</p>").repeated(40);
    return "<h1>Ajuda</h1><p>Peças e <a href='#sair'>sair</a> <a "
           "href='http://exemplo.invalid/'>fora"
           "</a> <img src='Figuras/FOTO.png'></p><h3>Sem nível dois</h3><p>PEÇA</p>" +
           lines + "<h2>Sair</h2><p><a name='sair'></a>peca</p>" + lines + "<h3>Fim</h3>" + lines;
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

struct TestHelpWindow : Fixture {
    QTemporaryDir folder_;
    QWidget* window_ = nullptr;
    QTextBrowser* page_ = nullptr;
    QTreeWidget* contents_ = nullptr;
    QLineEdit* find_ = nullptr;
    QLabel* count_ = nullptr;

    static QWidgetList Windows() {
        QWidgetList windows = QApplication::topLevelWidgets();
        windows.removeIf([](QWidget* widget) { return !qobject_cast<HelpWindow*>(widget); });
        return windows;
    }

    void Open(const QByteArray& html, const QString& name = u"Ajuda.hlp"_s) {
        Write(folder_.filePath(name), html);
        HelpWindow::Open(folder_.path() + u'\\' + name, u"Ajuda do Catálogo"_s);
        QCOMPARE(Windows().size(), 1);
        window_ = Windows().first();
        page_ = window_->findChild<QTextBrowser*>();
        contents_ = window_->findChild<QTreeWidget*>();
        find_ = window_->findChild<QLineEdit*>();
        count_ = window_->findChild<QLabel*>();
    }

    QToolButton& Button(const QString& text) const {
        for (auto* button : window_->findChildren<QToolButton*>()) {
            if (button->text() == text) {
                return *button;
            }
        }
        qFatal("no button %s", qPrintable(text));
    }
    void Press(const AnyText& text) const { QTest::mouseClick(&Button(text), Qt::LeftButton); }

    QRect PlaceOf(const QWidget* control) const {
        return {control->mapTo(window_, QPoint()), control->size()};
    }
    QRect PlaceOf(const QString& button) const { return PlaceOf(&Button(button)); }

    // The line with the cursor, between the buttons that lead on: "<Sair>". It stands one line
    // below the page's upper edge, or tells where else.
    QString Where() const {
        const int below = page_->cursorRect().top() - page_->fontMetrics().height();
        return (Button(u"←"_s).isEnabled() ? u"<"_s : QString()) +
               page_->textCursor().block().text() +
               (Button(u"→"_s).isEnabled() ? u">"_s : QString()) +
               (qAbs(below) < 3 ? QString() : QString::number(below));
    }

    void ClickLink(const AnyText& text) const {
        const QTextCursor link = page_->document()->find(text);
        QTest::mouseClick(page_->viewport(), Qt::LeftButton, {},
                          page_->cursorRect(link).center() - QPoint(4, 0));
    }
    void ClickHeading(const AnyText& text) const {
        const auto* item =
            contents_->findItems(text, Qt::MatchExactly | Qt::MatchRecursive).first();
        QTest::mouseClick(contents_->viewport(), Qt::LeftButton, {},
                          contents_->visualItemRect(item).center());
    }

    // What is found: the number shown, and each place with the current one in brackets.
    QString Hits() const {
        QStringList hits;
        std::map<QRgb, int> colours;
        for (const auto& mark : page_->extraSelections()) {
            ++colours[mark.format.background().color().rgb()];
        }
        for (const auto& mark : page_->extraSelections()) {
            const bool current = mark.cursor.selectionStart() == page_->textCursor().position();
            const bool alone = colours[mark.format.background().color().rgb()] == 1;
            hits += current && alone ? u'[' + mark.cursor.selectedText() + u']'
                                     : mark.cursor.selectedText();
        }
        return count_->text() + u": "_s + hits.join(u' ');
    }

    void cleanup() override {
        qDeleteAll(Windows());
        printer::SetPrintDialogHandler({});
    }
};

TEST(TestHelpWindow, EverythingHasItsPlaceAndName) {
    Open(Html());
    QCOMPARE(window_->windowTitle(), u"Ajuda do Catálogo"_s);
    QCOMPARE(window_->size(), QSize(788, 552));
    QCOMPARE(Tree(contents_->invisibleRootItem()),
             List("Ajuda", "-Sem nível dois", "-Sair", "--Fim"));
    // Six pixels between what stands in the bar and at its ends, four above and below.
    int right = -1;
    int below = 0;
    for (const QString& text : List("←", "→", "Início", "Imprimir")) {
        const QRect place = PlaceOf(text);
        QCOMPARE(place.left(), right + 7);
        right = place.right();
        below = std::max(below, place.bottom());
    }
    const QRect box = PlaceOf(find_);
    QCOMPARE(box.width(), 180);
    QCOMPARE(PlaceOf(u"▲"_s).left(), box.right() + 7);
    QCOMPARE(PlaceOf(u"▼"_s).left(), PlaceOf(u"▲"_s).right() + 7);
    QCOMPARE(PlaceOf(u"▼"_s).right(), 788 - 7);
    QCOMPARE(PlaceOf(contents_), QRect(0, below + 5, 208, 552 - below - 5));
    const QRect page = PlaceOf(page_);
    QCOMPARE(page, QRect(QPoint(212, below + 5), QPoint(787, 551)));
    QCOMPARE(contents_->viewport()->pos() + page_->viewport()->pos(), QPoint(0, 0));
    QCOMPARE(page_->cursorRect().topLeft(), QPoint(16, 16));
    const auto indent = [this](const QString& heading) {
        return contents_->visualItemRect(contents_->findItems(heading, Qt::MatchRecursive).first())
            .left();
    };
    QCOMPARE((QList{indent(u"Ajuda"_s), indent(u"Sair"_s), indent(u"Fim"_s)}), (QList{0, 14, 28}));
    QStringList said;
    for (const QWidget* control : window_->findChildren<QWidget*>()) {
        said += control->accessibleName();
        const auto* button = qobject_cast<const QToolButton*>(control);
        QVERIFY(!button || button->toolTip() == button->accessibleName());
    }
    said.removeAll(QString());
    QCOMPARE(said, List("Página da ajuda", "Conteúdo", "Voltar", "Avançar", "Início da página",
                        "Imprimir a ajuda (Ctrl+P)", "Localizar", "Localizar anterior (Shift+F3)",
                        "Localizar próxima (F3)"));
    QCOMPARE(contents_->topLevelItem(0)->toolTip(0), u"Ajuda"_s);
    QCOMPARE(find_->placeholderText(), u"Localizar"_s);
    // More room is the page's.
    window_->resize(900, 700);
    QCOMPARE(PlaceOf(contents_).size(), QSize(208, 700 - below - 5));
    QCOMPARE(PlaceOf(page_).right(), 899);
    QCOMPARE(PlaceOf(u"▼"_s).right(), 900 - 7);
    QCOMPARE(PlaceOf(u"Imprimir"_s).right(), right);
}

TEST(TestHelpWindow, LeadsAround) {
    Open(Html());
    QCOMPARE(Where(), u"Ajuda"_s);
    QCOMPARE(window_->focusWidget(), page_);
    ClickHeading("Sair");
    QCOMPARE(Where(), u"<Sair"_s);
    QTest::keyClick(contents_, Qt::Key_Down);
    QTest::keyClick(contents_, Qt::Key_Return);
    QCOMPARE(Where(), u"<Fim"_s);
    Press("←");
    QCOMPARE(Where(), u"<Sair>"_s);
    QTest::keyClick(window_, Qt::Key_Left, Qt::AltModifier);
    QCOMPARE(Where(), u"Ajuda>"_s);
    Press("→");
    QTest::keyClick(window_, Qt::Key_Right, Qt::AltModifier);
    QCOMPARE(Where(), u"<Fim"_s);
    QTest::keyClick(window_, Qt::Key_Right, Qt::AltModifier);
    QCOMPARE(Where(), u"<Fim"_s);
    Press("←");
    Press("Início");  // what came after is gone
    QCOMPARE(Where(), u"<Ajuda"_s);
    ClickLink("fora");
    QVERIFY(page_->toPlainText().startsWith("Ajuda"_L1));
    ClickLink("sair");
    QCOMPARE(Where(), u"<peca"_s);
}

TEST(TestHelpWindow, FindsWhatIsSearched) {
    Open(Html());
    QTest::keyClick(window_, Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(find_, u"peca"_s);
    QCOMPARE(Hits(), u"1 de 3: [Peça] PEÇA peca"_s);
    QTest::keyClick(find_, Qt::Key_Return);
    QCOMPARE(Hits(), u"2 de 3: Peça [PEÇA] peca"_s);
    QTest::keyClick(window_, Qt::Key_F3, Qt::ShiftModifier);
    Press("▲");
    QCOMPARE(Hits(), u"3 de 3: Peça PEÇA [peca]"_s);
    QVERIFY(page_->viewport()->rect().contains(page_->cursorRect()));
    Press("▼");
    QTest::keyClick(window_, Qt::Key_F3);
    QCOMPARE(Hits(), u"2 de 3: Peça [PEÇA] peca"_s);
    QTest::keyClick(window_, Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(find_, u"ajuda"_s);  // in place of what stood there
    QCOMPARE(Hits(), u"1 de 1: [Ajuda]"_s);
    for (const auto& [text, hits] : {std::pair("§", "Nenhuma ocorrência: "), std::pair("", ": ")}) {
        find_->setText(QString::fromUtf8(text));
        QTest::keyClick(window_, Qt::Key_F3);
        QTest::keyClick(window_, Qt::Key_F3, Qt::ShiftModifier);
        QCOMPARE(Hits(), QString::fromUtf8(hits));
    }
}

TEST(TestHelpWindow, OneWindowForOnePage) {
    QCOMPARE(ErrorOf([&] { HelpWindow::Open(folder_.path() + u"\\Outra.hlp"_s, {}); }), 53);
    QVERIFY(Windows().isEmpty());
    auto* screen = new forms::Form(u"screen"_s, forms::Form::Kind::Dialog, {300, 200}, {});
    screen->Show();
    screen->move(400, 350);
    Open("<h2>Sem nível um</h2>");
    const QPoint shift = window_->geometry().center() - screen->geometry().center();
    QVERIFY(shift.manhattanLength() < 10);  // the frame's
    screen->Unload();
    const QPointer<QWidget> first = window_;
    first->showMinimized();
    Open("<h1>Ajuda</h1>");
    QVERIFY(first == window_ && !first->isMinimized());
    QCOMPARE(Tree(contents_->invisibleRootItem()), List("Sem nível um"));
    Open("<h1>Outra</h1>", u"Outra.hlp"_s);
    QVERIFY(!first);
    QTest::keyClick(window_, Qt::Key_Escape);
    Settle();
    QVERIFY(Windows().isEmpty());
}

// Nothing comes from elsewhere, whatever the page names.
TEST(TestHelpWindow, PicturesOfThePagesFolder) {
    WritePicture(folder_.filePath(u"figuras/foto.png"_s), {30, 20});
    Open(Html());
    const auto picture_of = [&](const char* name) {
        return page_->loadResource(QTextDocument::ImageResource, QUrl(QLatin1String(name)));
    };
    QCOMPARE(picture_of("Figuras/FOTO.png").value<QImage>().size(), QSize(30, 20));
    for (const char* outside : {"../fora.png", "/fora.png", "file:///fora.png", "//host/fora.png",
                                "http://host/fora.png"}) {
        QVERIFY2(!picture_of(outside).isValid(), outside);
    }
    QVERIFY(!page_->loadResource(QTextDocument::HtmlResource, QUrl(u"Ajuda.hlp"_s)).isValid());
}

// A picture taken at twice its size stands in its own on the page, and with all its pixels on
// paper; the page goes on over several sheets, upright whatever the printer has chosen.
TEST(TestHelpWindow, PrintsThePage) {
    WritePicture(folder_.filePath(u"foto-2x.png"_s), {300, 200});
    Open("<h1>Primeira</h1><p><img src='foto-2x.png'></p>" +
         QByteArray("<p>linha</p>").repeated(60) + "<p>última</p>");
    const auto seen =
        page_->loadResource(QTextDocument::ImageResource, QUrl(u"foto-2x.png"_s)).value<QImage>();
    QCOMPARE(seen.size(), QSize(150, 100) * page_->devicePixelRatioF());
    const QTextBlock block = page_->document()->findBlockByNumber(1);
    QVERIFY(page_->document()->documentLayout()->blockBoundingRect(block).height() < 110);

    const QString paper = folder_.filePath(u"ajuda.pdf"_s);
    printer::SetPrintDialogHandler([&](int) {
        auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
        printer->setOutputFileName(paper);
        printer->setResolution(600);
        printer->setPageOrientation(QPageLayout::Landscape);
        return std::make_unique<printer::PaperPrinter>(std::move(printer));
    });
    Press("Imprimir");
    const QStringList pages =
        OutputOf("pdftotext", {"-layout", paper, "-"}).split(u'\f', Qt::SkipEmptyParts);
    QCOMPARE(pages.size(), 2);
    QVERIFY(pages.first().contains(u"Primeira"_s) && pages.first().contains(u"1/2"_s));
    QVERIFY(pages.last().contains(u"última"_s) && pages.last().contains(u"2/2"_s));
    QCOMPARE(pages.join(QString()).count(u"linha"_s), 60);
    const QString pictures = OutputOf("pdfimages", {"-list", paper});
    QVERIFY2(pictures.contains(QRegularExpression(u" 300 +200 "_s)), qPrintable(pictures));

    BoxAnswers boxes;
    printer::SetPrintDialogHandler([](int) { return nullptr; });
    QTest::keyClick(window_, Qt::Key_P, Qt::ControlModifier);  // cancelled: no box
    printer::SetPrintDialogHandler(
        [](int) -> std::unique_ptr<printer::Printer> { throw Erro(Erro::InvalidArgument); });
    QTest::keyClick(window_, Qt::Key_P, Qt::ControlModifier);
    QCOMPARE(boxes.Texts().join(u'|').section(u'\n', 0, 0), u"Erro nº: 5"_s);
}
