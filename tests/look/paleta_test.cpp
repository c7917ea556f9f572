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
    const Paleta& p = Paleta::Atual();
    const auto conferir = [](const AnyText& nome, const QColor& frente,
                             std::initializer_list<QColor> fundos, double minimo = 4.5) {
        for (const QColor& fundo : fundos) {
            const double contraste = Contraste(frente, fundo);
            QVERIFY2(contraste >= minimo,
                     qPrintable(u"%1 %2 %3"_s.arg(nome, fundo.name()).arg(contraste)));
        }
    };
    conferir("tinta", p.tinta,
             {p.papel, p.branco, p.gaveta, p.cabecaGrade, p.acento, p.acentoPalido});
    conferir("tintaSuave", p.tintaSuave, {p.papel, p.branco, p.gaveta});
    conferir("gelo", p.gelo, {p.petroleo, p.petroleoFundo, p.petroleoVivo, p.alerta});
    conferir("nevoa", p.nevoa, {p.petroleo, p.petroleoFundo, p.petroleoVivo});
    conferir("contorno", p.contorno, {p.branco}, 3.0);
    conferir("acento", p.acento, {p.petroleoVivo}, 3.0);
    conferir("acentoTraco", p.acentoTraco, {p.papel}, 3.0);
}

TEST(PaletaTest, Tema) {
    AplicarTema();
    QCOMPARE(forms::CurrentTheme().surround, Paleta::Atual().petroleoFundo);
    QCOMPARE(QGuiApplication::desktopFileName(), NomeDoPrograma);
    // The whole drawing in each size, in round corners.
    for (const int lado : {16, 32, 48, 64}) {
        const QImage imagem = QGuiApplication::windowIcon().pixmap(lado).toImage();
        const auto alfa = [&](int x, int y) { return imagem.pixelColor(x, y).alpha(); };
        QVERIFY(QGuiApplication::windowIcon().availableSizes().contains(imagem.size()));
        QVERIFY(alfa(0, 0) < 30 && alfa(0, lado / 2) > 0 && alfa(lado / 2, 0) > 0);
    }
}
