#include "figura.h"
#include "support/cases.h"

#include <QRegularExpression>

struct TestPassagens : NaFigura {};

// The cases of blinking.data, which tells how they are written. The template counts for " 100," and
// "10," too: its "0," is in them.
TEST(TestPassagens, whatWasChosenBlinks) {
    for (auto [one] : Cases(TARVO_CASES "/blinking.data")) {
        const QStringList busca = one.Take(u'<');
        const QString item = one.Take(u'-').join(QString());
        const qsizetype jogo = one.Take(u'+').size();
        const QStringList caixas = one.Take(u'?');
        const QString acesos = one.Take(u'*').join(QString());
        if (!caixas.isEmpty()) {
            Executar({"DELETE FROM FIGURADETALHADA WHERE CodigoFiguraDetalhada IN (1, 4)"});
        }
        Mao::AbrirDaBusca(busca.at(0), busca.at(1));
        if (!item.isEmpty()) {
            Clicar(Resultado, "imgListaComponentesFundo");
            IrNaLista(item);
        }
        for (int i = 0; i < jogo; ++i) {
            Linhas(Lista, "dtcJogosReparoComponente")->MoveNext();
        }
        Clicar(item.isEmpty() ? Resultado : Lista, "imgFiguraDetalhadaFundo");
        QVERIFY(Visivel(Figura) && !Visivel(Resultado) && !Visivel(Lista));
        QCOMPARE(ParametroFormulario, QString());
        QTRY_COMPARE(Acesos(), QString(acesos).replace(QRegularExpression(u":\\d+"_s), u":15"_s));
        QTRY_COMPARE(Acesos(), acesos);
        QCOMPARE(Piscando(), !acesos.isEmpty());
        QCOMPARE(Rotulos(), one.lines.value(0, u"||"_s));
        QCOMPARE(janela_->Caixas(), caixas);
        QCOMPARE(forms::MousePointer(), forms::vbDefault);
    }
}

TEST(TestPassagens, anEmptyListMarksNothing) {
    AbrirListaNoItem("   1");
    Executar({"DELETE FROM PECA_COMPONENTE_JOGOREPARO"});
    Escolher(Lista, "cboMostraNaListaPecas", "Anel de vedação");
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
    Mao::AbrirDaBusca("Jogos de Reparo", "K560");
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
    for (const auto& [pelaLista, tela, botao, restam] : Each<bool, QString, QString, QStringList>{
             {"to parts", false, Figura, "imgResultadoPesquisaFundo", {Busca, Resultado}},
             {"list, to parts", true, Figura, "imgResultadoPesquisaFundo", {Busca, Resultado}},
             {"list, closed", true, Figura, "", {Busca, Resultado}},
             {"list, to search", true, Figura, "imgPesquisaFundo", {Busca}},
             {"list's to parts", true, Lista, "imgResultadoPesquisaFundo", {Busca, Resultado}},
             {"list's to search", true, Lista, "imgPesquisaFundo", {Busca}},
         }) {
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
    Mao::AbrirDaBusca("Peças", "12002");
    DuploCliqueEm(Resultado, "grdResultadoPesquisaPeca");
    QVERIFY(Visivel(Figura));
    QVERIFY(!Piscando());
    Clicar(Figura, "imgListaComponentesFundo");
    IrNaLista(" 100");
    DuploCliqueEm(Lista, "grdListaPecas");
    QVERIFY(Visivel(Figura));
    QVERIFY(Piscando());
}
