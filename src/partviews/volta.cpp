#include "partviews/volta.h"

#include "figure/figura_detalhada.h"
#include "partviews/lista_pecas.h"
#include "partviews/resultado_pesquisa.h"
#include "platform/forms/application.h"
#include "search/pesquisa.h"
#include "session/global.h"

namespace {

void DescarregarOutras(const forms::Form& tela, std::initializer_list<QString> nomes) {
    for (const QString& nome : nomes) {
        if (forms::Form* outra = forms::Form::Find(nome); outra && outra != &tela) {
            outra->Unload();
        }
    }
}

// The next screen comes first, so that the program is never without a window. It lets events
// through, and the user may have closed this one in the meantime.
void Trocar(forms::Form& tela, forms::Form& proxima) {
    const forms::StillLoaded aberta(&tela);
    proxima.SetVisible(true);
    if (aberta) {
        tela.Unload();
    }
    forms::SetMousePointer(forms::vbDefault);
}

}  // namespace

void VoltarAoResultado(forms::Form& tela) {
    forms::SetMousePointer(forms::vbHourglass);
    DescarregarOutras(tela, {frmListaPecas::Nome, frmFiguraDetalhada::Nome});
    Trocar(tela, UnicaInstancia<frmResultadoPesquisa>());
}

void VoltarAPesquisa(forms::Form& tela) {
    forms::SetMousePointer(forms::vbHourglass);
    DescarregarOutras(tela,
                      {frmListaPecas::Nome, frmFiguraDetalhada::Nome, frmResultadoPesquisa::Nome});
    Trocar(tela, *gFrmPesquisa);
}
