#include "figure/figura_detalhada.h"

#include "parts/titulo.h"
#include "platform/forms/msgbox.h"
#include "session/banco.h"
#include "session/global.h"
#include "session/passagens.h"

using namespace Qt::StringLiterals;

frmFiguraDetalhada::frmFiguraDetalhada() : Tela(Nome, Kind::Screen, QSize(800, 600), u"figura"_s) {
    CriarControles();
    LigarEventos();
}

void frmFiguraDetalhada::Load() {
    PosicionarControles();
    mIgnorarAtivacao = false;
    mItemAtual = SemItem;
    if (const QString titulo = TituloDaPeca(15); !titulo.isEmpty()) {
        lblInf->SetText(titulo);
    }
    AbrirComponentes();
    CarregarFigura();
}

void frmFiguraDetalhada::Unloading() {
    Timer1.stop();
    mComponentes.reset();
}

void frmFiguraDetalhada::AbrirLista() {
    if (!PossuiListaComponentes(gCodigoPeca)) {
        forms::MsgBox(u"Essa Peça não possui Lista de Componentes."_s, forms::vbInformation,
                      TituloCatalogo);
        return;
    }
    Timer1.stop();
    for (const ItemPiscando& piscando : mItensPiscando) {
        piscando.item->SetNegrito(false);
        piscando.item->SetForeColor(Cor::Preto);
    }
    ::AbrirLista(*this);
}

// What blinks goes on behind the dialog and after it.
void frmFiguraDetalhada::Imprimir() {
    mIgnorarAtivacao = true;
    AbrirImpressao(u"FD:1LC:0"_s);
}
