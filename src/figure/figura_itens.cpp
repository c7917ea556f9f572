// The numbers of the figure: those that another screen has chosen, those under the mouse.

#include "figure/figura_detalhada.h"
#include "parts/item.h"
#include "platform/convert.h"
#include "platform/forms/application.h"
#include "platform/forms/msgbox.h"
#include "platform/forms/tip.h"
#include "session/global.h"
#include "session/passagens.h"

using namespace Qt::StringLiterals;

namespace {

const QString NaoSeAplica = u"NA"_s;

QString EntradaDoJogo(const QString& codigo) {
    return u'.' + codigo + u',';
}

// The kit codes of a number's tag, ".12,.15,". Places in it are counted from 1 and held in 8 bits.
QStringList JogosDaEtiqueta(const QString& etiqueta) {
    QStringList jogos;
    quint8 posicao = 2;
    for (;;) {
        const auto virgula = convert::Narrow<quint8>(etiqueta.indexOf(u',', posicao - 1) + 1);
        if (virgula == 0) {
            return jogos;
        }
        jogos += etiqueta.mid(posicao - 1, virgula - posicao);
        posicao = convert::Narrow<quint8>(virgula + 2);
    }
}

QString ItensDoComponente(const QString& codigo) {
    const auto linhas = gDB->OpenRecordset(
        u"SELECT "
        "ItemComponente "
        "FROM "
        "PECA_COMPONENTE "
        "WHERE "
        "CodigoPeca = "_s +
            QString::number(gCodigoPeca) +
            u" "
            "AND "
            "CodigoComponente = "_s +
            codigo,
        dao::dbOpenForwardOnly);
    QString itens;
    for (; !linhas->Eof(); linhas->MoveNext()) {
        itens += convert::ToText(linhas->Fields(0).Value()) + u',';
    }
    return itens;
}

}  // namespace

void frmFiguraDetalhada::Activate() {
    if (mIgnorarAtivacao) {
        mIgnorarAtivacao = false;
        return;
    }
    // What the mouse lit before it left for the list would stand under the blinking.
    LimparItemAtual();
    QString tipo;
    QString itens;
    QString jogoReparo;
    if (const auto jogo = LerCampoDeSelecao(ParametroFormulario, u'J')) {
        jogoReparo = *jogo;
        tipo = u"Jogo de Reparo"_s;
    }
    if (const auto item = LerCampoDeSelecao(ParametroFormulario, u'I')) {
        itens = *item + u',';
        tipo = u"Item"_s;
    }
    if (const auto componente = LerCampoDeSelecao(ParametroFormulario, u'C')) {
        itens += ItensDoComponente(*componente);
        tipo = u"Componente"_s;
    }
    ParametroFormulario.clear();
    SelecionarItens(itens, jogoReparo, tipo);
}

// Black for a number that is not in the selection: none blinks in black.
Cor frmFiguraDetalhada::CorNaSelecao(const ItemFigura& item, const QString& Itens,
                                     const QString& JogoReparo) {
    // Plain text search, on purpose: "1," is found in "11," as well. Catalogues are drawn with it
    // in mind, and both numbers blink.
    if (Itens.contains(item.Caption() + u',')) {
        if (MostrarComponente(item.Caption())) {
            PintarRotulos(Cor::VermelhoClaro);
        }
        return Cor::VermelhoClaro;
    }
    if (!JogoReparo.isEmpty() && item.Tag.contains(EntradaDoJogo(JogoReparo))) {
        return Cor::AzulClaro;
    }
    return Cor::Preto;
}

// The hidden template takes part: an item that it answers to counts as marked.
void frmFiguraDetalhada::SelecionarItens(const QString& Itens, const QString& JogoReparo,
                                         const QString& Tipo) {
    mItensPiscando.clear();
    for (ItemFigura* item : lblItem) {
        const Cor cor = CorNaSelecao(*item, Itens, JogoReparo);
        if (cor != Cor::Preto) {
            mItensPiscando.push_back({item, cor});
            item->SetNegrito(true);
        }
    }
    if (!mItensPiscando.empty()) {
        Timer1.start();
    } else if (!Tipo.isEmpty()) {
        forms::MsgBox(Tipo + u" não representado graficamente."_s, forms::vbInformation,
                      TituloCatalogo);
    }
}

void frmFiguraDetalhada::Piscar() {
    for (const ItemPiscando& piscando : mItensPiscando) {
        const bool aceso = piscando.item->ForeColor() != Cor::Branco;
        piscando.item->SetForeColor(aceso ? Cor::Branco : piscando.cor);
    }
    if (mItensPiscando.empty()) {
        Timer1.stop();
    }
}

// Component, number and kits of an item in the labels. False when the part has no such item; the
// labels stay as they were.
bool frmFiguraDetalhada::MostrarComponente(const QString& item) {
    mComponentes->FindFirst(CriterioDoItem(item));
    if (mComponentes->NoMatch()) {
        return false;
    }
    const auto campo = [this](int coluna) { return mComponentes->Fields(coluna).Value(); };
    lblComponente->SetText(convert::ToTextOrEmpty(campo(1)));
    lblNumeroTarvo->SetText(convert::ToTextOrEmpty(campo(2)));
    QStringList jogos;
    for (; !mComponentes->Eof() && convert::ToText(campo(0)) == item; mComponentes->MoveNext()) {
        if (!convert::IsNull(campo(3))) {
            jogos += convert::ToText(campo(3));
        }
    }
    lblObservacao->SetText(jogos.join(u", "_s));
    return true;
}

void frmFiguraDetalhada::AoMoverSobreItem(qint16 Index) {
    if (Index == mItemAtual) {
        return;
    }
    const bool piscava = Timer1.isActive();
    if (piscava) {
        Timer1.stop();
        const forms::StillLoaded aberta(this);
        forms::DoEventsButInput();
        if (!aberta) {
            return;
        }
    }
    if (piscava || mItemAtual != SemItem) {
        ApagarItens();
        PintarRotulos(Cor::Preto);
    }
    mItemAtual = Index;
    ItemFigura& atual = *lblItem[size_t(Index)];
    MoverMarcador(atual);
    atual.SetNegrito(true);
    atual.SetForeColor(Cor::Branco);
    if (MostrarComponente(atual.Caption())) {
        lblComponente->Tag.clear();
    } else {
        lblComponente->SetText(u"NÃO APLICAVEL"_s);
        lblNumeroTarvo->SetText(QString());
        lblObservacao->SetText(QString());
        lblComponente->Tag = NaoSeAplica;
    }
    // The labels lie where the mouse cannot go without leaving the number.
    atual.setToolTip(forms::TipOf(RotulosCortados()));
    AcenderParentes(atual);
}

QString frmFiguraDetalhada::RotulosCortados() const {
    QStringList cortados;
    for (const forms::Label* rotulo : {lblComponente, lblNumeroTarvo, lblObservacao}) {
        if (rotulo->IsCut()) {
            cortados += rotulo->Text();
        }
    }
    return cortados.join(u'\n');
}

void frmFiguraDetalhada::AcenderParentes(const ItemFigura& atual) {
    const QStringList jogos = JogosDaEtiqueta(atual.Tag);
    for (ItemFigura* item : lblItem) {
        if (item == &atual) {
            continue;
        }
        if (item->Caption() == atual.Caption()) {
            item->SetNegrito(true);
            item->SetForeColor(Cor::VermelhoClaro);
        } else if (std::any_of(jogos.begin(), jogos.end(), [item](const QString& jogo) {
                       return item->Tag.contains(EntradaDoJogo(jogo));
                   })) {
            item->SetNegrito(true);
            item->SetForeColor(Cor::AzulClaro);
        }
    }
}

// Centred on the number, and a pixel and a half to the right for each blank around it: that is
// where the blanks in front of a stored item push the digits. Under a number too long for the disc
// it is drawn out.
void frmFiguraDetalhada::MoverMarcador(const ItemFigura& item) {
    constexpr double PorBranco = 1.5;
    constexpr double CabeNoDisco = 20;  // between the edges, at the height of the digits' corners
    constexpr double ForaDoTexto = 6;
    MarcadorItem& marcador = *shpSelecaoItem[1];
    const auto brancos = double(item.Caption().size() - item.Caption().trimmed().size());
    QRectF lugar(shpSelecaoItem[0]->rect());
    if (const double texto = item.LarguraEmNegrito(); texto > CabeNoDisco) {
        lugar.setWidth(texto + ForaDoTexto);
    }
    lugar.moveCenter(QRectF(item.geometry()).center() + QPointF(brancos * PorBranco, 0));
    marcador.Mover(lugar);
    marcador.show();
}

void frmFiguraDetalhada::LimparItemAtual() {
    if (mItemAtual == SemItem) {
        return;
    }
    lblComponente->SetText(QString());
    lblNumeroTarvo->SetText(QString());
    lblObservacao->SetText(QString());
    shpSelecaoItem[1]->hide();
    ApagarItens();
    mItemAtual = SemItem;
}

void frmFiguraDetalhada::ApagarItens() {
    for (ItemFigura* item : lblItem) {
        item->SetForeColor(Cor::Preto);
        item->SetNegrito(false);
    }
}

void frmFiguraDetalhada::PintarRotulos(Cor cor) {
    for (forms::Label* rotulo : {lblComponente, lblNumeroTarvo, lblObservacao}) {
        rotulo->SetForeColor(CorDe(cor));
    }
}

// The click is that of the number which the mouse has made the current one.
void frmFiguraDetalhada::AoClicarNoItem() {
    if (lblComponente->Tag == NaoSeAplica) {
        forms::MsgBox(u"Esse Item não se aplica a essa Peça."_s, forms::vbInformation,
                      TituloCatalogo);
        return;
    }
    if (mItemAtual != SemItem) {
        AbrirListaNoItem(*this, lblItem[size_t(mItemAtual)]->Caption());
    }
}
