#include "support/janela.h"

// The whole way from the search to a component by keyboard alone.
struct TestTeclado : NaJanela<> {
    // The Tab key until the control of this name has the keyboard, and then the space bar; false
    // when it goes round without coming to it.
    static bool Apertar(const AnyText& tela, const AnyText& nome) {
        QWidget* alvo = Achar(tela, nome);
        for (int vez = 0; vez < 20 && !alvo->hasFocus(); ++vez) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        const bool chegou = alvo->hasFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        return chegou;
    }
};

TEST(TestTeclado, fromTheSearchToAComponentAndBack) {
    Janela::Abrir();
    QVERIFY(Apertar(Busca, "imgPesquisa1"));
    QTRY_VERIFY(Achar(Busca, "txtNumeroTarvo")->hasFocus());
    QTest::keyClicks(QApplication::focusWidget(), u"12002"_s);
    QVERIFY(Apertar(Busca, "pctResultadoPesquisaFundo(0)"));

    // The grid has the keyboard whenever its screen comes: a button that was pressed gives it up.
    const auto irALista = [] {
        QTRY_VERIFY(Achar(Resultado, "grdResultadoPesquisaPeca")->hasFocus());
        QVERIFY(Apertar(Resultado, "imgListaComponentesFundo"));
        QTRY_VERIFY(Achar(Lista, "grdListaPecas")->hasFocus());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
        QCOMPARE(Linhas(Lista, "dtcListaPecas")->AbsolutePosition(), 1);
    };
    irALista();
    for (const forms::Form* tela : forms::Form::Loaded()) {
        QCOMPARE(tela->windowTitle(), TituloCatalogo);
    }
    QVERIFY(Apertar(Lista, "imgResultadoPesquisaFundo"));
    irALista();
    forms::Form::Find(Lista)->close();  // goes back a step, too
    QTRY_VERIFY(Achar(Resultado, "grdResultadoPesquisaPeca")->hasFocus());
    QVERIFY(!forms::Form::Find(Lista));
    forms::Form::Find(Resultado)->close();
    QVERIFY(Achar(Busca, "txtNumeroTarvo")->isVisible());
}

// By keys, and by the light under the mouse.
TEST(TestTeclado, theWayRound) {
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
