#include "platform/forms/artwork.h"
#include "support/test.h"

#include <QPainter>
#include <QRegularExpression>
#include <QSet>

using forms::Artwork;

namespace {

constexpr int kEscala = 2;

QImage Pintar(Artwork& desenho, Artwork::State estado) {
    QImage imagem(desenho.Size() * kEscala, QImage::Format_RGB32);
    imagem.setDevicePixelRatio(kEscala);
    imagem.fill(Qt::magenta);
    QPainter pintor(&imagem);
    const QRectF tudo(QPointF(), QSizeF(desenho.Size()));
    desenho.Paint(pintor, tudo, tudo, estado);
    return imagem;
}

QString Ler(const QString& nome) {
    QFile arquivo(u":/artwork/"_s + nome);
    return arquivo.open(QIODevice::ReadOnly) ? QString::fromUtf8(arquivo.readAll()) : QString();
}

// The words of every first capture.
QSet<QString> Palavras(const QString& texto, const QString& padrao) {
    QSet<QString> palavras;
    for (auto achados = QRegularExpression(padrao).globalMatch(texto); achados.hasNext();) {
        for (const QString& palavra : achados.next().captured(1).split(u' ', Qt::SkipEmptyParts)) {
            palavras.insert(palavra);
        }
    }
    return palavras;
}

// The smallest part that holds all points in which the two differ, in design pixels.
QRectF Diferenca(const QImage& a, const QImage& b, const QRect& parte) {
    QRect limites;
    for (int y = parte.top(); y <= parte.bottom(); ++y) {
        for (int x = parte.left(); x <= parte.right(); ++x) {
            if (a.pixel(x, y) != b.pixel(x, y)) {
                limites |= QRect(x, y, 1, 1);
            }
        }
    }
    return {QPointF(limites.topLeft()) / kEscala, QSizeF(limites.size()) / kEscala};
}

}  // namespace

// A lit picture is cut out of the lit drawing: whatever changes outside the cut-outs would never be
// seen, and a button that does not change in its own would never light.
struct DesenhosTest : Fixture {};

// A misspelt class would paint in black; a colour written into a drawing would stay behind when
// the palette changes.
TEST(DesenhosTest, Classes) {
    QSet<QString> regras;
    for (const QString& folha : {u"estilo"_s, u"repouso"_s, u"aceso"_s}) {
        regras |= Palavras(Ler(folha + u".css"_s), u"\\.([a-z][\\w-]*)\\s*\\{"_s);
    }
    for (const QString& desenho : QDir(u":/artwork"_s).entryList({u"*.svg"_s})) {
        const QString texto = Ler(desenho);
        const QSet<QString> usadas = Palavras(texto, u"class=\"([^\"]*)\""_s);
        QVERIFY2(!usadas.isEmpty(), qPrintable(desenho));
        const QSet<QString> faltam = usadas - regras;
        QVERIFY2(faltam.isEmpty(), qPrintable(desenho + u": "_s + faltam.values().join(u' ')));
        static const QRegularExpression pintado(u"\\s(fill|stroke|style)="_s);
        QVERIFY2(!texto.contains(pintado), qPrintable(desenho));
    }
}

TEST(DesenhosTest, Acesos) {
    Each<QSize, QList<QRect>> desenhos{
        {"pesquisa", QSize(800, 600),
         QList<QRect>{{476, 137, 301, 47},
                      {619, 292, 157, 47},
                      {619, 442, 157, 48},
                      {14, 398, 73, 36},
                      {14, 455, 67, 33},
                      {15, 507, 59, 34},
                      {674, 9, 100, 16},
                      {508, 8, 141, 18}}},
        {"pesquisa-pecas", QSize(800, 162), QList<QRect>{{744, 105, 51, 53}}},
        {"pesquisa-veiculos", QSize(800, 162), QList<QRect>{{744, 104, 51, 53}}},
        {"pesquisa-figuras", QSize(648, 162), QList<QRect>{{592, 106, 51, 53}}},
        {"resultado", QSize(800, 600),
         QList<QRect>{{227, 543, 65, 30}, {335, 542, 108, 34}, {480, 542, 92, 32}}},
        {"lista", QSize(800, 600),
         QList<QRect>{
             {228, 542, 65, 32}, {332, 542, 111, 34}, {480, 542, 92, 33}, {671, 427, 76, 27}}},
        {"lista-jogos", QSize(584, 124), QList<QRect>{}},
        {"figura", QSize(800, 600),
         QList<QRect>{
             {228, 542, 65, 31}, {332, 542, 111, 34}, {479, 542, 108, 34}, {687, 446, 76, 28}}},
        {"conheca", QSize(800, 573),
         QList<QRect>{{81, 517, 43, 39}, {325, 426, 38, 38}, {11, 517, 43, 36}}},
        {"configuracoes", QSize(434, 234),
         QList<QRect>{{31, 67, 20, 20}, {258, 181, 49, 29}, {327, 181, 87, 29}}},
        {"impressao", QSize(435, 195),
         QList<QRect>{{52, 71, 20, 20}, {52, 101, 20, 20}, {262, 143, 49, 29}, {329, 143, 87, 29}}},
        {"moldura", QSize(139, 108), QList<QRect>{}},
        {"apresentacao", QSize(800, 600), QList<QRect>{}},
        {"creditos", QSize(800, 600), QList<QRect>{}},
        {"atualizando", QSize(434, 299), QList<QRect>{}},
        {"atualizando-passo", QSize(15, 19), QList<QRect>{}},
        {"atualizando-concluido", QSize(23, 18), QList<QRect>{}},
        {"atualizando-borda", QSize(228, 17), QList<QRect>{}},
        {"atualizando-barra", QSize(216, 9), QList<QRect>{}},
        {"icone", QSize(256, 256), QList<QRect>{}},
    };
    for (const auto& [tamanho, recortes] : desenhos) {
        const auto desenho = Artwork::Load(QString::fromLatin1(desenhos.Name()));
        QCOMPARE(desenho->Size(), tamanho);

        const QImage repouso = Pintar(*desenho, Artwork::State::Rest);
        QImage aceso = Pintar(*desenho, Artwork::State::Lit);
        for (const QRect& recorte : recortes) {
            const QRect parte(recorte.topLeft() * kEscala, recorte.size() * kEscala);
            const QRectF mudou = Diferenca(repouso, aceso, parte);
            QVERIFY2(
                mudou.width() > recorte.width() * 0.8 && mudou.height() > recorte.height() * 0.8,
                qPrintable(u"%1,%2"_s.arg(recorte.x()).arg(recorte.y())));
            QPainter(&aceso).drawImage(recorte.topLeft(), repouso.copy(parte));
        }
        const QRectF fora = Diferenca(repouso, aceso, repouso.rect());
        QVERIFY2(
            fora.isEmpty(),
            qPrintable(
                u"%1,%2 %3x%4"_s.arg(fora.x()).arg(fora.y()).arg(fora.width()).arg(fora.height())));
    }
}
