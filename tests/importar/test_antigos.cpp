#include "importar/mdbsource.h"
#include "novapasta.h"
#include "platform/system/paths.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QStandardPaths>

using importar::MdbSource;
using importar::Row;

namespace {

constexpr int PageSize = 4096;
// Of a data page: the number of its rows, then two bytes for each that tell where it begins.
constexpr int RowCountAt = 12;
// Of a table's definition: the number of its rows.
constexpr int DeclaredAt = 16;

QString Given(const AnyText& name) {
    return QStringLiteral(TARVO_ANTIGOS) + u'/' + name;
}

// A row as it was written down when it was put into an old catalogue.
QString Written(const QString& line) {
    static const QRegularExpression real(u"^-?\\d+\\.\\d+$"_s);
    QStringList cells = line.split(u'\t');
    for (QString& cell : cells) {
        cell = cell == u"<NULL>"_s           ? u"-"_s
               : real.match(cell).hasMatch() ? QString::number(cell.toDouble(), 'g', 15)
                                             : cell;
    }
    return cells.join(u'|');
}

QByteArray Coded(const QByteArray& bytes, const QByteArray& key) {
    QByteArray state(256, '\0');
    for (int i = 0; i < 256; ++i) {
        state[i] = static_cast<char>(i);
    }
    const auto at = [&](int i) { return static_cast<quint8>(state.at(i & 0xFF)); };
    for (int i = 0, j = 0; i < 256; ++i) {
        j = (j + at(i) + static_cast<quint8>(key.at(i % key.size()))) & 0xFF;
        std::swap(state[i], state[j]);
    }
    QByteArray coded;
    int j = 0;
    for (int i = 0; i < bytes.size(); ++i) {
        const int k = (i + 1) & 0xFF;
        j = (j + at(k)) & 0xFF;
        std::swap(state[k], state[j]);
        coded += static_cast<char>(bytes.at(i) ^ state.at((at(k) + at(j)) & 0xFF));
    }
    return coded;
}

}  // namespace

class TestAntigos : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> root_;

    QString In(const AnyText& name) const { return root_->filePath(name); }

    importar::Outcome Import(const QString& from) const {
        tabelas::Progress progress;
        return importar::Import({from, In("novo")}, progress);
    }

    // A changed copy of the first old catalogue.
    QString Changed(const std::function<void(QByteArray&)>& change) const {
        QByteArray bytes = sys::ReadBytes(Given("antigo.mdb"));
        change(bytes);
        Write(In("velho.mdb"), bytes);
        return In("velho.mdb");
    }

    // The page that defines the table in which the text stands, and the text's own page.
    static qsizetype DefinitionOf(const QByteArray& bytes, const char* table) {
        // The definition has the names of its columns in two-byte letters.
        QByteArray wide;
        for (const char* letter = table; *letter; ++letter) {
            wide += *letter;
            wide += '\0';
        }
        for (qsizetype at = bytes.indexOf(wide); at >= 0; at = bytes.indexOf(wide, at + 1)) {
            if (bytes.at(at / PageSize * PageSize) == 2) {
                return at / PageSize;
            }
        }
        return -1;
    }

    static int U16(const QByteArray& bytes, qsizetype at) {
        return static_cast<quint8>(bytes.at(at)) | static_cast<quint8>(bytes.at(at + 1)) << 8;
    }

private Q_SLOTS:
    void init() {
        root_ = std::make_unique<QTemporaryDir>();
        importar::SetMdbReader(QStringLiteral(TARVO_LEITOR));
    }
    void cleanup() { root_.reset(); }
    void cleanupTestCase() { importar::SetMdbReader({}); }

    void TheProgramFindsItsReader() {
        const QString output = OutputOf(QStringLiteral(TARVO_IMPORTAR),
                                        {Given("antigo.mdb"), "--conferir", "--exemplos", "0"});
        QVERIFY2(output.contains(u"1.200 linhas"_s), qPrintable(output));
    }

    void EveryRowArrives_data() {
        const Table<QString, QString, QString> row("catalogue", "rows", "sql");
        for (const AnyText name : {"antigo", "antigo-outra-forma"}) {
            const auto table = [&](const AnyText& file, const AnyText& sql) {
                row((name + u' ' + file).toUtf8(), name, file, sql);
            };
            for (const AnyText file :
                 {"CLIENTECONCORRENTE", "COMPONENTE", "FOTOPECAPESQUISA", "JOGOREPARO", "PECA",
                  "PECA_COMPONENTE", "PECA_COMPONENTE_JOGOREPARO", "REFERENCIACRUZADA", "VEICULO",
                  "VEICULO_PECA"}) {
                table(file, u"SELECT * FROM "_s + file);
            }
        }
        // By part in the old one, and through a view that looks the same in the new one. There the
        // markers of a figure that several parts share have the codes of the first.
        row("antigo FIGURADETALHADA1", "antigo", "FIGURADETALHADA1",
            "SELECT (SELECT min(X.CodigoPeca) FROM PECA AS X WHERE X.CodigoFigura = "
            "PECA.CodigoFigura) * 0, V.CodigoPeca, V.ItemComponente, V.ArquivoFigura, V.LLeft, "
            "V.TTop FROM FIGURADETALHADA1 AS V INNER JOIN PECA ON PECA.CodigoPeca = V.CodigoPeca");
        row("antigo-outra-forma FIGURADETALHADA", "antigo-outra-forma", "FIGURADETALHADA1",
            "SELECT CodigoFigura, CodigoFiguraDetalhada, ItemComponente FROM FIGURADETALHADA");
    }
    void EveryRowArrives() {
        QFETCH(QString, catalogue);
        QFETCH(QString, rows);
        QFETCH(QString, sql);
        const auto outcome = Import(Given(catalogue + u".mdb"_s));
        QVERIFY(outcome.made);
        QCOMPARE(outcome.refused, 0);
        QStringList expected;
        const QString file = Given(catalogue + u"-rows/"_s + rows + u".csv"_s);
        for (const QString& line : sys::ReadText(file).split(u'\n', Qt::SkipEmptyParts)) {
            QString text = Written(line);
            if (catalogue == u"antigo"_s && rows == u"FIGURADETALHADA1"_s) {
                text.replace(0, text.indexOf(u'|'), u"0"_s);
            }
            expected += text;
        }
        QStringList found = RowsIn(In("novo"), sql);
        std::sort(expected.begin(), expected.end());
        std::sort(found.begin(), found.end());
        QCOMPARE(found, expected);
    }

    void SettingsAndFigures() {
        const auto outcome = Import(Given("antigo.mdb"));
        QCOMPARE(RowsIn(In("novo"), "SELECT * FROM UMREGISTRO"),
                 List("39877| A|40360.6041666667|0|http://atualizacao.example/tarvo/|41|40"));
        QCOMPARE(RowsIn(In("novo"), "SELECT count(*), count(DISTINCT ArquivoFigura) FROM FIGURA"),
                 List("32|32"));
        QVERIFY(outcome.loaded.remarks.isEmpty());
        QCOMPARE(NamesIn(root_->path()), List("novo"));
        QCOMPARE(NamesIn(In("novo")), List("Figuras", "FotoPeca", "Tarvo.ldb", "Tarvo.mdb"));
    }

    void ShapesAndStrangersAreTold() {
        const auto outcome = Import(Given("antigo-outra-forma.mdb"));
        const QString remarks = outcome.remarks.join(u'\n');
        for (const AnyText told :
             {"REF_CRUZADA_BASE foi tomada como REFERENCIACRUZADA",
              "sem uso no catálogo: Observacao", "tabela MENSAGENS não é do catálogo",
              "tabela Erros ao colar não é do catálogo"}) {
            QVERIFY2(remarks.contains(told), qPrintable(remarks));
        }
        QVERIFY(!remarks.contains(u"faltam"_s));
        QVERIFY(!remarks.contains(u"CONTROLETRAN"_s));
        // A yes/no column, and an empty date.
        QCOMPARE(RowsIn(In("novo"),
                        "SELECT DataUltimaVerificacao, FlagErroUltimaVerificacao, Versao "
                        "FROM UMREGISTRO"),
                 List("-|0|41"));
        QCOMPARE(RowsIn(In("novo"), "SELECT max(length(DescricaoPeca)) > 30000 FROM PECA"),
                 List("1"));
    }

    // Pages coded with a key that stands in the header, as the old engine offered.
    void ACodedFileIsRead() {
        const QString path = Changed([](QByteArray& bytes) {
            const QByteArray headerKey = QByteArray::fromHex("C7DA396B");
            constexpr int HeaderAt = 0x18;
            constexpr int HeaderSize = 128;
            QByteArray header = Coded(bytes.sliced(HeaderAt, HeaderSize), headerKey);
            constexpr quint32 Key = 0x12345678;
            const auto word = [](quint32 number) {
                return QByteArray(reinterpret_cast<const char*>(&number), sizeof number);
            };
            header.replace(0x3E - HeaderAt, 4, word(Key));
            bytes.replace(HeaderAt, HeaderSize, Coded(header, headerKey));
            for (quint32 page = 1; page < quint32(bytes.size()) / PageSize; ++page) {
                bytes.replace(page * PageSize, PageSize,
                              Coded(bytes.sliced(page * PageSize, PageSize), word(Key ^ page)));
            }
        });
        const auto outcome = Import(path);
        QVERIFY(outcome.made);
        QCOMPARE(RowsIn(In("novo"), "SELECT count(*) FROM REFERENCIACRUZADA"), List("1200"));
    }

    void ADeletedRowIsGone() {
        const QString path = Changed([](QByteArray& bytes) {
            const qsizetype definition = DefinitionOf(bytes, "DescricaoVeiculo");
            QVERIFY(definition > 0);
            for (qsizetype page = 0; page < bytes.size(); page += PageSize) {
                if (bytes.at(page) == 1 && U16(bytes, page + 4) == definition &&
                    U16(bytes, page + RowCountAt) > 1) {
                    bytes[page + RowCountAt + 3] = static_cast<char>(
                        static_cast<quint8>(bytes.at(page + RowCountAt + 3)) | 0xC0);
                    bytes[definition * PageSize + DeclaredAt] = 59;
                    return;
                }
            }
            QFAIL("no page");
        });
        const auto outcome = Import(path);
        QCOMPARE(RowsIn(In("novo"), "SELECT count(*), min(CodigoVeiculo) FROM VEICULO"),
                 List("59|2"));
        QCOMPARE(outcome.refused, 2);  // what fitted the vehicle
    }

    void Refuses_data() {
        QTest::addColumn<std::function<void(QByteArray&)>>("change");
        QTest::addColumn<QString>("why");
        const auto row = [](const char* name, std::function<void(QByteArray&)> change,
                            const AnyText& why) { QTest::newRow(name) << change << QString(why); };
        row(
            "nothing in it", [](QByteArray& bytes) { bytes.clear(); }, "está vazio");
        row(
            "another file", [](QByteArray& bytes) { bytes = "PK\3\4 what else"; },
            "não começa como um arquivo .mdb");
        row(
            "enciphered as a whole", [](QByteArray& bytes) { bytes = Coded(bytes, "any key"); },
            "cifrado por inteiro");
        row(
            "a newer format", [](QByteArray& bytes) { bytes.replace(4, 15, "Standard ACE DB"); },
            "é de um formato mais novo");
        row(
            "a newer version", [](QByteArray& bytes) { bytes[0x14] = 3; },
            "é de um formato mais novo");
        row(
            "another engine", [](QByteArray& bytes) { bytes = "SQLite format 3\0"; }, "SQLite");
        row(
            "cut within a page", [](QByteArray& bytes) { bytes.chop(100); }, "está cortado");
        row(
            "cut in the middle", [](QByteArray& bytes) { bytes.truncate(40 * PageSize); },
            "velho.mdb\" ");
        row(
            "cut behind the first pages", [](QByteArray& bytes) { bytes.truncate(3 * PageSize); },
            "não pode ser lido");
        row(
            "rows that are missing",
            [](QByteArray& bytes) {
                bytes[DefinitionOf(bytes, "DescricaoVeiculo") * PageSize + DeclaredAt] = 61;
            },
            "A tabela VEICULO de \"%1\" diz ter 61 linhas, e 60 puderam ser lidas");
        row(
            "a table without a column",
            [](QByteArray& bytes) {
                const QByteArray name = "D\0e\0s\0c\0r\0i\0c\0a\0o\0V\0"_ba;
                bytes.replace(name, "X\0e\0s\0c\0r\0i\0c\0a\0o\0V\0"_ba);
            },
            "tabela VEICULO não tem a coluna DescricaoVeiculo");
        row(
            "a definition that is no definition",
            [](QByteArray& bytes) {
                bytes[DefinitionOf(bytes, "DescricaoVeiculo") * PageSize] = 7;
            },
            "a definição da tabela VEICULO está danificada");
    }
    void Refuses() {
        QFETCH(std::function<void(QByteArray&)>, change);
        QFETCH(QString, why);
        const QString path = Changed(change);
        if (why.contains(u"%1"_s)) {
            why = why.arg(path);
        }
        const QString complaint = ComplaintOf({path, In("novo")});
        QVERIFY2(complaint.contains(why), qPrintable(complaint));
        QCOMPARE(NamesIn(root_->path()), List("velho.mdb"));
    }

    void ACatalogueOfTodayIsToldApart() {
        Import(Given("antigo.mdb"));
        QVERIFY(ComplaintOf({In("novo/Tarvo.mdb"), In("outro")})
                    .contains(u"já é um catálogo deste programa"_s));
    }

    void Readers_data() {
        const Table<QString, QString> row("script", "why");
        row("crashes", "kill -SEGV $$", "falhou no meio");
        row("says nothing", "exec sleep 60", "parou no meio");
        row("ends early", "printf 'TARVOMDB1\\n'", "falhou no meio");
        row("says something else", "printf 'TARVOMDB9\\nZ\\4\\0\\0\\0\\0\\0\\0\\0'",
            "falhou no meio");
        row("loses a frame", "printf 'TARVOMDB1\\nZ\\4\\0\\0\\0\\1\\0\\0\\0'", "falhou no meio");
        row("sends a frame of gigabytes", "printf 'TARVOMDB1\\nT\\377\\377\\377\\377'; sleep 60",
            "falhou no meio");
        row("sends half a table", "printf 'TARVOMDB1\\nT\\4\\0\\0\\0\\1\\0\\0\\0'", "incompletos");
    }
    void Readers() {
        QFETCH(QString, script);
        QFETCH(QString, why);
        const QTemporaryDir folder;
        const QString program = folder.filePath(u"leitor"_s);
        Write(program, "#!/bin/sh\n" + script.toUtf8() + '\n');
        QVERIFY(QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner));
        importar::SetMdbReader(program);
        importar::Order order{Given("antigo.mdb"), In("novo")};
        order.patience = std::chrono::milliseconds(300);
        const QString complaint = ComplaintOf(order);
        QVERIFY2(complaint.contains(why), qPrintable(complaint));
        QCOMPARE(NamesIn(root_->path()), QStringList());
        importar::SetMdbReader(folder.filePath(u"nada"_s));
        QVERIFY(ComplaintOf(order).contains(u"não pôde ser iniciado"_s));
    }

    // Any byte may be wrong: an error in words or all rows, but no crash and nothing half made.
    void DamagedAnywhere() {
        const QByteArray whole = sys::ReadBytes(Given("antigo.mdb"));
        QRandomGenerator random(17);
        for (int round = 0; round < 40; ++round) {
            const QString path = Changed([&](QByteArray& bytes) {
                for (int i = 0; i < 400; ++i) {
                    bytes[random.bounded(PageSize, static_cast<int>(bytes.size()))] =
                        static_cast<char>(random.bounded(256));
                }
            });
            importar::Order order{path, {}};
            order.check = true;
            order.patience = std::chrono::milliseconds(5000);
            ComplaintOf(order);
            QCOMPARE(NamesIn(root_->path()), List("velho.mdb"));
        }
    }

    // Every kind of value, and letters of both formats.
    void ValuesOfRealFiles_data() {
        const Table<QString, QString, QString> row("file", "table", "values");
        row("Jet 3", "V1997-test.mdb", "Table1",
            "abcdefg|ação€ ÜñX|2|222|333333333|444,555|27293|3,5|1");
        row("Jet 4", "V2000-test.mdb", "Table1",
            "abcdefg|hijklmnop|2|222|333333333|444,555|27293|3,5|1");
        row("numeric", "V2000-numeric.mdb", "test", "some data|1|0|0|4|-1|1");
    }
    void ValuesOfRealFiles() {
        QFETCH(QString, file);
        QFETCH(QString, table);
        QFETCH(QString, values);
        const QString path = QStringLiteral(TARVO_JET_FILES) + u'/' + file;
        if (!QFile::exists(path)) {
            QSKIP("the real files are not on this machine");
        }
        QByteArray bytes = sys::ReadBytes(path);
        Write(In("real.mdb"),
              bytes.replace("hijklmnop",
                            file.contains(u"1997"_s) ? "a\xE7\xE3o\x80 \xDC\xF1X" : "hijklmnop"));
        MdbSource source(In("real.mdb"), root_->path(), std::chrono::minutes(1));
        QStringList rows;
        for (std::size_t i = 0; i < source.Tables().size(); ++i) {
            if (source.Tables()[i].name == table) {
                source.Read(i, [&](const Row& each, qint64) {
                    QStringList cells;
                    for (const importar::Value& value : each.values) {
                        cells += value.Shown();
                    }
                    rows += cells.join(u'|');
                });
            }
        }
        QVERIFY2(rows.contains(values), qPrintable(rows.join(u'\n')));
    }

    // Row for row against the reader's own tool, in the files of the original engine.
    void RealFiles_data() {
        const Table<QString, int> row("file", "tables");
        row("Jet 3", "V1997-test.mdb", 4);
        row("Jet 4", "V2000-test.mdb", 4);
        row("numeric", "V2000-numeric.mdb", 1);
        row("password", "V2000-with-password.mdb", 1);
    }
    void RealFiles() {
        QFETCH(QString, file);
        QFETCH(int, tables);
        const QString path = QStringLiteral(TARVO_JET_FILES) + u'/' + file;
        if (!QFile::exists(path)) {
            QSKIP("the real files are not on this machine");
        }
        MdbSource source(path, root_->path(), std::chrono::minutes(1));
        QCOMPARE(int(source.Tables().size()), tables);
        const QString other = QStandardPaths::findExecutable(u"mdb-count"_s);
        for (std::size_t i = 0; i < source.Tables().size(); ++i) {
            qint64 rows = 0;
            source.Read(i, [&](const Row&, qint64) { ++rows; });
            QCOMPARE(rows, source.Tables()[i].size);
            if (!other.isEmpty()) {
                QCOMPARE(QString::number(rows),
                         OutputOf(other, {path, source.Tables()[i].name}).trimmed());
            }
        }
    }
};

TARVO_TEST(TestAntigos);
#include "test_antigos.moc"
