#pragma once

#include "platform/forms/artwork.h"

#include <QColor>
#include <QList>
#include <QPointer>
#include <QString>
#include <QWidget>

class QEventLoop;

namespace forms {

// A screen. A main screen is one fixed picture of 800 by 600 design pixels, frameless and
// maximised: the picture stands centred on the window and whatever lies around it is plain colour.
// A splash is the picture alone, centred on the screen. A dialog has the size that it is given,
// with the system's caption.
//
// Life: constructed with new; Load() runs once, at the first Show or ShowModal, before anything can
// be seen; Activate() each time when it becomes the active one among the program's own screens
// (first show, return from another screen or from a modal dialog; not from another program or a
// message box); Unloading() at the unload. A form that is unloaded deletes itself: at once hidden
// and out of the list of loaded forms, at the next return to the event loop from memory.
//
// An Erro of Load() rises to the caller of Show, and the form is gone.
class Form : public QWidget {
    Q_OBJECT

public:
    enum class Kind { Screen, Splash, Dialog };

    // `name` is the screen's name as FormularioCarregado compares it, such as "frmPesquisa".
    // `artwork` is the background's drawing, empty for none.
    Form(const QString& name, Kind kind, QSize designSize, const QString& artwork);
    ~Form() override;

    QString Name() const { return objectName(); }
    QString Tag;  // free text, as every form and many controls have one

    void Show();       // loads it if need be; a form that stands behind comes to the front
    void ShowModal();  // returns after its unload; other screens are disabled meanwhile
    // Showing a form that is not in view is Show. Hiding the active one activates the one that was
    // active before it, if that is in view.
    void SetVisible(bool visible);
    void Minimize();
    void Unload();
    bool IsLoaded() const { return loaded_; }

    // Forms that are loaded, in the order of loading; valid during the call that asked only.
    static QList<Form*> Loaded();
    static Form* Find(const QString& name);
    // The active one among the program's screens, or null.
    static Form* Active();
    // For when a screen of the computer has another size or scale.
    static void PlaceAllAnew();

    // The parent of every control: the picture, in design pixels from its top left corner.
    QWidget* Picture() const { return picture_; }
    const std::shared_ptr<Artwork>& Background() const { return background_; }

Q_SIGNALS:
    void Click();           // on the free background
    void MouseMove();       // over the free background
    void KeyDown(int key);  // a Qt::Key that no control has taken

protected:
    virtual void Load() {}
    virtual void Activate() {}
    virtual void Unloading() {}
    // The user closed the window by the system's means (Alt+F4, the caption's button).
    virtual void CloseRequested() { Unload(); }

    // The whole window's plain colour around the picture, and under it where there is no drawing.
    void SetSurround(const QColor& colour);

    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    class Backdrop;
    class Surface;

    void EnsureLoaded();
    void PlaceOnScreen();
    void PlaceAnew();
    void BecomeActive();
    static void ActivateTheLast();

    Kind kind_;
    QSize designSize_;
    Backdrop* backdrop_ = nullptr;
    Surface* surface_ = nullptr;
    QWidget* picture_ = nullptr;
    std::shared_ptr<Artwork> background_;
    QEventLoop* modalLoop_ = nullptr;
    bool loaded_ = false;
    bool unloading_ = false;
    bool showing_ = false;
};

// For a routine of a form that lets events through (DoEvents, the show of another form): whether
// the form is still loaded afterwards. When it is not, it may be gone from memory, and nothing of
// it may be touched.
class StillLoaded {
public:
    explicit StillLoaded(Form* form) : form_(form) {}
    explicit operator bool() const { return form_ && form_->IsLoaded(); }

private:
    QPointer<Form> form_;
};

// Whether a modal form, dialog or box keeps this window from answering.
bool IsBlocked(const QWidget& window);

}  // namespace forms
