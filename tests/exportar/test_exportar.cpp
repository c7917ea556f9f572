#include "exportar/export.h"
#include "importar/import.h"
#include "importar/programa.h"
#include "platform/dao/connection.h"
#include "support/catalogo.h"
#include "tabelas/dates.h"

struct TestExportar : InAFolder {
    CatalogoDeTeste catalogo_;

    TestExportar() { catalogo_.Executar(LinhasDePesquisa() + LinhasDePecas()); }
};

TEST(TestExportar, ExportImportExport) {
    // Whatever a spreadsheet or a reader could take for something else.
    gDB->GetConnection()->Run(sys::ReadBytes(QStringLiteral(TARVO_CASES "/odd.data")));
    // From the first row to the last one nobody else changes anything.
    const OutroComputador other;
    QStringList shown;
    tabelas::Progress progress([&](const QString& line) {
        shown += line + u' ' + QString::number(ErrorOf([&] {
                     other.banco->Execute(u"UPDATE VEICULO SET CodigoVeiculo = CodigoVeiculo"_s,
                                          dao::dbFailOnError + dao::dbSeeChanges);
                 }));
    });
    QStringList stages;
    for (const auto& [file, rows] : exportar::Export(catalogo_.Pasta(), In("um"), progress)) {
        QCOMPARE(Valor(u"SELECT Count(*) FROM "_s + file.chopped(4)), QString::number(rows));
        stages += file + (stages.isEmpty() ? u" 0"_s : u" 3260"_s);
    }
    QCOMPARE(shown, stages << u"Gravação 0"_s);
    tabelas::Progress silent;
    const auto outcome = importar::Import({In("um"), In("dados")}, silent);
    QCOMPARE(outcome.refusedExamples, QStringList());
    exportar::Export(In("dados"), In("dois"), silent);
    const QStringList files = QDir(In("um")).entryList(QDir::Files);
    QCOMPARE(files.size(), 14);
    for (const QString& file : files) {
        QCOMPARE(sys::ReadBytes(In("dois/") + file), sys::ReadBytes(In("um/") + file));
    }
    const QString parts = sys::ReadText(In("um/PECA.csv"));
    QVERIFY2(parts.startsWith(u"CodigoPeca;NumeroTarvoPeca;DescricaoPeca;ArquivoFotoPeca;"
                              "CodigoFotoPecaPesquisa;CodigoFigura\r\n1;"_s) &&
                 parts.contains(u";\"'=1+1;\"\"x\"\"\n y \";"_s) && parts.contains(u";-12,5;"_s),
             qPrintable(parts));
    QVERIFY(sys::ReadText(In("um/FIGURADETALHADA.csv"))
                .endsWith(u"7;1;1;0,1;0,0000001\r\n7;2;12a;-16;20,100000381469727\r\n"_s));
    QVERIFY(sys::ReadText(In("um/UMREGISTRO.csv"))
                .endsWith(u"\r\n05/03/2026;\" +A\";05/03/2026 14:30:00;1;\"http://a.example/;\";"
                          "32767;-1\r\n"_s));
}

TEST(TestExportar, Dates) {
    for (const auto& [serial, text] : Each<double, QString>{
             {"day", 46086, "05/03/2026"},
             {"second", 46086.25, "05/03/2026 06:00:00"},
             {"between seconds", 46086.250001, "46086,250001"},
             {"before the first", -1.25, "29/12/1899 06:00:00"},
             {"an hour that summer time skips", 41196 + 1.0 / 48, "14/10/2012 00:30:00"},
         }) {
        QCOMPARE(tabelas::FormatDate(serial), text);
        QCOMPARE(tabelas::FormatDate(tabelas::ParseDate(text).value_or(0)), text);
    }
    for (const AnyText wrong : {"", "31/02/2026", "31/12/0099", "5/3/26", "05/03/2026 25:00", "x",
                                "05/03/2026 06:00:00 7", "9e9"}) {
        QVERIFY2(!tabelas::ParseDate(wrong), qPrintable(wrong));
    }
}

// The real program: one that has no catalogue, places that cannot take the files.
TEST(TestExportar, TheProgram) {
    const QString data = catalogo_.Pasta();
    Ends({}, "2 Uso: *");
    Ends({data, In("um"), "--nada"}, "2 Uso: *");
    Ends({root_->path(), In("um")}, "2 tarvo-exportar: Não há catálogo*");
    Write(In("velho/Tarvo.mdb"), QByteArray(1000, 'x'));
    Ends({In("velho"), In("um")}, "2 *não é um catálogo*");
    Ends({data, In("um")}, "0 *PECA.csv*");
    Ends({data, In("um")}, "2 *\" já existe e não é uma pasta vazia; *");
    QCOMPARE(NamesIn(root_->path()), List("um", "velho"));
}

TEST(TestExportar, FullDisk) {
    const QString command = u"mount -t tmpfs -o size=24k t '%1' && '%2' '%3' '%1/um'"_s;
    FailsAlone(command.arg(root_->path(), Program, catalogo_.Pasta()), root_->path(),
               u".csv: Disco cheio"_s);
}

TARVO_FULL_KEYS;
