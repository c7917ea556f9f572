#include "platform/forms/msgbox.h"

#include "platform/forms/application.h"
#include "platform/forms/font.h"
#include "platform/forms/form.h"
#include "platform/forms/owner.h"
#include "platform/forms/theme.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QTextEdit>
#include <QtMath>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace forms {
namespace {

// Design pixels.
constexpr int IconPixels = 40;
constexpr int NarrowestText = 220;  // room for the title in the caption
constexpr int WidestText = 440;
constexpr int HighestText = 320;
constexpr int ButtonWidth = 84;

MsgBoxHandler& Handler() {
    static MsgBoxHandler handler;
    return handler;
}

struct Sign {
    int flag;
    QColor ground;
    QColor colour;
    QStringView text;
};

QPixmap Paint(const Sign& sign, qreal ratio) {
    QPixmap pixmap(QSize(IconPixels, IconPixels) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(sign.ground);
    painter.drawEllipse(QRectF(1, 1, IconPixels - 2, IconPixels - 2));
    painter.setPen(sign.colour);
    painter.setFont(Font(IconPixels * 6 / 10, true));
    painter.drawText(QRect(0, 0, IconPixels, IconPixels), Qt::AlignCenter, sign.text.toString());
    return pixmap;
}

// Null for a box without a sign.
QPixmap IconOf(int flags, qreal ratio) {
    const Theme& theme = CurrentTheme();
    const Sign signs[] = {{vbCritical, theme.alert, theme.primaryText, u"×"},
                          {vbQuestion, theme.primary, theme.primaryText, u"?"},
                          {vbExclamation, theme.lit, theme.text, u"!"},
                          {vbInformation, theme.primary, theme.primaryText, u"i"}};
    for (const Sign& sign : signs) {
        if ((flags & 0x70) == sign.flag) {
            return Paint(sign, ratio);
        }
    }
    return {};
}

class Box : public QDialog {
public:
    Box(const QString& text, int flags, const QString& title) {
        setWindowTitle(title);
        setAccessibleName(text);
        auto* layout = new QGridLayout(this);
        layout->setContentsMargins(18, 16, 18, 14);
        layout->setHorizontalSpacing(16);
        layout->setVerticalSpacing(16);
        layout->setSizeConstraint(QLayout::SetFixedSize);
        if (const QPixmap icon = IconOf(flags, devicePixelRatioF()); !icon.isNull()) {
            auto* picture = new QLabel(this);
            picture->setPixmap(icon);
            layout->addWidget(picture, 0, 0, Qt::AlignTop);
        }
        layout->addWidget(MakeText(text), 0, 1);
        layout->addWidget(MakeButtons(flags), 1, 0, 1, 2, Qt::AlignHCenter);
    }

    int Answer() const { return answer_; }

private:
    QWidget* MakeText(const QString& text) {
        auto* label = new QLabel(this);
        label->setTextFormat(Qt::PlainText);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        label->setText(text);
        label->setMinimumSize(NarrowestText, IconPixels);
        const QSize natural = label->sizeHint();
        if (natural.width() <= WidestText && natural.height() <= HighestText) {
            return label;
        }
        delete label;
        // A label does not break a path or a statement that has no blanks.
        auto* edit = new QTextEdit(this);
        edit->setReadOnly(true);
        edit->setFrameShape(QFrame::NoFrame);
        edit->viewport()->setAutoFillBackground(false);
        edit->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        edit->setTabChangesFocus(true);
        edit->setPlainText(text);
        edit->document()->setDocumentMargin(0);
        // A width given to the document itself would last until it is asked for its size.
        edit->setLineWrapMode(QTextEdit::FixedPixelWidth);
        edit->setLineWrapColumnOrWidth(WidestText);
        const int height = qCeil(edit->document()->size().height()) + 2;
        edit->setFixedSize(WidestText + CurrentTheme().scrollPixels,
                           std::clamp(height, IconPixels, HighestText));
        return edit;
    }

    QWidget* MakeButtons(int flags) {
        auto* box = new QDialogButtonBox(this);
        if ((flags & 0x0f) == vbYesNo) {
            answer_ = vbNo;
            AddButton(box, u"&Sim"_s, vbYes, !(flags & vbDefaultButton2));
            AddButton(box, u"&Não"_s, vbNo, flags & vbDefaultButton2);
        } else {
            answer_ = vbOK;
            AddButton(box, u"OK"_s, vbOK, true);
        }
        return box;
    }

    void AddButton(QDialogButtonBox* box, const QString& text, int answer, bool isDefault) {
        // One role for all: the order on the screen stays that of adding on every desktop.
        auto* button = box->addButton(text, QDialogButtonBox::ActionRole);
        button->setMinimumWidth(ButtonWidth);
        button->setAutoDefault(isDefault);
        button->setDefault(isDefault);
        if (isDefault) {
            button->setFocus();
        }
        connect(button, &QPushButton::clicked, this, [this, answer] {
            answer_ = answer;
            accept();
        });
    }

    int answer_ = vbOK;
};

}  // namespace

int MsgBox(const QString& text, int flags, const QString& title) {
    if (const MsgBoxHandler handler = Handler()) {
        return handler(text, flags, title);
    }
    Box box(text, flags, title);
    box.adjustSize();
    PlaceOverActiveForm(box);
    const AwaitingUser waiting;
    box.exec();
    return box.Answer();
}

bool IsBoxOpen() {
    const QWidget* modal = QApplication::activeModalWidget();
    return modal && !qobject_cast<const Form*>(modal);
}

void SetMsgBoxHandler(MsgBoxHandler handler) {
    Handler() = std::move(handler);
}

}  // namespace forms
