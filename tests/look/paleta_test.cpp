#include "look/paleta.h"

#include "look/tema.h"
#include "platform/forms/theme.h"
#include "session/global.h"
#include "support/test.h"

#include <QGuiApplication>
#include <QIcon>

#include <algorithm>
#include <cmath>

namespace {

double Luminancia(const QColor& cor) {
    const auto linear = [](double canal) {
        return canal <= 0.04045 ? canal / 12.92 : std::pow((canal + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(cor.redF()) + 0.7152 * linear(cor.greenF()) +
           0.0722 * linear(cor.blueF());
}

double Contraste(const QColor& a, const QColor& b) {
    const auto [menor, maior] = std::minmax({Luminancia(a), Luminancia(b)});
    return (maior + 0.05) / (menor + 0.05);
}

}  // namespace

// Text keeps 4.5 to 1 on every ground that it stands on, and the edge of a box 3 to 1.
struct PaletaTest : Fixture {};

TEST(PaletaTest, Contrastes) {
    Each<QColor, QColor, double> row;
    const Paleta& p = Paleta::Atual();
    const auto texto = [&row](const char* nome, const QColor& frente,
                              std::initializer_list<QColor> fundos) {
        for (const QColor& fundo : fundos) {
            row(QByteArray(nome) + ' ' + fundo.name().toLatin1(), frente, fundo, 4.5);
        }
    };
    texto("tinta", p.tinta, {p.papel, p.branco, p.gaveta, p.cabecaGrade, p.acento, p.acentoPalido});
    texto("tintaSuave", p.tintaSuave, {p.papel, p.branco, p.gaveta});
    texto("gelo", p.gelo, {p.petroleo, p.petroleoFundo, p.petroleoVivo, p.alerta});
    texto("nevoa", p.nevoa, {p.petroleo, p.petroleoFundo, p.petroleoVivo});
    row("contorno", p.contorno, p.branco, 3.0);
    row("acento", p.acento, p.petroleoVivo, 3.0);
    row("acentoTraco", p.acentoTraco, p.papel, 3.0);
    for (const auto& [frente, fundo, minimo] : row) {
        const double contraste = Contraste(frente, fundo);
        QVERIFY2(contraste >= minimo, qPrintable(QString::number(contraste)));
    }
}

TEST(PaletaTest, Tema) {
    AplicarTema();
    QCOMPARE(forms::CurrentTheme().surround, Paleta::Atual().petroleoFundo);
    QCOMPARE(QGuiApplication::desktopFileName(), NomeDoPrograma);
    const QIcon icone = QGuiApplication::windowIcon();
    for (const int lado : {16, 32, 48, 64}) {
        QVERIFY(icone.availableSizes().contains(QSize(lado, lado)));
        // The whole drawing, in round corners.
        const QImage imagem = icone.pixmap(lado).toImage();
        QVERIFY(imagem.pixelColor(0, 0).alpha() < 30);
        for (const QPoint borda : {QPoint(0, lado / 2), QPoint(lado / 2, 0),
                                   QPoint(lado - 1, lado / 2), QPoint(lado / 2, lado - 1)}) {
            QVERIFY(imagem.pixelColor(borda).alpha() > 0);
        }
    }
}
