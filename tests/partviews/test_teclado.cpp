#include "support/janela.h"

// The whole way from the search to a component by keyboard alone.
struct TestTeclado : NaJanela<> {
    // The Tab key until the control of this name has the keyboard, and then this one; false when it
    // goes round without coming to it.
    static bool Apertar(const AnyText& tela, const AnyText& nome, Qt::Key tecla = Qt::Key_Space) {
        QWidget* alvo = Achar(tela, nome);
        for (int vez = 0; vez < 20 && !alvo->hasFocus(); ++vez) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        const bool chegou = alvo->hasFocus();
        QTest::keyClick(QApplication::focusWidget(), tecla);
        return chegou;
    }
};

TEST(TestTeclado, fromTheSearchToAComponentAndBack) {
    Janela::Abrir();
    QVERIFY(Apertar(Busca, "imgPesquisa1"));
    QTRY_VERIFY(Achar(Busca, "txtNumeroTarvo")->hasFocus());
    QTest::keyClicks(QApplication::focusWidget(), u"12002"_s);
    QVERIFY(Apertar(Busca, "pctResultadoPesquisaFundo(0)"));

    QVERIFY(Apertar(Resultado, "imgListaComponentesFundo"));
    QVERIFY(Apertar(Lista, "grdListaPecas", Qt::Key_Down));
    QCOMPARE(Linhas(Lista, "dtcListaPecas")->AbsolutePosition(), 1);
    for (const forms::Form* tela : forms::Form::Loaded()) {
        QCOMPARE(tela->windowTitle(), TituloCatalogo);
    }
    QVERIFY(Apertar(Lista, "imgResultadoPesquisaFundo"));
    QVERIFY(Apertar(Resultado, "imgPesquisaFundo") && Achar(Busca, "txtNumeroTarvo")->isVisible());
}

// By keys, and by the light under the mouse.
TEST(TestTeclado, theWayRound) {
    Janela::Abrir();
    Janela::AbrirDaBusca("Peças", "12002");
    QCOMPARE(Volta(Resultado, "cboNumeroClienteConcorrentePeca"),
             u"Cliente, Peças, Veículos da peça, Voltar à pesquisa, Lista de componentes, "
             "Figura detalhada, Minimizar a janela"_s);
    QCOMPARE(Luzes(Resultado, {20, 580},
                   {"imgPesquisaFundo", "imgListaComponentesFundo", "imgFiguraDetalhadaFundo"}),
             u"PESQUISA LISTACOMPONENTES FIGURADETALHADA"_s);
    Clicar(Resultado, "imgListaComponentesFundo");
    QCOMPARE(Luzes(Lista, {20, 580},
                   {"imgPesquisaFundo", "imgResultadoPesquisaFundo", "imgFiguraDetalhadaFundo",
                    "imgImprimir"}),
             u"PESQUISA RESULTADOPESQUISA FIGURADETALHADA IMPRIMIR"_s);
    QCOMPARE(
        Volta(Lista, "cboMostraNaListaPecas"),
        u"Componentes de qual jogo de reparo, Item, Descrição, Nº Tarvo, Nº do cliente, Cliente, "
        "Componentes, Jogos de reparo do componente, Imprimir, Voltar à pesquisa, "
        "Voltar às peças, Figura detalhada, Minimizar a janela"_s);
}
