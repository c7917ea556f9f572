#include "figure/figura_detalhada.h"
#include "look/paleta.h"
#include "platform/forms/font.h"
#include "session/passagens.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const Lugar Lugares[] = {
    {u"imgImprimir", {696, 447, 67, 26}},
    {u"imgImprimirSelecionada", {687, 446, 76, 28}},
    {u"lblItem(0)", {35, 183, 33, 13}},
    {u"shpSelecaoItem(0)", {39, 151, 22, 22}},
    {u"lblInf", {65, 96, 559, 19}},
    {u"lblNumeroTarvo", {315, 501, 151, 13}},
    {u"lblComponente", {65, 501, 249, 13}},
    {u"lblObservacao", {467, 501, 297, 13}},
    {u"imgPesquisaFundo", {237, 543, 55, 30}},
    {u"imgResultadoPesquisaFundo", {342, 543, 100, 33}},
    {u"imgListaComponentesFundo", {489, 543, 97, 32}},
    {u"imgPesquisaSelecionada", {228, 542, 65, 31}},
    {u"imgResultadoPesquisaSelecionada", {332, 542, 111, 34}},
    {u"imgListaComponentesSelecionada", {479, 542, 108, 34}},
    {u"imgFigura(0)", {66, 127, 582, 343}},
    {u"imgMinimizar", {784, 2, 13, 10}},
};

}  // namespace

void frmFiguraDetalhada::PosicionarControles() {
    Posicionar(Lugares);
}

void frmFiguraDetalhada::CriarControles() {
    const Botao botoes[] = {
        {u"PESQUISA"_s, u"imgPesquisaFundo"_s, u"Voltar à pesquisa"_s},
        {u"RESULTADOPESQUISA"_s, u"imgResultadoPesquisaFundo"_s, u"Voltar às peças"_s},
        {u"LISTACOMPONENTES"_s, u"imgListaComponentesFundo"_s, u"Lista de componentes"_s},
        {u"IMPRIMIR"_s, u"imgImprimir"_s, u"Imprimir"_s},
    };
    CriarBotoes(botoes);

    const auto rotulo = [this](const QString& nome, int corpo, bool negrito) {
        auto* label = new forms::Label(nome, Picture());
        label->setFont(forms::Font(corpo, negrito));
        return label;
    };
    const Paleta& paleta = Paleta::Atual();
    lblInf = rotulo(u"lblInf"_s, paleta.corpoTexto, true);
    // The largest size whose accents and descenders fit into their height.
    lblComponente = rotulo(u"lblComponente"_s, paleta.corpoRotulo, true);
    lblNumeroTarvo = rotulo(u"lblNumeroTarvo"_s, paleta.corpoRotulo, true);
    lblObservacao = rotulo(u"lblObservacao"_s, paleta.corpoRotulo, false);
    PintarRotulos(Cor::Preto);

    imgFigura[0] = new forms::Picture(u"imgFigura(0)"_s, QString(), Picture());
    imgFigura[0]->hide();
    shpSelecaoItem[0] = new MarcadorItem(u"shpSelecaoItem(0)"_s, Picture());
    lblItem = {new ItemFigura(0, Picture())};
    lblItem[0]->SetCaption(u"0"_s);

    Timer1.setObjectName(u"Timer1"_s);
    Timer1.setInterval(100ms);
}

void frmFiguraDetalhada::LigarEventos() {
    connect(this, &Form::MouseMove, this, [this] {
        MostrarSelecionada(u"FORM"_s);
        LimparItemAtual();
    });
    connect(&Timer1, &QTimer::timeout, this, &frmFiguraDetalhada::Piscar);
    AoClicar(u"imgPesquisaFundo"_s, [this] { VoltarAPesquisa(*this); });
    AoClicar(u"imgResultadoPesquisaFundo"_s, [this] { VoltarAoResultado(*this); });
    AoClicar(u"imgListaComponentesFundo"_s, [this] { AbrirLista(); });
    AoClicar(u"imgImprimir"_s, [this] { Imprimir(); });
}
