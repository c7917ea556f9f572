#include "platform/forms/densepicture.h"

#include "platform/erro.h"
#include "platform/forms/picturefile.h"

using namespace Qt::StringLiterals;

QPixmap forms::LoadDensePicture(const QString& path, QSize natural) {
    constexpr int Density = 3;
    const qsizetype ending = path.lastIndexOf(u'.');
    if (ending < 0) {
        return {};
    }
    try {
        const QPixmap dense =
            LoadPicture(path.first(ending) + u"@3x"_s + path.sliced(ending), {}, 1);
        return dense.size() == natural * Density ? dense : QPixmap();
    } catch (const Erro&) {
        return {};
    }
}
