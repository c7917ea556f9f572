#include "novapasta.h"
#include "support/cases.h"

#include <QThread>

// The pieces of a text that begin with `mark`, without it.
static QStringList Pieces(const QString& text, const QString& mark) {
    return (u'\n' + text).split(u'\n' + mark).mid(1);
}

static QStringList LinesOf(const QString& text) {
    return text.split(u'\n', Qt::SkipEmptyParts);
}

// Rows from spreadsheets.
struct TestPlanilhas : InAFolder {
    importar::Order order_;

    // Under its headings, or in its place as a whole; nothing: it is not there.
    void Change(const QString& name, const AnyText& content, bool whole = false) const {
        const QString path = In("csv/") + name;
        const QString headings =
            whole ? QString() : sys::ReadText(path).section(u'\n', 0, 0) + u'\n';
        QFile::remove(path);
        if (!content.isEmpty()) {
            Write(path, (headings + content).toUtf8());
        }
    }
    importar::Outcome Import() const { return ImportBy(order_); }
    QStringList Rows(const AnyText& sql) const { return RowsIn(In("novo"), sql); }

    void init() override {
        InAFolder::init();
        order_ = {In("csv"), In("novo")};
        QDir().mkpath(In("csv"));
        const QDir small(Given("planilhas"));
        for (const QString& name : small.entryList(QDir::Files)) {
            QVERIFY(QFile::copy(small.filePath(name), In("csv/") + name));
        }
    }
};

// What is told from the first line to the last, as it stands in contado.txt.
TEST(TestPlanilhas, TellsAllOfIt) {
    Change(u"COMPONENTE.csv"_s, "1;c-1;Mola\n2;02;Anel\n3;C3;\n");
    Change(u"PECA_COMPONENTE.csv"_s, "10;01;1;2\n10;12A;2;\n");
    Change(u"VEICULO_PECA.csv"_s, "1;10\n1;99\n1;98\n2;10\n");
    Change(u"JOGOREPARO.csv"_s,
           "Preço;CodigoJogoReparo;NumeroTarvoJogoReparo;DescricaoJogoReparo\n;5;J5;Jogo\n", true);
    Change(u"FOTOPECAPESQUISA.csv"_s, {}, true);
    Write(In("csv/fotopeca/foto.jpg"), "foto");
    Write(In("csv/FIGURAS/valvula.png"), "figura");
    Write(In("csv/ajuda/indice.htm"), "ajuda");
    Write(In("csv/ajuda_catalogo_tarvo-linden.hlp"), "antiga");
    order_.examples = 2;
    QString told;
    tabelas::Progress progress([&told](const QString& line) { told += line + u'\n'; });
    const auto outcome = importar::Import(order_, progress);
    QVERIFY(outcome.made && !outcome.Whole());
    told.append(importar::Report(order_, outcome)).replace(root_->path(), u"..."_s);
    QCOMPARE(told.split(u'\n'), sys::ReadText(Given("contado.txt")).split(u'\n'));
    for (const AnyText name : {"FotoPeca/foto.jpg", "Figuras/valvula.png", "Ajuda/indice.htm",
                               "Ajuda_Catalogo_TARVO-LINDEN.hlp"}) {
        QCOMPARE(sys::ReadBytes(In(u"novo/"_s + name)), sys::ReadBytes(In(u"csv/"_s + name)));
    }
    order_.folder = In("outro");
    order_.pictures = false;
    QVERIFY(!importar::Report(order_, Import()).contains(u"fotos e ajuda"_s));
    QCOMPARE(NamesIn(In("outro/FotoPeca")), QStringList());
}

TEST(TestPlanilhas, Cases) {
    for (const auto& [one] : Cases(TARVO_ANTIGOS "/casos.data")) {
        const QString text = one.lines.join(u'\n');
        static const QRegularExpression files(u"\n(\\?\\?|!!)"_s);
        for (const QString& file : Pieces(text.split(files).first(), u"-- "_s)) {
            const QString name = file.section(u'\n', 0, 0);
            Change(name.section(u" +"_s, 0, 0), file.section(u'\n', 1), !name.endsWith(u'+'));
        }
        order_.examples = 9;
        QStringList told;
        try {
            const auto outcome = Import();
            told = outcome.refusedExamples + outcome.remarks;
        } catch (const Erro& erro) {
            told = List(QString(erro.Description()).remove(root_->path()));
            QCOMPARE(NamesIn(root_->path()), List("csv"));
        }
        for (const QString& asked : Pieces(text.section(u"\n!!"_s, 0, 0), u"?? "_s)) {
            const QStringList expected = LinesOf(asked);
            QCOMPARE(Rows(expected.first()).replaceInStrings(u"\n"_s, u"\\n"_s), expected.mid(1));
        }
        QCOMPARE(told, LinesOf(text.section(u"\n!!"_s, 1)));
    }
}

// A line at the end of a file is refused, and the rest goes in as if it had not been there.
TEST(TestPlanilhas, Refused) {
    for (const auto& [cells] : Lines(TARVO_ANTIGOS "/recusadas.tsv")) {
        const QString& file = cells.first();
        const QString before = sys::ReadText(In("csv/") + file);
        const qsizetype number = before.count(u'\n') + 1;
        Write(In("csv/") + file, (before + cells.at(1)).toUtf8());
        const auto outcome = Import();
        QVERIFY(outcome.made);
        QCOMPARE(outcome.refusedExamples,
                 List(u"%1, linha %2: %3"_s.arg(file).arg(number).arg(cells.at(2))));
        QVERIFY(!importar::Report(order_, outcome).contains(u"e mais"_s));
        QCOMPARE(outcome.refusedFile, In("novo/recusadas.csv"));
        QVERIFY(sys::ReadText(In("novo/recusadas.csv"))
                    .contains(file + u';' + QString::number(number)));
        QCOMPARE(
            Rows("SELECT (SELECT count(*) FROM PECA) || (SELECT count(*) FROM PECA_COMPONENTE) || "
                 "(SELECT count(*) FROM REFERENCIACRUZADA) || (SELECT Versao FROM UMREGISTRO)"),
            List("2214"));
    }
}

TEST(TestPlanilhas, NothingIsWrittenByACheck) {
    Change(u"COMPONENTE.csv"_s, "x;C1;Mola\n");
    order_.check = true;
    order_.folder.clear();
    const auto outcome = Import();
    QCOMPARE(outcome.refused, 4);  // what hung on the components
    QCOMPARE(outcome.findings.size(), 3);
    QVERIFY(!outcome.made);
    QCOMPARE(NamesIn(root_->path()), List("csv"));
}

TEST(TestPlanilhas, AllOrNothing) {
    Change(u"VEICULO_PECA.csv"_s, "1;99\n");
    order_.allOrNothing = true;
    const auto outcome = Import();
    QVERIFY(!outcome.made);
    QCOMPARE(outcome.refusedFile, In("recusadas.csv"));
    QCOMPARE(NamesIn(root_->path()), List("csv", "recusadas.csv"));
    QCOMPARE(sys::ReadText(In("recusadas.csv")),
             u"Arquivo;Linha;Motivo;Campos\r\nVEICULO_PECA.csv;2;\"CodigoPeca: \"\"99\"\" não "
             "existe em PECA\";1;99\r\n"_s);
    Change(u"VEICULO_PECA.csv"_s, "1;10\n");
    QVERIFY(Import().made);
}

TEST(TestPlanilhas, ModelsAreAcceptedAsTheyAre) {
    importar::WriteModels(In("modelos"));
    QString told;
    for (const QString& name : NamesIn(In("modelos"))) {
        told += name + u'\n' + sys::ReadText(In("modelos/") + name).remove(u'\r');
    }
    QCOMPARE(told.split(u'\n'), sys::ReadText(Given("modelos.data")).split(u'\n'));
    order_.from = In("modelos");
    const auto outcome = Import();
    QVERIFY(outcome.made);
    QCOMPARE(outcome.refused, 0);
    QCOMPARE(outcome.refusedFile, QString());
    QCOMPARE(Rows("SELECT (SELECT count(*) FROM PECA) || Versao FROM UMREGISTRO"), List("01"));
}

// The real program, in a world of its own: a disk with little room, a folder that nobody may
// write. Each case of places.data is what a shell does there and (">") what the user is told.
TEST(TestPlanilhas, BadPlaces) {
    for (auto [one] : Cases(TARVO_ANTIGOS "/places.data")) {
        const QString told = one.Take(u'>').first();
        const QString command = one.lines.join(u'\n');
        QDir().mkpath(In("disco"));
        FailsAlone(command.arg(Program, In("disco"), In("csv")), In("disco"), told);
    }
}

TEST(TestPlanilhas, AnInterruptionLeavesNothing) {
    QByteArray many;
    for (int i = 1; i <= 300000; ++i) {
        many += "3;1234;" + QByteArray::number(i) + '\n';
    }
    Change(u"REFERENCIACRUZADA.csv"_s, QString::fromLatin1(many));
    // By the blocks of 256 KiB that it has read it tells how far it is, so that the row lies behind
    // by one of them at most. Who is told may break it off.
    static const QRegularExpression far(
        u"^REFERENCIACRUZADA.csv: (\\d+)\\.(\\d+) linhas, (\\d+) %, faltam \\d+ "_s);
    qsizetype behind = -1;
    tabelas::Progress progress([&](const QString& line) {
        if (line == "REFERENCIACRUZADA.csv"_L1) {
            QThread::msleep(2000);  // it tells nothing of a short work
        }
        if (const auto told = far.match(line); told.hasMatch()) {
            const QByteArray row = (told.captured(1) + told.captured(2)).toLatin1();
            behind = many.indexOf("3;1234;" + row) * 100 / many.size() - told.captured(3).toInt();
            throw Erro(Erro::Cancelled, line);
        }
    });
    QCOMPARE(ErrorOf([&] { importar::Import(order_, progress); }), int(Erro::Cancelled));
    const qsizetype block = 256 * 1024 * 100 / many.size() + 1;
    QVERIFY2(behind <= 1 && behind >= -block, qPrintable(QString::number(behind)));
    QCOMPARE(NamesIn(root_->path()), List("csv"));
    QProcess process;
    process.start(Program, {In("csv"), In("novo")});
    QTRY_VERIFY_WITH_TIMEOUT(NamesIn(root_->path()).size() > 1, 60000);
    process.terminate();
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 2);
    QVERIFY(process.readAllStandardError().contains("Interrompido; nada foi criado"));
    QCOMPARE(NamesIn(root_->path()), List("csv"));
}

TEST(TestPlanilhas, TheProgram) {
    const QString from = order_.from;
    for (const AnyText wrong : {"", "a", "a b c", "a --nada", "a b --exemplos", "a b --exemplos -1",
                                "a b --conferir", "a b --recusadas"}) {
        Ends(wrong.split(u' ', Qt::SkipEmptyParts), "2 Uso: *");
    }
    Ends({"--ajuda"}, "0 Uso: *");
    Ends({In("nada"), In("b")}, u"2 *Não há \"%1\"*"_s.arg(In("nada")));
    Ends({from, In("nada/b")}, "2 *Não há pasta*");
    Ends({from, "--conferir"}, "0 *Conferido; nada foi gravado.\n");
    QCOMPARE(SaidBy(u"env"_s, {"TMPDIR=/dev/null", Program, from, "--conferir"}),
             u"2 tarvo-importar: Não há onde gravar arquivos temporários.\n"_s);
    QDir().mkpath(order_.folder);
    Ends({from, order_.folder}, "0 *Catálogo criado*");
    Ends({from, order_.folder}, "2 *\" já existe e não é uma pasta vazia*");
    Change(u"VEICULO_PECA.csv"_s, "1;99\n1;98\n");
    Ends({from, In("b"), "--exemplos", "1", "--recusadas", In("r.csv")},
         u"1 *… e mais 1\n  Todas, com o motivo: %1\n*"_s.arg(In("r.csv")));
    Ends({from, In("c"), "--tudo-ou-nada"}, "2 *Nada foi criado*");
    Ends({"--modelos", In("m")}, "0 *Modelos gravados*");
    Ends({"--modelos", In("m")}, "2 tarvo-importar: *");
    QCOMPARE(NamesIn(root_->path()), List("b", "csv", "m", "novo", "r.csv", "recusadas.csv"));
    QVERIFY(!QFile::exists(In("b/recusadas.csv")));
}
