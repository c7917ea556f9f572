#include "platform/convert.h"
#include "platform/forms/densepicture.h"
#include "platform/forms/picturefile.h"
#include "platform/system/paths.h"
#include "printing/impressao.h"
#include "session/erros.h"
#include "session/global.h"

#include <QDir>
#include <QFontMetricsF>

using namespace Qt::StringLiterals;

namespace {

constexpr int EspacoAntesDaFigura = 300;  // page units

// Screen pixels: half the box that a number has on the screen, in which it stands centred.
constexpr int MeiaCaixa = 16;

// On the screen a missing picture is an empty frame; here somebody waits for the paper.
QPixmap FiguraDe(const QString& arquivo) {
    try {
        return forms::LoadPicture(arquivo, {}, 1);
    } catch (const Erro& erro) {
        throw Erro(erro.Number(),
                   erro.Description() + u'\n' + QDir::toNativeSeparators(sys::ToNative(arquivo)));
    }
}

}  // namespace

// One page. The picture is enlarged by a whole factor, so that each of its pixels becomes a square
// of printer pixels, and the numbers keep the places that they have on it on the screen. Positions
// are held in 16 bits: a printer of very high resolution fails with an overflow, Erro 6.
void frmImpressao::ImprimirFigura() {
    try {
        const auto linhas = gDB->OpenRecordset(
            u"SELECT "
            "ArquivoFigura,"
            "ItemComponente,"
            "LLeft,"
            "TTop "
            "FROM "
            "FIGURADETALHADA1 "
            "WHERE "
            "CodigoPeca = "_s +
                QString::number(gCodigoPeca),
            dao::dbOpenForwardOnly);
        if (linhas->Eof()) {
            return;
        }
        ImprimirCabecalho(u"Figura Detalhada"_s);
        impressora_->SetFontSize(8);
        const quint8 s = convert::ToByte(mEscala * 4);
        impressora_->SetCurrentX(MargemEsquerda * mEscala);
        Descer(EspacoAntesDaFigura);
        const float X = impressora_->CurrentX();
        const float Y = impressora_->CurrentY();
        // A screen position p within the picture is s * (p + X) + OffX on the paper, which for the
        // corner is X itself.
        const qint16 OffY = convert::ToInt16(Y - s * Y);
        const qint16 OffX = convert::ToInt16(X - s * X);

        const QString arquivo = gCaminho + u"Figuras\\"_s +
                                convert::ToTextOrEmpty(linhas->Fields(u"ArquivoFigura"_s).Value());
        imgFigura->SetPixmap(FiguraDe(arquivo));
        const QPixmap& figura = imgFigura->Pixmap();
        const QPixmap densa = forms::LoadDensePicture(arquivo, figura.size());
        const qint16 X0 = convert::ToInt16(X * s + OffX);
        const qint16 Y0 = convert::ToInt16(Y * s + OffY);
        impressora_->PaintPicture(densa.isNull() ? figura : densa, X0, Y0, s * figura.width(),
                                  s * figura.height());

        const QFontMetricsF naTela(font());
        for (; !linhas->Eof(); linhas->MoveNext()) {
            const QString item =
                convert::ToTextOrEmpty(linhas->Fields(u"ItemComponente"_s).Value());
            const int meiaLargura = convert::ToInt16(naTela.horizontalAdvance(item)) / 2;
            const qint16 Ti =
                convert::ToInt16(convert::ToDouble(linhas->Fields(u"TTop"_s).Value()) + Y0);
            const qint16 Li =
                convert::ToInt16(convert::ToDouble(linhas->Fields(u"LLeft"_s).Value()) +
                                 (MeiaCaixa - meiaLargura) + X0);
            const auto noPapel = [s](qint16 posicao, qint16 deslocamento) {
                return convert::Narrow<qint16>(convert::Narrow<qint16>(s * posicao) + deslocamento);
            };
            impressora_->SetCurrentY(noPapel(Ti, OffY));
            impressora_->SetCurrentX(noPapel(Li, OffX));
            impressora_->PrintLine(item);
        }
    } catch (const Erro& erro) {
        MostrarErro(erro.Number(), erro.Description());
    }
}
