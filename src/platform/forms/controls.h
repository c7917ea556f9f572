#pragma once

#include "platform/forms/artwork.h"

#include <QColor>
#include <QComboBox>
#include <QLineEdit>
#include <QPixmap>
#include <QScrollBar>
#include <QWidget>

#include <optional>

// The controls of the painted screens. All sizes are design pixels. Each takes its object name (the
// name in the system's texts, array elements as "imgFigura(0)") at construction. A control keeps
// its mouse events to itself: what it does not announce, nobody below it hears.
namespace forms {

// What all controls without text input have in common: the mouse.
class Zone : public QWidget {
    Q_OBJECT

public:
    Zone(const QString& name, QWidget* parent);
    QString Tag;

Q_SIGNALS:
    void MouseDown();  // left button
    void Click();      // left button released over the control
    void DblClick();   // comes after the Click of its first half, instead of a second one
    void MouseMove();

protected:
    // What the second half of a double click is: a DblClick or, on a button, one more Click.
    void SetFastClicks() { fastClicks_ = true; }

    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    bool fastClicks_ = false;
    bool pressed_ = false;
    bool pressedBefore_ = false;
};

// An invisible rectangle over a painted button: receives clicks and mouse moves, shows nothing but
// a ring while it has the keyboard. Its accessible name is what assistive technology reads; it is a
// push button there and can be pressed, which is the button's going down and a click.
//
// The keyboard reaches it where its focus policy says so; then Space and Enter press it. A click
// never takes the keyboard away from where the user types.
class ClickZone : public Zone {
    Q_OBJECT

public:
    ClickZone(const QString& name, const QString& accessibleName, QWidget* parent);
    // Makes it a tick box for assistive technology, in this state; to turn it when the button goes
    // down is the screen's business. Enter is left to the screen.
    void SetTicked(bool ticked);
    std::optional<bool> Ticked() const { return ticked_; }  // none: a push button
    // For a button that no background has painted: the zone shows `part` of the drawing at rest,
    // wherever it stands.
    void SetDrawing(std::shared_ptr<Artwork> artwork, const QRect& part);

    // The button goes down and is clicked.
    void Press();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    std::shared_ptr<Artwork> artwork_;
    QRect part_;
    std::optional<bool> ticked_;
};

// The lit picture of a button: its own rectangle cut out of the lit drawing of `artwork`. Hidden at
// start; transparent to the mouse. `origin` is the place of the parent's drawing (0,0 when the
// parent shows the drawing from its corner).
class LitPicture : public QWidget {
    Q_OBJECT

public:
    LitPicture(const QString& name, std::shared_ptr<Artwork> artwork, QWidget* parent,
               QPoint origin = {});
    // From now on it shows the part over which it stands at this moment, wherever it is moved.
    void FixSource();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRect Source() const;

    std::shared_ptr<Artwork> artwork_;
    QPoint origin_;
    QRect fixed_;
};

// A panel with a drawing of its own (empty name: none). It takes the focus by a click or from the
// program, not by the Tab key. A panel that is hidden gives the keyboard back to the screen.
class Panel : public Zone {
    Q_OBJECT

public:
    Panel(const QString& name, const QString& artwork, QWidget* parent);
    const std::shared_ptr<Artwork>& Drawing() const { return artwork_; }

Q_SIGNALS:
    void GotFocus();
    void KeyDown(int key);  // a Qt::Key

protected:
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    std::shared_ptr<Artwork> artwork_;
};

// A picture: scaled into its place with its proportions kept, or in its own size from the corner.
class Picture : public Zone {
    Q_OBJECT

public:
    enum class Mode { Fit, Natural };

    Picture(const QString& name, const QString& accessibleName, QWidget* parent,
            Mode mode = Mode::Fit);
    // A null one empties it. `dense`, if there is one, shows the same with more pixels; it is
    // painted where the screen has more than the picture.
    void SetPixmap(const QPixmap& pixmap, const QPixmap& dense = {});
    const QPixmap& Pixmap() const { return pixmap_; }

    // Where the picture stands within the control.
    QRectF PictureRect() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Mode mode_;
    QPixmap pixmap_;
    QPixmap dense_;
    QPixmap scaled_;
};

// Plain text within its contents margins. What does not fit is elided and stands in the tool tip as
// a whole.
class Label : public Zone {
    Q_OBJECT

public:
    Label(const QString& name, QWidget* parent);
    void SetText(const QString& text);
    const QString& Text() const { return text_; }
    void SetForeColor(const QColor& colour);     // the theme's text colour at the start
    void SetAlignment(Qt::Alignment alignment);  // left and vertically centred at the start
    void SetWordWrap(bool wrap);                 // as many lines as its height holds
    bool IsCut() const;                          // whether not all of its text is in view

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    QString Elided() const;
    QString text_;
    QColor foreColor_;
    Qt::Alignment alignment_ = Qt::AlignLeft | Qt::AlignVCenter;
    bool wrap_ = false;
};

// One line of text. Line ends and tabs that are pasted become blanks, other control characters are
// dropped.
class TextBox : public QLineEdit {
    Q_OBJECT

public:
    TextBox(const QString& name, const QString& accessibleName, QWidget* parent);

Q_SIGNALS:
    void Change();    // the text is another one, typed or set
    void GotFocus();  // not when the keyboard comes back from a menu or another window
    void LostFocus();
    void MouseMove();

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    bool hasFocus_ = false;
};

// A drop-down list whose rows carry a whole number (ItemData). Adding rows selects none. Click
// comes when the selection becomes another row, by the user or by the program, and when the user
// picks the same row again.
class ComboList : public QComboBox {
    Q_OBJECT

public:
    ComboList(const QString& name, const QString& accessibleName, QWidget* parent);

    void AddItem(const QString& text, qint32 itemData = 0);
    int ListCount() const { return count(); }
    int ListIndex() const { return currentIndex(); }  // -1: none
    void SetListIndex(int index);                     // Erro 9 outside -1 and the rows
    qint32 ItemData(int index) const;                 // Erro 9 outside the rows
    qint32 SelectedItemData() const { return ItemData(currentIndex()); }
    QString Text() const { return currentText(); }

    // The list's own height, that of a text box.
    QSize sizeHint() const override;
    void showPopup() override;

Q_SIGNALS:
    void Click();

protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    bool event(QEvent* event) override;

private:
    bool announced_ = false;  // the change of selection in progress has had its Click
};

// A scroll bar with an arrow at each end. It announces finished changes only: a drag of its thumb
// when it is let go. The Tab key reaches it, a click does not take the keyboard.
class ScrollBar : public QScrollBar {
    Q_OBJECT

public:
    ScrollBar(const QString& name, Qt::Orientation orientation, QWidget* parent);

    void SetMin(int value) { setMinimum(value); }
    void SetMax(int value) { setMaximum(value); }
    void SetLargeChange(int value) { setPageStep(value); }
    int Value() const { return value(); }
    void SetValue(int value) { setValue(value); }  // kept within Min and Max

Q_SIGNALS:
    void Change();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace forms
