#include "platform/forms/font.h"

#include <QFontDatabase>

using namespace Qt::StringLiterals;

namespace forms {

QString FontFamily() {
    // The screens are enlarged evenly, which letters made of dots cannot be. The two others have
    // the same widths.
    static const QString family = [] {
        for (const QString& name : {u"MS Sans Serif"_s, u"Liberation Sans"_s}) {
            if (QFontDatabase::hasFamily(name) && QFontDatabase::isSmoothlyScalable(name)) {
                return name;
            }
        }
        return u"Arial"_s;
    }();
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
