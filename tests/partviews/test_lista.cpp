#include "partviews/lista_pecas.h"
#include "support/cases.h"
#include "support/janela.h"

struct TestLista : NaJanela<> {
    bool PainelVisivel() { return Achar(Lista, "pctJogosReparo")->isVisible(); }

    void init() override {
        NaJanela::init();
        Janela::AbrirDaBusca("Peças", "12002");
        Clicar(Resultado, "imgListaComponentesFundo");
        QVERIFY(QTest::qWaitForWindowActive(forms::Form::Find(Lista)));
    }
};

TEST(TestLista, oneRowPerItem) {
    QCOMPARE(Rotulo(Lista, "lblInf"), u"Peça: Válvula relé        Nº Tarvo: 12002"_s);
    Executar(
        {"UPDATE PECA_COMPONENTE SET QuantidadeComponente = 0.5 WHERE ItemComponente = '   2'"});
    Achar(Lista, "txtItem")->setFocus();
    QCOMPARE(
        Copiada(Lista, "grdListaPecas"),
        u"Item|Quantidade|Descrição|Nº Tarvo|Nº do cliente / 1|1|Corpo da válvula|K5600| / "
        "2|0,5|Válvula relé|12000| / 12a|2|Anel de vedação|A3400| / 100||Anel de vedação|A3400|"_s);
}

TEST(TestLista, eachThingHasItsPlace) {
    QCOMPARE(Desvios(Lista, "grdListaPecas",
                     {"txtItem", "txtItem", "txtDescricaoComponente", "txtNumeroTarvo",
                      "txtNumeroClienteConcorrente"}),
             u"0,-1 65,59 0,-1 0,-1 0,21"_s);
    // The title ends in front of the list of kits.
    const auto* titulo = Achar(Lista, "lblInf");
    QCOMPARE(Achar(Lista, "cboMostraNaListaPecas")->x() - titulo->geometry().right() +
                 titulo->contentsMargins().right(),
             7);
}

// Entering a box sorts by its column. Each line of seeks.data is a box, its column, what is typed
// and the item that it leads to. A customer's number keeps the digit in front of its letter.
TEST(TestLista, seeks) {
    for (const auto& [cells] : Lines(TARVO_CASES "/seeks.data")) {
        const QString& texto = cells.at(2);
        // In an order that no other column has.
        Executar({"INSERT INTO REFERENCIACRUZADA VALUES (7, 'K5600', '5A9')"});
        Escolher(Lista, "cboNumeroClienteConcorrenteComponente", "Nº Bravil");
        auto* digitada = Achar<QLineEdit>(Lista, cells.at(0));
        QTest::mouseClick(digitada, Qt::LeftButton);
        QVERIFY(std::ranges::is_sorted(Itens(cells.at(1))));
        QTest::keyClicks(digitada, texto);
        QCOMPARE(ItemAtualDaLista(), cells.at(3));
        QCOMPARE(digitada->text(), texto);
        QVERIFY(digitada->hasFocus());
    }
}

TEST(TestLista, thePanelFollowsTheCursor) {
    dao::Recordset* lista = Linhas(Lista, "dtcListaPecas");
    lista->FindFirst(u"ItemComponente = '   1'"_s);
    QVERIFY(!PainelVisivel());
    lista->FindFirst(u"ItemComponente = '  12a'"_s);
    QVERIFY(PainelVisivel());
    QCOMPARE(
        Copiada(Lista, "grdJogosReparoComponente"),
        u"Jogo de reparo|Nº Tarvo|Nº do cliente / Anel de vedação|A3401| / Válvula relé|12001|"_s);
}

TEST(TestLista, aKitFiltersTheList) {
    auto* filtro = Achar<forms::ComboList>(Lista, "cboMostraNaListaPecas");
    QCOMPARE(filtro->ListCount(), 3);
    filtro->SetListIndex(1);  // the kit that one item alone has
    QCOMPARE(Itens(), List("  12a"));
    QCOMPARE(Coluna(Lista, "dtcJogosReparoComponente", "CodigoJogoReparo").size(), 2);
    // Whoever takes the list along is told that it is not the whole one.
    QVERIFY(Copiada(Lista, "grdListaPecas")
                .startsWith(u"Só os componentes de: %1 / Item|"_s.arg(filtro->Text())));
    Executar({"DELETE FROM PECA_COMPONENTE_JOGOREPARO"});
    filtro->SetListIndex(0);
    QCOMPARE(Itens(), QStringList());
    QVERIFY(!PainelVisivel());
    const auto* grade = Achar<forms::BoundGrid>(Lista, "grdListaPecas");
    QTRY_COMPARE(grade->accessibleDescription(),
                 u"Nenhum componente dessa Peça faz parte do Jogo de Reparo."_s);
    Achar(Lista, "txtItem")->setFocus();
    QCOMPARE(grade->Tag, u"3"_s);
}

TEST(TestLista, kitsOfOneDescriptionShowTheirNumbers) {
    Executar({"UPDATE JOGOREPARO SET DescricaoJogoReparo = 'Reparo do diafragma'",
              "INSERT INTO PECA_COMPONENTE_JOGOREPARO VALUES (1, ' 100', 3)",
              "UPDATE JOGOREPARO SET DescricaoJogoReparo = 'Vedação' WHERE CodigoJogoReparo = 3"});
    forms::Form::Find(Lista)->Unload();
    UnicaInstancia<frmListaPecas>().Show();
    const auto* filtro = Achar<forms::ComboList>(Lista, "cboMostraNaListaPecas");
    QStringList linhas;
    for (int i = 0; i < filtro->ListCount(); ++i) {
        linhas += u"%1 %2"_s.arg(filtro->ItemData(i)).arg(filtro->itemText(i).simplified());
    }
    linhas.sort();
    QCOMPARE(linhas, List("-5 TODOS OS COMPONENTES", "1 Reparo do diafragma 12001",
                          "2 Reparo do diafragma A3401", "3 Vedação"));
}

TEST(TestLista, anItemWithAnApostropheIsText) {
    Executar({"UPDATE PECA_COMPONENTE SET ItemComponente = '1''a' WHERE ItemComponente = '  12a'",
              "UPDATE PECA_COMPONENTE_JOGOREPARO SET ItemComponente = '1''a' WHERE ItemComponente "
              "= '  12a'"});
    Achar(Lista, "txtItem")->setFocus();
    Linhas(Lista, "dtcListaPecas")->MoveLast();
    QCOMPARE(ItemAtualDaLista(), u"1'a"_s);
    QCOMPARE(Coluna(Lista, "dtcJogosReparoComponente", "CodigoJogoReparo").size(), 2);
    Achar(Lista, "txtDescricaoComponente")->setFocus();
    QCOMPARE(ItemAtualDaLista(), u"1'a"_s);  // across a new order
    QVERIFY(PainelVisivel());
}

TEST(TestLista, numbersOfTheChosenCustomer) {
    auto* combo = Achar<forms::ComboList>(Lista, "cboNumeroClienteConcorrenteComponente");
    Linhas(Lista, "dtcListaPecas")->FindFirst(u"ItemComponente = ' 100'"_s);
    combo->SetListIndex(1);
    QCOMPARE(ItemAtualDaLista(), u" 100"_s);
    QCOMPARE(Itens("NumeroClienteConcorrente"), List("B2", "B2", QString(), QString()));
    QCOMPARE(Rotulo(Lista, "lblNumeroClienteConcorrente"), u"Nº Bravil"_s);
}

TEST(TestLista, thePrintButtonOpensTheDialogOnTheList) {
    QString marca;
    QTimer::singleShot(0, this, [&marca] {
        marca = Achar<forms::ClickZone>("frmImpressao", "imgListaComponentes")->Tag;
        forms::Form::Find(u"frmImpressao"_s)->close();
    });
    Clicar(Lista, "imgImprimir");  // comes back when the dialog is gone
    QCOMPARE(marca, u"1"_s);
    Clicar(Lista, "imgFiguraDetalhadaFundo");
    QCOMPARE(janela_->Caixas(), List("64 Essa Peça não possui Figura Detalhada."));
    QCOMPARE(forms::Form::Active(), forms::Form::Find(Lista));
}
