#include "platform/forms/tip.h"

#include <QToolTip>

using namespace Qt::StringLiterals;

namespace forms {

QString TipOf(const QString& text) {
    if (text.isEmpty()) {
        return {};
    }
    // Left to guess, the toolkit would show escaped signs as they are written.
    return u"<p style='white-space:pre-wrap'>"_s + text.toHtmlEscaped() + u"</p>"_s;
}

void ShowTip(const QPoint& place, const QString& text, QWidget* widget) {
    QToolTip::showText(place, TipOf(text), widget);
}

}  // namespace forms
