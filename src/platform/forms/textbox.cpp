#include "platform/forms/controls.h"

#include <QMouseEvent>
#include <QValidator>

namespace forms {
namespace {

// The toolkit lets a validator change the text before anybody is told of it: the one place where
// typing, pasting, dropping and setting all pass.
class Cleaner : public QValidator {
public:
    using QValidator::QValidator;

    State validate(QString& text, int& position) const override {
        if (std::none_of(text.cbegin(), text.cend(), IsControl)) {
            return Acceptable;
        }
        // A copied cell ends in a line end that nobody means.
        while (!text.isEmpty() && IsLineEnd(text.back())) {
            text.chop(1);
        }
        QString clean;
        qsizetype cursor = 0;
        for (qsizetype i = 0; i < text.size(); ++i) {
            if (i == position) {
                cursor = clean.size();
            }
            const QChar c = text.at(i);
            const bool secondOfPair = c == u'\n' && i > 0 && text.at(i - 1) == u'\r';
            if (!IsControl(c)) {
                clean += c;
            } else if ((IsLineEnd(c) || c == u'\t') && !secondOfPair) {
                clean += u' ';
            }
        }
        position = static_cast<int>(position >= text.size() ? clean.size() : cursor);
        text = clean;
        return Acceptable;
    }

private:
    static bool IsLineEnd(QChar c) {
        return c == u'\n' || c == u'\r' || c == QChar::LineSeparator ||
               c == QChar::ParagraphSeparator;
    }
    static bool IsControl(QChar c) { return c.category() == QChar::Other_Control || IsLineEnd(c); }
};

bool ComesFromOutside(Qt::FocusReason reason) {
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason;
}

}  // namespace

TextBox::TextBox(const QString& name, const QString& accessibleName, QWidget* parent)
    : QLineEdit(parent) {
    setObjectName(name);
    setAccessibleName(accessibleName);
    setAttribute(Qt::WA_NoMousePropagation);
    setValidator(new Cleaner(this));
    connect(this, &QLineEdit::textChanged, this, &TextBox::Change);
}

// A box that was given the keyboard before its window had it gets it with the window's reason, so
// the reason alone does not tell.
void TextBox::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    if (!std::exchange(hasFocus_, true)) {
        Q_EMIT GotFocus();
    }
}

void TextBox::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (ComesFromOutside(event->reason())) {
        return;
    }
    hasFocus_ = false;
    Q_EMIT LostFocus();
}

void TextBox::mouseMoveEvent(QMouseEvent* event) {
    QLineEdit::mouseMoveEvent(event);
    Q_EMIT MouseMove();
}

}  // namespace forms
