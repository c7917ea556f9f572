#include "look/paleta.h"
#include "parts/consulta.h"
#include "parts/item.h"
#include "partviews/lista_pecas.h"
#include "platform/forms/listexport.h"

using namespace Qt::StringLiterals;

namespace {

const Lugar Lugares[] = {
    {u"lblInf", {58, 97, 494, 19}},
    {u"cboMostraNaListaPecas", {526, 94, 197, 21}},
    {u"cboNumeroClienteConcorrenteComponente", {588, 127, 143, 21}},
    {u"txtItem", {43, 150, 66, 21}},
    {u"txtDescricaoComponente", {168, 150, 272, 21}},
    {u"txtNumeroTarvo", {439, 150, 150, 21}},
    {u"txtNumeroClienteConcorrente", {588, 150, 143, 21}},
    {u"grdListaPecas", {43, 171, 711, 227}},
    {u"pctJogosReparo", {51, 397, 584, 124}},
    {u"lblNumeroClienteConcorrente", {404, 26, 144, 21}},
    {u"grdJogosReparoComponente", {14, 49, 556, 62}},
    {u"imgImprimir", {680, 428, 66, 26}},
    {u"imgPesquisaFundo", {237, 543, 55, 30}},
    {u"imgResultadoPesquisaFundo", {342, 543, 100, 33}},
    {u"imgFiguraDetalhadaFundo", {489, 543, 82, 31}},
    {u"imgPesquisaSelecionada", {228, 542, 65, 32}},
    {u"imgResultadoPesquisaSelecionada", {332, 542, 111, 34}},
    {u"imgFiguraDetalhadaSelecionada", {480, 542, 92, 33}},
    {u"imgImprimirSelecionada", {671, 427, 76, 27}},
    {u"imgMinimizar", {784, 2, 13, 10}},
};

// The end of the title's label lies under the list of kits.
constexpr int SobALista = 58 + 494 - 526 + 6;
constexpr int RecuoDoTexto = 6;  // of a cell's text in its column

}  // namespace

void frmListaPecas::PosicionarControles() {
    Posicionar(Lugares);
}

void frmListaPecas::CriarControles() {
    const Botao botoes[] = {
        {u"PESQUISA"_s, u"imgPesquisaFundo"_s, u"Voltar à pesquisa"_s},
        {u"RESULTADOPESQUISA"_s, u"imgResultadoPesquisaFundo"_s, u"Voltar às peças"_s},
        {u"FIGURADETALHADA"_s, u"imgFiguraDetalhadaFundo"_s, u"Figura detalhada"_s},
        {u"IMPRIMIR"_s, u"imgImprimir"_s, u"Imprimir"_s},
    };
    CriarBotoes(botoes);

    lblInf = new forms::Label(u"lblInf"_s, Picture());
    lblInf->setContentsMargins(0, 0, SobALista, 0);
    cboMostraNaListaPecas = new forms::ComboList(
        u"cboMostraNaListaPecas"_s, u"Componentes de qual jogo de reparo"_s, Picture());
    cboNumeroClienteConcorrenteComponente =
        new forms::ComboList(u"cboNumeroClienteConcorrenteComponente"_s, u"Cliente"_s, Picture());

    const auto caixa = [this](const QString& nome, const QString& descricao) {
        return new forms::TextBox(nome, descricao, Picture());
    };
    // The two number boxes differ on purpose: only the maker's number drops a digit that stands in
    // front of a letter.
    caixas_ = {{
        {caixa(u"txtItem"_s, u"Item"_s), u"1"_s, u"ItemComponente"_s, FormatarItem},
        {caixa(u"txtDescricaoComponente"_s, u"Descrição"_s), u"3"_s, u"DescricaoComponente"_s,
         consulta::Texto},
        {caixa(u"txtNumeroTarvo"_s, u"Nº Tarvo"_s), u"4"_s, u"NumeroTarvoComponente"_s,
         NormalizarNumero},
        {caixa(u"txtNumeroClienteConcorrente"_s, u"Nº do cliente"_s), u"5"_s,
         u"NumeroClienteConcorrente"_s, consulta::NumeroDeCliente},
    }};

    dtcListaPecas = new forms::DataSource(u"dtcListaPecas"_s, this);
    grdListaPecas = new forms::BoundGrid(u"grdListaPecas"_s, u"Componentes"_s, Picture());
    grdListaPecas->AddColumn(u"ItemComponente"_s, u"Item"_s, 65.008);
    grdListaPecas->AddColumn(u"QuantidadeComponente"_s, u"Quantidade"_s, 60.019);
    grdListaPecas->AddColumn(u"DescricaoComponente"_s, u"Descrição"_s, 270.992);
    grdListaPecas->AddColumn(u"NumeroTarvoComponente"_s, u"Nº Tarvo"_s, 148.989);
    grdListaPecas->AddColumn(u"NumeroClienteConcorrente"_s, u"Nº do cliente"_s, 141.997);
    grdListaPecas->SetDataSource(dtcListaPecas);
    grdListaPecas->Export().SetNote([this] {
        return cboMostraNaListaPecas->SelectedItemData() > 0
                   ? u"Só os componentes de: "_s + cboMostraNaListaPecas->Text()
                   : QString();
    });
    CriarPainelJogos();
}

void frmListaPecas::CriarPainelJogos() {
    pctJogosReparo = new forms::Panel(u"pctJogosReparo"_s, u"lista-jogos"_s, Picture());
    pctJogosReparo->hide();
    lblNumeroClienteConcorrente =
        new forms::Label(u"lblNumeroClienteConcorrente"_s, pctJogosReparo);
    // It stands among the words over the columns, which the panel's drawing has.
    QFont rotulo = lblNumeroClienteConcorrente->font();
    rotulo.setPixelSize(Paleta::Atual().corpoRotulo);
    lblNumeroClienteConcorrente->setFont(rotulo);
    lblNumeroClienteConcorrente->setContentsMargins(RecuoDoTexto, 0, 0, 0);
    dtcJogosReparoComponente = new forms::DataSource(u"dtcJogosReparoComponente"_s, this);
    grdJogosReparoComponente = new forms::BoundGrid(
        u"grdJogosReparoComponente"_s, u"Jogos de reparo do componente"_s, pctJogosReparo);
    grdJogosReparoComponente->AddColumn(u"DescricaoJogoReparo"_s, u"Jogo de reparo"_s, 240.983);
    grdJogosReparoComponente->AddColumn(u"NumeroTarvoJogoReparo"_s, u"Nº Tarvo"_s, 148.989);
    grdJogosReparoComponente->AddColumn(u"NumeroClienteConcorrente"_s, u"Nº do cliente"_s, 141.997);
    grdJogosReparoComponente->SetDataSource(dtcJogosReparoComponente);
}
