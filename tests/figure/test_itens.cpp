#include "figura.h"
#include "support/database.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;
using figura::Mao;
using figura::Tela;

namespace {

// Counts what is painted anew.
class Pinturas : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override {
        quantas += event->type() == QEvent::Paint;
        return false;
    }
    int quantas = 0;
};

}  // namespace

class TestItens : public QObject {
    Q_OBJECT

    std::unique_ptr<Mao> mao_;

private Q_SLOTS:
    void init() { mao_ = std::make_unique<Mao>(); }
    void cleanup() { mao_.reset(); }

    void theMouseLightsANumberAndItsRelatives_data() {
        QTest::addColumn<int>("indice");
        QTest::addColumn<QString>("acesos");
        QTest::addColumn<QString>("rotulos");
        QTest::addColumn<QPointF>("marcador");
        QTest::newRow("alone") << 1 << u"1:15"_s << u"Corpo da válvula|K5600|"_s
                               << QPointF(76, 122.5);
        QTest::newRow("two places")
            << 2 << u"2:12 2:15"_s << u"Válvula relé|12000|"_s << QPointF(176, 172.5);
        QTest::newRow("two kits") << 4 << u"100:9 12a:15"_s
                                  << u"Anel de vedação|A3400|Válvula relé, Anel de vedação"_s
                                  << QPointF(274.5, 222.5);
        QTest::newRow("one kit") << 5 << u"100:15 12a:9"_s
                                 << u"Anel de vedação|A3400|Anel de vedação"_s
                                 << QPointF(473, 222.5);
        QTest::newRow("no component")
            << 6 << u"77:15"_s << u"NÃO APLICAVEL||"_s << QPointF(124.5, 422.5);
    }

    void theMouseLightsANumberAndItsRelatives() {
        QFETCH(int, indice);
        QFETCH(QString, rotulos);
        mao_->AbrirFigura();
        Mao::Passar(indice == 4 ? 5 : 4);  // straight from a number with kits to this one
        Mao::Passar(indice);
        QTEST(Mao::Acesos(), "acesos");
        QCOMPARE(Mao::Rotulos(), rotulos);
        QTEST(Mao::Marcador()->Lugar().topLeft(), "marcador");
        QVERIFY(Mao::Marcador()->isVisible());

        Mao::PassarSobre({729, 460});  // a button
        QCOMPARE(Mao::Rotulos(), rotulos);
        Mao::PassarSobreFundo();
        QCOMPARE(Mao::Acesos(), QString());
        QCOMPARE(Mao::Rotulos(), u"||"_s);
        QVERIFY(!Mao::Marcador()->isVisible());
    }

    void theDrawingCountsAsBackground() {
        mao_->AbrirFigura();
        Mao::Passar(1);
        Mao::PassarSobre({300, 400});
        QCOMPARE(Mao::Acesos(), QString());
    }

    void theNumberStandsWhiteOnItsMarkerOnThePicture() {
        mao_->AbrirFigura();
        Mao::Passar(4);
        const QImage tela = forms::Form::Find(Tela)->grab().toImage();
        const QPoint canto = forms::Form::Find(Tela)
                                 ->findChild<forms::Picture*>(u"imgFigura(1)"_s)
                                 ->mapTo(forms::Form::Find(Tela), QPoint());
        QCOMPARE(tela.pixelColor(canto + QPoint(1, 1)), QColor(Qt::yellow));
        int brancos = 0;
        int fundo = 0;
        const QRect marca =
            Mao::Marcador()->Lugar().toAlignedRect().translated(canto - QPoint(66, 127));
        for (int x = marca.left(); x <= marca.right(); ++x) {
            for (int y = marca.top(); y <= marca.bottom(); ++y) {
                brancos += tela.pixelColor(x, y) == QColor(Qt::white);
                fundo += tela.pixelColor(x, y) == QColor(0, 0, 128);
            }
        }
        QVERIFY(brancos > 8);
        QVERIFY(fundo > 120);
    }

    void crossingEveryNumberLeavesNoGhost() {
        mao_->AbrirFigura();
        for (int volta = 0; volta < 3; ++volta) {
            for (int i = 1; i <= Mao::Itens().size(); ++i) {
                Mao::Passar(i);
            }
        }
        QCOMPARE(Mao::Acesos(), u"77:15"_s);
        Mao::PassarSobreFundo();
        QCOMPARE(Mao::Acesos(), QString());
    }

    void blanksMoveTheMarker_data() {
        QTest::addColumn<QString>("item");
        QTest::addColumn<double>("deslocado");
        QTest::newRow("none") << u"12"_s << 0.0;
        QTest::newRow("behind") << u"12 "_s << 1.5;
        QTest::newRow("both") << u"  1  "_s << 6.0;
    }

    void blanksMoveTheMarker() {
        QFETCH(QString, item);
        mao_->catalogo.Executar({u"UPDATE FIGURADETALHADA SET ItemComponente = '"_s + item +
                                 u"' WHERE CodigoFigura = 1 AND CodigoFiguraDetalhada = 1"_s});
        mao_->AbrirFigura();
        Mao::Passar(1);
        QTEST(Mao::Marcador()->Lugar().center().x() - (66 + 16.5), "deslocado");
    }

    void aTagBeyondEightBitsIsAnError() {
        mao_->AbrirFigura();
        QString jogos;
        while (jogos.size() < 253) {
            jogos += u".12,"_s;
        }
        Mao::Item(1)->Tag = jogos.left(252);
        Mao::Passar(1);
        QCOMPARE(Mao::Acesos(), u"1:15"_s);
        Mao::Item(2)->Tag = jogos;
        QCOMPARE(testing_support::ErrorOf([] { Q_EMIT Mao::Item(2)->MouseMove(); }), 6);
    }

    void aClickOpensTheListAtTheItem() {
        mao_->AbrirFigura();
        Mao::Passar(5);
        Mao::ClicarItem(5);
        QVERIFY(forms::Form::Find(figura::Lista)->isVisible());
        QVERIFY(!forms::Form::Find(Tela)->isVisible());
        QCOMPARE(Mao::ItemDaLista(), u" 100"_s);

        Mao::Clicar(figura::Lista, u"imgFiguraDetalhadaFundo"_s);
        Mao::ClicarItem(2);  // where the mouse rested all the while
        QCOMPARE(Mao::ItemDaLista(), u"   2"_s);
    }

    void anItemWithoutComponentStays() {
        mao_->AbrirFigura();
        Mao::Passar(6);
        Mao::ClicarItem(6);
        QCOMPARE(mao_->Caixas(), QStringList{u"64 Esse Item não se aplica a essa Peça."_s});
        QCOMPARE(Mao::Acesos(), u"77:15"_s);
        QVERIFY(!forms::Form::Find(figura::Lista));
    }

    void anApostropheInAnItemIsText() {
        mao_->catalogo.Executar(
            {u"UPDATE FIGURADETALHADA SET ItemComponente = '1''' "
             "WHERE CodigoFigura = 1 AND CodigoFiguraDetalhada = 1"_s});
        mao_->AbrirFigura();
        Mao::Passar(1);
        QCOMPARE(Mao::Rotulos(), u"NÃO APLICAVEL||"_s);
    }

    void blinkingEndsAtTheFirstTouch() {
        mao_->AbrirFiguraDoItem(u"12002"_s, u"   2"_s);
        QCOMPARE(Mao::Acesos(), u"2:0 2:0"_s);
        QTRY_COMPARE(Mao::Acesos(), u"2:15 2:15"_s);
        QTRY_COMPARE(Mao::Acesos(), u"2:12 2:12"_s);
        QTRY_COMPARE(Mao::Acesos(), u"2:15 2:15"_s);
        Mao::PassarSobreFundo();
        QVERIFY(Mao::Relogio()->isActive());
        Mao::Passar(1);
        QVERIFY(!Mao::Relogio()->isActive());
        QCOMPARE(Mao::Acesos(), u"1:15"_s);
    }

    void blinkingPaintsNothingElse() {
        mao_->AbrirFiguraDoItem(u"12002"_s, u"   2"_s);
        QTRY_COMPARE(Mao::Acesos(), u"2:15 2:15"_s);
        testing_support::Settle();
        Pinturas pisca;
        Pinturas resto;
        Mao::Item(2)->installEventFilter(&pisca);
        for (const QString& nome : {u"lblItem(1)"_s, u"lblItem(4)"_s, u"lblInf"_s}) {
            Mao::Achar(Tela, nome)->installEventFilter(&resto);
        }
        QTRY_VERIFY(pisca.quantas >= 4);
        QCOMPARE(resto.quantas, 0);
    }
};

TARVO_TEST(TestItens);

#include "test_itens.moc"
