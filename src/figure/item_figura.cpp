#include "figure/item_figura.h"

#include "look/paleta.h"
#include "platform/forms/font.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

// Up to three characters stand on the marker in the size of all small texts, four a pixel smaller.
QFont LetraPara(const QString& caption, bool negrito) {
    const int corpo = Paleta::Atual().corpoRotulo;
    return forms::Font(caption.trimmed().size() > 3 ? corpo - 1 : corpo, negrito);
}

}  // namespace

QColor CorDe(Cor cor) {
    switch (cor) {
        case Cor::AzulClaro:
            return Paleta::Atual().itemJogo;
        case Cor::VermelhoClaro:
            return Paleta::Atual().itemMesmo;
        case Cor::Branco:
            return Qt::white;
        case Cor::Preto:
            break;
    }
    return Qt::black;
}

ItemFigura::ItemFigura(qint16 indice, QWidget* pai)
    : ClickZone(u"lblItem(%1)"_s.arg(indice), QString(), pai) {
    hide();
}

void ItemFigura::SetCaption(const QString& caption) {
    caption_ = caption;
    texto_ = QStaticText(caption);
    texto_.setTextFormat(Qt::PlainText);
    Preparar();
}

void ItemFigura::Preparar() {
    letra_ = LetraPara(caption_, negrito_);
    update();
}

void ItemFigura::SetForeColor(Cor cor) {
    if (cor != cor_) {
        cor_ = cor;
        update();
    }
}

void ItemFigura::SetNegrito(bool negrito) {
    if (negrito != negrito_) {
        negrito_ = negrito;
        Preparar();
    }
}

double ItemFigura::LarguraEmNegrito() const {
    return QFontMetricsF(LetraPara(caption_, true)).horizontalAdvance(caption_.trimmed());
}

void ItemFigura::paintEvent(QPaintEvent*) {
    QPainter pintor(this);
    pintor.setFont(letra_);
    pintor.setPen(CorDe(cor_));
    const QFontMetricsF medida(letra_);
    const QSizeF texto(medida.horizontalAdvance(caption_), medida.height());
    pintor.drawStaticText(QPointF(width() - texto.width(), height() - texto.height()) / 2, texto_);
}

MarcadorItem::MarcadorItem(const QString& nome, QWidget* pai) : QWidget(pai) {
    setObjectName(nome);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void MarcadorItem::Mover(const QRectF& lugar) {
    lugar_ = lugar;
    setGeometry(lugar.toAlignedRect());
}

void MarcadorItem::paintEvent(QPaintEvent*) {
    QPainter pintor(this);
    pintor.setRenderHint(QPainter::Antialiasing);
    pintor.setBrush(Paleta::Atual().itemFundo);
    pintor.setPen(QPen(Paleta::Atual().itemBorda, 1));
    const QRectF contorno = lugar_.translated(-pos()).adjusted(0.5, 0.5, -0.5, -0.5);
    const double raio = contorno.height() / 2;
    pintor.drawRoundedRect(contorno, raio, raio);
}
