#include "figura.h"

struct TestPassagens : NaFigura {};

TEST(TestPassagens, whatWasSearchedForBlinks) {
    for (const auto& [tipo, numero, acesos, apagados, rotulos] :
         Each<QString, QString, QString, QString, QString>{
             // The template counts for " 100," too: its "0," is in it.
             {"component at two items", "Componentes", "A340", "0:12 100:12 12a:12",
              "0:15 100:15 12a:15", "!Anel de vedação|A3400|Anel de vedação"},
             {"kit", "Jogos de Reparo", "A340", "100:9 12a:9", "100:15 12a:15", "||"},
             {"part", "Peças", "12002", "", "", "||"},
         }) {
        AbrirResultado(tipo, numero);
        Clicar(Resultado, "imgFiguraDetalhadaFundo");
        QVERIFY(Visivel(Figura) && !Visivel(Resultado));
        QCOMPARE(ParametroFormulario, QString());
        QTRY_COMPARE(Acesos(), apagados);
        QTRY_COMPARE(Acesos(), acesos);
        QCOMPARE(Piscando(), !acesos.isEmpty());
        QCOMPARE(Rotulos(), rotulos);
        QCOMPARE(janela_->Caixas(), QStringList());
    }
}

TEST(TestPassagens, whatTheListShowsBlinks) {
    // "jogo" counts the rows of the kit panel.
    for (const auto& [peca, item, jogo, acesos, rotulos] :
         Each<QString, QString, int, QString, QString>{
             {"item", "12002", "   1", 0, "1:12", "!Corpo da válvula|K5600|"},
             {"item and kit", "12002", "  12a", 0, "100:9 12a:12",
              "!Anel de vedação|A3400|Válvula relé, Anel de vedação"},
             {"item and its other kit", "12002", "  12a", 1, "12a:12",
              "!Anel de vedação|A3400|Válvula relé, Anel de vedação"},
             {"one caption within another", "A3402", "11", 0, "11:12 1:12",
              "!Anel de vedação|A3400|"},
             {"seen by the template alone", "A3402", "10", 0, "0:12", "||"},
         }) {
        AbrirListaNoItem(peca, item);
        for (int i = 0; i < jogo; ++i) {
            Linhas(Lista, "dtcJogosReparoComponente")->MoveNext();
        }
        Clicar(Lista, "imgFiguraDetalhadaFundo");
        QVERIFY(Visivel(Figura) && !Visivel(Lista));
        QTRY_COMPARE(Acesos(), acesos);
        QCOMPARE(Rotulos(), rotulos);
        QCOMPARE(janela_->Caixas(), QStringList());
    }
}

TEST(TestPassagens, whatHasNoNumberIsSaid) {
    // Without a number: by way of the list.
    for (const auto& [tipo, numero, dito] : Each<QString, QString, QString>{
             {"item", "", "", "Item"},
             {"component", "Componentes", "K560", "Componente"},
             {"kit", "Jogos de Reparo", "1200", "Jogo de Reparo"},
         }) {
        Executar({"DELETE FROM FIGURADETALHADA WHERE CodigoFiguraDetalhada = 1",
                  "DELETE FROM FIGURADETALHADA WHERE CodigoFiguraDetalhada = 4"});
        if (numero.isEmpty()) {
            AbrirFiguraDoItem("   1");
        } else {
            AbrirResultado(tipo, numero);
            Clicar(Resultado, "imgFiguraDetalhadaFundo");
        }
        QCOMPARE(janela_->Caixas(), List(u"64 "_s + dito + u" não representado graficamente."_s));
        QCOMPARE(Acesos(), QString());
        QVERIFY(!Piscando());
        QCOMPARE(forms::MousePointer(), forms::vbDefault);
    }
}

TEST(TestPassagens, anEmptyListMarksNothing) {
    AbrirListaNoItem("12002", "   1");
    Executar({"DELETE FROM PECA_COMPONENTE_JOGOREPARO"});
    Escolher(Lista, "cboMostraNaListaPecas", 0);
    Clicar(Lista, "imgFiguraDetalhadaFundo");
    QVERIFY(Visivel(Figura));
    QCOMPARE(Acesos(), QString());
    QCOMPARE(janela_->Caixas(), QStringList());
}

TEST(TestPassagens, listAndFigureTakeTurns) {
    AbrirFiguraDoItem("   1");
    QTRY_COMPARE(Acesos(), u"1:15"_s);
    const forms::Form* lista = forms::Form::Find(Lista);
    const forms::Form* figura = forms::Form::Find(Figura);
    Clicar(Figura, "imgListaComponentesFundo");
    QVERIFY(lista->isVisible() && !figura->isVisible());
    QVERIFY(!Piscando());
    QCOMPARE(Acesos(), QString());
    QCOMPARE(ItemAtualDaLista(), u"   1"_s);

    IrNaLista(" 100");
    Clicar(Lista, "imgFiguraDetalhadaFundo");
    QVERIFY(!lista->isVisible() && figura->isVisible());
    QTRY_COMPARE(Acesos(), u"0:12 100:12 12a:9"_s);
}

TEST(TestPassagens, aPartWithoutListKeepsBlinking) {
    Executar({"UPDATE PECA SET CodigoFigura = 1 WHERE CodigoPeca = 3",
              "INSERT INTO PECA_COMPONENTE_JOGOREPARO VALUES (3, '   1', 3)"});
    AbrirResultado("Jogos de Reparo", "K560");
    Clicar(Resultado, "imgFiguraDetalhadaFundo");
    Clicar(Figura, "imgListaComponentesFundo");
    QCOMPARE(janela_->Caixas(), List("64 Essa Peça não possui Lista de Componentes."));
    QVERIFY(Visivel(Figura));
    QTRY_COMPARE(Acesos(), u"1:9"_s);
    QVERIFY(Piscando());
}

TEST(TestPassagens, printingLeavesTheBlinkAlone) {
    AbrirFiguraDoItem("   1");
    QString figura;
    QString lista;
    QTimer::singleShot(0, this, [&] {
        const QString dialogo = u"frmImpressao"_s;
        figura = Achar<forms::ClickZone>(dialogo, "imgFiguraDetalhada")->Tag;
        lista = Achar<forms::ClickZone>(dialogo, "imgListaComponentes")->Tag;
        Clicar(dialogo, "imgCancelar");
    });
    Clicar(Figura, "imgImprimir");
    QCOMPARE(figura + lista, u"10"_s);
    QCOMPARE(forms::MousePointer(), forms::vbDefault);
    QTRY_COMPARE(Acesos(), u"1:15"_s);
    QTRY_COMPARE(Acesos(), u"1:12"_s);

    Clicar(Figura, "imgListaComponentesFundo");
    IrNaLista("   2");
    Clicar(Lista, "imgFiguraDetalhadaFundo");
    QTRY_COMPARE(Acesos(), u"2:12 2:12"_s);
}

TEST(TestPassagens, theWaysBack) {
    // Without a button the window is closed.
    Each<bool, QString, QString, QStringList> row;
    for (const bool pelaLista : {false, true}) {
        const QByteArray por = pelaLista ? "list, figure" : "result, figure";
        row(por + " to parts", pelaLista, Figura, "imgResultadoPesquisaFundo", {Busca, Resultado});
        row(por + " closed", pelaLista, Figura, {}, {Busca, Resultado});
        row(por + " to search", pelaLista, Figura, "imgPesquisaFundo", {Busca});
    }
    row("list to parts", true, Lista, "imgResultadoPesquisaFundo", {Busca, Resultado});
    row("list to search", true, Lista, "imgPesquisaFundo", {Busca});
    for (const auto& [pelaLista, tela, botao, restam] : row) {
        pelaLista ? AbrirFiguraDoItem("   1") : AbrirFigura();
        if (tela == Lista) {
            Clicar(Figura, "imgListaComponentesFundo");
        }
        if (botao.isEmpty()) {
            forms::Form::Find(tela)->close();
        } else {
            Clicar(tela, botao);
        }
        QCOMPARE(TelasCarregadas(), restam);
        QVERIFY(Visivel(restam.last()));
    }
}

// From the parts' row and from the list's.
TEST(TestPassagens, aDoubleClickOnARowOpensTheFigure) {
    AbrirResultado("Peças", "12002");
    DuploCliqueEm(Resultado, "grdResultadoPesquisaPeca");
    QVERIFY(Visivel(Figura));
    QVERIFY(!Piscando());
    Clicar(Figura, "imgListaComponentesFundo");
    IrNaLista(" 100");
    DuploCliqueEm(Lista, "grdListaPecas");
    QVERIFY(Visivel(Figura));
    QVERIFY(Piscando());
}
