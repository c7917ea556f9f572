#include "platform/forms/artwork.h"
#include "platform/forms/artworkstyle.h"
#include "support/test.h"

#include <QPainter>

using forms::Artwork;

struct TestArtwork : Fixture {
    QTemporaryDir folder_;

    TestArtwork() {
        Write(folder_.filePath(u"botao.svg"_s),
              "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 80 60'><rect class='fundo' "
              "width='80' height='60'/><rect class='botao' x='10.3' y='20.7' width='30' "
              "height='15' rx='4'/></svg>");
        Write(folder_.filePath(u"estilo.css"_s), ".fundo { fill: #d0e0f0 }");
        Write(folder_.filePath(u"repouso.css"_s), ".botao { fill: #204060 }");
        Write(folder_.filePath(u"aceso.css"_s), ".botao { fill: #e08020 }");
        Artwork::SetFolder(folder_.path());
    }
    ~TestArtwork() override { Artwork::SetFolder(u":/artwork"_s); }
};

TEST(TestArtwork, StylesBecomeAttributes) {
    // What is refused resolves to nothing.
    for (const auto& [sheet, element, resolved] : Each<QString, QString, QString>{
             {"class", ".a { fill: red }", "<r class='a' x='1'/>", "<r x=\"1\" fill=\"red\"/>"},
             {"over attribute", ".a{fill:red}", "<r class='a' fill='blue'/>", "<r fill=\"red\"/>"},
             {"style over it", ".a{y:1}", "<r class='a' style='y:2;'/>", "<r y=\"2\"/>"},
             {"later rule", ".b{fill:red} .a{fill:blue}", "<r class='a b'/>", "<r fill=\"blue\"/>"},
             {"classes, list", "t{x:1} r.a.b, .c {y:2}", "<r class='b a'/>", "<r y=\"2\"/>"},
             {"not all classes", ".a.b{y:2}", "<r class='a'/>", "<r/>"},
             {"variable", ":root{--k: var(--m); --m: #123} .a{fill:var( --k )}", "<r class='a'/>",
              "<r fill=\"#123\"/>"},
             {"later variable", ":root{--k:1} .a{y:var(--k)} :root{--k:2}", "<r class='a'/>",
              "<r y=\"2\"/>"},
             {"left out", ".a{display:none}", "<g><r class='a'><q/></r><q/></g>", "<g><q/></g>"},
             {"comment", "/* .a{y:1} */ .a{y:2}", "<r class='a'><!-- x --></r>", "<r y=\"2\"/>"},
             {"text and prefix", "", "<t xlink:href='#a'>P &amp; ção</t>",
              "<t xlink:href=\"#a\">P &amp; ção</t>"},
             {"unknown variable", ".a{y:var(--k)}", "<r class='a'/>", ""},
             {"circle", ":root{--k:var(--k)} .a{y:var(--k)}", "<r class='a'/>", ""},
             {"selector out of reach", ".a > .b {y:1}", "<r/>", ""},
             {"rule left open", ".a {y:1", "<r/>", ""},
             {"drawing left open", "", "<r>", ""},
         }) {
        QByteArray got;
        const auto resolve = [&] { got = forms::ResolveStyles(element.toUtf8(), sheet); };
        QCOMPARE(ErrorOf(resolve), resolved.isEmpty() ? 481 : 0);
        QCOMPARE(got, resolved.toUtf8());
    }
}

// At any enlargement and wherever the picture begins, a part of the drawing painted over the
// whole one changes nothing: no pixel is shifted, no edge shines through.
TEST(TestArtwork, PartsFitTheWholeWithoutASeam) {
    QCOMPARE(ErrorOf([] { Artwork::Load(u"nada"_s); }), 53);
    Each<qreal, QPoint> row;
    for (const qreal ratio : {0.853, 1.0, 1.28, 1.5, 1.707, 1.8, 3.6}) {
        for (const QPoint corner : {QPoint(0, 0), QPoint(133, 0), QPoint(7, 5)}) {
            row(QByteArray::number(ratio) + " at " + QByteArray::number(corner.x()), ratio, corner);
        }
    }
    for (const auto& [ratio, corner] : row) {
        const auto artwork = Artwork::Load(u"botao"_s);
        const QRect whole(QPoint(), artwork->Size());
        QImage image((QSizeF(240, 70) * ratio).toSize(), QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::magenta);
        const auto paint = [&](const QRect& part, Artwork::State state) {
            QPainter painter(&image);
            painter.translate(corner + part.topLeft());  // as a child widget's painter is
            artwork->Paint(painter, QRect(QPoint(), part.size()), part, state);
        };
        paint(whole, Artwork::State::Rest);
        const QImage atRest = image.copy();
        paint({9, 19, 33, 19}, Artwork::State::Rest);
        QCOMPARE(image, atRest);
        paint({9, 19, 33, 19}, Artwork::State::Lit);
        QVERIFY(image != atRest);
        const QImage lit = image.copy();
        image.fill(Qt::magenta);
        paint(whole, Artwork::State::Lit);
        QCOMPARE(lit, image);
    }
}
