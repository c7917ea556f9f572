#include "platform/forms/font.h"

#include <QFontDatabase>

using namespace Qt::StringLiterals;

namespace forms {

QString FontFamily() {
    static const QString family =
        QFontDatabase::hasFamily(u"MS Sans Serif"_s) ? u"MS Sans Serif"_s : u"Liberation Sans"_s;
    return family;
}

QFont Font(int pixels, bool bold) {
    QFont font(FontFamily());
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(pixels);
    font.setBold(bold);
    return font;
}

}  // namespace forms
