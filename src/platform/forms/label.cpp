#include "platform/forms/controls.h"
#include "platform/forms/elide.h"
#include "platform/forms/tip.h"

#include <QHelpEvent>
#include <QPainter>
#include <QTextLayout>

using namespace Qt::StringLiterals;

namespace forms {
namespace {

constexpr QChar Ellipsis(0x2026);

}  // namespace

Label::Label(const QString& name, QWidget* parent) : Zone(name, parent) {}

void Label::SetText(const QString& text) {
    if (text == text_) {
        return;
    }
    text_ = text;
    setAccessibleName(text);
    update();
}

void Label::SetForeColor(const QColor& colour) {
    if (colour != foreColor_) {
        foreColor_ = colour;
        update();
    }
}

void Label::SetAlignment(Qt::Alignment alignment) {
    alignment_ = alignment;
    update();
}

void Label::SetWordWrap(bool wrap) {
    wrap_ = wrap;
    update();
}

QString Label::Elided() const {
    const QFontMetrics metrics = fontMetrics();
    const QSize room = contentsRect().size();
    if (!wrap_) {
        return ElidedLine(text_, metrics, room.width());
    }
    QString text = text_;
    text.replace(u'\n', QChar::LineSeparator);
    QTextLayout layout(text, font());
    QStringList lines;
    const int most = std::max(room.height() / metrics.lineSpacing(), 1);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(room.width());
        if (lines.size() == most - 1) {
            lines +=
                metrics.elidedText(text.mid(line.textStart()).replace(QChar::LineSeparator, u' '),
                                   Qt::ElideRight, room.width());
            break;
        }
        lines += text.mid(line.textStart(), line.textLength()).remove(QChar::LineSeparator);
    }
    layout.endLayout();
    return lines.join(u'\n');
}

bool Label::IsCut() const {
    return Elided().contains(Ellipsis) && !text_.contains(Ellipsis);
}

void Label::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(foreColor_.isValid() ? foreColor_ : palette().color(QPalette::WindowText));
    painter.drawText(contentsRect(), int(alignment_) | Qt::TextDontClip, Elided());
}

bool Label::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip || !toolTip().isEmpty()) {
        return Zone::event(event);
    }
    const auto* help = static_cast<QHelpEvent*>(event);
    ShowTip(help->globalPos(), IsCut() ? text_ : QString(), this);
    return true;
}

}  // namespace forms
