#pragma once

#include "platform/forms/controls.h"

#include <QColor>
#include <QPointF>
#include <QStaticText>

// The colours of the numbers and of the labels under the picture.
enum class Cor : qint16 {
    Preto = 0,           // at rest
    AzulClaro = 9,       // shares a repair kit
    VermelhoClaro = 12,  // is the same item
    Branco = 15,         // under the mouse; off while blinking
};

QColor CorDe(Cor cor);

// An item's number on the drawing. Its whole box takes the mouse.
class ItemFigura final : public forms::ClickZone {
    Q_OBJECT

public:
    ItemFigura(qint16 indice, QWidget* pai);

    // The item as it is stored. Its leading blanks are painted: the marker's place counts on them.
    void SetCaption(const QString& caption);
    const QString& Caption() const { return caption_; }

    void SetForeColor(Cor cor);
    Cor ForeColor() const { return cor_; }
    void SetNegrito(bool negrito);
    bool Negrito() const { return negrito_; }
    double LarguraEmNegrito() const;  // of what is seen of the caption, without its blanks

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void Preparar();

    QString caption_;
    QFont letra_;  // not the widget's own: that is dear to change
    // Laid out when it is first painted: while it blinks it is painted ten times a second.
    QStaticText texto_;
    Cor cor_ = Cor::Preto;
    bool negrito_ = false;
};

// What lies behind the number under the mouse, a disc or, in a broader place, one drawn out. Takes
// no mouse input.
class MarcadorItem final : public QWidget {
    Q_OBJECT

public:
    // Hidden.
    MarcadorItem(const QString& nome, QWidget* pai);

    // Design pixels of the parent; halves are kept.
    void Mover(const QRectF& lugar);
    const QRectF& Lugar() const { return lugar_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRectF lugar_;
};
