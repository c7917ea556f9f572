#include "platform/forms/picturefile.h"

#include "platform/erro.h"
#include "platform/sizes.h"
#include "platform/system/paths.h"

#include <QCache>
#include <QDateTime>
#include <QFileInfo>
#include <QImageReader>

using namespace Qt::StringLiterals;

namespace {

QCache<QString, QPixmap>& Cache() {
    // A few screens' worth of decoded pictures at the largest scale.
    static QCache<QString, QPixmap> cache(64_MiB);
    return cache;
}

// Figures and photos of spare parts are far below this; what is above is a damaged or hostile file.
constexpr int AllocationLimitMiB = 1024;

void Prepare(QImageReader& reader) {
    reader.setAutoTransform(true);
    reader.setAllocationLimit(AllocationLimitMiB);
}

QImage Read(QImageReader& reader) {
    QImage image = reader.read();
    if (image.isNull()) {
        throw Erro(Erro::InvalidPicture);
    }
    return image;
}

bool IsTurned(const QImageReader& reader) {
    return reader.transformation() & QImageIOHandler::TransformationRotate90;
}

QPixmap DecodeFitted(const QString& file, QSize target, qreal ratio) {
    QImageReader reader(file);
    Prepare(reader);
    const QSize size = reader.size();
    if (!target.isEmpty() && size.isValid()) {
        const QSize room =
            (QSizeF(IsTurned(reader) ? target.transposed() : target) * ratio).toSize();
        if (size.width() > room.width() || size.height() > room.height()) {
            reader.setScaledSize(size.scaled(room, Qt::KeepAspectRatio).expandedTo({1, 1}));
        }
    }
    QPixmap picture = QPixmap::fromImage(Read(reader));
    if (!target.isEmpty()) {
        picture.setDevicePixelRatio(ratio);
    }
    return picture;
}

QPixmap DecodeCorner(const QString& file, QSize room) {
    QImageReader reader(file);
    Prepare(reader);
    // The reader clips before it turns.
    if (reader.size().isValid() && reader.transformation() == QImageIOHandler::TransformationNone) {
        reader.setClipRect(QRect(QPoint(), reader.size().boundedTo(room)));
    }
    const QImage image = Read(reader);
    return QPixmap::fromImage(image.copy(QRect(QPoint(), image.size().boundedTo(room))));
}

// What `decode` makes of the file, or made of it earlier. `variant` tells its results apart.
template <typename Decode>
QPixmap Cached(const QString& path, const QString& variant, Decode decode) {
    const QString file = sys::ToNative(path);
    const QFileInfo info(file);
    if (!info.isFile()) {
        throw Erro(Erro::FileNotFound);
    }
    const QString key = u"%1|%2|%3|%4"_s.arg(file)
                            .arg(info.lastModified().toMSecsSinceEpoch())
                            .arg(info.size())
                            .arg(variant);
    if (const QPixmap* known = Cache().object(key)) {
        return *known;
    }
    const QPixmap picture = decode(file);
    constexpr int PixelBytes = 4;
    Cache().insert(key, new QPixmap(picture),
                   qsizetype(picture.width()) * picture.height() * PixelBytes);
    return picture;
}

}  // namespace

QPixmap forms::LoadPicture(const QString& path, QSize target, qreal ratio) {
    const QString variant = u"%1x%2|%3"_s.arg(target.width()).arg(target.height()).arg(ratio);
    return Cached(path, variant, [target, ratio](const QString& file) {
        return DecodeFitted(file, target, ratio);
    });
}

QPixmap forms::LoadNaturalPicture(const QString& path, QSize room) {
    const QString variant = u"%1x%2"_s.arg(room.width()).arg(room.height());
    return Cached(path, variant, [room](const QString& file) { return DecodeCorner(file, room); });
}
