#include "platform/forms/artwork.h"

#include "platform/erro.h"
#include "platform/forms/artworkstyle.h"

#include <QFile>
#include <QHash>
#include <QPainter>
#include <QSvgRenderer>

#include <cmath>

using namespace Qt::StringLiterals;

namespace forms {
namespace {

QString& Folder() {
    static QString folder = u":/artwork"_s;
    return folder;
}

QHash<QString, std::shared_ptr<Artwork>>& Drawings() {
    static QHash<QString, std::shared_ptr<Artwork>> drawings;
    return drawings;
}

QByteArray ReadAll(const QString& fileName) {
    QFile file(Folder() + u'/' + fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        throw Erro(Erro::FileNotFound);
    }
    return file.readAll();
}

// The nearest whole device pixel. What comes out of two roads of the same arithmetic may differ in
// the last bits; the small push keeps exact halves together.
int ToDevice(qreal value) {
    return static_cast<int>(std::floor(value + 0.5 + 1e-4));
}

}  // namespace

std::shared_ptr<Artwork> Artwork::Load(const QString& name) {
    auto& drawings = Drawings();
    if (const auto it = drawings.constFind(name); it != drawings.constEnd()) {
        return *it;
    }
    const std::shared_ptr<Artwork> artwork(new Artwork(name));
    drawings.insert(name, artwork);
    return artwork;
}

void Artwork::SetFolder(const QString& folder) {
    Folder() = folder;
    Drawings().clear();
}

QByteArray Artwork::Resolved(const QString& name, State state) {
    const QByteArray svg = ReadAll(name + u".svg"_s);
    const QByteArray sheets = ReadAll(u"estilo.css"_s) + '\n' +
                              ReadAll(state == State::Lit ? u"aceso.css"_s : u"repouso.css"_s);
    return ResolveStyles(svg, QString::fromUtf8(sheets));
}

Artwork::Artwork(const QString& name) : name_(name) {
    size_ = Renderer(State::Rest).viewBoxF().size().toSize();
}

Artwork::~Artwork() = default;

QSvgRenderer& Artwork::Renderer(State state) {
    auto& renderer = renderers_[static_cast<int>(state)];
    if (renderer) {
        return *renderer;
    }
    auto made = std::make_unique<QSvgRenderer>();
    if (!made->load(Resolved(name_, state))) {
        throw Erro(Erro::InvalidPicture);
    }
    renderer = std::move(made);
    return *renderer;
}

const QPixmap& Artwork::Rendered(State state, qreal ratio, const QRect& part) {
    if (ratio != ratio_) {
        pictures_.clear();
        ratio_ = ratio;
    }
    for (const Picture& picture : pictures_) {
        if (picture.state == state && picture.part == part) {
            return picture.pixmap;
        }
    }
    QPixmap pixmap(part.size());
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                           QPainter::SmoothPixmapTransform);
    painter.translate(-part.topLeft());
    Renderer(state).render(&painter, QRectF(QPointF(), QSizeF(size_) * ratio));
    painter.end();
    pictures_.push_back({state, part, pixmap});
    return pictures_.back().pixmap;
}

void Artwork::Paint(QPainter& painter, const QRectF& target, const QRectF& source, State state) {
    if (source.isEmpty() || target.isEmpty()) {
        return;
    }
    const QTransform toDevice = painter.deviceTransform();
    const qreal enlarged = target.width() / source.width();
    const qreal ratio = toDevice.m11() * enlarged;
    const QPointF origin = toDevice.map(target.topLeft() - source.topLeft() * enlarged);
    const QPoint corner(ToDevice(origin.x()), ToDevice(origin.y()));

    // Outwards to whole pixels, within the drawing.
    const QRect whole(QPoint(),
                      QSize(ToDevice(size_.width() * ratio), ToDevice(size_.height() * ratio)));
    const QRect part =
        QRectF(source.topLeft() * ratio, source.size() * ratio).toAlignedRect().intersected(whole);
    if (part.isEmpty()) {
        return;
    }
    painter.save();
    painter.setClipRect(target, Qt::IntersectClip);
    const QTransform base = painter.worldTransform().inverted() * toDevice;
    painter.setWorldTransform(QTransform::fromTranslate(corner.x(), corner.y()) * base.inverted());
    painter.drawPixmap(part.topLeft(), Rendered(state, ratio, part));
    painter.restore();
}

}  // namespace forms
