#pragma once

#include <QString>
#include <QWidget>

#include <memory>

// A tip with a title, a sign and colours of its own that comes up over a control when the mouse
// rests on it. One instance shows one tip at a time, on one control.
//
// A colour is 0x00BBGGRR; a negative one names a colour of the desktop by its index.
class cToolTip {
public:
    enum Estilo : qint32 { SemDica = -1, Simples = 0, SempreVisivel = 1, Balao = 64 };
    enum Sinal : qint32 { SemSinal = 0, Informacao = 1, Aviso = 2, Falha = 3 };

    static constexpr qint32 TextoDeBotao = qint32(0x80000012);
    static constexpr qint32 FundoDeDica = qint32(0x80000018);

    cToolTip();
    ~cToolTip();
    cToolTip(const cToolTip&) = delete;
    cToolTip& operator=(const cToolTip&) = delete;

    // Puts the tip of this instance on `Parent`, in place of an earlier one, and returns its
    // window; null when there is nothing to put it on or when style (0, 1, 64 or 65) or sign are
    // unknown. "|" in `Text` is a line end, without a title a blank. The tip comes `HoverTime`
    // milliseconds after the mouse has come to rest and stays for `PopupTime`.
    QWidget* Create(QWidget* Parent, const QString& Text, qint32 Style, bool Centered, qint32 Icon,
                    const QString& Title, qint32 ForeColor, qint32 BackColor, qint32 HoverTime,
                    qint32 PopupTime);

    qint32 BackCol() const { return backCol_; }
    bool Centered() const { return centered_; }
    const QString& Text() const { return text_; }
    const QString& Title() const { return title_; }
    qint32 ForeCol() const { return foreCol_; }
    qint32 HoverTime() const { return hoverTime_; }
    qint32 Icon() const { return icon_; }
    // The first text and title that this instance was given.
    QString InitialText() const { return initialText_; }
    QString InitialTitle() const { return initialTitle_; }
    qint32 PopupTime() const { return popupTime_; }
    qint32 Style() const { return style_; }  // SemDica while there is none

private:
    class Janela;

    void Destruir();

    std::unique_ptr<Janela> janela_;
    qint32 style_ = SemDica;
    qint32 icon_ = SemSinal;
    qint32 foreCol_ = 0;
    qint32 backCol_ = 0;
    qint32 hoverTime_ = 0;
    qint32 popupTime_ = 0;
    bool centered_ = false;
    QString text_;
    QString title_;
    QString initialText_;
    QString initialTitle_;
};
