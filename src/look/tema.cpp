#include "look/tema.h"

#include "look/paleta.h"
#include "platform/forms/theme.h"

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
}
