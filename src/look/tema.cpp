#include "look/tema.h"

#include "look/paleta.h"
#include "platform/forms/artwork.h"
#include "platform/forms/theme.h"
#include "session/global.h"

#include <QGuiApplication>
#include <QIcon>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

QIcon Icone() {
    const auto desenho = forms::Artwork::Load(u"icone"_s);
    const QRectF tudo(QPointF(), QSizeF(desenho->Size()));
    QIcon icone;
    for (const int lado : {16, 32, 48, 64}) {
        QPixmap pixmap(lado, lado);
        pixmap.fill(Qt::transparent);
        QPainter pintor(&pixmap);
        desenho->Paint(pintor, QRectF(0, 0, lado, lado), tudo, forms::Artwork::State::Rest);
        pintor.end();
        icone.addPixmap(pixmap);
    }
    return icone;
}

}  // namespace

void AplicarTema() {
    const Paleta& paleta = Paleta::Atual();
    forms::Theme tema;
    tema.surround = paleta.petroleoFundo;
    tema.window = paleta.papel;
    tema.text = paleta.tinta;
    tema.disabledText = paleta.tintaSuave;
    tema.base = paleta.branco;
    tema.border = paleta.contorno;
    tema.focus = paleta.acentoTraco;
    tema.selection = paleta.acentoPalido;
    tema.selectionText = paleta.tinta;
    tema.rowLine = paleta.linha;
    tema.button = paleta.gaveta;
    tema.scrollHandle = paleta.contorno;
    tema.primary = paleta.petroleoVivo;
    tema.primaryText = paleta.gelo;
    tema.lit = paleta.acento;
    tema.alert = paleta.alerta;
    tema.tip = paleta.branco;
    tema.textPixels = paleta.corpoTexto;
    forms::SetTheme(tema);
    QGuiApplication::setWindowIcon(Icone());
    // By this the desktop finds the menu entry that belongs to the windows.
    QGuiApplication::setDesktopFileName(NomeDoPrograma);
}
