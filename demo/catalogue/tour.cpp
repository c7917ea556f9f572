#include "tour.h"

#include "look/paleta.h"
#include "photographs.h"
#include "platform/erro.h"
#include "platform/forms/artwork.h"
#include "platform/forms/artworkstyle.h"
#include "render/exploded.h"
#include "render/models.h"
#include "render/photo.h"
#include "vocabulary.h"

#include <QDir>
#include <QFile>
#include <QPainter>
#include <QRegularExpression>
#include <QSvgRenderer>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace demo {
namespace {

constexpr QSize PageSize(800, 573);
constexpr int Density = 2;  // of a page's pixels: on large screens its words stay sharp
constexpr int Pages = 5;

// Of a screen's head: the mark and the name.
constexpr QRectF Mark(0, 0, 320, 82);

QByteArray ReadAll(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw Erro(Erro::FileNotFound, path);
    }
    return file.readAll();
}

// "family@x,y/family@x,y": parts side by side on one floor, places in mm.
render::Assembly SceneOf(const QString& text) {
    render::Assembly scene;
    for (const QString& each : text.split(u'/')) {
        const QStringList place = each.section(u'@', 1).split(u',');
        const render::Assembly part = render::AssemblyFor(each.section(u'@', 0, 0), {});
        const render::Box box = part.Bounds();
        const render::Placement on =
            render::Move(place.value(0).toFloat() - box.Centre().x,
                         place.value(1).toFloat() - box.Centre().y, -box.least.z);
        for (const render::Element& element : part.elements) {
            scene.Add(element, on * part.pose * element.place);
        }
    }
    return scene;
}

bool IsInKit(ComponentKind kind) {
    constexpr std::array groups{Class::Seal, Class::Membrane, Class::Spring, Class::Wear,
                                Class::Valve};
    const Class group = Components()[static_cast<size_t>(kind)].group;
    return std::find(groups.begin(), groups.end(), group) != groups.end();
}

// The family's exploded figure, the items of its repair kit on the accent.
void PaintFigure(QPainter& painter, const QRect& place, const QString& slug) {
    std::vector<render::Item> items;
    for (const BillLine& line : LinesOf(Bill::PistonValve)) {
        if (line.least > 0 && line.percent >= 50) {
            items.push_back({line.kind, QString::number(items.size() + 1)});
        }
    }
    const render::ExplodedDrawing drawing =
        render::Explode(render::ItemsOf(slug, {}, items), place.size());
    const QImage dense = drawing.dense.scaled(place.size() * Density, Qt::IgnoreAspectRatio,
                                              Qt::SmoothTransformation);
    painter.drawImage(QRectF(place), dense);
    const Paleta& paleta = Paleta::Atual();
    QFont font(paleta.letra);
    font.setPixelSize(paleta.corpoRotulo);
    painter.setFont(font);
    for (const render::Callout& callout : drawing.callouts) {
        const render::Item& item = items[callout.element];
        const QRectF box = QRectF(callout.box).translated(place.topLeft());
        if (IsInKit(item.kind)) {
            painter.setPen(paleta.acentoTraco);
            painter.setBrush(paleta.acento);
            painter.drawEllipse(box.center(), 8, 8);
        }
        painter.setPen(paleta.tinta);
        painter.drawText(box, Qt::AlignCenter | Qt::TextDontClip, item.number);
    }
}

QImage PageOf(int number) {
    const QByteArray svg = ReadAll(u":/demo/tour/ck%1.svg"_s.arg(number, 2, 10, QChar(u'0')));
    const QByteArray sheets =
        ReadAll(u":/artwork/estilo.css"_s) + ReadAll(u":/demo/tour/tour.css"_s);
    QSvgRenderer drawing(forms::ResolveStyles(svg, QString::fromUtf8(sheets)));
    QImage page(PageSize * Density, QImage::Format_RGB32);
    page.fill(Qt::white);
    QPainter painter(&page);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.scale(Density, Density);
    drawing.render(&painter, QRectF(QPointF(), QSizeF(PageSize)));
    forms::Artwork::Load(u"resultado"_s)->Paint(painter, Mark, Mark, forms::Artwork::State::Rest);

    static const QRegularExpression place(u"id=\"((cena|figura)\\.([^\"]+))\""_s);
    for (const QRegularExpressionMatch& match : place.globalMatch(QString::fromUtf8(svg))) {
        const QRect rect = drawing.boundsOnElement(match.captured(1)).toAlignedRect();
        if (match.captured(2) == "figura"_L1) {
            PaintFigure(painter, rect, match.captured(3));
        } else {
            painter.drawImage(QRectF(rect),
                              render::Photo(SceneOf(match.captured(3)), rect.size() * Density));
        }
    }
    return page;
}

}  // namespace

void DrawTour(const QString& folder) {
    DrawAll(Pages, [&folder](size_t i) {
        const int number = static_cast<int>(i) + 1;
        const QString name = u"CK%1.bmp"_s.arg(number, 2, 10, QChar(u'0'));
        SavePicture(PageOf(number), QDir(folder).filePath(name));
    });
}

}  // namespace demo
