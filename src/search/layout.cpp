#include "look/paleta.h"
#include "platform/forms/listexport.h"
#include "search/pesquisa.h"

using namespace Qt::StringLiterals;

namespace {

// The list's own height, for the combos whose place gives none.
constexpr int AlturaCombo = 21;

// Design pixels from the corner of the control's parent.
const Lugar Lugares[] = {
    {u"pctTelaPesquisa(0)", {0, 82, 800, 162}},
    {u"txtNumeroTarvo", {14, 37, 124, 21}},
    {u"txtDescricao", {137, 37, 274, 21}},
    {u"cboNumeroClienteConcorrente", {410, 13, 162, AlturaCombo}},
    {u"txtNumeroClienteConcorrente", {410, 37, 163, 21}},
    {u"cboTipo", {571, 37, 131, AlturaCombo}},
    {u"grdPesquisa1", {14, 58, 711, 92}},
    {u"pctResultadoPesquisaFundo(0)", {745, 105, 49, 51}},
    {u"pctResultadoPesquisaSelecionada(0)", {744, 105, 51, 53}},
    {u"pctTelaPesquisa(1)", {0, 221, 800, 162}},
    {u"txtVeiculo", {14, 37, 438, 21}},
    {u"cboFabricante", {451, 37, 251, AlturaCombo}},
    {u"grdPesquisa2", {14, 58, 711, 92}},
    {u"pctResultadoPesquisaFundo(1)", {746, 105, 48, 51}},
    {u"pctResultadoPesquisaSelecionada(1)", {744, 104, 51, 53}},
    {u"pctTelaPesquisa(2)", {152, 381, 648, 162}},
    {u"pctPesquisaFiguras", {15, 23, 561, 110}},
    {u"sclPesquisaFiguras", {15, 133, 561, 17}},
    {u"imgFigura(0)", {10, 6, 120, 75}},
    {u"imgFigura(1)", {150, 6, 120, 75}},
    {u"imgFigura(2)", {290, 6, 120, 75}},
    {u"imgFigura(3)", {430, 6, 120, 75}},
    {u"lblDescricaoFigura(0)", {4, 81, 132, 30}},
    {u"lblDescricaoFigura(1)", {144, 81, 132, 30}},
    {u"lblDescricaoFigura(2)", {284, 81, 132, 30}},
    {u"lblDescricaoFigura(3)", {424, 81, 132, 30}},
    {u"imgFiguraSelecionada", {0, 0, 139, 108}},
    {u"pctResultadoPesquisaFundo(2)", {593, 106, 49, 51}},
    {u"pctResultadoPesquisaSelecionada(2)", {592, 106, 51, 53}},
    {u"imgPesquisa1", {492, 140, 283, 43}},
    {u"imgPesquisa1Selecionada", {476, 137, 301, 47}},
    {u"imgPesquisa2", {633, 293, 142, 45}},
    {u"imgPesquisa2Selecionada", {619, 292, 157, 47}},
    {u"imgPesquisa3", {633, 444, 141, 45}},
    {u"imgPesquisa3Selecionada", {619, 442, 157, 48}},
    {u"imgConhecaTarvo", {26, 400, 60, 33}},
    {u"imgConhecaTarvoSelecionada", {14, 398, 73, 36}},
    {u"imgAjuda", {27, 456, 52, 31}},
    {u"imgAjudaSelecionada", {14, 455, 67, 33}},
    {u"imgSair", {27, 509, 45, 31}},
    {u"imgSairSelecionada", {15, 507, 59, 34}},
    {u"imgConfiguracoes", {674, 8, 102, 18}},
    {u"imgConfiguracoesSelecionada", {674, 9, 100, 16}},
    {u"pctVerificarAtualizacoes", {508, 8, 141, 18}},
    {u"pctVerificarAtualizacoesSelecionada", {508, 8, 141, 18}},
    {u"lblEmissao", {142, 10, 107, 17}},
    {u"imgMinimizar", {784, 2, 13, 10}},
    {u"pctBarraAtualizacao", {0, 569, 800, 31}},
};

// What was typed or chosen at one place, by the name that the place has for the user.
struct Entrada {
    QString nome;
    QString valor;
};

Entrada Digitado(const forms::TextBox& caixa) {
    return {caixa.accessibleName(), caixa.text()};
}

// The last line of these lists stands for all.
Entrada Escolhido(const forms::ComboList& lista) {
    const bool todos = lista.ListIndex() == lista.ListCount() - 1;
    return {lista.accessibleName(), todos ? QString() : lista.Text()};
}

// What shortens the list of a search, for whoever copies or saves it; empty when nothing does.
QString Filtro(std::initializer_list<Entrada> entradas) {
    QStringList partes;
    for (const Entrada& cada : entradas) {
        if (!cada.valor.trimmed().isEmpty()) {
            partes += cada.nome + u": "_s + cada.valor.trimmed();
        }
    }
    return partes.isEmpty() ? QString() : u"Só as linhas com "_s + partes.join(u"; "_s);
}

}  // namespace

void frmPesquisa::PosicionarControles() {
    Posicionar(Lugares);
}

// Later children lie over earlier ones: the panels cover the buttons that open them.
void frmPesquisa::CriarFundo() {
    const Botao botoes[] = {
        {u"PESQUISA1"_s, u"imgPesquisa1"_s, u"Pesquisar peças, componentes e jogos de reparo"_s},
        {u"PESQUISA2"_s, u"imgPesquisa2"_s, u"Pesquisar por veículo"_s},
        {u"PESQUISA3"_s, u"imgPesquisa3"_s, u"Pesquisar por figura"_s},
        {u"CONHECATARVO"_s, u"imgConhecaTarvo"_s, u"Conheça a Tarvo"_s},
        {u"AJUDA"_s, u"imgAjuda"_s, u"Ajuda"_s},
        {u"SAIR"_s, u"imgSair"_s, u"Sair do catálogo"_s},
        {u"CONFIGURACOES"_s, u"imgConfiguracoes"_s, u"Configurações"_s},
        {u"VERIFICAR"_s, u"pctVerificarAtualizacoes"_s, u"Verificar atualizações"_s},
    };
    CriarBotoes(botoes);
    lblEmissao = new forms::Label(u"lblEmissao"_s, Picture());
    QPalette sobrePetroleo = lblEmissao->palette();
    sobrePetroleo.setColor(QPalette::WindowText, Paleta::Atual().gelo);
    lblEmissao->setPalette(sobrePetroleo);
    pctBarraAtualizacao = new forms::Panel(u"pctBarraAtualizacao"_s, QString(), Picture());
}

void frmPesquisa::CriarPainelPecas() {
    auto* painel = new forms::Panel(u"pctTelaPesquisa(0)"_s, u"pesquisa-pecas"_s, Picture());
    pctTelaPesquisa[0] = painel;
    txtNumeroTarvo = new forms::TextBox(u"txtNumeroTarvo"_s, u"Nº Tarvo"_s, painel);
    txtDescricao = new forms::TextBox(u"txtDescricao"_s, u"Descrição"_s, painel);
    txtNumeroClienteConcorrente = new forms::TextBox(u"txtNumeroClienteConcorrente"_s,
                                                     u"Nº do cliente ou concorrente"_s, painel);
    cboNumeroClienteConcorrente =
        new forms::ComboList(u"cboNumeroClienteConcorrente"_s, u"Cliente ou concorrente"_s, painel);
    cboTipo = new forms::ComboList(u"cboTipo"_s, u"Tipo"_s, painel);

    dtcPesquisa1 = new forms::DataSource(u"dtcPesquisa1"_s, this);
    dtcPesquisa1->SetAccents(dao::Accents::AsTyped);
    grdPesquisa1 = new forms::BoundGrid(u"grdPesquisa1"_s, u"Resultado da pesquisa"_s, painel);
    grdPesquisa1->AddColumn(u"NumeroTarvo"_s, u"Nº Tarvo"_s, 123);
    grdPesquisa1->AddColumn(u"Descricao"_s, u"Descrição"_s, 273);
    grdPesquisa1->AddColumn(u"NumeroClienteConcorrente"_s, u"Nº do cliente"_s, 162);
    grdPesquisa1->AddColumn(u"Tipo"_s, u"Tipo"_s, 129);
    grdPesquisa1->SetDataSource(dtcPesquisa1);
    grdPesquisa1->Export().SetNote([this] {
        return Filtro({Digitado(*txtNumeroTarvo), Digitado(*txtDescricao),
                       Digitado(*txtNumeroClienteConcorrente), Escolhido(*cboTipo)});
    });
}

void frmPesquisa::CriarPainelVeiculos() {
    auto* painel = new forms::Panel(u"pctTelaPesquisa(1)"_s, u"pesquisa-veiculos"_s, Picture());
    pctTelaPesquisa[1] = painel;
    txtVeiculo = new forms::TextBox(u"txtVeiculo"_s, u"Veículo"_s, painel);
    cboFabricante = new forms::ComboList(u"cboFabricante"_s, u"Fabricante"_s, painel);

    dtcPesquisa2 = new forms::DataSource(u"dtcPesquisa2"_s, this);
    dtcPesquisa2->SetAccents(dao::Accents::AsTyped);
    grdPesquisa2 = new forms::BoundGrid(u"grdPesquisa2"_s, u"Veículos encontrados"_s, painel);
    grdPesquisa2->AddColumn(u"Veiculo"_s, u"Veículo"_s, 437);
    grdPesquisa2->AddColumn(u"Fabricante"_s, u"Fabricante"_s, 250);
    grdPesquisa2->SetDataSource(dtcPesquisa2);
    grdPesquisa2->Export().SetNote([this] {
        return Filtro({Digitado(*txtVeiculo), Escolhido(*cboFabricante)});
    });
}

void frmPesquisa::CriarPainelFiguras() {
    auto* painel = new forms::Panel(u"pctTelaPesquisa(2)"_s, u"pesquisa-figuras"_s, Picture());
    pctTelaPesquisa[2] = painel;
    galeria_ = new Galeria(painel);
}
