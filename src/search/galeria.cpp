#include "search/galeria.h"

#include "look/paleta.h"
#include "platform/convert.h"
#include "platform/erro.h"
#include "platform/forms/font.h"
#include "platform/forms/picturefile.h"
#include "session/global.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int UltimaMiniatura = 3;
// The frame stands this many pixels left of its thumbnail.
constexpr int RecuoMoldura = 10;

QString Elemento(const QString& nome, int indice) {
    return nome + u'(' + QString::number(indice) + u')';
}

}  // namespace

Galeria::Galeria(forms::Panel* painel)
    : QObject(painel),
      pctPesquisaFiguras(new forms::Panel(u"pctPesquisaFiguras"_s, QString(), painel)),
      sclPesquisaFiguras(new forms::ScrollBar(u"sclPesquisaFiguras"_s, Qt::Horizontal, painel)),
      imgFiguraSelecionada(
          new forms::Panel(u"imgFiguraSelecionada"_s, u"moldura"_s, pctPesquisaFiguras)) {
    pctPesquisaFiguras->setAccessibleName(u"Figuras do catálogo"_s);
    pctPesquisaFiguras->setFocusPolicy(Qt::StrongFocus);
    sclPesquisaFiguras->setAccessibleName(u"Rolar as figuras"_s);
    sclPesquisaFiguras->SetMin(1);
    sclPesquisaFiguras->SetLargeChange(3);
    imgFiguraSelecionada->setAttribute(Qt::WA_TransparentForMouseEvents);
    imgFiguraSelecionada->hide();
    for (int i = 0; i <= UltimaMiniatura; ++i) {
        CriarMiniatura(i);
    }
    connect(sclPesquisaFiguras, &forms::ScrollBar::Change, this, &Galeria::AoRolar);
    connect(pctPesquisaFiguras, &forms::Panel::KeyDown, this, &Galeria::AoTeclar);
}

void Galeria::CriarMiniatura(int indice) {
    auto* miniatura = new forms::Picture(Elemento(u"imgFigura"_s, indice),
                                         u"Figura %1"_s.arg(indice + 1), pctPesquisaFiguras);
    auto* legenda = new forms::Label(Elemento(u"lblDescricaoFigura"_s, indice), pctPesquisaFiguras);
    legenda->SetAlignment(Qt::AlignHCenter | Qt::AlignTop);
    legenda->SetWordWrap(true);
    // Two lines of it end above the frame's lower edge.
    legenda->setFont(forms::Font(Paleta::Atual().corpoRotulo - 1));
    const auto escolher = [this, indice] { SelecionarFigura(mPrimeiraFigura + indice); };
    for (forms::Zone* zona :
         {static_cast<forms::Zone*>(miniatura), static_cast<forms::Zone*>(legenda)}) {
        connect(zona, &forms::Zone::Click, this, escolher);
        connect(zona, &forms::Zone::DblClick, this, &Galeria::DblClick);
        connect(zona, &forms::Zone::MouseMove, this, &Galeria::MouseMove);
    }
    imgFigura[size_t(indice)] = miniatura;
    lblDescricaoFigura[size_t(indice)] = legenda;
}

void Galeria::CarregarFiguras() {
    mFiguras.clear();
    const auto figuras = gDB->OpenRecordset(
        u"SELECT "
        "CodigoFotoPecaPesquisa,"
        "DescricaoFotoPecaPesquisa,"
        "ArquivoFotoPecaPesquisa "
        "FROM "
        "FOTOPECAPESQUISA "
        "ORDER BY "
        "DescricaoFotoPecaPesquisa"_s,
        dao::dbOpenForwardOnly);
    for (; !figuras->Eof(); figuras->MoveNext()) {
        mFiguras.append({convert::ToTextOrEmpty(figuras->Fields(0).Value()),
                         convert::ToTextOrEmpty(figuras->Fields(1).Value()),
                         convert::ToTextOrEmpty(figuras->Fields(2).Value())});
    }
    mPrimeiraFigura = 1;
    mFiguraSelecionada = 1;
    mTotalFiguras = convert::Narrow<qint32>(mFiguras.size());
    // With three pictures or fewer there is nowhere to scroll to.
    sclPesquisaFiguras->SetMax(
        qMax<qint16>(1, convert::Narrow<qint16>(mTotalFiguras - UltimaMiniatura)));
}

const Galeria::Figura& Galeria::Selecionada() const {
    return Linha(mFiguraSelecionada);
}

const Galeria::Figura& Galeria::Linha(qint32 linha) const {
    if (linha < 1 || linha > mTotalFiguras) {
        throw Erro(Erro::SubscriptOutOfRange);
    }
    return mFiguras.at(linha - 1);
}

// A failure costs its own thumbnail only: the caption of a row that is there stays correct, that of
// a row that is not keeps its old text, and the strip is finished.
void Galeria::ExibirFiguras(qint32 primeira) {
    for (int i = 0; i <= UltimaMiniatura; ++i) {
        forms::Picture* miniatura = imgFigura[size_t(i)];
        try {
            const Figura& figura = Linha(primeira + i);
            lblDescricaoFigura[size_t(i)]->SetText(figura.descricao);
            miniatura->SetPixmap(forms::LoadPicture(gCaminho + u"FotoPeca\\"_s + figura.arquivo,
                                                    miniatura->size(),
                                                    miniatura->devicePixelRatioF()));
        } catch (const Erro&) {
            miniatura->SetPixmap({});
        }
    }
    mPrimeiraFigura = primeira;
}

void Galeria::SelecionarFigura(qint32 linha) {
    imgFiguraSelecionada->hide();
    const qint32 posicao = linha - mPrimeiraFigura;
    if (posicao >= 0 && posicao <= UltimaMiniatura) {
        imgFiguraSelecionada->move(imgFigura[size_t(posicao)]->x() - RecuoMoldura,
                                   imgFiguraSelecionada->y());
        imgFiguraSelecionada->show();
        imgFiguraSelecionada->Tag = QString::number(posicao);
    } else {
        imgFiguraSelecionada->Tag.clear();
    }
    mFiguraSelecionada = linha;
}

void Galeria::AoRolar() {
    ExibirFiguras(sclPesquisaFiguras->Value());
    SelecionarFigura(mFiguraSelecionada);
}

// Steps the selection; at the strip's end the bar moves on and its change places the frame.
void Galeria::AoTeclar(int tecla) {
    const bool esquerda = tecla == Qt::Key_Left;
    if (!esquerda && tecla != Qt::Key_Right) {
        return;
    }
    if (imgFiguraSelecionada->Tag.isEmpty()) {
        // Off the strip, the selection comes back at the end from which the key moves inwards.
        SelecionarFigura(esquerda ? mPrimeiraFigura + UltimaMiniatura : mPrimeiraFigura);
        return;
    }
    const int posicao = imgFiguraSelecionada->Tag.toInt();
    const int passo = esquerda ? -1 : 1;
    if (posicao != (esquerda ? 0 : UltimaMiniatura)) {
        SelecionarFigura(mFiguraSelecionada + passo);
        return;
    }
    if (mFiguraSelecionada == (esquerda ? 1 : mTotalFiguras)) {
        return;
    }
    mFiguraSelecionada += passo;
    sclPesquisaFiguras->SetValue(sclPesquisaFiguras->Value() + passo);
}
