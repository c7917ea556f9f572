#include "render/exploded.h"
#include "render/models.h"
#include "render/photo.h"
#include "render/raster.h"
#include "support/test.h"

#include <set>

using namespace render;

namespace {

// Threaded holes that the camera of the photographs sees.
size_t BoresInView(const Assembly& assembly) {
    Camera camera = Camera::Looking(0, 24);
    camera.target = assembly.Bounds().Centre();
    camera.centre = {200, 200};
    camera.scale = 380 / Length(assembly.Bounds().Size());
    Buffers buffers(400, 400);
    std::vector<bool> bore{false};
    for (const Element& element : assembly.elements) {
        for (const Piece& piece : element.pieces) {
            bore.push_back(piece.material == Material::Bore);
            Rasterise(piece.mesh, assembly.pose * element.place * piece.place, camera,
                      static_cast<uint16_t>(bore.size() - 1), buffers);
        }
    }
    std::set<uint16_t> seen;
    for (const Sample& sample : buffers.samples) {
        if (bore[sample.surface]) {
            seen.insert(sample.surface);
        }
    }
    return seen.size();
}

std::vector<Item> SomeItems(int count) {
    // Runs over the kinds in steps that mix large and small ones.
    std::vector<Item> items;
    for (int i = 0; i < count; ++i) {
        const int kind = i * 37 % static_cast<int>(ComponentKind::Count);
        items.push_back({static_cast<ComponentKind>(kind), QString::number(i + 1)});
    }
    return items;
}

int InkUnder(const ExplodedDrawing& drawing, const QRect& rect) {
    int ink = 0;
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x) {
            ink += qGray(drawing.image.pixel(x, y)) < 128 ? 1 : 0;
        }
    }
    return ink;
}

}  // namespace

struct TestPictures : Fixture {};

TEST(TestPictures, MoreOutletsShowMoreHoles) {
    size_t before = 0;
    for (const char16_t* outlets : {u"0", u"2 saídas", u"4 saídas", u"6 saídas"}) {
        const size_t holes = BoresInView(AssemblyFor(
            u"valvula-rele", Parameters().Set(u"saídas"_s, QString::fromUtf16(outlets))));
        QVERIFY2(holes > before, qPrintable(QString::fromUtf16(outlets)));
        before = holes;
    }
}

TEST(TestPictures, ColoursShow) {
    for (const auto& [family, colour, hue] : Each<QString, QString, int>{
             {"red", "mao-de-amigo-emergencia", "", 0},
             {"yellow", "mao-de-amigo-servico", "", 45},
             {"blue hose", "mangueira-espiral", "azul", 215},
             {"yellow hose", "mangueira-espiral", "amarela", 45},
         }) {
        const QImage photo =
            Photo(AssemblyFor(family, Parameters().Set(u"cor"_s, colour)), {200, 156});
        int vivid = 0;
        int right = 0;
        for (int y = 0; y < photo.height(); ++y) {
            for (int x = 0; x < photo.width(); ++x) {
                const QColor pixel = photo.pixelColor(x, y);
                if (pixel.hsvSaturation() < 170 || pixel.value() < 60) {
                    continue;
                }
                ++vivid;
                const int off = std::abs(pixel.hsvHue() - hue);
                right += std::min(off, 360 - off) < 20 ? 1 : 0;
            }
        }
        QVERIFY(vivid > 300);
        QVERIFY(right > vivid * 3 / 4);
    }
}

TEST(TestPictures, PhotosStandOnWhiteAndRepeat) {
    const Assembly part = AssemblyFor(u"valvula-pedal", {});
    const QImage photo = Photo(part, {250, 195});
    QCOMPARE(photo, Photo(part, {250, 195}));
    for (const QPoint corner : {QPoint(0, 0), QPoint(249, 0), QPoint(0, 194), QPoint(249, 194)}) {
        QVERIFY(qGray(photo.pixel(corner)) > 215);
    }
    QVERIFY(qGray(photo.pixel(125, 97)) < 215);
}

TEST(TestPictures, OddSizesAndPartsAreDrawn) {
    const Assembly nothing;
    const Assembly part = AssemblyFor(u"conexao", {});
    for (const QSize size : {QSize(1, 1), QSize(3, 50), QSize(64, 2)}) {
        QCOMPARE(Photo(nothing, size).size(), size);
        QCOMPARE(Photo(part, size).size(), size);
        QCOMPARE(Explode(nothing, size).image.size(), size);
        QCOMPARE(Explode(part, size).image.size(), size);
    }
    QVERIFY(Explode(nothing, {50, 50}).callouts.empty());
}

TEST(TestPictures, ExplodedItemsStandApart) {
    for (const auto& [family, count] : Each<QString, int>{
             {"few", "valvula-descarga-rapida", 8},
             {"relay", "valvula-rele", 24},
             {"many", "compressor-mono", 60},
         }) {
        const Assembly parts = ItemsOf(family, {}, SomeItems(count));
        QCOMPARE(parts.elements.size(), static_cast<size_t>(count));
        const ExplodedDrawing drawing = Explode(parts, {582, 343});
        QCOMPARE(drawing.faults, 0);
        QCOMPARE(drawing.callouts.size(), parts.elements.size());
        for (size_t i = 0; i < drawing.callouts.size(); ++i) {
            const Callout& callout = drawing.callouts[i];
            QCOMPARE(callout.element, i);
            // The line begins on the element and ends at the number, which stands free.
            QCOMPARE(drawing.plan.At(static_cast<int>(callout.onPart.x()),
                                     static_cast<int>(callout.onPart.y())),
                     i + 1);
            QVERIFY(QRectF(callout.box).adjusted(-1, -2, 1, 2).contains(callout.atNumber));
            QVERIFY(QRect(0, 0, 582, 343).contains(callout.box));
            const QRect digits = callout.box.adjusted(10, 1, -10, -1);
            QVERIFY2(InkUnder(drawing, digits) == 0, qPrintable(QString::number(i + 1)));
            for (size_t k = 0; k < i; ++k) {
                QVERIFY(!callout.box.intersects(drawing.callouts[k].box));
            }
        }
    }
}

TEST(TestPictures, ElementsWithoutANumberGetNoLine) {
    Assembly parts = ItemsOf(u"valvula-rele", {}, SomeItems(10));
    parts.elements[3].item.clear();
    const ExplodedDrawing drawing = Explode(parts, {582, 343});
    QCOMPARE(drawing.callouts.size(), size_t(9));
    for (const Callout& callout : drawing.callouts) {
        QVERIFY(callout.element != 3);
    }
}

TEST(TestPictures, DrawingsAreInkOnPaper) {
    const ExplodedDrawing drawing =
        Explode(ItemsOf(u"valvula-rele", {}, SomeItems(20)), {582, 343});
    int black = 0;
    int white = 0;
    for (int y = 0; y < 343; ++y) {
        for (int x = 0; x < 582; ++x) {
            const int grey = qGray(drawing.image.pixel(x, y));
            black += grey < 64 ? 1 : 0;
            white += grey > 250 ? 1 : 0;
        }
    }
    // Lines, not surfaces.
    QVERIFY(black > 582 * 343 / 200);
    QVERIFY(black < 582 * 343 / 8);
    QVERIFY(white > 582 * 343 * 3 / 4);
}
