#include "partviews/resultado_pesquisa.h"

#include "parts/clientes.h"
#include "parts/item.h"
#include "partviews/grade.h"
#include "platform/convert.h"
#include "platform/erro.h"
#include "platform/forms/application.h"
#include "platform/forms/msgbox.h"
#include "platform/forms/picturefile.h"
#include "session/banco.h"
#include "session/global.h"
#include "session/passagens.h"

using namespace Qt::StringLiterals;

namespace {

const Lugar Lugares[] = {
    {u"lblInf", {58, 97, 651, 19}},
    {u"cboNumeroClienteConcorrentePeca", {558, 130, 173, 21}},
    {u"grdResultadoPesquisaPeca", {43, 154, 711, 122}},
    {u"imgFotoPeca", {85, 315, 250, 195}},
    {u"grdVeiculosPeca", {365, 332, 394, 152}},
    {u"imgPesquisaFundo", {238, 543, 53, 30}},
    {u"imgListaComponentesFundo", {344, 543, 99, 33}},
    {u"imgFiguraDetalhadaFundo", {489, 543, 82, 31}},
    {u"imgPesquisaSelecionada", {227, 543, 65, 30}},
    {u"imgListaComponentesSelecionada", {335, 542, 108, 34}},
    {u"imgFiguraDetalhadaSelecionada", {480, 542, 92, 32}},
    {u"imgMinimizar", {784, 2, 13, 10}},
};

// How each kind of reference leads to its parts.
struct Caminho {
    const char16_t* tipo;
    const char16_t* inicio;
    const char16_t* coluna;
    const char16_t* tabela;
    const char16_t* filtro;
};

constexpr Caminho Caminhos[] = {
    {u"COM", u"SELECT DISTINCT ", u"PECA_COMPONENTE.CodigoPeca,",
     u"FROM "
     u"(PECA_COMPONENTE "
     u"INNER JOIN PECA ON PECA_COMPONENTE.CodigoPeca = PECA.CodigoPeca) ",
     u"PECA_COMPONENTE.CodigoComponente = "},
    {u"JRE", u"SELECT DISTINCT ", u"PECA_COMPONENTE_JOGOREPARO.CodigoPeca,",
     u"FROM "
     u"(PECA_COMPONENTE_JOGOREPARO "
     u"INNER JOIN PECA ON PECA_COMPONENTE_JOGOREPARO.CodigoPeca = PECA.CodigoPeca) ",
     u"PECA_COMPONENTE_JOGOREPARO.CodigoJogoReparo = "},
    {u"PCA", u"SELECT ", u"PECA.CodigoPeca,", u"FROM PECA ", u"PECA.CodigoPeca = "},
    {u"VEI", u"SELECT ", u"VEICULO_PECA.CodigoPeca,",
     u"FROM "
     u"(VEICULO_PECA "
     u"INNER JOIN PECA ON VEICULO_PECA.CodigoPeca = PECA.CodigoPeca) ",
     u"VEICULO_PECA.CodigoVeiculo = "},
    {u"FPC", u"SELECT ", u"PECA.CodigoPeca,",
     u"FROM "
     u"(FOTOPECAPESQUISA "
     u"INNER JOIN PECA ON FOTOPECAPESQUISA.CodigoFotoPecaPesquisa = PECA.CodigoFotoPecaPesquisa) ",
     u"FOTOPECAPESQUISA.CodigoFotoPecaPesquisa = "},
};

const Caminho& CaminhoDe(const QString& tipo) {
    for (const Caminho& caminho : Caminhos) {
        if (tipo == QString::fromUtf16(caminho.tipo)) {
            return caminho;
        }
    }
    throw Erro(Erro::InvalidArgument);
}

QString SelecaoPara(const QString& tipo, qint32 codigo) {
    const QString numero = QString::number(codigo);
    if (tipo == u"COM") {
        return CampoDeSelecao(u'C', numero);
    }
    if (tipo == u"JRE") {
        return CampoDeSelecao(u'J', numero);
    }
    return QString();
}

}  // namespace

frmResultadoPesquisa::frmResultadoPesquisa()
    : Tela(Nome, Kind::Screen, QSize(800, 600), u"resultado"_s) {
    CriarControles();
    LigarEventos();
}

void frmResultadoPesquisa::CriarControles() {
    lblInf = new forms::Label(u"lblInf"_s, Picture());
    cboNumeroClienteConcorrentePeca =
        new forms::ComboList(u"cboNumeroClienteConcorrentePeca"_s, u"Cliente"_s, Picture());
    imgFotoPeca = new forms::Picture(u"imgFotoPeca"_s, u"Foto da peça"_s, Picture());

    dtcResultadoPesquisaPeca = new forms::DataSource(u"dtcResultadoPesquisaPeca"_s, this);
    grdResultadoPesquisaPeca =
        new forms::BoundGrid(u"grdResultadoPesquisaPeca"_s, u"Peças"_s, Picture());
    grdResultadoPesquisaPeca->AddColumn(u"NumeroTarvoPeca"_s, u"Nº Tarvo"_s, 159.987);
    grdResultadoPesquisaPeca->AddColumn(u"DescricaoPeca"_s, u"Descrição"_s, 355.994);
    grdResultadoPesquisaPeca->AddColumn(u"NumeroClienteConcorrente"_s, u"Nº do cliente"_s, 170.986);
    grdResultadoPesquisaPeca->SetEmptyText(u"Nenhuma Peça encontrada."_s);
    grdResultadoPesquisaPeca->SetDataSource(dtcResultadoPesquisaPeca);

    dtcVeiculosPeca = new forms::DataSource(u"dtcVeiculosPeca"_s, this);
    grdVeiculosPeca = new forms::BoundGrid(u"grdVeiculosPeca"_s, u"Veículos da peça"_s, Picture());
    grdVeiculosPeca->AddColumn(u"Veiculo"_s, u"Veículo"_s, 237.014);
    grdVeiculosPeca->AddColumn(u"Fabricante"_s, u"Fabricante"_s, 133.002);
    grdVeiculosPeca->SetEmptyText(u"Nenhum veículo cadastrado para essa Peça."_s);
    grdVeiculosPeca->SetDataSource(dtcVeiculosPeca);

    // Last, so that the Tab key comes to them behind what they act on.
    const Botao botoes[] = {
        {u"PESQUISA"_s, u"imgPesquisaFundo"_s, u"Voltar à pesquisa"_s},
        {u"LISTACOMPONENTES"_s, u"imgListaComponentesFundo"_s, u"Lista de componentes"_s},
        {u"FIGURADETALHADA"_s, u"imgFiguraDetalhadaFundo"_s, u"Figura detalhada"_s},
    };
    CriarBotoes(botoes);
}

void frmResultadoPesquisa::LigarEventos() {
    ApagarSobre<Form>(this);
    connect(cboNumeroClienteConcorrentePeca, &forms::ComboList::Click, this,
            &frmResultadoPesquisa::AoEscolherCliente);
    connect(grdResultadoPesquisaPeca, &forms::BoundGrid::RowColChange, this,
            &frmResultadoPesquisa::AoMudarPeca);
    connect(grdResultadoPesquisaPeca, &forms::BoundGrid::DblClick, this,
            &frmResultadoPesquisa::AbrirFigura);
    connect(grdVeiculosPeca, &forms::BoundGrid::RowColChange, this,
            [this] { MostrarVizinhas(*grdVeiculosPeca, *dtcVeiculosPeca); });
    AoClicar(u"imgPesquisaFundo"_s, [this] { VoltarAPesquisa(*this); });
    AoClicar(u"imgListaComponentesFundo"_s, [this] { AbrirLista(); });
    AoClicar(u"imgFiguraDetalhadaFundo"_s, [this] { AbrirFigura(); });
}

void frmResultadoPesquisa::Load() {
    Posicionar(Lugares);
    mCarregado = false;
    // Kind in three characters, code in six, the title behind them.
    mTipoItem = ParametroFormulario.left(3);
    mCodigoItem = convert::ToInt32(convert::Val(ParametroFormulario.mid(3, 6)));
    const QString titulo = ParametroFormulario.mid(9);
    ParametroFormulario.clear();
    mSelecao = SelecaoPara(mTipoItem, mCodigoItem);

    PreencherClientes(*cboNumeroClienteConcorrentePeca);
    dtcResultadoPesquisaPeca->SetDatabaseName(gCaminho + u"Tarvo.mdb"_s);
    dtcVeiculosPeca->SetDatabaseName(gCaminho + u"Tarvo.mdb"_s);
    lblInf->SetText(titulo);
    mCarregado = true;
    AtualizarResultado(false);
}

void frmResultadoPesquisa::Activate() {
    const forms::StillLoaded aberta(this);
    forms::DoEvents();
    if (aberta) {
        DarTeclado(*grdResultadoPesquisaPeca);
        GravarClienteConcorrente(cboNumeroClienteConcorrentePeca->SelectedItemData());
    }
}

void frmResultadoPesquisa::AoEscolherCliente() {
    GravarClienteConcorrente(cboNumeroClienteConcorrentePeca->SelectedItemData());
    AtualizarResultado(true);
}

void frmResultadoPesquisa::AtualizarResultado(bool Refrescar) {
    if (!mCarregado) {
        return;
    }
    const Caminho& caminho = CaminhoDe(mTipoItem);
    dtcResultadoPesquisaPeca->SetRecordSource(
        QString::fromUtf16(caminho.inicio) +
        u"PECA.NumeroTarvoPeca,"
        "PECA.DescricaoPeca,"
        "REFERENCIACRUZADA1.NumeroClienteConcorrente,"_s +
        QString::fromUtf16(caminho.coluna) + u"PECA.ArquivoFotoPeca "_s +
        QString::fromUtf16(caminho.tabela) +
        u"LEFT JOIN REFERENCIACRUZADA1 "
        "ON PECA.NumeroTarvoPeca = REFERENCIACRUZADA1.NumeroTarvo "
        "WHERE "_s +
        QString::fromUtf16(caminho.filtro) + QString::number(mCodigoItem) + u" ORDER BY 1"_s);
    if (Refrescar) {
        dtcResultadoPesquisaPeca->Refresh();
    }
}

void frmResultadoPesquisa::CarregarVeiculos() {
    const QVariant codigo =
        dtcResultadoPesquisaPeca->GetRecordset()->Fields(u"CodigoPeca"_s).Value();
    dtcVeiculosPeca->SetRecordSource(
        u"SELECT "
        "VEICULO.DescricaoVeiculo AS Veiculo, "
        "CLIENTECONCORRENTE.DescricaoClienteConcorrente AS Fabricante "
        "FROM "
        "(VEICULO_PECA "
        "INNER JOIN VEICULO ON VEICULO_PECA.CodigoVeiculo = VEICULO.CodigoVeiculo) "
        "INNER JOIN CLIENTECONCORRENTE "
        "ON VEICULO.CodigoClienteConcorrente = CLIENTECONCORRENTE.CodigoClienteConcorrente "
        "WHERE "
        "VEICULO_PECA.CodigoPeca = "_s +
        convert::ToText(codigo) +
        u" "
        "ORDER BY "
        "1,2"_s);
    dtcVeiculosPeca->Refresh();
}

// A photo that cannot be had leaves the one that stands, so that leafing does not flicker.
void frmResultadoPesquisa::CarregarFoto() {
    try {
        const QString arquivo = convert::ToTextOrEmpty(
            dtcResultadoPesquisaPeca->GetRecordset()->Fields(u"ArquivoFotoPeca"_s).Value());
        imgFotoPeca->SetPixmap(forms::LoadPicture(gCaminho + u"FotoPeca\\"_s + arquivo,
                                                  imgFotoPeca->size(), devicePixelRatioF()));
    } catch (const Erro&) {
        return;
    }
}

void frmResultadoPesquisa::AoMudarPeca(const dao::Bookmark& anterior) {
    if (MostrarVizinhas(*grdResultadoPesquisaPeca, *dtcResultadoPesquisaPeca)) {
        return;
    }
    const dao::Recordset* pecas = dtcResultadoPesquisaPeca->GetRecordset();
    if (!pecas || pecas->Eof() || grdResultadoPesquisaPeca->CurrentBookmark() == anterior) {
        return;
    }
    CarregarVeiculos();
    CarregarFoto();
}

bool frmResultadoPesquisa::PodeAvancar(bool (*possui)(qint32), const QString& recusa) {
    const dao::Recordset* pecas = dtcResultadoPesquisaPeca->GetRecordset();
    if (!pecas || pecas->Eof()) {
        forms::MsgBox(u"Nenhuma Peça encontrada."_s, forms::vbCritical, TituloCatalogo);
        return false;
    }
    if (!possui(convert::ToInt32(pecas->Fields(u"CodigoPeca"_s).Value()))) {
        forms::MsgBox(recusa, forms::vbInformation, TituloCatalogo);
        return false;
    }
    return true;
}

void frmResultadoPesquisa::EntregarPeca() {
    gCodigoPeca =
        convert::ToInt32(dtcResultadoPesquisaPeca->GetRecordset()->Fields(u"CodigoPeca"_s).Value());
    gCodigoClienteConcorrente = cboNumeroClienteConcorrentePeca->SelectedItemData();
}

void frmResultadoPesquisa::AbrirLista() {
    if (PodeAvancar(PossuiListaComponentes, u"Essa Peça não possui Lista de Componentes."_s)) {
        EntregarPeca();
        ::AbrirLista(*this);
    }
}

void frmResultadoPesquisa::AbrirFigura() {
    if (PodeAvancar(PossuiFiguraDetalhada, u"Essa Peça não possui Figura Detalhada."_s)) {
        EntregarPeca();
        ::AbrirFigura(*this, mSelecao);
    }
}
