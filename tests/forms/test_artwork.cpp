#include "platform/forms/artwork.h"
#include "platform/forms/artworkstyle.h"
#include "support/cases.h"

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
    for (const auto& [one] : Cases(TARVO_CASES "/styles.data")) {
        const QByteArray element = one.lines.at(1).toUtf8();
        const QByteArray resolved = one.lines.value(2).toUtf8();
        QByteArray got;
        const auto resolve = [&] { got = forms::ResolveStyles(element, one.lines.first()); };
        QCOMPARE(ErrorOf(resolve), resolved.isEmpty() ? 481 : 0);
        QCOMPARE(got, resolved);
    }
}

// At any enlargement and wherever the picture begins, a part of the drawing painted over the
// whole one changes nothing: no pixel is shifted, no edge shines through.
TEST(TestArtwork, PartsFitTheWholeWithoutASeam) {
    QCOMPARE(ErrorOf([] { Artwork::Load(u"nada"_s); }), 53);
    const auto artwork = Artwork::Load(u"botao"_s);
    const QRect whole(QPoint(), artwork->Size());
    Each<qreal, QPoint> row;
    for (const qreal ratio : {0.853, 1.0, 1.28, 1.5, 1.707, 1.8, 3.6}) {
        for (const QPoint corner : {QPoint(0, 0), QPoint(133, 0), QPoint(7, 5)}) {
            row(QByteArray::number(ratio) + " at " + QByteArray::number(corner.x()), ratio, corner);
        }
    }
    for (const auto& [ratio, corner] : row) {
        QImage image((QSizeF(240, 70) * ratio).toSize(), QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::magenta);
        const auto paint = [&](const QRect& part, Artwork::State state) {
            QPainter painter(&image);
            painter.translate(corner + part.topLeft());  // as a child widget's painter is
            const QTransform before = painter.transform();
            artwork->Paint(painter, QRect(QPoint(), part.size()), part, state);
            QCOMPARE(painter.transform(), before);
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
