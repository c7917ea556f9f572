#include "gravador.h"

// The dialog and the job, on a device that records.
struct TestImpressao : NoGravador {};

TEST(TestImpressao, firstTicksAndWaysOut) {
    const auto cancelar = [this] { Clicar("imgCancelar"); };
    for (const auto& [parametro, marcas, sair] : Each<QString, QString, std::function<void()>>{
             {"figure, button", "FD:1LC:0", "10", cancelar},
             {"list, key", "FD:0LC:1", "01", [this] { QTest::keyClick(form_, Qt::Key_Escape); }},
             {"markers count, not places; closed", "LC:1 FD:0", "01", [this] { form_->close(); }},
             {"nothing", "", "00", cancelar},
         }) {
        Abrir(parametro);
        QVERIFY(!frmImpressao::Imprimindo());
        QCOMPARE(Marcas(), marcas);
        QCOMPARE(Find<QWidget>(*form_, "imgFiguraDetalhada").accessibleName() + u'/' +
                     Find<QWidget>(*form_, "imgListaComponentes").accessibleName(),
                 u"Figura detalhada/Lista de componentes"_s);
        QCOMPARE(form_->Picture()->size(), form_->Background()->Size());
        QCOMPARE(ParametroFormulario, QString());
        QCOMPARE(forms::MousePointer(), forms::vbDefault);
        sair();
        QVERIFY(!Aberto() && folha_.passos.isEmpty());
    }
}

// The mouse going down asks the data each time a box is to be ticked.
TEST(TestImpressao, ticks) {
    Abrir("FD:0LC:1");
    auto& lista = Find<QWidget>(*form_, "imgListaComponentes");
    QTest::mousePress(&lista, Qt::LeftButton);
    QCOMPARE(Marcas(), u"00"_s);
    QTest::mouseRelease(&lista, Qt::LeftButton);
    QCOMPARE(Marcas(), u"00"_s);
    Clicar("imgListaComponentes");
    Clicar("imgFiguraDetalhada");
    QCOMPARE(Marcas(), u"01"_s);
    catalogo_->Executar(
        {"UPDATE PECA SET CodigoFigura = 1 WHERE CodigoPeca = 1", "DELETE FROM PECA_COMPONENTE"});
    Clicar("imgFiguraDetalhada");
    Clicar("imgListaComponentes");
    Clicar("imgListaComponentes");
    QCOMPARE(Marcas(), u"10"_s);
    QCOMPARE(Caixas(), List("64 Essa Peça não possui Figura Detalhada.",
                            "64 Essa Peça não possui Lista de Componentes."));
}

TEST(TestImpressao, failures) {
    Each<QString, QString, QStringList, bool> row;
    const QString impressora = u"16 Erro nº: 482\nErro de impressora"_s;
    row("nothing ticked", "FD:0LC:0", {}, {"16 Nenhuma opção de impressão selecionada."}, true);
    row("cancelled", "FD:1LC:1", "dialogo", {}, true);
    row("font refused", "FD:0LC:1", "letra", {}, false);
    row("no printer: each section, and the job goes on", "FD:1LC:1", "comeco",
        {impressora, impressora}, false);
    row("not taken at the end", "FD:0LC:1", "fim", {impressora}, true);
    for (const auto& [parametro, onde, caixas, aberto] : row) {
        cancelar_ = onde == u"dialogo";
        preparar_ = [&onde = onde](Gravador& gravador) { gravador.FalharAntesDe(onde); };
        DarFigura({{u"   1"_s, {1, 1}}});
        Imprimir(parametro);
        QCOMPARE(Caixas(), caixas);
        QCOMPARE(Aberto(), aberto);
        QCOMPARE(forms::MousePointer(), forms::vbDefault);
        if (onde == u"fim") {  // a second press starts over
            preparar_ = [](Gravador&) {};
            folha_ = {};
            Clicar("imgOk");
            QCOMPARE(folha_.textos.value(3).texto, u"Página: 1"_s);
        }
        QCOMPARE(folha_.passos.contains(u"fim"_s),
                 onde != u"comeco" && onde != u"dialogo" && !parametro.contains(u"FD:0LC:0"_s));
    }
}

// What would fall off a sheet is said before anything is printed; the heights are those of the
// printable area in page units, of A4, of a figure's page and of A5.
TEST(TestImpressao, smallPaper) {
    for (const auto& [parametro, altura, resposta, pergunta, impresso] :
         Each<QString, double, int, bool, bool>{
             {"list on A4", "FD:0LC:1", 2875, 0, false, true},
             {"list on A5, no", "FD:1LC:1", 1997, forms::vbNo, true, false},
             {"list on A5, yes", "FD:0LC:1", 1997, forms::vbYes, true, true},
             {"the last row whole", "FD:0LC:1", 2480, 0, false, true},
             {"the last row cut", "FD:0LC:1", 2479, forms::vbNo, true, false},
             {"figure where a list would not go", "FD:1LC:0", 2090, 0, false, true},
             {"figure on A5", "FD:1LC:0", 1997, forms::vbNo, true, false},
         }) {
        preparar_ = [altura](Gravador& gravador) { gravador.altura = altura; };
        DarFigura({{u"   1"_s, {1, 1}}});
        Abrir(parametro);
        const BoxAnswers respostas({resposta});
        Clicar("imgOk");
        QCOMPARE(respostas.Boxes().size(), pergunta ? 1 : 0);
        QCOMPARE(folha_.passos.contains(u"fim"_s), impresso);
        QCOMPARE(Aberto(), !impresso);
        QCOMPARE(forms::MousePointer(), forms::vbDefault);
    }
}

// A job lets events through; none of them may start another or take the dialog away.
TEST(TestImpressao, eventsDuringAJob) {
    preparar_ = [this](Gravador& gravador) {
        gravador.antes = [this](const QString& passo) {
            if (passo == u"comeco") {
                QTimer::singleShot(0, form_, [this] {
                    Clicar("imgOk");
                    Clicar("imgCancelar");
                    Clicar("imgListaComponentes");
                    form_->close();
                    QVERIFY(Aberto() && frmImpressao::Imprimindo());
                    QCOMPARE(Marcas(), u"01"_s);
                    folha_.passos += u"eventos"_s;
                });
            }
        };
        gravador.alturas[10] = 2000;  // every row takes a page
    };
    Imprimir("FD:0LC:1");
    QVERIFY(folha_.passos.contains(u"eventos"_s));
    QCOMPARE(folha_.passos.count(u"fim"_s), 1);
    QVERIFY(!Aberto() && !frmImpressao::Imprimindo());
}
