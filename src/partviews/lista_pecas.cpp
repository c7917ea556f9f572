#include "partviews/lista_pecas.h"

#include "parts/clientes.h"
#include "parts/item.h"
#include "parts/titulo.h"
#include "partviews/grade.h"
#include "platform/convert.h"
#include "platform/forms/application.h"
#include "platform/forms/msgbox.h"
#include "session/banco.h"
#include "session/global.h"
#include "session/passagens.h"

using namespace Qt::StringLiterals;

frmListaPecas::frmListaPecas() : Tela(Nome, Kind::Screen, QSize(800, 600), u"lista"_s) {
    CriarControles();
    OrdenarTabulacao({u"cboMostraNaListaPecas", u"txtItem", u"txtDescricaoComponente",
                      u"txtNumeroTarvo", u"txtNumeroClienteConcorrente",
                      u"cboNumeroClienteConcorrenteComponente", u"grdListaPecas",
                      u"grdJogosReparoComponente", u"imgImprimir"});
    LigarEventos();
}

void frmListaPecas::Load() {
    PosicionarControles();
    mCarregado = false;
    PreencherClientes(*cboNumeroClienteConcorrenteComponente);
    PreencherJogos();
    if (const QString titulo = TituloDaPeca(8); !titulo.isEmpty()) {
        lblInf->SetText(titulo);
    }
    dtcListaPecas->SetDatabaseName(gCaminho + u"Tarvo.mdb"_s);
    dtcJogosReparoComponente->SetDatabaseName(gCaminho + u"Tarvo.mdb"_s);
    mCarregado = true;
    CarregarListaPecas(u"3"_s, QString(), false);
}

void frmListaPecas::Activate() {
    const forms::StillLoaded aberta(this);
    forms::DoEvents();
    if (aberta) {
        DarTeclado(*grdListaPecas);
        GravarClienteConcorrente(cboNumeroClienteConcorrenteComponente->SelectedItemData());
    }
}

void frmListaPecas::LigarEventos() {
    ApagarSobre<Form>(this);
    ApagarSobre(pctJogosReparo);
    for (const Caixa& caixa : caixas_) {
        LigarCaixa(caixa);
    }
    connect(grdListaPecas, &forms::BoundGrid::RowColChange, this, &frmListaPecas::AoMudarItem);
    connect(grdListaPecas, &forms::BoundGrid::DblClick, this, &frmListaPecas::AbrirFigura);
    connect(grdJogosReparoComponente, &forms::BoundGrid::RowColChange, this,
            [this] { MostrarVizinhas(*grdJogosReparoComponente, *dtcJogosReparoComponente); });
    connect(cboMostraNaListaPecas, &forms::ComboList::Click, this, &frmListaPecas::AoEscolherJogo);
    connect(cboNumeroClienteConcorrenteComponente, &forms::ComboList::Click, this,
            &frmListaPecas::AoEscolherCliente);
    AoClicar(u"imgFiguraDetalhadaFundo"_s, [this] { AbrirFigura(); });
    AoClicar(u"imgResultadoPesquisaFundo"_s, [this] { VoltarAoResultado(*this); });
    AoClicar(u"imgPesquisaFundo"_s, [this] { VoltarAPesquisa(*this); });
    AoClicar(u"imgImprimir"_s, [] { AbrirImpressao(u"FD:0LC:1"_s); });
}

// Entering a box sorts by its column and keeps the cursor on its item; each change of its text goes
// to the first row at or behind it, or to the last row. A fifth digit of an item is an error that
// ends the program: stored items have four places.
void frmListaPecas::LigarCaixa(const Caixa& caixa) {
    connect(caixa.caixa, &forms::TextBox::GotFocus, this, [this, caixa] {
        if (!ListaVazia()) {
            CarregarListaPecas(caixa.ordem, ItemAtual(), true);
        }
    });
    connect(caixa.caixa, &forms::TextBox::Change, this, [this, caixa] {
        if (ListaVazia()) {
            return;
        }
        dao::Recordset* lista = dtcListaPecas->GetRecordset();
        lista->FindFirst(caixa.coluna + u" >= '"_s + caixa.valor(caixa.caixa->text()) + u'\'');
        if (lista->NoMatch()) {
            lista->MoveLast();
        }
    });
}

void frmListaPecas::AoMudarItem(const dao::Bookmark& anterior) {
    if (MostrarVizinhas(*grdListaPecas, *dtcListaPecas)) {
        return;
    }
    if (ListaVazia()) {
        pctJogosReparo->hide();
        return;
    }
    if (grdListaPecas->CurrentBookmark() != anterior) {
        CarregarJogosReparo();
    }
}

void frmListaPecas::AoEscolherJogo() {
    CarregarListaPecas(OrdemAtual(), QString(), true);
}

// With an empty list the choice is stored by the next activation only.
void frmListaPecas::AoEscolherCliente() {
    const qint32 codigo = cboNumeroClienteConcorrenteComponente->SelectedItemData();
    if (!mCarregado) {
        GravarClienteConcorrente(codigo);
    } else if (!ListaVazia()) {
        GravarClienteConcorrente(codigo);
        CarregarListaPecas(OrdemAtual(), ItemAtual(), true);
    }
    lblNumeroClienteConcorrente->SetText(cboNumeroClienteConcorrenteComponente->Text());
}

void frmListaPecas::AbrirFigura() {
    if (!PossuiFiguraDetalhada(gCodigoPeca)) {
        forms::MsgBox(u"Essa Peça não possui Figura Detalhada."_s, forms::vbInformation,
                      TituloCatalogo);
        return;
    }
    ::AbrirFigura(*this, ListaVazia() ? QString() : SelecaoAtual());
}

// The item under the cursor, and of its kits the one under the panel's cursor.
QString frmListaPecas::SelecaoAtual() const {
    const QString item = CampoDeSelecao(u'I', ItemAtual());
    const dao::Recordset* jogos = dtcJogosReparoComponente->GetRecordset();
    if (!FazParteJogoReparo() || !jogos || jogos->Eof()) {
        return item;
    }
    return item +
           CampoDeSelecao(u'J', convert::ToText(jogos->Fields(u"CodigoJogoReparo"_s).Value()));
}

// The kit in the filter may not have the item: then all components are shown again.
void frmListaPecas::IrPara(const QString& item) {
    dtcListaPecas->GetRecordset()->FindFirst(CriterioDoItem(item));
    const int todos = cboMostraNaListaPecas->ListCount() - 1;
    if (dtcListaPecas->GetRecordset()->NoMatch() && cboMostraNaListaPecas->ListIndex() != todos) {
        cboMostraNaListaPecas->SetListIndex(todos);
        dtcListaPecas->GetRecordset()->FindFirst(CriterioDoItem(item));
    }
}
