#include "support/janela.h"

// What the data and other computers can do to the part views.
struct TestEntradas : NaJanela<> {};

TEST(TestEntradas, aPartOfAThousandItems) {
    QStringList linhas;
    for (int i = 1; i <= 1000; ++i) {
        linhas += u"1, '%1', %2, %3"_s.arg(i, 4).arg(i % 3 + 1).arg(i);
    }
    Executar(List("DELETE FROM PECA_COMPONENTE") + Inserir("PECA_COMPONENTE", linhas));
    Janela::AbrirDaBusca("Peças", "12002");
    Clicar(Resultado, "imgListaComponentesFundo");
    auto* caixa = Achar<QLineEdit>(Lista, "txtItem");
    caixa->setFocus();
    QTest::keyClicks(caixa, u"1000"_s);
    QCOMPARE(Itens().size(), 1000);
    QCOMPARE(ItemAtualDaLista(), u"1000"_s);
}

// Every column that may be Null is Null, in every row that a screen can show.
TEST(TestEntradas, nullsEverywhere) {
    Executar(Comandos(TARVO_CASES "/nulls.data"));
    Janela::AbrirDaBusca("Peças", "12002");
    QCOMPARE(Pecas(), List("12002"));
    QCOMPARE(Coluna(Resultado, "dtcVeiculosPeca", "Veiculo"), List(QString()));
    Escolher(Resultado, "cboNumeroClienteConcorrentePeca", "Nº ");
    QCOMPARE(Pecas().size(), 2);
    Clicar(Resultado, "imgListaComponentesFundo");
    QCOMPARE(Itens().size(), 4);
    for (const char* caixa :
         {"txtDescricaoComponente", "txtNumeroTarvo", "txtNumeroClienteConcorrente", "txtItem"}) {
        auto* texto = Achar<QLineEdit>(Lista, caixa);
        texto->setFocus();
        QTest::keyClicks(texto, u"1"_s);
        QCOMPARE(Itens().size(), 4);
    }
    Achar<forms::ComboList>(Lista, "cboMostraNaListaPecas")->SetListIndex(1);
    QVERIFY(Itens().size() < 4);
    Clicar(Lista, "imgPesquisaFundo");
    QCOMPARE(TelasCarregadas(), List(Busca));
    Clicar(Busca, "imgPesquisa3");
    Clicar(Busca, "imgFigura(0)");
    QCOMPARE(janela_->Caixas(), QStringList());
}

// The search hands six digits over: a longer code is cut to another one.
TEST(TestEntradas, aCodeOfSevenDigitsIsCut) {
    Executar(Inserir("PECA", {"1234567, 'B8', 'Bujão', NULL, NULL, NULL",
                              "123456, 'B9', 'Bujão', NULL, NULL, NULL"}));
    Janela::AbrirDaBusca("Peças", "B8");
    QCOMPARE(Pecas(), List("B9"));
}

// Which touches nobody's own choice. Whoever comes back to a screen finds what was chosen there in
// force again.
TEST(TestEntradas, anotherComputerChoosesAnotherCustomer) {
    Janela::AbrirDaBusca("Peças", "12002");
    Escolher(Resultado, "cboNumeroClienteConcorrentePeca", "Nº Bravil");
    QCOMPARE(Pecas().size(), 2);
    Clicar(Resultado, "imgListaComponentesFundo");

    const OutroComputador outro;
    outro.banco->Execute(u"UPDATE CODIGOCLIENTECONCORRENTE SET CodigoClienteConcorrente = 9"_s);
    QCOMPARE(Itens().size(), 4);
    Escolher(Lista, "cboNumeroClienteConcorrenteComponente", "");
    Clicar(Lista, "imgResultadoPesquisaFundo");
    QVERIFY(QTest::qWaitForWindowActive(forms::Form::Find(Resultado)));
    QTRY_COMPARE(Valor("SELECT CodigoClienteConcorrente FROM CODIGOCLIENTECONCORRENTE"), u"7"_s);
    QCOMPARE(Pecas().size(), 2);
}
