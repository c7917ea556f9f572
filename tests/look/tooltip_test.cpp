#include "look/tooltip.h"

#include "platform/forms/font.h"
#include "platform/forms/theme.h"
#include "support/windows.h"

#include <QBitmap>
#include <QCursor>
#include <QFontMetrics>
#include <QLabel>
#include <QScreen>

struct TooltipTest : Fixture {
    QLabel controle_;
    const QPoint dentro_{60, 15};

    QWidget* Criar(cToolTip& dica, qint32 estilo, qint32 sinal, const QString& texto,
                   const QString& titulo, qint32 letra = 0, qint32 fundo = 0xffffff) {
        return dica.Create(&controle_, texto, estilo, false, sinal, titulo, letra, fundo, 30, 600);
    }

    void Mover(QPoint onde) {
        QCursor::setPos(controle_.mapToGlobal(onde));
        QTest::mouseMove(&controle_, onde);
    }

    void Sair() {
        QEvent fora(QEvent::Leave);
        QCoreApplication::sendEvent(&controle_, &fora);
    }

    TooltipTest() {
        controle_.setMouseTracking(true);
        controle_.setGeometry(200, 200, 120, 30);
        controle_.show();
        QVERIFY(QTest::qWaitForWindowExposed(&controle_));
    }
};

TEST(TooltipTest, RecusaOQueNaoConhece) {
    cToolTip dica;
    QCOMPARE(dica.Style(), -1);
    for (const auto& [estilo, sinal, criada] :
         {std::tuple(0, 0, true), std::tuple(2, 0, false), std::tuple(-1, 0, false),
          std::tuple(65, 4, false), std::tuple(65, -1, false)}) {
        QVERIFY(Criar(dica, 65, 1, u"a"_s, u"b"_s));
        QCOMPARE(Criar(dica, estilo, sinal, u"a"_s, u"b"_s) != nullptr, criada);
        QCOMPARE(dica.Style(), criada ? estilo : -1);
    }
    QVERIFY(!dica.Create(nullptr, u"a"_s, 65, false, 1, u"b"_s, 0, 1, 1, 1));
}

TEST(TooltipTest, Textos) {
    cToolTip dica;
    Criar(dica, 65, 1, u"um|dois"_s, QString());
    QCOMPARE(dica.Text(), u"um dois"_s);
    Criar(dica, 65, 1, u"um|dois"_s, u"título"_s);
    QCOMPARE(dica.Text(), u"um\r\ndois"_s);
    Criar(dica, 65, 1, u"três"_s, u"outro"_s);
    QCOMPARE(dica.InitialText(), u"um dois"_s);
    QCOMPARE(dica.InitialTitle(), u"título"_s);
    QCOMPARE(dica.Title(), u"outro"_s);
}

TEST(TooltipTest, Cores) {
    cToolTip dica;
    const auto criar = [&](quint32 letra, quint32 fundo) {
        Criar(dica, 65, 1, u"a"_s, u"b"_s, qint32(letra), qint32(fundo));
        return u"%1 %2"_s.arg(quint32(dica.ForeCol()), 0, 16).arg(quint32(dica.BackCol()), 0, 16);
    };
    QCOMPARE(criar(0x112233, 0x445566), u"112233 445566"_s);
    QCOMPARE(criar(0, 1), u"0 1"_s);
    QCOMPARE(criar(0x112233, 0x112233), u"80000012 80000018"_s);  // nobody could read it
    // The system's, by their numbers.
    const forms::Theme& tema = forms::CurrentTheme();
    for (const auto& [numero, cor] :
         {std::pair(5U, tema.base), std::pair(8U, tema.text), std::pair(13U, tema.selection),
          std::pair(14U, tema.selectionText), std::pair(15U, tema.button),
          std::pair(17U, tema.disabledText), std::pair(18U, tema.text), std::pair(23U, tema.text),
          std::pair(24U, tema.tip), std::pair(99U, QColor(Qt::black))}) {
        const QColor trocada(cor.blue(), cor.green(), cor.red());
        QCOMPARE(criar(0x80000000U | numero, 0x010203),
                 QString::number(trocada.rgb() & 0xffffff, 16) + u" 10203"_s);
    }
}

// A balloon points at the mouse or at the middle of its control, from above where there is room;
// the other kind lies below. Neither leaves the screen, nor what is written its frame.
TEST(TooltipTest, LugarEPintura) {
    const QRect area = controle_.screen()->availableGeometry();
    const QPoint meio = area.center();
    const forms::Theme& tema = forms::CurrentTheme();
    const QColor sinais[] = {tema.tip, tema.primary, tema.lit, tema.alert};
    for (const auto& [balao, centrada, lugar, sinal, texto] :
         Each<bool, bool, QPoint, int, QString>{
             {"balloon", true, false, meio, 1, "um|dois"},
             {"balloon of the control", true, true, meio, 2, "um|dois"},
             {"no room above", true, false, QPoint(meio.x(), area.top()), 3, "um|dois"},
             {"at the left", true, true, QPoint(area.left() - 60, meio.y()), 0, "um|dois"},
             {"at the right", true, false, QPoint(area.right() - 70, meio.y()), 1, " "},
             {"plain", false, false, meio, 1, "um|dois"},
             {"plain, of the control", false, true, meio, 0, "um|dois"},
         }) {
        controle_.move(lugar);
        Mover(dentro_);
        cToolTip dica;
        QWidget* janela = dica.Create(&controle_, texto, balao ? 65 : 1, centrada, sinal,
                                      u"Um título largo"_s, 0x101010, 0xffffff, 10, 60'000);
        QTRY_VERIFY(janela->isVisible());

        const QFontMetrics letras(forms::Font(tema.textPixels, false));
        const QFontMetrics titulo(forms::Font(tema.textPixels, true));
        const int linha = std::max(titulo.height(), 16);
        const int recuo = sinal == 0 ? 0 : 22;
        const QSize corpo(18 + titulo.size(0, u"Um título largo"_s).width() + recuo,
                          18 + linha + (texto == u" "_s ? 0 : 4 + 2 * letras.height()));
        const QRect controle(controle_.mapToGlobal(QPoint()), controle_.size());
        const QPoint alvo = centrada ? controle.center() : QCursor::pos();
        const bool acima = balao && lugar.y() > area.top();
        const int ponta = balao ? 13 : 0;
        const int topo = acima ? 0 : ponta;
        const int abaixo = centrada ? controle.bottom() + 1 : alvo.y() + 20;
        const int desvio = centrada ? corpo.width() / 2 : balao ? 26 : 0;
        QCOMPARE(janela->geometry(),
                 QRect(std::clamp(alvo.x() - desvio, area.left(), area.right() - corpo.width()),
                       acima ? alvo.y() - corpo.height() - ponta : abaixo, corpo.width(),
                       corpo.height() + ponta));

        // The point is one pixel wide at its end.
        const QRegion forma = janela->mask();
        const QRect fim =
            forma.intersected(QRect(0, acima ? janela->height() - 3 : 1, 999, 2)).boundingRect();
        if (balao) {
            const int bico = std::clamp(alvo.x() - janela->x(), 19, corpo.width() - 19);
            QVERIFY2(fim.left() == bico && fim.width() < 5, qPrintable(QDebug::toString(fim)));
        }
        QCOMPARE(forma.contains(QPoint(0, topo)), !balao);  // round corners

        const QPixmap pintura = janela->grab();
        const QImage imagem = pintura.toImage();
        QCOMPARE(imagem.pixelColor(0, topo + corpo.height() / 2), tema.border);
        const QRect papel(QPoint(9, topo + 9), corpo - QSize(18, 18));
        const QRect tinta = QRegion(pintura.createMaskFromColor(Qt::white))
                                .intersected(papel.adjusted(-5, -5, 5, 5))
                                .boundingRect();
        QVERIFY2(papel.contains(tinta) && tinta.width() > papel.width() - 5 &&
                     tinta.height() > papel.height() - 12,
                 qPrintable(QDebug::toString(tinta)));
        QVERIFY(Shows(*janela, QColor(0x10, 0x10, 0x10), papel.adjusted(recuo, 0, 0, 0)).isValid());
        const QRect sinalEm = Shows(*janela, sinais[sinal], papel);
        const QRect roda(0, (linha - 16) / 2, 16, 16);
        QVERIFY(sinal == 0 || roda.adjusted(1, 1, -1, -1) == sinalEm);
        QVERIFY(sinal == 0 || imagem.pixelColor(papel.topLeft() + QPoint(8, linha / 2)) !=
                                  sinais[sinal]);  // its letter
        Sair();
        QVERIFY(!janela->isVisible());
    }
}

// Comes when the mouse rests, goes by itself, and comes again only for the next visit.
TEST(TooltipTest, EsperaEVida) {
    cToolTip dica;
    Mover({500, 300});
    QWidget* janela = Criar(dica, 65, 1, u"Última Verificação: nunca"_s, u"Verificar"_s);
    QCOMPARE(janela->accessibleName(), u"Verificar"_s);
    QCOMPARE(janela->accessibleDescription(), u"Última Verificação: nunca"_s);
    QTest::qWait(100);
    QVERIFY(!janela->isVisible());
    Mover(dentro_);
    QVERIFY(!janela->isVisible());
    QTRY_VERIFY(janela->isVisible());
    QVERIFY(!janela->geometry().contains(QCursor::pos()));
    QTRY_VERIFY(!janela->isVisible());
    Mover(dentro_ + QPoint(3, 0));
    QTest::qWait(100);
    QVERIFY(!janela->isVisible());

    // Whether it is there or not: a click is the end of it for this visit.
    for (const bool chegou : {true, false}) {
        Sair();
        Mover(dentro_ - QPoint(chegou, 0));
        QTRY_VERIFY(janela->isVisible() || !chegou);
        QTest::mouseClick(&controle_, Qt::LeftButton, {}, dentro_);
        QVERIFY(!janela->isVisible());
        QTest::qWait(100);
        QVERIFY(!janela->isVisible());
    }

    // Behind another window only the kind that is always seen comes.
    QWidget outra;
    outra.show();
    outra.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&outra));
    janela = Criar(dica, 64, 1, u"a"_s, u"b"_s);
    QTest::qWait(100);
    QVERIFY(!janela->isVisible());
    janela = Criar(dica, 65, 1, u"a"_s, u"b"_s);
    QTRY_VERIFY(janela->isVisible());
}
