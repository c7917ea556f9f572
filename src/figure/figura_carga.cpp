// The picture of the figure and the numbers on it.

#include "figure/figura_detalhada.h"
#include "parts/tabelas.h"
#include "platform/convert.h"
#include "platform/forms/densepicture.h"
#include "platform/forms/picturefile.h"
#include "session/global.h"

#include <QHash>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr qint16 NenhumaLinha = -5;

QVariant Valor(const dao::Recordset& linha, const QString& coluna) {
    return linha.Fields(coluna).Value();
}

int Deslocado(const QVariant& posicao, int origem) {
    return convert::Narrow<int>(convert::ToInt64(posicao) + origem);
}

}  // namespace

void frmFiguraDetalhada::AbrirComponentes() {
    mComponentes = gDB->OpenRecordset(
        u"SELECT "
        "PECA_COMPONENTE.ItemComponente,"
        "COMPONENTE.DescricaoComponente,"
        "COMPONENTE.NumeroTarvoComponente,"
        "(SELECT DescricaoJogoReparo FROM JOGOREPARO "
        "WHERE CodigoJogoReparo = PECA_COMPONENTE_JOGOREPARO.CodigoJogoReparo) "
        "AS DescricaoJogoReparo "
        "FROM "_s +
            tabelas::ItensComJogos +
            u" "
            "WHERE "
            "PECA_COMPONENTE.CodigoPeca = "_s +
            QString::number(gCodigoPeca) +
            u" "
            "ORDER BY "
            "PECA_COMPONENTE.ItemComponente"_s,
        dao::dbOpenSnapshot);
    // Open as long as the screen: what is not read would hold everybody's writes off.
    mComponentes->ReadUpTo(std::numeric_limits<qint64>::max());
}

// The left join gives a row for each number and kit: rows with the same code are one number.
void frmFiguraDetalhada::CarregarFigura() {
    const QString arquivo = CriarItens(*gDB->OpenRecordset(
        u"SELECT "
        "FIGURADETALHADA1.ArquivoFigura,"
        "FIGURADETALHADA1.ItemComponente,"
        "FIGURADETALHADA1.LLeft,"
        "FIGURADETALHADA1.TTop,"
        "FIGURADETALHADA1.CodigoFiguraDetalhada,"
        "PECA_COMPONENTE_JOGOREPARO.CodigoJogoReparo "
        "FROM "
        "FIGURADETALHADA1 "
        "LEFT JOIN PECA_COMPONENTE_JOGOREPARO "
        "ON (FIGURADETALHADA1.CodigoPeca = PECA_COMPONENTE_JOGOREPARO.CodigoPeca) AND "
        "(FIGURADETALHADA1.ItemComponente = PECA_COMPONENTE_JOGOREPARO.ItemComponente) "
        "WHERE "
        "FIGURADETALHADA1.CodigoPeca = "_s +
            QString::number(gCodigoPeca) +
            u" "
            "ORDER BY "
            "FIGURADETALHADA1.CodigoFiguraDetalhada"_s,
        dao::dbOpenForwardOnly));
    CriarPicture(arquivo);
    NomearItens();
}

QString frmFiguraDetalhada::CriarItens(dao::Recordset& linhas) {
    // One picture for the whole part: later rows may name others, and are not asked.
    QString arquivo =
        linhas.Eof() ? QString() : convert::ToTextOrEmpty(Valor(linhas, u"ArquivoFigura"_s));
    mQuantidadeItens = 0;
    qint16 ultimaLinha = NenhumaLinha;
    for (; !linhas.Eof(); linhas.MoveNext()) {
        const qint16 codigo = convert::ToInt16(Valor(linhas, u"CodigoFiguraDetalhada"_s));
        if (codigo != ultimaLinha) {
            ultimaLinha = codigo;
            CriarItem(linhas);
        }
        // The dot in front and the comma behind keep one code from being found within another.
        const QVariant jogo = Valor(linhas, u"CodigoJogoReparo"_s);
        if (!convert::IsNull(jogo)) {
            lblItem.back()->Tag += u'.' + convert::ToText(jogo) + u',';
        }
    }
    return arquivo;
}

void frmFiguraDetalhada::CriarItem(const dao::Recordset& linha) {
    mQuantidadeItens = convert::Narrow<qint16>(mQuantidadeItens + 1);
    auto* item = new ItemFigura(mQuantidadeItens, Picture());
    item->SetCaption(convert::ToText(Valor(linha, u"ItemComponente"_s)));
    const QPoint canto(Deslocado(Valor(linha, u"LLeft"_s), imgFigura[0]->x()),
                       Deslocado(Valor(linha, u"TTop"_s), imgFigura[0]->y()));
    item->setGeometry(QRect(canto, lblItem[0]->size()));
    const auto mover = [this, indice = mQuantidadeItens] { AoMoverSobreItem(indice); };
    connect(item, &ItemFigura::MouseMove, this, mover);
    // A finger, a mouse that rests since the screen before and assistive technology press without
    // having moved.
    connect(item, &ItemFigura::MouseDown, this, mover);
    connect(item, &ItemFigura::Click, this, &frmFiguraDetalhada::AoClicarNoItem);
    item->show();
    lblItem.push_back(item);
}

// Unscaled, because the numbers' places were taken on it so. A figure whose picture cannot be had
// still has its numbers, on the plain ground.
void frmFiguraDetalhada::CriarPicture(const QString& arquivo) {
    shpSelecaoItem[1] = new MarcadorItem(u"shpSelecaoItem(1)"_s, Picture());
    imgFigura[1] = new forms::Picture(u"imgFigura(1)"_s, u"Figura detalhada da peça"_s, Picture(),
                                      forms::Picture::Mode::Natural);
    // The mouse over the drawing is over the background.
    imgFigura[1]->setAttribute(Qt::WA_TransparentForMouseEvents);
    const QPoint canto = imgFigura[0]->pos();
    const QString caminho = gCaminho + u"Figuras\\"_s + arquivo;
    QPixmap figura;
    QPixmap densa;
    try {
        const QRect janela = Picture()->rect();
        figura = forms::LoadNaturalPicture(caminho, QRect(canto, janela.bottomRight()).size());
        if (devicePixelRatioF() > 1) {
            densa = forms::LoadDensePicture(caminho, figura.size());
        }
    } catch (const Erro&) {
        figura = {};
    }
    imgFigura[1]->SetPixmap(figura, densa);
    // Then nothing below it is painted when a number on it blinks.
    imgFigura[1]->setAttribute(Qt::WA_OpaquePaintEvent,
                               !figura.hasAlphaChannel() && !densa.hasAlphaChannel());
    imgFigura[1]->setGeometry(QRect(canto, figura.size()));
    // From below: picture, marker, buttons and labels, numbers.
    shpSelecaoItem[1]->lower();
    imgFigura[1]->lower();
    imgFigura[1]->show();
    MostrarBotoesCobertos();
}

// Buttons at rest are part of the background's drawing: a picture that goes beyond the frame would
// hide the ways out. The numbers paint themselves whatever they are given.
void frmFiguraDetalhada::MostrarBotoesCobertos() {
    for (forms::ClickZone* zona : Picture()->findChildren<forms::ClickZone*>()) {
        if (zona->geometry().intersects(imgFigura[1]->geometry())) {
            zona->SetDrawing(Background(), zona->geometry());
        }
    }
}

void frmFiguraDetalhada::NomearItens() {
    QHash<QString, QString> descricoes;
    for (qint64 linha = 0; linha < mComponentes->RecordCount(); ++linha) {
        descricoes.insert(mComponentes->Text(linha, 0).toCaseFolded(),
                          mComponentes->Text(linha, 1));
    }
    for (ItemFigura* item : lblItem) {
        const auto descricao = descricoes.constFind(item->Caption().toCaseFolded());
        item->setAccessibleName(
            u"Item "_s + item->Caption().trimmed() + u", "_s +
            (descricao == descricoes.constEnd() ? u"não se aplica a essa peça"_s : *descricao));
    }
}
