// The one file that knows all screens.

#include "session/passagens.h"

#include "app/creditos.h"
#include "figure/figura_detalhada.h"
#include "help/helpwindow.h"
#include "look/conheca_tarvo.h"
#include "partviews/lista_pecas.h"
#include "partviews/resultado_pesquisa.h"
#include "platform/erro.h"
#include "platform/forms/application.h"
#include "platform/system/process.h"
#include "printing/impressao.h"
#include "search/pesquisa.h"
#include "session/arquivos.h"
#include "session/erros.h"
#include "session/formularios.h"
#include "session/global.h"
#include "settings/configuracoes.h"

using namespace Qt::StringLiterals;

namespace {

enum class Saida { Esconder, Descarregar };

// The order of every way from one screen to the next.
void Passar(forms::Form& de, forms::Form& proxima, Saida saida) {
    const forms::Busy ocupado;
    const forms::StillLoaded aberta(&de);
    MostrarFormulario(proxima);
    if (aberta && saida == Saida::Esconder) {
        de.SetVisible(false);
    } else if (aberta) {
        de.Unload();
    }
}

void DescarregarOutras(const forms::Form& de, std::initializer_list<QString> nomes) {
    for (const QString& nome : nomes) {
        if (forms::Form* outra = forms::Form::Find(nome); outra && outra != &de) {
            outra->Unload();
        }
    }
}

}  // namespace

void AbrirPesquisa() {
    gFrmPesquisa = new frmPesquisa;
    gFrmPesquisa->Show();
}

void AbrirResultado(forms::Form& de, const QString& referencia) {
    ParametroFormulario = referencia;
    Passar(de, UnicaInstancia<frmResultadoPesquisa>(), Saida::Esconder);
}

void AbrirLista(forms::Form& de) {
    Passar(de, UnicaInstancia<frmListaPecas>(), Saida::Esconder);
}

void AbrirListaNoItem(forms::Form& de, const QString& item) {
    const forms::Busy ocupado;
    auto& lista = UnicaInstancia<frmListaPecas>();
    const forms::StillLoaded aberta(&lista);
    Passar(de, lista, Saida::Esconder);
    if (aberta) {
        lista.IrPara(item);
    }
}

void AbrirFigura(forms::Form& de, const QString& selecao) {
    ParametroFormulario = selecao;
    Passar(de, UnicaInstancia<frmFiguraDetalhada>(), Saida::Esconder);
}

void VoltarAoResultado(forms::Form& de) {
    DescarregarOutras(de, {frmListaPecas::Nome, frmFiguraDetalhada::Nome});
    Passar(de, UnicaInstancia<frmResultadoPesquisa>(), Saida::Descarregar);
}

void VoltarAPesquisa(forms::Form& de) {
    DescarregarOutras(de,
                      {frmListaPecas::Nome, frmFiguraDetalhada::Nome, frmResultadoPesquisa::Nome});
    Passar(de, *gFrmPesquisa, Saida::Descarregar);
}

void AbrirImpressao(const QString& selecao) {
    ParametroFormulario = selecao;
    const forms::Busy ocupado;
    UnicaInstancia<frmImpressao>().ShowModal();
}

bool ImpressaoEmAndamento() {
    return frmImpressao::Imprimindo();
}

void AbrirConfiguracoes() {
    frmConfiguracoes::Abrir();
}

void AbrirTour() {
    const forms::Busy ocupado;
    (new frmConhecaTarvo)->ShowModal();
}

void AbrirAjuda() {
    const forms::Busy ocupado;
    try {
        help::HelpWindow::Open(gCaminho + u"Ajuda_Catalogo_TARVO-LINDEN.hlp"_s,
                               u"Ajuda do Catálogo TARVO-LINDEN"_s);
    } catch (const Erro& erro) {
        MostrarErro(erro.Number(), erro.Description());
    }
}

void FecharTelasSecundarias() {
    Descarregar<frmImpressao>();
    Descarregar<frmConhecaTarvo>();
    Descarregar<frmConfiguracoes>();
}

void SairPeloLancador() {
    sys::Start(
        u'"' + CaminhoPrograma(true) + u"Tarvo.exe\" "_s + QString::number(sys::OwnProcessId()), 1);
    sys::ExitNow(0);
}

void MostrarCreditos() {
    (new frmCreditos)->Show();
}
