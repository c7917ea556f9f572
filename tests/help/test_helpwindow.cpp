#include "help/helpwindow.h"
#include "platform/forms/theme.h"
#include "platform/printer/paperprinter.h"
#include "platform/printer/printdialog.h"
#include "support/servers.h"
#include "support/windows.h"

#include <QLabel>
#include <QPrinter>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextBrowser>
#include <QToolButton>
#include <QTreeWidget>

#include <algorithm>

using help::HelpWindow;

namespace {

// Each part is longer than the window is high.
QByteArray Html() {
    const QByteArray lines = QByteArray("<p>linha</p>").repeated(40);
    return "<h1>Ajuda</h1><p>Peças e <a href='#sair'>sair</a> <a "
           "href='http://exemplo.invalid/'>fora"
           "</a> <img src='Figuras/FOTO.png'></p><h3>Sem nível dois</h3><p>PEÇA</p>" +
           lines + "<h2>Sair</h2><p><a name='sair'></a>peca</p>" + lines + "<h3>Fim</h3>" + lines +
           "<h1>Anexo</h1><h3>Nota</h3>";
}

}  // namespace

struct TestHelpWindow : Fixture {
    QTemporaryDir folder_;
    QWidget* window_ = nullptr;

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
    }
    QTextBrowser* Page() const { return window_->findChild<QTextBrowser*>(); }
    QTreeWidget* Contents() const { return window_->findChild<QTreeWidget*>(); }
    QLineEdit* Find() const { return window_->findChild<QLineEdit*>(); }
    QLabel* Count() const { return window_->findChild<QLabel*>(); }

    // The contents' lines, each with how far in it begins; "!" where its tip is another.
    QString Headings() const {
        QStringList lines;
        for (QTreeWidgetItemIterator it(Contents()); *it; ++it) {
            lines += QString::number(Contents()->visualItemRect(*it).left()) + u' ' +
                     (*it)->text(0) + ((*it)->toolTip(0) == (*it)->text(0) ? u""_s : u"!"_s);
        }
        return lines.join(u", "_s);
    }

    QToolButton& Button(const AnyText& text) const {
        const auto buttons = window_->findChildren<QToolButton*>();
        return **std::ranges::find(buttons, text, &QToolButton::text);
    }
    void Press(const AnyText& text) const { QTest::mouseClick(&Button(text), Qt::LeftButton); }

    // The line with the cursor, between the buttons that lead on: "<Sair>". It stands one line
    // below the page's upper edge, or tells where else.
    QString Where() const {
        const int below = Page()->cursorRect().top() - Page()->fontMetrics().height();
        return (Button(u"←"_s).isEnabled() ? u"<"_s : QString()) +
               Page()->textCursor().block().text() +
               (Button(u"→"_s).isEnabled() ? u">"_s : QString()) +
               (qAbs(below) < 3 ? QString() : QString::number(below));
    }

    void ClickLink(const AnyText& text) const {
        const QTextCursor link = Page()->document()->find(text);
        QTest::mouseClick(Page()->viewport(), Qt::LeftButton, {},
                          Page()->cursorRect(link).center() - QPoint(4, 0));
    }
    void ClickHeading(const AnyText& text) const {
        const auto* item =
            Contents()->findItems(text, Qt::MatchExactly | Qt::MatchRecursive).first();
        QTest::mouseClick(Contents()->viewport(), Qt::LeftButton, {},
                          Contents()->visualItemRect(item).center());
    }

    // What is found: the number shown, and each place with the lit one in brackets.
    QString Hits() const {
        QStringList hits;
        for (const auto& mark : Page()->extraSelections()) {
            const bool current = mark.format.background() == forms::CurrentTheme().lit &&
                                 mark.format.foreground() == forms::CurrentTheme().text &&
                                 mark.cursor.selectionStart() == Page()->textCursor().position();
            hits += current ? u'[' + mark.cursor.selectedText() + u']' : mark.cursor.selectedText();
        }
        return Count()->text() + u": "_s + hits.join(u' ');
    }

    void cleanup() override {
        qDeleteAll(Windows());
        printer::SetPrintDialogHandler({});
    }
};

TEST(TestHelpWindow, EverythingHasItsPlaceAndName) {
    Open(Html());
    QCOMPARE(window_->windowTitle(), u"Ajuda do Catálogo"_s);
    QCOMPARE(Headings(), u"0 Ajuda, 14 Sem nível dois, 14 Sair, 28 Fim, 0 Anexo, 14 Nota"_s);
    const QList<const QWidget*> bar = {&Button("←"),        &Button("→"), &Button("Início"),
                                       &Button("Imprimir"), Find(),       &Button("▲"),
                                       &Button("▼")};
    for (const QSize size : {QSize(788, 552), QSize(900, 700)}) {  // more room is the page's
        QCOMPARE(window_->size(), size);
        const QString gaps = Gaps(*window_, Qt::Horizontal, bar);
        QCOMPARE(Like(gaps, u"6 6 6 6 * 6 6 6"_s), u"6 6 6 6 * 6 6 6"_s);
        QCOMPARE(Gaps(*window_, Qt::Horizontal, {Contents(), Page()}), u"0 4 0"_s);
        QCOMPARE(Gaps(*window_, Qt::Vertical, {bar.first(), Page()}), u"4 4 0"_s);
        QCOMPARE(QSize(Contents()->width(), Find()->width()), QSize(208, 180));
        window_->resize(900, 700);
    }
    QCOMPARE(Contents()->viewport()->pos() + Page()->viewport()->pos(), QPoint(0, 0));
    QCOMPARE(Page()->cursorRect().topLeft(), QPoint(16, 16));
    QStringList said;
    for (const QWidget* control : window_->findChildren<QWidget*>()) {
        said += control->accessibleName();
        QCOMPARE(control->toolTip(), control->inherits("QToolButton") ? said.last() : QString());
    }
    said.removeAll(QString());
    QCOMPARE(said, List("Página da ajuda", "Conteúdo", "Voltar", "Avançar", "Início da página",
                        "Imprimir a ajuda (Ctrl+P)", "Localizar", "Localizar anterior (Shift+F3)",
                        "Localizar próxima (F3)"));
    QCOMPARE(Find()->placeholderText(), u"Localizar"_s);
}

TEST(TestHelpWindow, LeadsAround) {
    Open(Html());
    QCOMPARE(window_->focusWidget(), Page());
    const std::pair<std::function<void()>, const char*> steps[] = {
        {[] {}, "Ajuda"},
        {[&] { ClickHeading("Sair"); }, "<Sair"},
        {[&] { QTest::keyClick(Contents(), Qt::Key_Down); }, "<Sair"},
        {[&] { QTest::keyClick(Contents(), Qt::Key_Return); }, "<Fim"},
        {[&] { Press("←"); }, "<Sair>"},
        {[&] { QTest::keyClick(window_, Qt::Key_Left, Qt::AltModifier); }, "Ajuda>"},
        {[&] { Press("→"); }, "<Sair>"},
        {[&] { QTest::keyClick(window_, Qt::Key_Right, Qt::AltModifier); }, "<Fim"},
        {[&] { QTest::keyClick(window_, Qt::Key_Right, Qt::AltModifier); }, "<Fim"},
        {[&] { Press("←"); }, "<Sair>"},
        {[&] { Press("Início"); }, "<Ajuda"},  // what came after is gone
        {[&] { ClickLink("sair"); }, "<peca"},
    };
    for (const auto& [act, where] : steps) {
        act();
        QCOMPARE(Where(), AnyText(where));
    }
    Press("Início");
    ClickLink("fora");
    QVERIFY(Page()->toPlainText().startsWith("Ajuda"_L1));
}

TEST(TestHelpWindow, FindsWhatIsSearched) {
    Open(Html());
    const auto search = [&](const char* text) {  // in place of what stood there
        QTest::keyClick(window_, Qt::Key_F, Qt::ControlModifier);
        QTest::keyClicks(window_->focusWidget(), AnyText(text));
    };
    const std::pair<std::function<void()>, const char*> steps[] = {
        {[&] { search("peca"); }, "1 de 3: [Peça] PEÇA peca"},
        {[&] { QTest::keyClick(Find(), Qt::Key_Return); }, "2 de 3: Peça [PEÇA] peca"},
        {[&] { QTest::keyClick(window_, Qt::Key_F3, Qt::ShiftModifier); },
         "1 de 3: [Peça] PEÇA peca"},
        {[&] { Press("▲"); }, "3 de 3: Peça PEÇA [peca]"},
        {[&] { Press("▼"); }, "1 de 3: [Peça] PEÇA peca"},
        {[&] { QTest::keyClick(window_, Qt::Key_F3); }, "2 de 3: Peça [PEÇA] peca"},
        {[&] { search("ajuda"); }, "1 de 1: [Ajuda]"},
        {[&] { search("$"); }, "Nenhuma ocorrência: "},
        {[&] { QTest::keyClick(window_, Qt::Key_F3); }, "Nenhuma ocorrência: "},
        {[&] { QTest::keyClick(window_, Qt::Key_F3, Qt::ShiftModifier); }, "Nenhuma ocorrência: "},
        {[&] { QTest::mouseClick(Find()->findChild<QToolButton*>(), Qt::LeftButton); }, ": "},
    };
    for (const auto& [act, hits] : steps) {
        act();
        QCOMPARE(Hits(), AnyText(hits));
        QTRY_COMPARE(Count()->width(), Count()->sizeHint().width());  // beside the box
        QVERIFY(Page()->viewport()->rect().contains(Page()->cursorRect()));
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
    QVERIFY(shift.manhattanLength() < 60);  // the frame's
    screen->Unload();
    const QPointer<QWidget> first = window_;
    first->showMinimized();
    QWidget other;
    other.show();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    Open("<h1>Ajuda</h1>");
    QVERIFY(first == window_ && !first->isMinimized() && QTest::qWaitForWindowActive(window_));
    QCOMPARE(Headings(), u"0 Sem nível um"_s);
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
        return Page()->loadResource(QTextDocument::ImageResource, QUrl(QLatin1String(name)));
    };
    QCOMPARE(picture_of("Figuras/FOTO.png").value<QImage>().size(), QSize(30, 20));
    for (const char* outside : {"../fora.png", "/fora.png", "file:///fora.png", "//host/fora.png",
                                "http://host/fora.png"}) {
        QVERIFY2(!picture_of(outside).isValid(), outside);
    }
    QVERIFY(!Page()->loadResource(QTextDocument::HtmlResource, QUrl(u"Ajuda.hlp"_s)).isValid());
}

// A picture taken at twice its size stands in its own on the page, and with all its pixels on
// paper; the page goes on over several sheets, upright whatever the printer has chosen.
TEST(TestHelpWindow, PrintsThePage) {
    WritePicture(folder_.filePath(u"foto-2x.png"_s), {300, 200});
    Open("<h1>Primeira</h1><p><img src='foto-2x.png'></p>" +
         QByteArray("<p>linha</p>").repeated(60) + "<p>última</p>");
    const auto seen =
        Page()->loadResource(QTextDocument::ImageResource, QUrl(u"foto-2x.png"_s)).value<QImage>();
    QCOMPARE(seen.size(), QSize(150, 100) * Page()->devicePixelRatioF());

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
    QVERIFY(pages.first().contains(u"Primeira"_s) && pages.first().contains(u"1/2"_s));
    QVERIFY(pages.last().contains(u"última"_s) && pages.last().contains(u"2/2"_s));
    QCOMPARE(pages.join(QString()).count(u"linha"_s), 60);
    const QString pictures = OutputOf("pdfimages", {"-list", paper});
    QVERIFY2(pictures.contains(QRegularExpression(u" 300 +200 .* 192 +192 "_s)),
             qPrintable(pictures));

    BoxAnswers boxes;
    printer::SetPrintDialogHandler([](int) { return nullptr; });
    QTest::keyClick(window_, Qt::Key_P, Qt::ControlModifier);  // cancelled: no box
    printer::SetPrintDialogHandler(
        [](int) -> std::unique_ptr<printer::Printer> { throw Erro(Erro::InvalidArgument); });
    QTest::keyClick(window_, Qt::Key_P, Qt::ControlModifier);
    QCOMPARE(boxes.Texts().join(u'|').section(u'\n', 0, 0), u"Erro nº: 5"_s);
}
