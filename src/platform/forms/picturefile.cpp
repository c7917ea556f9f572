#include "platform/forms/picturefile.h"

#include "platform/erro.h"
#include "platform/system/paths.h"

#include <QCache>
#include <QDateTime>
#include <QFileInfo>
#include <QImageReader>

namespace {

// Kibibytes of decoded pictures: a few screens' worth at the largest scale.
constexpr int CacheLimit = 64 * 1024;

QCache<QString, QPixmap>& Cache() {
    static QCache<QString, QPixmap> cache(CacheLimit);
    return cache;
}

// Figures and photos of spare parts are far below this; what is above is a damaged or hostile file.
constexpr int AllocationLimitMiB = 1024;

QImage Decode(const QString& file, QSize target, qreal ratio) {
    QImageReader reader(file);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    reader.setAllocationLimit(AllocationLimitMiB);
    QSize size = reader.size();
    if (!target.isEmpty() && size.isValid()) {
        const bool turned = reader.transformation() & QImageIOHandler::TransformationRotate90;
        const QSize room = (QSizeF(turned ? target.transposed() : target) * ratio).toSize();
        if (size.width() > room.width() || size.height() > room.height()) {
            reader.setScaledSize(size.scaled(room, Qt::KeepAspectRatio).expandedTo({1, 1}));
        }
    }
    QImage image = reader.read();
    if (image.isNull()) {
        throw Erro(Erro::InvalidPicture);
    }
    return image;
}

}  // namespace

QPixmap forms::LoadPicture(const QString& path, QSize target, qreal ratio) {
    const QString file = sys::ToNative(path);
    const QFileInfo info(file);
    if (!info.isFile()) {
        throw Erro(Erro::FileNotFound);
    }
    const QString key = QStringLiteral("%1|%2|%3|%4x%5|%6")
                            .arg(file)
                            .arg(info.lastModified().toMSecsSinceEpoch())
                            .arg(info.size())
                            .arg(target.width())
                            .arg(target.height())
                            .arg(ratio);
    if (const QPixmap* known = Cache().object(key)) {
        return *known;
    }
    QPixmap picture = QPixmap::fromImage(Decode(file, target, ratio));
    if (!target.isEmpty()) {
        picture.setDevicePixelRatio(ratio);
    }
    const qint64 cost = qint64(picture.width()) * picture.height() * 4 / 1024 + 1;
    Cache().insert(key, new QPixmap(picture), cost);
    return picture;
}
