#include "support/cases.h"
#include "support/janela.h"
#include "support/servers.h"

struct TestPesquisa : NaJanela<> {
    bool Aberto(int i) { return Achar(Busca, u"pctTelaPesquisa(%1)"_s.arg(i))->isVisible(); }
    static bool Focado(const AnyText& nome) { return Achar(Busca, nome)->hasFocus(); }

    void init() override {
        NaJanela::init();
        Janela::Abrir();
    }
};

TEST(TestPesquisa, opensWithNothingButTheButtons) {
    QVERIFY(!Aberto(0) && !Aberto(1) && !Aberto(2));
    const auto lista = [](const AnyText& nome) { return Achar<forms::ComboList>(Busca, nome); };
    QCOMPARE(lista("cboTipo")->Text(), u"TODOS OS TIPOS"_s);
    QCOMPARE(lista("cboFabricante")->Text(), u"TODOS OS FABRICANTES"_s);
    QCOMPARE(lista("cboNumeroClienteConcorrente")->SelectedItemData(), SemCliente);
    QCOMPARE(Rotulo(Busca, "lblEmissao"), u"05-MAR-2026 - teste"_s);
}

// The cases of searches.data, which tells how they are written.
TEST(TestPesquisa, findsWhatIsAskedFor) {
    for (auto [one] : Cases(TARVO_CASES "/searches.data")) {
        Executar(one.Take(u'!'));
        for (const QString& passo : std::as_const(one.lines)) {
            const QString nome = passo.section(u'=', 0, 0);
            const QString texto = passo.section(u'=', 1);
            if (nome.startsWith("cbo"_L1)) {
                Escolher(Busca, nome, texto);
            } else if (nome.startsWith("txt"_L1)) {
                Digitar(Busca, nome, texto);
            } else if (nome.startsWith("grd"_L1)) {
                QCOMPARE(Like(Copiada(Busca, nome), texto), texto);
            } else if (nome.startsWith("? "_L1)) {
                QTRY_COMPARE(Achar(Busca, nome.mid(2))->accessibleDescription(), texto);
            } else {
                const bool deVeiculos = nome == "Veiculo"_L1 || nome == "Fabricante"_L1;
                const AnyText fonte = deVeiculos ? "dtcPesquisa2" : "dtcPesquisa1";
                QCOMPARE(Coluna(Busca, fonte, nome).join(u", "_s), texto);
            }
        }
    }
}

// Only a vehicle maker goes along to the parts.
TEST(TestPesquisa, aChosenCustomerTravelsWithTheRow) {
    for (const auto& [cliente, numero, levado] : Each<QString, QString, int>{
             {"vehicle maker", "Nº Bravil", "12002", 7},
             {"competitor", "Nº Zenpar", "A3400", SemCliente},
             {"nobody", "", "12002", SemCliente},
         }) {
        gCodigoClienteConcorrente = 99;
        Escolher(Busca, "cboNumeroClienteConcorrente", cliente);
        Digitar(Busca, "txtNumeroTarvo", numero);
        Clicar(Busca, "imgPesquisa1");
        DuploCliqueEm(Busca, "grdPesquisa1");
        QCOMPARE(int(gCodigoClienteConcorrente), levado);
    }
}

TEST(TestPesquisa, aDoubleClickOnAnEmptyGridIsAnswered) {
    for (const QChar i : {u'1', u'2'}) {
        Clicar(Busca, u"imgPesquisa"_s + i);
        DuploCliqueEm(Busca, u"grdPesquisa"_s + i, {30, 50});
    }
    QCOMPARE(janela_->Caixas(), List("16 Nenhum item selecionado.", "16 Nenhum item selecionado."));
}

TEST(TestPesquisa, onePanelAtATime) {
    Clicar(Busca, "imgPesquisa1");
    QVERIFY(Aberto(0));
    Digitar(Busca, "txtNumeroTarvo", "12");

    Clicar(Busca, "imgPesquisa3");
    QVERIFY(!Aberto(0));
    ClickAt(*gFrmPesquisa, {300, 300});
    QVERIFY(!Aberto(2));
    Clicar(Busca, "imgPesquisa1");
    QCOMPARE(Achar<QLineEdit>(Busca, "txtNumeroTarvo")->text(), u"12"_s);
    Clicar(Busca, "pctBarraAtualizacao");
    QVERIFY(!Aberto(0));
}

TEST(TestPesquisa, theWayRound) {
    Clicar(Busca, "imgPesquisa1");
    QTRY_VERIFY(Focado("txtNumeroTarvo"));
    QCOMPARE(Volta(Busca, "txtNumeroTarvo"),
             u"Nº Tarvo, Descrição, Nº do cliente ou concorrente, Cliente ou concorrente, Tipo, "
             "Resultado da pesquisa, Abrir a linha escolhida, Pesquisar por veículo, Pesquisar por "
             "figura, Conheça a Tarvo, Ajuda, Sair do catálogo, Configurações, Verificar "
             "atualizações, Minimizar a janela"_s);
    Clicar(Busca, "imgPesquisa2");
    QTRY_VERIFY(Focado("txtVeiculo"));
    QCOMPARE(Volta(Busca, "txtVeiculo").section(u", "_s, 0, 5),
             u"Veículo, Fabricante, Veículos encontrados, Abrir a linha escolhida, Pesquisar "
             "peças, componentes e jogos de reparo"_s);
    Clicar(Busca, "imgPesquisa3");
    QTRY_VERIFY(Focado("pctPesquisaFiguras"));
    QCOMPARE(Volta(Busca, "pctPesquisaFiguras").section(u", "_s, 0, 2),
             u"Figuras do catálogo, Rolar as figuras, Abrir a linha escolhida"_s);
    QCOMPARE(Achar(Busca, "imgFigura(2)")->accessibleName(), u"Figura 3"_s);
}

TEST(TestPesquisa, lightFollowsTheMouse) {
    const QPoint barra = Achar(Busca, "pctBarraAtualizacao")->geometry().center();
    QCOMPARE(Luzes(Busca, barra,
                   {"imgPesquisa1", "imgPesquisa2", "imgPesquisa3", "imgConhecaTarvo", "imgAjuda",
                    "imgSair", "imgConfiguracoes", "pctVerificarAtualizacoes"}),
             u"PESQUISA1 PESQUISA2 PESQUISA3 CONHECATARVO AJUDA SAIR CONFIGURACOES VERIFICAR"_s);
    const char* dentro[] = {"grdPesquisa1", "grdPesquisa2", "imgFigura(1)"};
    for (const int i : {0, 1, 2}) {
        Clicar(Busca, u"imgPesquisa%1"_s.arg(i + 1));
        for (const QString& nome : List(dentro[i], u"pctTelaPesquisa(%1)"_s.arg(i))) {
            const QPoint lugar = Achar(Busca, nome)->mapTo(gFrmPesquisa->Picture(), QPoint(9, 9));
            QCOMPARE(Luzes(Busca, lugar, {u"pctResultadoPesquisaFundo(%1)"_s.arg(i)}),
                     u"RESULTADOPESQUISA%1"_s.arg(i));
        }
    }
}

// The last one goes on to the bar.
TEST(TestPesquisa, columnsStandUnderTheirBoxes) {
    QCOMPARE(Desvios(Busca, "grdPesquisa1",
                     {"txtNumeroTarvo", "txtDescricao", "txtNumeroClienteConcorrente", "cboTipo"}),
             u"0,-1 0,-1 0,-1 1,21"_s);
    QCOMPARE(Desvios(Busca, "grdPesquisa2", {"txtVeiculo", "cboFabricante"}), u"0,-1 0,21"_s);
}

TEST(TestPesquisa, theButtonsOpenTheirScreens) {
    for (const auto& [botao, tela] : {std::pair("imgConfiguracoes", u"frmConfiguracoes"_s),
                                      std::pair("imgConhecaTarvo", u"frmConhecaTarvo"_s)}) {
        bool aberta = false;
        QTimer::singleShot(0, this, [&, nome = tela] {
            aberta = Visivel(nome);
            GravarClienteConcorrente(7);  // as a screen with a selector of its own does
            forms::Form::Find(nome)->close();
        });
        Clicar(Busca, botao);
        QVERIFY2(aberta, botao);
        QTRY_COMPARE(Valor("SELECT CodigoClienteConcorrente FROM CODIGOCLIENTECONCORRENTE"),
                     u"-5"_s);
    }
    Clicar(Busca, "imgAjuda");  // there is none
    QVERIFY(janela_->Caixas().join(u'|').startsWith(u"16 Erro nº: 53"_s));
    Clicar(Busca, "imgMinimizar");
    QVERIFY(gFrmPesquisa->isMinimized());
    Clicar(Busca, "imgSair");
    QCOMPARE(TelasCarregadas(), List("frmCreditos"));
}

TEST(TestPesquisa, anyTextIsSearchedWithoutHarm) {
    for (const QString& texto :
         {QString(10000, u'x'), u"'"_s, u"?#*[a-c][!x]"_s, u"\U0001F527\U0001F680"_s,
          u"שלום مرحبا"_s, u"a\tb\u0001c\u2028d"_s, QString(QChar(0xD83D)), u"?????"_s,
          u"\" -- /* ; DROP TABLE PECA"_s}) {
        for (const char* caixa :
             {"txtNumeroTarvo", "txtDescricao", "txtNumeroClienteConcorrente", "txtVeiculo"}) {
            Digitar(Busca, caixa, texto);
            Digitar(Busca, caixa, "");
        }
        QVERIFY2(Coluna(Busca, "dtcPesquisa1", "NumeroTarvo").size() == 9,
                 qPrintable(texto.left(20)));
    }
}

TEST(TestPesquisa, aReloadReplacesTheScreen) {
    Digitar(Busca, "txtNumeroTarvo", "12");
    ReiniciarPrograma = true;
    VerificacaoAutomatica = false;
    RecarregarFormularios(QString());
    QVERIFY(!ReiniciarPrograma && VerificacaoAutomatica);
    QCOMPARE(TelasCarregadas(), List(Busca));
    QCOMPARE(Achar<QLineEdit>(Busca, "txtNumeroTarvo")->text(), QString());
}
