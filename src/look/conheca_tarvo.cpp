#include "look/conheca_tarvo.h"

#include "platform/erro.h"
#include "platform/forms/application.h"
#include "platform/forms/picturefile.h"
#include "session/global.h"

using namespace Qt::StringLiterals;

namespace {

constexpr QSize Tamanho(800, 573);

// The buttons on the first page, and where the drawing holds their pictures.
const Lugar Lugares[] = {
    {u"imgAvancar", {81, 518, 41, 39}}, {u"imgAvancarSelecionada", {81, 517, 43, 39}},
    {u"imgVoltar", {332, 427, 30, 37}}, {u"imgVoltarSelecionada", {325, 426, 38, 38}},
    {u"imgFechar", {15, 518, 34, 35}},  {u"imgFecharSelecionada", {11, 517, 43, 36}},
};

constexpr QPoint NaoHa(-1, -1);

struct LugaresDaPagina {
    QPoint voltar;
    QPoint avancar;
    QPoint fechar;
};

// The pictures differ, so the buttons have no fixed place.
constexpr LugaresDaPagina Paginas[] = {
    {NaoHa, {81, 518}, {15, 518}},       {{667, 525}, {714, 525}, {428, 525}},
    {{225, 529}, {272, 529}, {15, 529}}, {{465, 516}, {512, 516}, {15, 516}},
    {{522, 524}, NaoHa, {15, 524}},
};
constexpr int TotalPaginas = int(std::size(Paginas));

// From a button's corner to that of its lit picture.
constexpr QPoint AcesaDeVoltar(-7, -1);
constexpr QPoint AcesaDeAvancar(0, -1);
constexpr QPoint AcesaDeFechar(-4, -1);

}  // namespace

frmConhecaTarvo::frmConhecaTarvo() : TelaDeDialogo(Nome, Tamanho, QString()) {
    SetSurround(Qt::white);
    CriarControles();
    LigarEventos();
}

void frmConhecaTarvo::CriarControles() {
    pctPagina = new forms::Picture(u"pctPagina"_s, QString(), Picture());
    pctPagina->resize(Tamanho);
    const auto desenho = forms::Artwork::Load(u"conheca"_s);
    imgAvancar = CriarBotao({u"AVANCAR"_s, u"imgAvancar"_s, u"Avançar"_s}, Picture(), desenho);
    imgVoltar = CriarBotao({u"VOLTAR"_s, u"imgVoltar"_s, u"Voltar"_s}, Picture(), desenho);
    imgFechar = CriarBotao({u"FECHAR"_s, u"imgFechar"_s, u"Fechar"_s}, Picture(), desenho);
}

void frmConhecaTarvo::LigarEventos() {
    ApagarSobre<Form>(this);
    ApagarSobre(pctPagina);
    AoClicar(u"imgAvancar"_s, [this] { Folhear(+1); });
    AoClicar(u"imgVoltar"_s, [this] { Folhear(-1); });
    AoClicar(u"imgFechar"_s, [this] { Cancelar(); });
    connect(this, &Form::KeyDown, this, [this](int tecla) {
        switch (tecla) {
            case Qt::Key_Right:
            case Qt::Key_PageDown:
                Folhear(+1);
                break;
            case Qt::Key_Left:
            case Qt::Key_PageUp:
                Folhear(-1);
                break;
            default:
                break;
        }
    });
}

void frmConhecaTarvo::PosicionarControles() {
    Posicionar(Lugares);
    const auto desenho = forms::Artwork::Load(u"conheca"_s);
    for (forms::ClickZone* zona : {imgAvancar, imgVoltar, imgFechar}) {
        zona->SetDrawing(desenho, zona->geometry());
        AcesaDe(*zona).FixSource();
        AcesaDe(*zona).raise();
    }
}

void frmConhecaTarvo::Load() {
    PosicionarControles();
    mPagina = 1;
    MostrarPagina();
}

void frmConhecaTarvo::MostrarPagina() {
    const LugaresDaPagina& pagina = Paginas[mPagina - 1];
    struct {
        forms::ClickZone& zona;
        QPoint lugar;
        QPoint acesa;
    } const botoes[] = {
        {*imgVoltar, pagina.voltar, AcesaDeVoltar},
        {*imgAvancar, pagina.avancar, AcesaDeAvancar},
        {*imgFechar, pagina.fechar, AcesaDeFechar},
    };
    for (const auto& botao : botoes) {
        AcesaDe(botao.zona).hide();
        botao.zona.hide();
    }
    CarregarPagina();
    for (const auto& botao : botoes) {
        if (botao.lugar != NaoHa) {
            botao.zona.move(botao.lugar);
            botao.zona.show();
        }
        AcesaDe(botao.zona).move(botao.zona.pos() + botao.acesa);
    }
}

// A page whose picture is missing is white: the buttons stand all the same, and lead on.
void frmConhecaTarvo::CarregarPagina() {
    pctPagina->setAccessibleName(u"Página %1 de %2"_s.arg(mPagina).arg(TotalPaginas));
    const QString arquivo = u"CK%1.bmp"_s.arg(mPagina, 2, 10, QChar(u'0'));
    try {
        pctPagina->SetPixmap(
            forms::LoadPicture(gCaminho + u"Figuras\\"_s + arquivo, Tamanho, devicePixelRatioF()));
    } catch (const Erro&) {
        pctPagina->SetPixmap({});
    }
}

void frmConhecaTarvo::Folhear(int passo) {
    const forms::ClickZone* botao = passo > 0 ? imgAvancar : imgVoltar;
    if (botao->isHidden()) {
        return;
    }
    mPagina = quint8(mPagina + passo);
    MostrarPagina();
}

void frmConhecaTarvo::Cancelar() {
    const forms::Busy ocupado;
    Unload();
}
