#include "support/janela.h"

struct TestPesquisa : NaJanela<> {
    static QStringList Pecas(const AnyText& campo) { return Coluna(Busca, "dtcPesquisa1", campo); }
    QStringList Veiculos(const AnyText& campo) { return Coluna(Busca, "dtcPesquisa2", campo); }
    static QString ClienteEmVigor() {
        return Valor("SELECT CodigoClienteConcorrente FROM CODIGOCLIENTECONCORRENTE");
    }
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

// Inputs of the panel, the number last, and the columns of the rows that come of it.
TEST(TestPesquisa, findsTheParts) {
    const QString pecas = u"Peças"_s;
    const QString itens = u"Componentes"_s;
    for (const auto& [cliente, tipo, numeroCliente, descricao, numero, colunas] :
         Each<QString, QString, QString, QString, QString, QString>{
             {"a maker's", "Nº Bravil", pecas, "0A-7", "", "1",
              "12002, 12002|A71, A72|Peça, Peça|1, 1"},
             {"in their order", "Nº Bravil", itens, "B", "", "",
              "A3400, A3400|B2, B9|Componente, Componente|2, 2"},
             {"a competitor's, whole", "Nº Zenpar", itens, "055", "", "", "A3400|55|Componente|2"},
             {"a competitor's, its beginning", "Nº Zenpar", itens, "5", "", "", "|||"},
             {"no number, no column", "Nº Zenpar", itens, "", "", "a340", "A3400||Componente|2"},
             {"keeps its first digit", "Nº Zenpar", pecas, "05-b5", "", "", "K5602|5B5|Peça|3"},
             {"apostrophe", "", pecas, "", " d'água ", "", "7||Peça|7"},
             {"letter", "", "Jogos de Reparo", "", "", "1k-560", "K5601||Jogo de Reparo|3"},
         }) {
        Executar(Inserir("PECA", {"7, '7', 'D´água', NULL, NULL, NULL"}) +
                 Inserir("REFERENCIACRUZADA", {"9, 'K5602', '5B5'", "9, 'K5602', '55B'"}));
        Escolher(Busca, "cboNumeroClienteConcorrente", cliente);
        Escolher(Busca, "cboTipo", tipo);
        Digitar(Busca, "txtNumeroClienteConcorrente", numeroCliente);
        Digitar(Busca, "txtDescricao", descricao);
        Digitar(Busca, "txtNumeroTarvo", numero);
        QStringList vistas;
        for (const char* campo : {"NumeroTarvo", "NumeroClienteConcorrente", "Tipo", "Codigo"}) {
            vistas += Pecas(campo).join(u", "_s);
        }
        QCOMPARE(vistas.join(u'|'), colunas);
    }
}

TEST(TestPesquisa, everyKindComesInTheOrderOfTheControlThatWasTouched) {
    Digitar(Busca, "txtDescricao", "*VÁLVULA");
    QCOMPARE(Pecas("Descricao"), List("Corpo da válvula", "Corpo da válvula", "Corpo da válvula",
                                      "Válvula relé", "Válvula relé", "Válvula relé"));
    Digitar(Busca, "txtDescricao", "");
    QCOMPARE(Pecas("Descricao").mid(2, 2), List("Anel de vedação", "Corpo da válvula"));
    Digitar(Busca, "txtNumeroTarvo", "k");
    Digitar(Busca, "txtNumeroTarvo", "");
    QCOMPARE(Pecas("NumeroTarvo").mid(2, 2), List("12002", "A3400"));

    Escolher(Busca, "cboTipo", "Componentes");
    Escolher(Busca, "cboTipo", "TODOS OS TIPOS");
    QCOMPARE(Pecas("Tipo").first(), u"Componente"_s);
    QCOMPARE(Pecas("NumeroTarvo"),
             List("12000", "A3400", "K5600", "12001", "A3401", "K5601", "12002", "A3402", "K5602"));
}

TEST(TestPesquisa, aCopiedListTellsWhatShortenedIt) {
    const auto primeira = [](const AnyText& grade) {
        return Copiada(Busca, grade).section(u" / "_s, 0, 0);
    };
    Escolher(Busca, "cboTipo", "Peças");
    Digitar(Busca, "txtNumeroTarvo", "1200");
    Escolher(Busca, "cboNumeroClienteConcorrente", "Nº Bravil");
    QCOMPARE(Copiada(Busca, "grdPesquisa1"),
             u"Só as linhas com Nº Tarvo: 1200; Tipo: Peças / "
             "Nº Tarvo|Descrição|Nº do cliente|Tipo / "
             "12002|Válvula relé|A71|Peça / 12002|Válvula relé|A72|Peça"_s);
    Escolher(Busca, "cboTipo", "TODOS OS TIPOS");
    Digitar(Busca, "txtNumeroTarvo", "");
    QCOMPARE(primeira("grdPesquisa1"), u"Nº Tarvo|Descrição|Nº do cliente|Tipo"_s);
    Digitar(Busca, "txtVeiculo", "c");
    QCOMPARE(primeira("grdPesquisa2"), u"Só as linhas com Veículo: c"_s);
}

// A letter without accent stands for all its forms, one with an accent for itself.
TEST(TestPesquisa, accentsNeedNotBeTyped) {
    Digitar(Busca, "txtDescricao", "*valvula rele");
    QCOMPARE(Pecas("Descricao"), List("Válvula relé", "Válvula relé", "Válvula relé"));
    Digitar(Busca, "txtDescricao", "valvulà");
    QCOMPARE(Pecas("Descricao"), List());
    Executar({"UPDATE VEICULO SET DescricaoVeiculo = 'Ônibus' WHERE CodigoVeiculo = 2"});
    Digitar(Busca, "txtVeiculo", "onibus");
    QCOMPARE(Veiculos("Veiculo"), List("Ônibus"));
}

TEST(TestPesquisa, choosingAMakerPutsItInForceBeforeTheSearch) {
    Escolher(Busca, "cboNumeroClienteConcorrente", "Nº Bravil");
    QCOMPARE(ClienteEmVigor(), u"7"_s);
    // Two parts have two of the maker's numbers each; those without one come first.
    QCOMPARE(Pecas("NumeroClienteConcorrente").size(), 11);
    QCOMPARE(Pecas("NumeroClienteConcorrente").mid(7), List("A71", "A72", "B2", "B9"));
    Escolher(Busca, "cboNumeroClienteConcorrente", "");
    QCOMPARE(ClienteEmVigor(), u"-5"_s);
}

TEST(TestPesquisa, searchesVehicles) {
    Digitar(Busca, "txtVeiculo", "c");
    QCOMPARE(Veiculos("Veiculo"), List("Cavalo 2040"));
    Escolher(Busca, "cboFabricante", "Bravil");
    QCOMPARE(Copiada(Busca, "grdPesquisa2").section(u" / "_s, 1),
             u"Veículo|Fabricante / Cavalo 2040|Bravil"_s);
    Digitar(Busca, "txtVeiculo", "");
    QCOMPARE(Veiculos("Fabricante").size(), 2);
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

// A double click on it is answered, too.
TEST(TestPesquisa, anEmptyGridSaysWhy) {
    for (const QChar i : {u'1', u'2'}) {
        Clicar(Busca, u"imgPesquisa"_s + i);
        DuploCliqueEm(Busca, u"grdPesquisa"_s + i, {30, 50});
    }
    QCOMPARE(janela_->Caixas(), List("16 Nenhum item selecionado.", "16 Nenhum item selecionado."));
    const auto dito = [](const AnyText& nome) {
        return Achar<forms::BoundGrid>(Busca, nome)->accessibleDescription();
    };
    QTRY_COMPARE(dito("grdPesquisa1"), u"Digite um número ou uma descrição."_s);
    QTRY_COMPARE(dito("grdPesquisa2"), u"Digite um veículo ou escolha um fabricante."_s);
    Escolher(Busca, "cboTipo", "Componentes");
    Escolher(Busca, "cboNumeroClienteConcorrente", "Nº Bravil");
    Digitar(Busca, "txtNumeroClienteConcorrente", "x9");
    Digitar(Busca, "txtDescricao", "mola");
    Digitar(Busca, "txtNumeroTarvo", " 777 ");
    QTRY_COMPARE(dito("grdPesquisa1"),
                 u"Nada encontrado em componentes com Nº Bravil x9, "
                 "Nº Tarvo 777, descrição “mola”."_s);
    QCOMPARE(Achar(Busca, "txtDescricao")->accessibleDescription(), dito("grdPesquisa1"));
    Escolher(Busca, "cboFabricante", "Bravil");
    Digitar(Busca, "txtVeiculo", "trator");
    QTRY_COMPARE(dito("grdPesquisa2"),
                 u"Nenhum veículo encontrado com a descrição “trator”, o fabricante Bravil."_s);
    Digitar(Busca, "txtVeiculo", "");
    QTRY_COMPARE(Achar(Busca, "txtVeiculo")->accessibleDescription(), u"2 linhas"_s);
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
        QTRY_COMPARE(ClienteEmVigor(), u"-5"_s);
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
        QVERIFY2(Pecas("NumeroTarvo").size() == 9, qPrintable(texto.left(20)));
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
