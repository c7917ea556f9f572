#include "novapasta.h"
#include "platform/system/paths.h"

#include <QProcess>

// Rows from spreadsheets. Each case changes one file of a small catalogue that goes in whole.
class TestPlanilhas : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> root_;
    importar::Order order_;

    QString In(const AnyText& name) const { return root_->filePath(name); }
    void File(const AnyText& name, const AnyText& content) const {
        Write(In("csv/") + name, content.toUtf8());
    }
    importar::Outcome Import() const {
        tabelas::Progress progress;
        return importar::Import(order_, progress);
    }
    QStringList Rows(const AnyText& sql) const { return RowsIn(In("novo"), sql); }

private Q_SLOTS:
    void init() {
        root_ = std::make_unique<QTemporaryDir>();
        order_ = {In("csv"), In("novo")};
        File("peca.CSV",
             "CodigoPeca;NumeroTarvoPeca;DescricaoPeca;ArquivoFotoPeca;CodigoFotoPecaPesquisa;"
             "CodigoFigura\n10;1234;Válvula;foto.jpg;1;7\n11;A77;Cilindro;;;\n");
        File("COMPONENTE.csv",
             "CodigoComponente;NumeroTarvoComponente;DescricaoComponente\n1;C1;Mola\n2;C2;Anel\n");
        File("JOGOREPARO.csv",
             "CodigoJogoReparo;NumeroTarvoJogoReparo;DescricaoJogoReparo\n5;J5;Jogo\n");
        File("CLIENTECONCORRENTE.csv",
             "CodigoClienteConcorrente;DescricaoClienteConcorrente;TipoClienteConcorrente\n"
             "3;Montadora;I\n40000;Concorrente;C\n");
        File("FOTOPECAPESQUISA.csv",
             "CodigoFotoPecaPesquisa;DescricaoFotoPecaPesquisa;ArquivoFotoPecaPesquisa\n"
             "1;Válvulas;valvulas.png\n");
        File("FIGURA.csv", "CodigoFigura;ArquivoFigura\n7;valvula.png\n");
        File("FIGURADETALHADA.csv",
             "CodigoFigura;CodigoFiguraDetalhada;ItemComponente;LLeft;TTop\n7;1;12A;-16;1,5\n");
        File("VEICULO.csv",
             "CodigoVeiculo;DescricaoVeiculo;CodigoClienteConcorrente\n1;Caminhão;3\n");
        File("VEICULO_PECA.csv", "CodigoVeiculo;CodigoPeca\n1;10\n");
        File("PECA_COMPONENTE.csv",
             "CodigoPeca;ItemComponente;CodigoComponente;QuantidadeComponente\n10;1;1;2\n10;12A;2;"
             "\n");
        File("PECA_COMPONENTE_JOGOREPARO.csv",
             "CodigoPeca;ItemComponente;CodigoJogoReparo\n10;12a;5\n");
        File("REFERENCIACRUZADA.csv",
             "CodigoClienteConcorrente;NumeroTarvo;NumeroClienteConcorrente\n3;1234;9A1\n");
        File("UMREGISTRO.csv",
             "DataEmissao;ComplementoDataEmissao;DataUltimaVerificacao;FlagErroUltimaVerificacao;"
             "UrlAtualizacao;Versao;VersaoAnterior\n05/03/2026;\" B\";;;;4;3\n");
    }
    void cleanup() { root_.reset(); }

    void AllOfIt() {
        const auto outcome = Import();
        QVERIFY(outcome.made);
        QCOMPARE(outcome.refusedExamples, QStringList());
        QCOMPARE(outcome.remarks, QStringList());
        QCOMPARE(Rows("SELECT * FROM PECA ORDER BY 1"),
                 List("10|1234|Válvula|foto.jpg|1|7", "11|A77|Cilindro|-|-|-"));
        QCOMPARE(Rows("SELECT * FROM PECA_COMPONENTE ORDER BY 2"),
                 List("10|   1|1|2", "10|  12a|2|-"));
        QCOMPARE(Rows("SELECT * FROM FIGURADETALHADA1"), List("1|10|  12a|valvula.png|-16|1.5"));
        QCOMPARE(Rows("SELECT * FROM UMREGISTRO"), List("46086| B|-|0|-|4|3"));
        QCOMPARE(Rows("SELECT * FROM CODIGOCLIENTECONCORRENTE"), List("-5"));
        // Only pictures are missing: the rows keep every rule, and every index is there.
        for (const auto& finding : outcome.findings) {
            QVERIFY2(finding.weight == verificar::Weight::Hint ||
                         finding.what.contains(u"o arquivo não existe"_s),
                     qPrintable(finding.what));
        }
    }

    void Spellings_data() {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("sql");
        QTest::addColumn<QStringList>("rows");
        const auto row = [](const char* name, const AnyText& file, const QByteArray& content,
                            const AnyText& sql, const AnyTexts& rows) {
            QTest::newRow(name) << QString(file) << content << QString(sql) << QStringList(rows);
        };
        row("numbers and descriptions in any form", "COMPONENTE.csv",
            "codigocomponente;NUMEROTARVOCOMPONENTE;DescricaoComponente\n"
            "1;0c-1.a;  Anel d'água\n2;1K 24;\"Mola\nlonga\"\n",
            "SELECT NumeroTarvoComponente, DescricaoComponente FROM COMPONENTE",
            {"C1A|Anel d´água", "K24|Mola\nlonga"});
        row("commas, Windows-1252", "COMPONENTE.csv",
            "CodigoComponente,NumeroTarvoComponente,DescricaoComponente\n1,C1,\"V\xE1lvula, 24\"\n"
            "2,C2,x\n",
            "SELECT DescricaoComponente FROM COMPONENTE", {"Válvula, 24", "x"});
        row("codes are given out, the lowest that are free", "COMPONENTE.csv",
            "CodigoComponente;NumeroTarvoComponente;DescricaoComponente\n;C9;nono\n2;C2;dois\n"
            ";C8;oitavo\n1;C1;um\n",
            "SELECT CodigoComponente, NumeroTarvoComponente FROM COMPONENTE",
            {"1|C1", "2|C2", "3|C9", "4|C8"});
        row("explanation and blank lines", "COMPONENTE.csv",
            "CodigoComponente;NumeroTarvoComponente;DescricaoComponente;;\n# c\xC3\xB3"
            "digo;n;d\n;;\n"
            "1;C1;um;;\n\n2;C2;#2;\n",
            "SELECT DescricaoComponente FROM COMPONENTE", {"um", "#2"});
        row("links by number and name", "PECA_COMPONENTE.csv",
            "NumeroTarvoPeca;ItemComponente;NumeroTarvoComponente;QuantidadeComponente\n"
            "01-234;1;c1;1.234,5\n1234;12a;C2;1.5\n",
            "SELECT * FROM PECA_COMPONENTE ORDER BY 2", {"10|   1|1|1234.5", "10|  12a|2|1.5"});
        row("a customer by name", "REFERENCIACRUZADA.csv",
            "DescricaoClienteConcorrente;NumeroTarvo;NumeroClienteConcorrente\nmontadora;1234;009a-"
            "1\n",
            "SELECT * FROM REFERENCIACRUZADA", {"3|1234|9A1"});
        row("a figure by its file", "FIGURADETALHADA.csv",
            "ArquivoFigura;ItemComponente;LLeft;TTop\nVALVULA.png;2;1;2\nvalvula.png;1;3;4\n",
            "SELECT * FROM FIGURADETALHADA", {"7|1|   2|1|2", "7|2|   1|3|4"});
        row("no link by the number 0", "PECA.csv",
            "CodigoPeca;NumeroTarvoPeca;DescricaoPeca;CodigoFotoPecaPesquisa;CodigoFigura\n"
            "10;1234;x;0;-5\n",
            "SELECT CodigoFotoPecaPesquisa, CodigoFigura FROM PECA", {"-|-"});
        row("dates and flags", "UMREGISTRO.csv",
            "DataEmissao;DataUltimaVerificacao;FlagErroUltimaVerificacao;Versao;VersaoAnterior\n"
            "2026-03-05;5/3/2026 6:00;Sim;4;3\n",
            "SELECT DataEmissao, DataUltimaVerificacao, FlagErroUltimaVerificacao FROM UMREGISTRO",
            {"46086|46086.25|1"});
        row("flag of a spreadsheet in English", "UMREGISTRO.csv",
            "DataEmissao;FlagErroUltimaVerificacao;Versao;VersaoAnterior\n05/03/2026;TRUE;4;3\n",
            "SELECT FlagErroUltimaVerificacao FROM UMREGISTRO", {"1"});
        row("numbers by part, codes beyond 16 bits", "FIGURADETALHADA.csv",
            "CodigoFiguraDetalhada;CodigoPeca;ItemComponente;ArquivoFigura;LLeft;TTop\n"
            "70000;10;12a;valvula.png;3;4\n60000;10;1;valvula.png;1;2\n",
            "SELECT * FROM FIGURADETALHADA1",
            {"1|10|   1|valvula.png|1|2", "2|10|  12a|valvula.png|3|4"});
        row("a cell that was made harmless", "COMPONENTE.csv",
            "CodigoComponente;NumeroTarvoComponente;DescricaoComponente\n1;C1;'=1+1\n2;C2;-\n",
            "SELECT DescricaoComponente FROM COMPONENTE", {"=1+1", "-"});
    }
    void Spellings() {
        QFETCH(QString, file);
        QFETCH(QByteArray, content);
        QFETCH(QString, sql);
        QFETCH(QStringList, rows);
        if (file == u"PECA.csv"_s) {
            QFile::remove(In("csv/peca.CSV"));
        }
        Write(In("csv/") + file, content);
        Import();
        QCOMPARE(Rows(sql), rows);
    }

    void Refused_data() {
        const Table<QString, QString, QString> row("file", "line", "why");
        const AnyText part = "peca.CSV";
        const AnyText item = "PECA_COMPONENTE.csv";
        const AnyText reference = "REFERENCIACRUZADA.csv";
        row("spoilt", part, "12;1,03E+09;x;;;", "NumeroTarvoPeca: \"1,03E+09\" foi estragado");
        row("spoilt, short", part, "12;1E+09;x;;;", "NumeroTarvoPeca: \"1E+09\" foi estragado");
        row("a month", part, "12;12/mai;x;;;", "\"12/mai\" foi estragado");
        row("a spreadsheet's error", part, "12;#N/D;x;;;", "é um erro da planilha");
        row("no number", part, "12;;x;;;", "NumeroTarvoPeca está vazio");
        row("zeros", part, "12;000;x;;;", "\"000\" não tem letra nem algarismo além de zeros");
        row("no description", part, "12;A1; ;;;", "DescricaoPeca");
        row("large code", part, "1000000;A1;x;;;",
            "CodigoPeca: \"1000000\" fora da faixa de 1 a 999999");
        row("code -5", part, "-5;A1;x;;;", "fora da faixa");
        row("code with a fraction", part, "1,5;A1;x;;;", "\"1,5\" não é um número inteiro");
        row("the same code", part, "10;A1;x;;;",
            "repetida: já há uma linha com o mesmo CodigoPeca");
        row("no such picture", part, "12;A1;x;;9;", "CodigoFotoPecaPesquisa: \"9\" não existe");
        row("a folder", part, "12;A1;x;a/b.jpg;;", "tem pasta");
        row("too many cells", part, "12;A1;x;;;;y", "mais campos do que títulos");
        row("behind quotes", part, "12;A1;\"x\" y;;;", "texto depois das aspas");
        row("item of five digits", item, "10;12345;1;1", "\"12345\" não é um item");
        row("item of two letters", item, "10;1ab;1;1", "\"1ab\" não é um item");
        row("item without number", item, "10;a;1;1", "\"a\" não é um item");
        row("the same item", item, "10;12a;1;1", "o mesmo CodigoPeca e ItemComponente");
        row("no such component", item, "10;3;77;1",
            "CodigoComponente: \"77\" não existe em COMPONENTE");
        row("thousands or decimals", item, "10;3;1;1.500", "pode ser milhar ou decimal");
        row("quantity", item, "10;3;1;dois", "\"dois\" não é um número");
        row("kit without item", "PECA_COMPONENTE_JOGOREPARO.csv", "10;2;5",
            "o item 2 da peça 10 não existe em PECA_COMPONENTE");
        row("nobody's number", reference, "3;999;1", "\"999\" não é de nenhuma peça");
        row("the same reference", reference, "3;1234;09a1", "repetida");
        row("type", "CLIENTECONCORRENTE.csv", "7;Outro;IJ", "não é uma letra");
        row("maker beyond 16 bits", "CLIENTECONCORRENTE.csv", "32768;Outro;I", "é maior que 32767");
        row("no maker", "VEICULO.csv", "2;x;40000", "40000 não é um fabricante");
        row("second settings", "UMREGISTRO.csv", "05/03/2026;;;;;5;4",
            "UMREGISTRO só pode ter uma linha");
        row("marker", "FIGURADETALHADA.csv", "7;32768;1;1;1", "fora da faixa de 1 a 32767");
    }
    void Refused() {
        QFETCH(QString, file);
        QFETCH(QString, line);
        QFETCH(QString, why);
        QFile csv(In("csv/") + file);
        const qsizetype lines = sys::ReadText(csv.fileName()).count(u'\n');
        QVERIFY(csv.open(QIODevice::Append) && csv.write(line.toUtf8()) > 0);
        csv.close();
        const auto outcome = Import();
        QVERIFY(outcome.made);
        QCOMPARE(outcome.refused, 1);
        const QString told = outcome.refusedExamples.value(0);
        QVERIFY2(told.contains(why), qPrintable(told));
        QVERIFY2(told.startsWith(u"%1, linha %2: "_s.arg(file).arg(lines + 1)), qPrintable(told));
        QVERIFY(sys::ReadText(In("novo/recusadas.csv"))
                    .contains(file + u';' + QString::number(lines + 1)));
        // The rest went in as if the row had not been there.
        QCOMPARE(
            Rows("SELECT (SELECT count(*) FROM PECA) || (SELECT count(*) FROM PECA_COMPONENTE) || "
                 "(SELECT count(*) FROM REFERENCIACRUZADA) || (SELECT Versao FROM UMREGISTRO)"),
            List("2214"));
    }

    void LinksThatDisagree() {
        File("VEICULO_PECA.csv",
             "CodigoVeiculo;CodigoPeca;NumeroTarvoPeca\n1;10;A77\n1;;A77\n1;11;\n1;;ZZ\n");
        File("COMPONENTE.csv",
             "CodigoComponente;NumeroTarvoComponente;DescricaoComponente\n1;C1;Mola\n2;C1;Anel\n");
        File("PECA_COMPONENTE.csv",
             "CodigoPeca;ItemComponente;NumeroTarvoComponente;CodigoComponente\n10;12a;C1;\n10;1;"
             "C1;2\n");
        order_.examples = 9;
        const auto outcome = Import();
        const QString told = outcome.refusedExamples.join(u'\n');
        QVERIFY(told.contains(u"linha 2: CodigoPeca e NumeroTarvoPeca não são da mesma linha"_s));
        QVERIFY(told.contains(u"\"ZZ\" não existe em PECA"_s));
        QVERIFY(told.contains(u"\"C1\" está em mais de uma linha de COMPONENTE: use Codigo"_s));
        QCOMPARE(Rows("SELECT * FROM VEICULO_PECA"), List("1|11"));
    }

    // Parts that name one figure, whose numbers differ.
    void FiguresByPart() {
        QFile::remove(In("csv/FIGURA.csv"));
        QFile::remove(In("csv/FIGURADETALHADA.csv"));
        File("peca.CSV",
             "CodigoPeca;NumeroTarvoPeca;DescricaoPeca;CodigoFigura\n10;1234;x;7\n"
             "11;A1;x;7\n12;A2;x;7\n13;A3;x;8\n14;A4;x;\n");
        File("figuras por peca.csv",
             "CodigoFiguraDetalhada;CodigoPeca;ItemComponente;ArquivoFigura;LLeft;TTop\n"
             "1;10;1;a.png;1;2\n2;10;12a;a.png;3;4\n3;11;1;a.png;1;2\n4;12;12a;A.png;3;4\n"
             "5;12;1;A.png;1;2\n6;14;1;a.png;1;2\n7;10;2;b.png;1;2\n");
        order_.examples = 9;
        const auto outcome = Import();
        QCOMPARE(Rows("SELECT CodigoPeca, CodigoFigura FROM PECA ORDER BY 1"),
                 List("10|7", "11|9", "12|10", "13|-", "14|-"));
        QCOMPARE(Rows("SELECT CodigoPeca, ItemComponente, ArquivoFigura FROM FIGURADETALHADA1 "
                      "ORDER BY CodigoPeca, CodigoFiguraDetalhada"),
                 List("10|   1|a.png", "10|  12a|a.png", "11|   1|a.png", "12|  12a|A.png",
                      "12|   1|A.png"));
        QCOMPARE(
            outcome.refusedExamples,
            List("figuras por peca.csv, linha 7: a peça 14 não tem figura (CodigoFigura vazio)",
                 "figuras por peca.csv, linha 8: ArquivoFigura: \"b.png\", mas outra linha da peça "
                 "tem \"a.png\""));
        QVERIFY(outcome.loaded.remarks.contains(
            u"figuras por peca.csv: peças com a mesma figura e números diferentes ganharam figura "
            "própria: 2."_s));
    }

    void WhatIsMissing() {
        for (const AnyText name : {"FIGURA", "FIGURADETALHADA", "VEICULO", "VEICULO_PECA"}) {
            QFile::remove(In("csv/") + name + u".csv"_s);
        }
        const auto outcome = Import();
        QCOMPARE(outcome.remarks, List("Tabelas que faltam e ficam vazias: FIGURA, VEICULO, "
                                       "VEICULO_PECA, FIGURADETALHADA."));
        QCOMPARE(outcome.refused, 0);
        QCOMPARE(Rows("SELECT CodigoFigura FROM PECA"), List("-", "-"));
    }

    void NoCatalogue_data() {
        const Table<QString, QString, QString> row("file", "content", "why");
        row("no parts", "peca.CSV", {}, "falta a tabela PECA");
        row("no such column", "VEICULO_PECA.csv", "CodigoVeiculo;Peca\n",
            "VEICULO_PECA.csv não tem a coluna CodigoPeca. Tem: CodigoVeiculo, Peca");
        row("two of a shape", "REFERENCIACRUZADA.csv", {}, "Mais de uma tabela pode ser");
        row("open quote", "COMPONENTE.csv",
            "CodigoComponente;NumeroTarvoComponente;DescricaoComponente\n1;C1;\"x\n",
            "linha 2: as aspas");
    }
    void NoCatalogue() {
        QFETCH(QString, file);
        QFETCH(QString, content);
        QFETCH(QString, why);
        QFile::remove(In("csv/") + file);
        if (!content.isEmpty()) {
            File(file, content);
        } else if (file.startsWith(u'R')) {
            for (const AnyText name : {"a", "b"}) {
                File(name + u".csv"_s,
                     "CodigoClienteConcorrente;NumeroTarvo;NumeroClienteConcorrente\n");
            }
        }
        const QString complaint = ComplaintOf(order_);
        QVERIFY2(complaint.contains(why), qPrintable(complaint));
        QCOMPARE(NamesIn(root_->path()), List("csv"));
    }

    void NothingIsWrittenByACheck() {
        File("COMPONENTE.csv",
             "CodigoComponente;NumeroTarvoComponente;DescricaoComponente\nx;C1;Mola\n");
        order_.check = true;
        order_.folder.clear();
        const auto outcome = Import();
        QCOMPARE(outcome.refused, 4);  // what hung on the components
        QVERIFY(!outcome.made);
        QCOMPARE(NamesIn(root_->path()), List("csv"));
        QVERIFY(importar::Report(order_, outcome).endsWith(u"Conferido; nada foi gravado.\n"_s));
    }

    void AllOrNothing() {
        File("VEICULO_PECA.csv", "CodigoVeiculo;CodigoPeca\n1;99\n");
        order_.allOrNothing = true;
        const auto outcome = Import();
        QVERIFY(!outcome.made);
        QCOMPARE(outcome.refusedFile, In("recusadas.csv"));
        QCOMPARE(NamesIn(root_->path()), List("csv", "recusadas.csv"));
        QCOMPARE(sys::ReadText(In("recusadas.csv")),
                 u"Arquivo;Linha;Motivo;Campos\r\nVEICULO_PECA.csv;2;\"CodigoPeca: \"\"99\"\" não "
                 "existe em PECA\";1;99\r\n"_s);
        File("VEICULO_PECA.csv", "CodigoVeiculo;CodigoPeca\n1;10\n");
        QVERIFY(Import().made);
    }

    void PicturesComeAlong() {
        Write(In("csv/fotopeca/foto.jpg"), "foto");
        Write(In("csv/FIGURAS/valvula.png"), "figura");
        Write(In("csv/ajuda_catalogo_tarvo-linden.hlp"), "ajuda");
        QCOMPARE(Import().pictures, 3);
        QCOMPARE(sys::ReadBytes(In("novo/FotoPeca/foto.jpg")), "foto"_ba);
        QCOMPARE(sys::ReadBytes(In("novo/Figuras/valvula.png")), "figura"_ba);
        QCOMPARE(sys::ReadBytes(In("novo/Ajuda_Catalogo_TARVO-LINDEN.hlp")), "ajuda"_ba);
        order_.folder = In("outro");
        order_.pictures = false;
        QCOMPARE(Import().pictures, 0);
        QCOMPARE(NamesIn(In("outro/FotoPeca")), QStringList());
    }

    void ModelsAreAcceptedAsTheyAre() {
        importar::WriteModels(In("modelos"));
        QCOMPARE(NamesIn(In("modelos")).size(), 13);
        QVERIFY(sys::ReadText(In("modelos/PECA_COMPONENTE.csv"))
                    .startsWith(
                        u"CodigoPeca;NumeroTarvoPeca;ItemComponente;CodigoComponente;"
                        "NumeroTarvoComponente;QuantidadeComponente\r\n# código da peça;em vez de "
                        "CodigoPeca;"_s));
        order_.from = In("modelos");
        const auto outcome = Import();
        QVERIFY(outcome.made);
        QCOMPARE(outcome.refusedExamples, QStringList());
        QCOMPARE(Rows("SELECT count(*) FROM PECA"), List("0"));
        QCOMPARE(Rows("SELECT Versao FROM UMREGISTRO"), List("1"));
    }

    void WhereItMayNotGo() {
        Write(In("cheia/arquivo"));
        order_.folder = In("cheia");
        QVERIFY(ComplaintOf(order_).contains(u"já existe e não é uma pasta vazia"_s));
        order_.folder = In("nada/novo");
        QVERIFY(ComplaintOf(order_).contains(u"Não há pasta"_s));
        order_.folder = In("vazia");
        QDir().mkpath(In("vazia"));
        QVERIFY(Import().made);
        order_.from = In("nada");
        order_.folder = In("novo");
        QVERIFY(ComplaintOf(order_).contains(u"Não há \"%1\""_s.arg(In("nada"))));
    }

    // The real program, in a world of its own: a disk with little room, a folder that nobody may
    // write, an interruption.
    void BadPlaces_data() {
        const Table<QString, QString> row("command", "told");
        row("full disk", "mount -t tmpfs -o size=100k t '%2' && '%1' '%3' '%2/novo'",
            "spaço no disco");
        row("full behind the catalogue",
            "mount -t tmpfs -o size=1m t '%2' && head -c 2000000 /dev/zero > '%3/foto' && mkdir "
            "'%3/FotoPeca' && mv '%3/foto' '%3/FotoPeca' && '%1' '%3' '%2/novo'",
            "disco está cheio");
        row("read only", "mount -t tmpfs -o size=1m,ro t '%2' && '%1' '%3' '%2/novo'",
            "Não foi possível gravar na pasta");
    }
    void BadPlaces() {
        QFETCH(QString, command);
        QFETCH(QString, told);
        const QStringList alone = {u"--user"_s, u"--map-root-user"_s, u"--mount"_s};
        if (QProcess::execute(u"unshare"_s, QStringList(alone) << u"true"_s) != 0) {
            QSKIP("no disk of one's own to be had here");
        }
        QDir().mkpath(In("disco"));
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(u"unshare"_s,
                      QStringList(alone)
                          << u"sh"_s << u"-c"_s
                          << command.arg(QStringLiteral(TARVO_IMPORTAR), In("disco"), In("csv")) +
                                 u"; echo \" $?\"; ls -A '%1'"_s.arg(In("disco")));
        QVERIFY(process.waitForFinished());
        const QString output = QString::fromUtf8(process.readAll());
        QVERIFY2(output.contains(told) && output.endsWith(u"\n 2\n"_s), qPrintable(output));
    }

    void AnInterruptionLeavesNothing() {
        QByteArray many = "CodigoClienteConcorrente;NumeroTarvo;NumeroClienteConcorrente\n";
        for (int i = 1; i <= 300000; ++i) {
            many += "3;1234;" + QByteArray::number(i) + '\n';
        }
        Write(In("csv/REFERENCIACRUZADA.csv"), many);
        QProcess process;
        process.start(QStringLiteral(TARVO_IMPORTAR), {In("csv"), In("novo")});
        QTRY_VERIFY(NamesIn(root_->path()).size() > 1);
        process.terminate();
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 2);
        QVERIFY(process.readAllStandardError().contains("Interrompido; nada foi criado"));
        QCOMPARE(NamesIn(root_->path()), List("csv"));
    }

    void TheProgram() {
        const auto run = [&](const AnyTexts& arguments) {
            QProcess process;
            process.setProcessChannelMode(QProcess::MergedChannels);
            process.start(QStringLiteral(TARVO_IMPORTAR), arguments);
            process.waitForFinished();
            return QString::number(process.exitCode()) + u' ' +
                   QString::fromUtf8(process.readAll());
        };
        for (const AnyTexts& wrong : {AnyTexts{},
                                      {"a"},
                                      {"a", "b", "c"},
                                      {"a", "--nada"},
                                      {"a", "b", "--exemplos"},
                                      {"a", "b", "--exemplos", "-1"},
                                      {"a", "b", "--conferir"},
                                      {"a", "b", "--recusadas"}}) {
            QVERIFY(run(wrong).startsWith(u"2 Uso: "_s));
        }
        QVERIFY(run({"--ajuda"}).startsWith(u"0 Uso: "_s));
        const QString conferred = run({order_.from, "--conferir"});
        QVERIFY2(conferred.startsWith(u"0 "_s), qPrintable(conferred));
        QVERIFY(run({order_.from, order_.folder}).startsWith(u"0 "_s));
        File("VEICULO_PECA.csv", "CodigoVeiculo;CodigoPeca\n1;99\n1;98\n");
        const QString some =
            run({order_.from, In("b"), "--exemplos", "1", "--recusadas", In("r.csv")});
        QVERIFY(some.startsWith(u"1 "_s) && some.contains(u"… e mais 1\n"_s));
        QVERIFY(QFile::exists(In("r.csv")) && !QFile::exists(In("b/recusadas.csv")));
        QVERIFY(run({order_.from, In("c"), "--tudo-ou-nada"}).startsWith(u"2 "_s));
        QVERIFY(!QFile::exists(In("c")));
        QVERIFY(run({"--modelos", In("m")}).startsWith(u"0 "_s));
        QVERIFY(run({"--modelos", In("m")}).startsWith(u"2 tarvo-importar: "_s));
    }
};

TARVO_TEST(TestPlanilhas);
#include "test_planilhas.moc"
