#include "search/pesquisa.h"

#include "platform/forms/application.h"
#include "session/banco.h"
#include "session/global.h"
#include "session/passagens.h"
#include "settings/arquivo.h"

using namespace Qt::StringLiterals;

frmPesquisa::frmPesquisa() : Tela(u"frmPesquisa"_s, Kind::Screen, QSize(800, 600), u"pesquisa"_s) {
    CriarFundo();
    CriarPainelPecas();
    CriarPainelVeiculos();
    CriarPainelFiguras();
    for (forms::Panel* painel : pctTelaPesquisa) {
        painel->hide();
    }
    for (size_t i = 0; i < pctTelaPesquisa.size(); ++i) {
        const QString indice = QString::number(i);
        CriarBotao({u"RESULTADOPESQUISA"_s + indice,
                    u"pctResultadoPesquisaFundo("_s + indice + u')', u"Abrir a linha escolhida"_s},
                   pctTelaPesquisa[i], pctTelaPesquisa[i]->Drawing());
    }
    // The number box comes before the selector that stands above it.
    OrdenarTabulacao({u"txtNumeroTarvo", u"txtDescricao", u"txtNumeroClienteConcorrente",
                      u"cboNumeroClienteConcorrente", u"cboTipo", u"grdPesquisa1",
                      u"pctResultadoPesquisaFundo(0)"});
    OrdenarTabulacao(
        {u"txtVeiculo", u"cboFabricante", u"grdPesquisa2", u"pctResultadoPesquisaFundo(1)"});
    OrdenarTabulacao(
        {u"pctPesquisaFiguras", u"sclPesquisaFiguras", u"pctResultadoPesquisaFundo(2)"});
    LigarEventos();
    LigarLuz();
}

frmPesquisa::~frmPesquisa() {
    if (gFrmPesquisa == this) {
        gFrmPesquisa = nullptr;
    }
}

void frmPesquisa::Load() {
    PosicionarControles();
    mToolTip = std::make_unique<cToolTip>();
    mPesquisa1Pronta = false;
    mPesquisa2Pronta = false;
    PreencherCombos();
    galeria_->CarregarFiguras();
    galeria_->ExibirFiguras(1);
    galeria_->SelecionarFigura(1);
    QString ninguem;
    LerConfiguracao(u"VERIFICACAOAUTOMATICA"_s, ninguem, ninguem);
    novidades_.CarregarDadosVerificacao(true);
    mPesquisa1Pronta = true;
    mPesquisa2Pronta = true;
    ReiniciarPrograma = false;
    dtcPesquisa1->SetDatabaseName(gCaminho + u"Tarvo.mdb"_s);
    dtcPesquisa2->SetDatabaseName(gCaminho + u"Tarvo.mdb"_s);
    LimparPesquisa1();
    LimparPesquisa2();
}

// Screens with a selector of their own change the customer in force; coming back puts this screen's
// choice in force again.
void frmPesquisa::Activate() {
    const forms::StillLoaded aberta(this);
    forms::DoEvents();
    if (aberta) {
        GravarClienteConcorrente(CodigoClienteSelecionado());
    }
}

void frmPesquisa::Unloading() {
    novidades_.Abandonar();
    if (Tag == Recarregando) {
        return;
    }
    const forms::Busy ocupado;
    FecharBancoDados(gWS, gDB);
    if (ReiniciarPrograma) {
        SairPeloLancador();
    }
    MostrarCreditos();
}

void frmPesquisa::LigarEventos() {
    connect(this, &Form::Click, this, &frmPesquisa::EsconderPaineis);
    connect(pctBarraAtualizacao, &forms::Panel::Click, this, &frmPesquisa::EsconderPaineis);

    AoClicar(u"imgPesquisa1"_s, [this] { MostrarPainel(0, txtNumeroTarvo); });
    AoClicar(u"imgPesquisa2"_s, [this] { MostrarPainel(1, txtVeiculo); });
    AoClicar(u"imgPesquisa3"_s, [this] { MostrarPainel(2, galeria_->Teclado()); });
    AoClicar(u"imgAjuda"_s, AbrirAjuda);
    AoClicar(u"imgConhecaTarvo"_s, AbrirTour);
    AoClicar(u"imgConfiguracoes"_s, AbrirConfiguracoes);
    AoClicar(u"imgSair"_s, [this] { Unload(); });

    QWidget* const focos[] = {txtNumeroTarvo, txtVeiculo, galeria_->Teclado()};
    for (size_t i = 0; i < pctTelaPesquisa.size(); ++i) {
        QWidget* foco = focos[i];
        connect(pctTelaPesquisa[i], &forms::Panel::GotFocus, this, [foco] { foco->setFocus(); });
    }

    connect(txtNumeroTarvo, &forms::TextBox::Change, this, [this] { Pesquisar1(u"1"_s); });
    connect(txtDescricao, &forms::TextBox::Change, this, [this] { Pesquisar1(u"2"_s); });
    connect(txtNumeroClienteConcorrente, &forms::TextBox::Change, this,
            [this] { Pesquisar1(u"3"_s); });
    connect(cboTipo, &forms::ComboList::Click, this, [this] { Pesquisar1(u"4,1"_s); });
    connect(cboNumeroClienteConcorrente, &forms::ComboList::Click, this,
            &frmPesquisa::AoEscolherCliente);
    connect(txtVeiculo, &forms::TextBox::Change, this, [this] { Pesquisar2(u"1,2"_s); });
    connect(cboFabricante, &forms::ComboList::Click, this, [this] { Pesquisar2(u"1,2"_s); });

    // Who does not see the grid hears the count at the box in which he types.
    const auto contar = [this](const forms::BoundGrid* grade,
                               const QList<forms::TextBox*>& caixas) {
        connect(grade, &forms::BoundGrid::Counted, this, [caixas](const QString& texto) {
            for (forms::TextBox* caixa : caixas) {
                caixa->setAccessibleDescription(texto);
            }
        });
    };
    contar(grdPesquisa1, {txtNumeroTarvo, txtDescricao, txtNumeroClienteConcorrente});
    contar(grdPesquisa2, {txtVeiculo});

    connect(grdPesquisa1, &forms::BoundGrid::DblClick, this, [this] { AbrirResultado(0); });
    connect(grdPesquisa2, &forms::BoundGrid::DblClick, this, [this] { AbrirResultado(1); });
    for (int i = 0; i < int(pctTelaPesquisa.size()); ++i) {
        AoClicar(u"pctResultadoPesquisaFundo("_s + QString::number(i) + u')',
                 [this, i] { AbrirResultado(i); });
    }
    connect(galeria_, &Galeria::DblClick, this, [this] { AbrirResultado(2); });
    LigarNovidades();
}

void frmPesquisa::LigarNovidades() {
    pctVerificarAtualizacoes =
        Picture()->findChild<forms::ClickZone*>(u"pctVerificarAtualizacoes"_s);
    connect(pctVerificarAtualizacoes, &forms::ClickZone::Click, this,
            [this] { novidades_.IniciarVerificacao(false); });
    connect(pctVerificarAtualizacoes, &forms::ClickZone::MouseMove, this,
            &frmPesquisa::MostrarDicaDaVerificacao);
    connect(&novidades_, &Novidades::EmissaoLida, lblEmissao, &forms::Label::SetText);
    connect(&novidades_, &Novidades::DicaLida, this,
            [this](const QString& texto) { pctVerificarAtualizacoes->Tag = texto; });
    connect(&novidades_, &Novidades::ReinicioPedido, this, &frmPesquisa::Unload);
}

// The tip is made anew once for each refresh of the status; after that it comes by itself.
void frmPesquisa::MostrarDicaDaVerificacao() {
    if (pctVerificarAtualizacoes->Tag.isEmpty()) {
        return;
    }
    constexpr qint32 Espera = 850;   // milliseconds
    constexpr qint32 Vida = 20'000;  // milliseconds
    mToolTip->Create(pctVerificarAtualizacoes, pctVerificarAtualizacoes->Tag,
                     cToolTip::Balao | cToolTip::SempreVisivel, false, cToolTip::Informacao,
                     u"Verificar se existem Novas Atualizações"_s, cToolTip::TextoDeBotao,
                     cToolTip::FundoDeDica, Espera, Vida);
    pctVerificarAtualizacoes->Tag.clear();
}

void frmPesquisa::LigarLuz() {
    ApagarSobre<Form>(this);
    for (forms::Panel* painel : pctTelaPesquisa) {
        ApagarSobre(painel);
    }
    ApagarSobre(pctBarraAtualizacao);
    ApagarSobre(grdPesquisa1);
    ApagarSobre(grdPesquisa2);
    ApagarSobre(galeria_);
}

// The other two go first, so that the panel never stands beside one that is about to leave.
void frmPesquisa::MostrarPainel(int indice, QWidget* foco) {
    for (int i = 0; i < int(pctTelaPesquisa.size()); ++i) {
        if (i != indice) {
            pctTelaPesquisa[size_t(i)]->hide();
        }
    }
    pctTelaPesquisa[size_t(indice)]->show();
    foco->setFocus();
}

void frmPesquisa::EsconderPaineis() {
    for (const size_t i : {0u, 2u, 1u}) {
        pctTelaPesquisa[i]->hide();
    }
}
