// The picture gallery: a strip of four thumbnails over a table held in memory.

#include "platform/convert.h"
#include "platform/erro.h"
#include "platform/forms/picturefile.h"
#include "search/pesquisa.h"
#include "session/global.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int UltimaMiniatura = 3;
// The frame stands this many pixels left of its thumbnail.
constexpr int RecuoMoldura = 10;

}  // namespace

void frmPesquisa::CarregarFiguras() {
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

const frmPesquisa::Figura& frmPesquisa::LinhaDaGaleria(qint32 linha) const {
    if (linha < 1 || linha > mTotalFiguras) {
        throw Erro(Erro::SubscriptOutOfRange);
    }
    return mFiguras.at(linha - 1);
}

// A failure costs its own thumbnail only: the caption of a row that is there stays correct, that of
// a row that is not keeps its old text, and the strip is finished.
void frmPesquisa::ExibirFiguras(qint32 primeira) {
    for (int i = 0; i <= UltimaMiniatura; ++i) {
        forms::Picture* miniatura = imgFigura[size_t(i)];
        try {
            const Figura& figura = LinhaDaGaleria(primeira + i);
            lblDescricaoFigura[size_t(i)]->SetText(figura.descricao);
            miniatura->SetPixmap(forms::LoadPicture(gCaminho + u"FotoPeca\\"_s + figura.arquivo,
                                                    miniatura->size(), devicePixelRatioF()));
        } catch (const Erro&) {
            miniatura->SetPixmap({});
        }
    }
    mPrimeiraFigura = primeira;
}

void frmPesquisa::SelecionarFigura(qint32 linha) {
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

void frmPesquisa::AoRolarFiguras() {
    ExibirFiguras(sclPesquisaFiguras->Value());
    SelecionarFigura(mFiguraSelecionada);
}

// Steps the selection; at the strip's end the bar moves on and its change places the frame.
void frmPesquisa::AoTeclarNasFiguras(int tecla) {
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

void frmPesquisa::LigarGaleria() {
    connect(sclPesquisaFiguras, &forms::ScrollBar::Change, this, &frmPesquisa::AoRolarFiguras);
    connect(pctPesquisaFiguras, &forms::Panel::KeyDown, this, &frmPesquisa::AoTeclarNasFiguras);
    for (int i = 0; i <= UltimaMiniatura; ++i) {
        const auto escolher = [this, i] {
            pctPesquisaFiguras->setFocus();
            SelecionarFigura(mPrimeiraFigura + i);
        };
        const auto abrir = [this] { AbrirResultado(2); };
        const auto apagar = [this] { MostrarSelecionada(u"FORM"_s); };
        forms::Picture* miniatura = imgFigura[size_t(i)];
        connect(miniatura, &forms::Picture::Click, this, escolher);
        connect(miniatura, &forms::Picture::DblClick, this, abrir);
        connect(miniatura, &forms::Picture::MouseMove, this, apagar);
        forms::Label* legenda = lblDescricaoFigura[size_t(i)];
        connect(legenda, &forms::Label::Click, this, escolher);
        connect(legenda, &forms::Label::DblClick, this, abrir);
        connect(legenda, &forms::Label::MouseMove, this, apagar);
    }
}
