#include "platform/forms/elide.h"

#include <QFontMetrics>
#include <QString>

using namespace Qt::StringLiterals;

namespace forms {

QString ElidedLine(const QString& text, const QFontMetrics& metrics, int room) {
    const qsizetype gap = text.indexOf(u"        "_s);
    const QString number = gap < 0 ? QString() : text.mid(gap);
    const int roomInFront = room - metrics.horizontalAdvance(number);
    if (number.isEmpty() || roomInFront < room / 3) {
        return metrics.elidedText(text, Qt::ElideRight, room);
    }
    return metrics.elidedText(text.left(gap), Qt::ElideRight, roomInFront) + number;
}

}  // namespace forms
