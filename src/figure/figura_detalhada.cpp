#include "figure/figura_detalhada.h"

#include "partviews/lista_pecas.h"
#include "partviews/titulo.h"
#include "platform/forms/application.h"
#include "platform/forms/msgbox.h"
#include "printing/impressao.h"
#include "session/banco.h"
#include "session/global.h"
#include "session/modulo.h"

using namespace Qt::StringLiterals;

frmFiguraDetalhada::frmFiguraDetalhada() : Tela(Nome, Kind::Screen, QSize(800, 600), u"figura"_s) {
    setWindowTitle(TituloCatalogo);
    CriarControles();
    LigarEventos();
}

void frmFiguraDetalhada::Load() {
    PosicionarControles();
    mIgnorarAtivacao = false;
    mItemAtual = -1;
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

frmListaPecas* frmFiguraDetalhada::MostrarLista() {
    auto& lista = UnicaInstancia<frmListaPecas>();
    const forms::StillLoaded esta(this);
    const forms::StillLoaded aberta(&lista);
    MostrarFormulario(lista);
    if (esta) {
        SetVisible(false);
    }
    return aberta ? &lista : nullptr;
}

void frmFiguraDetalhada::AbrirLista() {
    if (!PossuiListaComponentes(gCodigoPeca)) {
        forms::MsgBox(u"Essa Peça não possui Lista de Componentes."_s, forms::vbInformation,
                      TituloCatalogo);
        return;
    }
    forms::SetMousePointer(forms::vbHourglass);
    Timer1.stop();
    for (const ItemPiscando& piscando : mItensPiscando) {
        piscando.item->SetNegrito(false);
        piscando.item->SetForeColor(Cor::Preto);
    }
    MostrarLista();
    forms::SetMousePointer(forms::vbDefault);
}

// The dialog puts the pointer back. What blinks goes on behind it and after it.
void frmFiguraDetalhada::Imprimir() {
    forms::SetMousePointer(forms::vbHourglass);
    mIgnorarAtivacao = true;
    ParametroFormulario = u"FD:1LC:0"_s;
    UnicaInstancia<frmImpressao>().ShowModal();
}
