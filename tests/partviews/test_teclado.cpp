#include "janela.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

// The whole way from the search to a component by keyboard alone.
class TestTeclado : public QObject {
    Q_OBJECT

    std::unique_ptr<Janela> janela_;

    // The Tab key until the control of this name has the keyboard; false when it goes round
    // without coming to it.
    static bool IrAte(const QString& tela, const QString& nome) {
        QWidget* alvo = Janela::Achar<QWidget>(tela, nome);
        for (int vez = 0; vez < 20 && !alvo->hasFocus(); ++vez) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        return alvo->hasFocus();
    }

    static bool Apertar(const QString& tela, const QString& nome) {
        if (!IrAte(tela, nome)) {
            return false;
        }
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        return true;
    }

private Q_SLOTS:
    void init() { janela_ = std::make_unique<Janela>(); }
    void cleanup() { janela_.reset(); }

    void fromTheSearchToAComponentAndBack() {
        const QString busca = u"frmPesquisa"_s;
        const QString resultado = u"frmResultadoPesquisa"_s;
        const QString lista = u"frmListaPecas"_s;
        janela_->Abrir();
        QVERIFY(Apertar(busca, u"imgPesquisa1"_s));
        QTRY_VERIFY(Janela::Achar<QWidget>(busca, u"txtNumeroTarvo"_s)->hasFocus());
        QTest::keyClicks(QApplication::focusWidget(), u"12002"_s);
        QVERIFY(Apertar(busca, u"pctResultadoPesquisaFundo(0)"_s));

        QVERIFY(Apertar(resultado, u"imgListaComponentesFundo"_s));
        QVERIFY(IrAte(lista, u"grdListaPecas"_s));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Home, Qt::ControlModifier);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
        QCOMPARE(Janela::Linhas(lista, u"dtcListaPecas"_s)->AbsolutePosition(), 1);
        QVERIFY(Apertar(lista, u"imgResultadoPesquisaFundo"_s));
        QVERIFY(Apertar(resultado, u"imgPesquisaFundo"_s));
        QVERIFY(Janela::Achar<QWidget>(busca, u"txtNumeroTarvo"_s)->isVisible());
    }
};

TARVO_TEST(TestTeclado);
#include "test_teclado.moc"
