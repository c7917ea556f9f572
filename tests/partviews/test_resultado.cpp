#include "support/cases.h"
#include "support/janela.h"

struct TestResultado : NaJanela<> {};

// Each line of parts.data is a kind, a number, the title that it gives and the parts, which follow
// it.
TEST(TestResultado, everyKindLeadsToItsParts) {
    for (const auto& [cells] : Lines(TARVO_CASES "/parts.data")) {
        const QString& numero = cells.at(1);
        Janela::AbrirDaBusca(cells.first(), numero);
        QVERIFY(!gFrmPesquisa->isVisible());
        QCOMPARE(Rotulo(Resultado, "lblInf"), cells.at(2));
        QCOMPARE(Pecas(), cells.mid(3));
        QCOMPARE(ParametroFormulario, QString());
        Clicar(Resultado, "imgPesquisaFundo");
        QVERIFY(gFrmPesquisa->isVisible());
        QCOMPARE(TelasCarregadas(), List(Busca));
        QCOMPARE(Achar<QLineEdit>(Busca, "txtNumeroTarvo")->text(), numero);
    }
}

TEST(TestResultado, vehiclesAndPicturesLeadToTheirParts) {
    Janela::Abrir();
    Digitar(Busca, "txtVeiculo", "bravil");
    Clicar(Busca, "imgPesquisa2");
    Clicar(Busca, "pctResultadoPesquisaFundo(1)");
    QCOMPARE(Pecas(), List("12002"));
    QCOMPARE(Rotulo(Resultado, "lblInf"),
             u"Veículo: Bravil 1620               Fabricante: Bravil"_s);
    QCOMPARE(Copiada(Resultado, "grdVeiculosPeca"), u"Veículo|Fabricante / Bravil 1620|Bravil"_s);
    Clicar(Resultado, "imgPesquisaFundo");
    DuploCliqueEm(Busca, "grdPesquisa2");
    QCOMPARE(Pecas(), List("12002"));
    Clicar(Resultado, "imgPesquisaFundo");

    Clicar(Busca, "imgPesquisa3");
    Clicar(Busca, "imgFigura(2)");
    Clicar(Busca, "pctResultadoPesquisaFundo(2)");
    QCOMPARE(Pecas(), List("12002", "A3402"));
    QCOMPARE(Rotulo(Resultado, "lblInf"), u"Figura: Válvulas"_s);
}

TEST(TestResultado, rowsThatLeadNowhereStay) {
    Janela::AbrirDaBusca("Jogos de Reparo", "K560");  // a kit that nothing uses
    Digitar(Busca, "txtNumeroTarvo", "ZZZ");
    Clicar(Busca, "pctResultadoPesquisaFundo(0)");
    QCOMPARE(janela_->Caixas(), List("64 Nenhuma Peça faz referência ao item selecionado.",
                                     "16 Nenhum item selecionado."));
    QVERIFY(gFrmPesquisa->isVisible());
    QCOMPARE(TelasCarregadas(), List(Busca));
}

TEST(TestResultado, aRowDeletedMeanwhileOpensAnEmptyList) {
    Janela::Abrir();
    Digitar(Busca, "txtNumeroTarvo", "12002");
    Executar({"DELETE FROM PECA WHERE CodigoPeca = 1"});
    Clicar(Busca, "imgPesquisa1");
    Clicar(Busca, "pctResultadoPesquisaFundo(0)");
    QCOMPARE(Pecas(), QStringList());
    QCOMPARE(Achar(Resultado, "grdResultadoPesquisaPeca")->accessibleDescription(),
             u"Nenhuma Peça encontrada."_s);
    Clicar(Resultado, "imgListaComponentesFundo");
    Clicar(Resultado, "imgFiguraDetalhadaFundo");
    QCOMPARE(janela_->Caixas(), List("16 Nenhuma Peça encontrada.", "16 Nenhuma Peça encontrada."));
}

TEST(TestResultado, customerIsInForceHereAndGivenBack) {
    Janela::AbrirDaBusca("Peças", "12002");
    auto* combo = Achar<forms::ComboList>(Resultado, "cboNumeroClienteConcorrentePeca");
    QCOMPARE(combo->SelectedItemData(), SemCliente);
    QCOMPARE(Pecas("NumeroClienteConcorrente"), List(QString()));
    combo->SetListIndex(1);
    QCOMPARE(
        Copiada(Resultado, "grdResultadoPesquisaPeca"),
        u"Nº Tarvo|Descrição|Nº do cliente / 12002|Válvula relé|A71 / 12002|Válvula relé|A72"_s);

    Clicar(Resultado, "imgListaComponentesFundo");
    combo = Achar<forms::ComboList>(Lista, "cboNumeroClienteConcorrenteComponente");
    QCOMPARE(combo->SelectedItemData(), 7);
    QVERIFY(!Visivel(Resultado));
    Clicar(Lista, "imgResultadoPesquisaFundo");
    QVERIFY(Visivel(Resultado));
    QCOMPARE(Pecas("NumeroClienteConcorrente").size(), 2);
}

TEST(TestResultado, aSingleVisibleRowBringsTheOthersBack) {
    for (const auto& [linhas] : Each<QStringList>{List(), List("3, '   1', 3, 1")}) {
        Executar(Inserir("PECA_COMPONENTE", linhas));
        Janela::AbrirDaBusca("Componentes", "K560");
        auto* grade = Achar<forms::BoundGrid>(Resultado, "grdResultadoPesquisaPeca");
        const auto veiculos = [] { return Coluna(Resultado, "dtcVeiculosPeca", "Veiculo"); };
        const QStringList dosPrimeiros = veiculos();
        QVERIFY(!dosPrimeiros.isEmpty());
        const QSize inteira = grade->size();
        grade->resize(inteira.width(), 20);
        QCOMPARE(grade->VisibleRows(), 1);
        dao::Recordset* pecas = Linhas(Resultado, "dtcResultadoPesquisaPeca");
        QTest::keyClick(grade, Qt::Key_Down);
        QCOMPARE(veiculos(), dosPrimeiros);  // the row change ends with the rows in view
        QCOMPARE(grade->currentIndex().row(), 1);
        QCOMPARE(grade->rowAt(0), int(pecas->RecordCount()) - 1);
        grade->resize(inteira);
        pecas->SetAbsolutePosition(0);
        pecas->MoveNext();
        QVERIFY(veiculos() != dosPrimeiros);
    }
}

TEST(TestResultado, partsWithoutListOrFigureSaySo) {
    Janela::AbrirDaBusca("Peças", "K5602");
    Clicar(Resultado, "imgListaComponentesFundo");
    Clicar(Resultado, "imgFiguraDetalhadaFundo");
    QCOMPARE(janela_->Caixas(), List("64 Essa Peça não possui Lista de Componentes.",
                                     "64 Essa Peça não possui Figura Detalhada."));
    QCOMPARE(TelasCarregadas(), List(Busca, Resultado));
    QCOMPARE(Achar(Resultado, "grdVeiculosPeca")->accessibleDescription(),
             u"Nenhum veículo cadastrado para essa Peça."_s);
}

TEST(TestResultado, photoStaysWhenTheNextOneIsMissing) {
    WritePicture(janela_->catalogo.Pasta() + u"/FotoPeca/PECA1.PNG"_s, {6400, 4800}, Qt::darkCyan,
                 "JPG");
    Janela::AbrirDaBusca("Componentes", "K560");
    auto* figura = Achar<forms::Picture>(Resultado, "imgFotoPeca");
    const qint64 primeira = figura->Pixmap().cacheKey();
    // Thirty megapixels are kept as small as they are shown.
    const QSizeF lugar = figura->Pixmap().deviceIndependentSize();
    QVERIFY(lugar.width() > 240 && lugar.width() <= 250 && lugar.height() <= 195);
    QCOMPARE(figura->accessibleName(), u"Foto da peça"_s);
    Linhas(Resultado, "dtcResultadoPesquisaPeca")->MoveNext();
    QCOMPARE(figura->Pixmap().cacheKey(), primeira);
}
