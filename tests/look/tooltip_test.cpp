#include "look/tooltip.h"

#include "support/test.h"

#include <QCursor>
#include <QLabel>

#include <chrono>

struct TooltipTest : Fixture {
    QLabel controle_;

    QWidget* Criar(cToolTip& dica, qint32 estilo, qint32 sinal, const QString& texto,
                   const QString& titulo, qint32 letra = 0, qint32 fundo = 0xffffff) {
        return dica.Create(&controle_, texto, estilo, false, sinal, titulo, letra, fundo, 30, 150);
    }

    TooltipTest() {
        controle_.setMouseTracking(true);
        controle_.setGeometry(200, 200, 120, 30);
        controle_.show();
        QVERIFY(QTest::qWaitForWindowExposed(&controle_));
    }
};

TEST(TooltipTest, RecusaOQueNaoConhece) {
    struct Caso {
        qint32 estilo;
        qint32 sinal;
        bool criada;
    };
    cToolTip dica;
    QCOMPARE(dica.Style(), -1);
    for (const Caso& caso :
         {Caso{0, 0, true}, Caso{1, 1, true}, Caso{64, 2, true}, Caso{65, 3, true},
          Caso{2, 0, false}, Caso{-1, 0, false}, Caso{65, 4, false}, Caso{65, -1, false}}) {
        QVERIFY(Criar(dica, 65, 1, u"a"_s, u"b"_s));
        QCOMPARE(Criar(dica, caso.estilo, caso.sinal, u"a"_s, u"b"_s) != nullptr, caso.criada);
        QCOMPARE(dica.Style(), caso.criada ? caso.estilo : -1);
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
    Criar(dica, 65, 1, u"a"_s, u"b"_s, 0x112233, 0x445566);
    QCOMPARE(dica.ForeCol(), 0x112233);
    QCOMPARE(dica.BackCol(), 0x445566);
    Criar(dica, 65, 1, u"a"_s, u"b"_s, qint32(0x80000012), qint32(0x80000018));
    QVERIFY(dica.ForeCol() >= 0 && dica.BackCol() >= 0 && dica.ForeCol() != dica.BackCol());
    Criar(dica, 65, 1, u"a"_s, u"b"_s, 0x112233, 0x112233);
    QCOMPARE(dica.ForeCol(), qint32(0x80000012));
    QCOMPARE(dica.BackCol(), qint32(0x80000018));
}

// Comes when the mouse rests, goes by itself, and comes again only for the next visit.
TEST(TooltipTest, EsperaEVida) {
    cToolTip dica;
    QWidget* janela = Criar(dica, 65, 1, u"Última Verificação: nunca"_s, u"Verificar"_s);
    const QPoint dentro(60, 15);
    const auto mover = [&](QPoint onde) {
        QCursor::setPos(controle_.mapToGlobal(onde));
        QTest::mouseMove(&controle_, onde);
    };
    mover(dentro);
    QVERIFY(!janela->isVisible());
    QTRY_VERIFY(janela->isVisible());
    QVERIFY(!janela->geometry().contains(QCursor::pos()));
    QTRY_VERIFY(!janela->isVisible());
    mover(dentro + QPoint(3, 0));
    QTest::qWait(100);
    QVERIFY(!janela->isVisible());

    QEvent fora(QEvent::Leave);
    QCoreApplication::sendEvent(&controle_, &fora);
    mover(dentro);
    QTRY_VERIFY(janela->isVisible());
    QTest::mouseClick(&controle_, Qt::LeftButton, {}, dentro);
    QVERIFY(!janela->isVisible());
}
