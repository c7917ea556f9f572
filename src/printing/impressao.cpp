#include "printing/impressao.h"

#include "look/paleta.h"
#include "platform/convert.h"
#include "platform/forms/application.h"
#include "platform/forms/font.h"
#include "platform/forms/msgbox.h"
#include "session/banco.h"
#include "session/erros.h"
#include "session/global.h"

#include <QScopedValueRollback>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const Lugar Lugares[] = {
    {u"imgFiguraDetalhada", {53, 72, 161, 21}},
    {u"imgFiguraDetalhadaSelecionada", {52, 71, 20, 20}},
    {u"imgListaComponentes", {53, 101, 199, 21}},
    {u"imgListaComponentesSelecionada", {52, 101, 20, 20}},
    {u"imgOk", {274, 144, 35, 27}},
    {u"imgOkSelecionada", {262, 143, 49, 29}},
    {u"imgCancelar", {340, 144, 76, 27}},
    {u"imgCancelarSelecionada", {329, 143, 87, 29}},
    {u"lblFonte", {311, 67, 80, 16}},
    {u"imgFigura", {313, 91, 49, 16}},
};

// Page units from the top of the printable area: what a page needs at least. A list's last row
// begins at 2400 or a little above, with 20 before it and a line of 10 points; a figure is as high
// as its frame on the screen, below a head of four lines.
constexpr int AlturaDaLista = 2480;
constexpr int AlturaDaFigura = 2090;

// The one character behind a marker of the selection string.
QString EstadoDe(const QString& marcador) {
    const qsizetype inicio = ParametroFormulario.indexOf(marcador);
    return inicio < 0 ? u"0"_s : ParametroFormulario.mid(inicio + marcador.size(), 1);
}

}  // namespace

frmImpressao::frmImpressao() : TelaDeDialogo(Nome, QSize(435, 195), u"impressao"_s) {
    // The font of a figure's numbers on the screen: where they stand on paper follows from their
    // width in it.
    setFont(forms::Font(Paleta::Atual().corpoRotulo));
    CriarControles();
    LigarEventos();
}

bool frmImpressao::Imprimindo() {
    const auto* dialogo = static_cast<const frmImpressao*>(Find(Nome));
    return dialogo && dialogo->imprimindo_;
}

void frmImpressao::CriarControles() {
    opcoes_ = {
        CriarOpcao(u"FD:"_s, u"imgFiguraDetalhada"_s, u"Figura detalhada"_s, PossuiFiguraDetalhada,
                   u"Essa Peça não possui Figura Detalhada."_s),
        CriarOpcao(u"LC:"_s, u"imgListaComponentes"_s, u"Lista de componentes"_s,
                   PossuiListaComponentes, u"Essa Peça não possui Lista de Componentes."_s),
    };
    CriarBotao({u"OK"_s, u"imgOk"_s, u"OK"_s}, Picture(), Background());
    CriarBotao({u"CANCELAR"_s, u"imgCancelar"_s, u"Cancelar"_s}, Picture(), Background());

    // Never seen: its font is the one of the pages.
    lblFonte = new forms::Label(u"lblFonte"_s, Picture());
    lblFonte->SetText(u"Fonte"_s);
    lblFonte->hide();
    imgFigura =
        new forms::Picture(u"imgFigura"_s, QString(), Picture(), forms::Picture::Mode::Natural);
    imgFigura->hide();
}

frmImpressao::Opcao frmImpressao::CriarOpcao(const QString& marcador, const QString& zona,
                                             const QString& descricao, bool (*possui)(qint32),
                                             const QString& recusa) {
    auto* marca = new forms::LitPicture(zona + u"Selecionada"_s, Background(), Picture());
    auto* caixa = new forms::ClickZone(zona, descricao, Picture());
    caixa->setFocusPolicy(Qt::TabFocus);
    return {marcador, caixa, marca, possui, recusa};
}

void frmImpressao::PosicionarControles() {
    Posicionar(Lugares);
}

void frmImpressao::LigarEventos() {
    ApagarSobre<Form>(this);
    for (const Opcao& opcao : opcoes_) {
        ApagarSobre(opcao.zona);
        connect(opcao.zona, &forms::ClickZone::MouseDown, this,
                [this, &opcao] { AlternarOpcao(opcao); });
    }
    AoClicar(u"imgOk"_s, [this] { Imprimir(); });
    AoClicar(u"imgCancelar"_s, [this] { Cancelar(); });
}

void frmImpressao::Load() {
    PosicionarControles();
    for (const Opcao& opcao : opcoes_) {
        Marcar(opcao, EstadoDe(opcao.marcador));
    }
    ParametroFormulario.clear();
}

bool frmImpressao::Marcada(const Opcao& opcao) {
    return convert::Val(opcao.zona->Tag) != 0;
}

void frmImpressao::Marcar(const Opcao& opcao, const QString& estado) {
    opcao.zona->Tag = estado;
    opcao.zona->SetTicked(Marcada(opcao));
    opcao.marca->setVisible(Marcada(opcao));
}

void frmImpressao::AlternarOpcao(const Opcao& opcao) {
    if (imprimindo_) {
        return;
    }
    if (opcao.zona->Tag != u"0"_s) {
        Marcar(opcao, u"0"_s);
    } else if (opcao.possui(gCodigoPeca)) {
        Marcar(opcao, u"1"_s);
    } else {
        forms::MsgBox(opcao.recusa, forms::vbInformation, TituloCatalogo);
    }
}

void frmImpressao::CloseRequested() {
    if (!imprimindo_) {
        Unload();
    }
}

void frmImpressao::Cancelar() {
    if (imprimindo_) {
        return;
    }
    const forms::Busy ocupado;
    Unload();
}

void frmImpressao::Imprimir() {
    if (imprimindo_) {
        return;
    }
    const QScopedValueRollback guarda(imprimindo_, true);
    try {
        const bool figura = Marcada(opcoes_[0]);
        const bool lista = Marcada(opcoes_[1]);
        if (!figura && !lista) {
            forms::MsgBox(u"Nenhuma opção de impressão selecionada."_s, forms::vbCritical,
                          TituloCatalogo);
            return;
        }
        const forms::Busy ocupado;
        cdgImpressoras.SetFlags(printer::cdlPDNoSelection | printer::cdlPDNoPageNums |
                                printer::cdlPDUseDevModeCopies | printer::cdlPDHidePrintToFile);
        impressora_ = cdgImpressoras.ShowPrinter();
        PrepararImpressora();
        if (!AceitarPapel(figura, lista)) {
            impressora_.reset();
            return;
        }
        if (figura) {
            ImprimirFigura();
        }
        if (lista) {
            ImprimirListaComponentes();
        }
        impressora_->EndDoc();
        Unload();
    } catch (const Erro& erro) {
        if (erro.Number() != Erro::Cancelled) {
            MostrarErro(erro.Number(), erro.Description());
        }
    }
    impressora_.reset();
}

bool frmImpressao::AceitarPapel(bool figura, bool lista) const {
    const int altura = std::max(figura ? AlturaDaFigura : 0, lista ? AlturaDaLista : 0);
    if (impressora_->PageHeight() >= altura * mEscala) {
        return true;
    }
    return forms::MsgBox(
               u"O papel escolhido é pequeno para estas páginas: o que passar da folha não "
               "será impresso.\nDeseja imprimir assim mesmo?"_s,
               forms::vbYesNo | forms::vbQuestion | forms::vbDefaultButton2,
               TituloCatalogo) == forms::vbYes;
}

void frmImpressao::PrepararImpressora() {
    impressora_->SetOrientation(printer::vbPRORLandscape);
    impressora_->SetScaleMode(printer::vbPixels);
    mEscala = 4.0F / impressora_->TwipsPerPixelX();  // a page unit is 4 twips
    mCabecalho.clear();
    try {
        impressora_->SetFontName(lblFonte->font().family());
    } catch (const Erro&) {
        // The pages then have the printer's own font.
    }
}
