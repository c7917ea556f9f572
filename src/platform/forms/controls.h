#pragma once

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QScrollBar>
#include <QWidget>

#include "platform/forms/artwork.h"

// The controls of the painted screens. All sizes are design pixels. Each takes its object name (the
// name in the system's texts, array elements as "imgFigura(0)") at construction.
namespace forms {

// An invisible rectangle over a painted button: receives clicks and mouse moves, shows nothing. Its
// accessible name is what assistive technology reads; it is a push button there and can be pressed.
class ClickZone : public QWidget {
    Q_OBJECT

public:
    ClickZone(const QString& name, const QString& accessibleName, QWidget* parent);
    QString Tag;

Q_SIGNALS:
    void Click();        // left button released over the zone
    void MouseDown();
    void MouseMove();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
};

// The lit picture of a button: its own rectangle cut out of the lit drawing of `artwork`. Hidden at
// start; transparent to the mouse. `origin` is the place of the parent's drawing (0,0 when the
// parent shows the drawing from its corner).
class LitPicture : public QWidget {
    Q_OBJECT

public:
    LitPicture(const QString& name, std::shared_ptr<Artwork> artwork, QWidget* parent,
               QPoint origin = {});

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::shared_ptr<Artwork> artwork_;
    QPoint origin_;
};

// A panel with a drawing of its own (empty name: none). Passes on clicks, moves and the focus.
class Panel : public QWidget {
    Q_OBJECT

public:
    Panel(const QString& name, const QString& artwork, QWidget* parent);
    const std::shared_ptr<Artwork>& Drawing() const { return artwork_; }
    QString Tag;

Q_SIGNALS:
    void Click();
    void MouseMove();
    void GotFocus();
    void KeyDown(int key);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    std::shared_ptr<Artwork> artwork_;
};

class Label : public QLabel {
    Q_OBJECT

public:
    Label(const QString& name, QWidget* parent);
    void SetText(const QString& text);  // plain text, elided with a tool tip when it does not fit
    QString Text() const { return text_; }
    QString Tag;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void Elide();
    QString text_;
};

class TextBox : public QLineEdit {
    Q_OBJECT

public:
    TextBox(const QString& name, const QString& accessibleName, QWidget* parent);

Q_SIGNALS:
    void Change();     // the text is another one, typed or set
    void GotFocus();
    void LostFocus();
    void MouseMove();

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
};

// A drop-down list whose rows carry a whole number (ItemData). Adding rows selects none. Click
// comes when the selection becomes another row, by the user or by the program, and when the user
// picks the same row again.
class ComboList : public QComboBox {
    Q_OBJECT

public:
    ComboList(const QString& name, const QString& accessibleName, QWidget* parent);

    void AddItem(const QString& text, qint32 itemData = 0);
    void Clear();
    int ListCount() const { return count(); }
    int ListIndex() const { return currentIndex(); }  // -1: none
    void SetListIndex(int index);
    qint32 ItemData(int index) const;                 // Erro 9 outside the rows
    qint32 SelectedItemData() const { return ItemData(currentIndex()); }
    QString Text() const { return currentText(); }

Q_SIGNALS:
    void Click();

private:
    bool adding_ = false;
};

}  // namespace forms
