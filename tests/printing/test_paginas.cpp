#include "gravador.h"
#include "platform/forms/font.h"
#include "support/cases.h"

// The pages on a device that records, at one pixel a page unit unless a case says otherwise.
struct TestPaginas : NoGravador {
    // So many items of part 1, and so many kits on the first of them.
    void DarLista(int itens, int jogos) {
        QStringList comandos = List("DELETE FROM PECA_COMPONENTE", "DELETE FROM JOGOREPARO",
                                    "DELETE FROM PECA_COMPONENTE_JOGOREPARO");
        for (int i = 1; i <= itens; ++i) {
            comandos += Inserir("PECA_COMPONENTE", {u"1, '%1', 1, 1"_s.arg(i, 4)});
        }
        for (int i = 1; i <= jogos; ++i) {
            comandos += Inserir("JOGOREPARO", {u"%1, 'K%1', 'Jogo'"_s.arg(i)}) +
                        Inserir("PECA_COMPONENTE_JOGOREPARO", {u"1, '   1', %1"_s.arg(i)});
        }
        catalogo_->Executar(comandos);
    }

    // What stands on each page: H head, L and J the titles of list and kits, then how many rows.
    QString Paginas() const {
        QString paginas;
        int pagina = 1;
        int linhas = 0;
        const auto seguir = [&](const QString& sinal) {
            const int antes = std::exchange(linhas, 0);
            paginas += (antes > 0 ? QString::number(antes) : QString()) + sinal;
        };
        for (const auto& texto : folha_.textos) {
            if (std::exchange(pagina, texto.pagina) < texto.pagina) {
                seguir(u" "_s);
            }
            const bool titulo = texto.letra == u"10bi";
            if (texto.letra == u"12") {
                seguir(u"H"_s);
            } else if (titulo && texto.lugar.x() == 200) {
                seguir(texto.texto == u"Item" ? u"L"_s : u"J"_s);
            } else if (!titulo && texto.lugar.x() == 1600) {
                ++linhas;
            }
        }
        seguir({});
        return paginas;
    }

    // "left,top text font" of every text on a page.
    QStringList Textos(int pagina) const {
        QStringList textos;
        for (const auto& t : folha_.textos) {
            if (t.pagina == pagina) {
                textos += u"%1,%2 %3 %4"_s.arg(t.lugar.x()).arg(t.lugar.y()).arg(t.texto, t.letra);
            }
        }
        return textos;
    }
};

// Each line of breaks.data is a case: items, kits, heights of a line and of a title, and the pages.
// With a head of 95 + 2 lines, titles of 100 + 1 and rows of 20 + 1, a line of 121 puts the
// cursor on 2400 itself after 12 rows, and one of 135 on 2300 after 10.
TEST(TestPaginas, breaks) {
    for (const auto& [cells] : Lines(TARVO_CASES "/breaks.data")) {
        preparar_ = [&given = cells](Gravador& gravador) {
            gravador.alturas[10] = given.at(3).toDouble();
            gravador.alturas[12] = given.at(4).toDouble();
        };
        DarLista(cells.at(1).toInt(), cells.at(2).toInt());
        Imprimir("FD:0LC:1");
        QCOMPARE(Paginas(), cells.at(5));
        QVERIFY(!Aberto());
    }
}

// The rest of the job is printed.
TEST(TestPaginas, kitsThatDoNotComeOut) {
    preparar_ = [](Gravador& gravador) {
        gravador.alturas = {{10, 135}, {12, 61}};
        gravador.FalharAntesDe("pagina");
    };
    DarLista(10, 2);
    Imprimir("FD:0LC:1");
    QCOMPARE(Caixas(), List("16 Erro nº: 482\nErro de impressora"));
    QCOMPARE(Paginas(), u"HL10"_s);
    QCOMPARE(folha_.passos.last(), u"fim"_s);
}

// Places, fonts, order of items (as text), Nulls, and the kits of an item in its last column; each
// text of the page is a line of page.data.
TEST(TestPaginas, everythingOnAPage) {
    catalogo_->Executar(
        {"INSERT INTO JOGOREPARO (CodigoJogoReparo) VALUES (30)",
         "INSERT INTO PECA_COMPONENTE_JOGOREPARO (CodigoPeca, ItemComponente, "
         "CodigoJogoReparo) VALUES (1, '  12a', 30)",
         "UPDATE PECA_COMPONENTE SET ItemComponente = '10' WHERE CodigoPeca = 1 AND "
         "ItemComponente = '   1'",
         "UPDATE COMPONENTE SET DescricaoComponente = NULL WHERE CodigoComponente = 1",
         "UPDATE PECA_COMPONENTE SET QuantidadeComponente = 1.5 WHERE CodigoPeca = 1 AND "
         "ItemComponente = '  12a'"});
    Imprimir("FD:0LC:1");
    QCOMPARE(flags_, 0x14000C);
    QCOMPARE(folha_.passos, List("paisagem", form_->font().family(), "fim"));
    QVERIFY(!Aberto());
    QCOMPARE(Caixas(), QStringList());
    QCOMPARE(Textos(1),
             sys::ReadText(QStringLiteral(TARVO_CASES "/page.data")).trimmed().split(u'\n'));
}

// The part is asked for once a job; the pages count through it.
TEST(TestPaginas, laterHeads) {
    preparar_ = [this](Gravador& gravador) {
        gravador.alturas[10] = 1000;
        gravador.antes = [this](const QString& passo) {
            if (passo == u"pagina") {
                catalogo_->Executar({"UPDATE PECA SET DescricaoPeca = 'Outra'"});
            }
        };
    };
    Imprimir("FD:0LC:1");
    QCOMPARE(Textos(3).mid(2, 2),
             List("200,1210 Peça: Válvula relé               Nº Tarvo: 12002 10",
                  "200,2210 Página: 3 7"));
    catalogo_->Executar({"DELETE FROM PECA"});
    folha_ = {};
    TextoEmissao.clear();
    Imprimir("FD:0LC:1");
    QCOMPARE(Textos(1).first(), u"200,150 Catálogo TARVO-LINDEN     2.0      12"_s);
    QCOMPARE(Textos(1).at(2), u"200,1210 Peça: 10"_s);
}

// The head ends at 345 units and the picture's corner is at 645; the numbers stand on it as they do
// on the screen, centred in boxes of 33 by their width there. Other resolutions are on paper.
TEST(TestPaginas, figure) {
    const QList<std::pair<QString, QPoint>> numeros = {
        {u"1"_s, {0, 0}}, {u"12"_s, {100, 40}}, {u"12"_s, {549, 330}}, {u"   7"_s, {9, 300}}};
    DarFigura(numeros, "F.PNG");
    Imprimir("FD:1LC:1");
    QCOMPARE(Caixas(), QStringList());
    QCOMPARE(folha_.textos.at(1).texto, u"Figura Detalhada"_s);
    QCOMPARE(folha_.textos.at(4 + numeros.size()).pagina, 2);
    QCOMPARE(folha_.figuras.size(), 1);
    const QPointF canto(200, 645);
    QCOMPARE(folha_.figuras.first().lugar, QRectF(canto, QSizeF(582, 343) * 4));
    const QFontMetricsF tela(forms::Font(11));
    for (int i = 0; i < numeros.size(); ++i) {
        const auto& [item, lugar] = numeros.at(i);
        const int recuo = 16 - qRound(tela.horizontalAdvance(item)) / 2;
        const auto& texto = folha_.textos.at(4 + i);
        QCOMPARE(texto.texto + u' ' + texto.letra, item + u" 8"_s);
        QCOMPARE(texto.lugar, canto + 4 * QPointF(lugar + QPoint(recuo, 0)));
    }
}

// The head stands by then, and the rest of the job is printed.
TEST(TestPaginas, figureFailures) {
    for (const auto& [pontos, sql, caixa] : Each<int, QString, QString>{
             {"too fine a printer", 2400, "", "16 Erro nº: 6\nEstouro"},
             {"picture missing", 360, "UPDATE FIGURA SET ArquivoFigura = 'x.png'",
              "16 Erro nº: 53\nArquivo não encontrado\n%1/Figuras/x.png"},
             {"no name", 360, "UPDATE FIGURA SET ArquivoFigura = NULL",
              "16 Erro nº: 53\nArquivo não encontrado\n%1/Figuras/"},
             {"no place", 360, "UPDATE FIGURADETALHADA SET TTop = NULL",
              "16 Erro nº: 94\nUso de Nulo inválido"},
             {"far away", 360, "UPDATE FIGURADETALHADA SET LLeft = 9000", "16 Erro nº: 6\nEstouro"},
             {"no numbers", 360, "DELETE FROM FIGURADETALHADA", ""},
         }) {
        pontos_ = pontos;
        preparar_ = [pontos](Gravador& gravador) { gravador.alturas[10] = pontos / 7.2; };
        DarFigura({{u"1"_s, {5, 5}}});
        if (!sql.isEmpty()) {
            catalogo_->Executar({sql});
        }
        Imprimir("FD:1LC:1");
        // The box names the file.
        const QString dita = QString(caixa).replace(u"%1"_s, catalogo_->Pasta());
        QCOMPARE(Caixas(), caixa.isEmpty() ? QStringList() : List(dita));
        QCOMPARE(folha_.textos.last().pagina, caixa.isEmpty() ? 1 : 2);
        QCOMPARE(folha_.passos.last(), u"fim"_s);
    }
}
