#include "importar/mdbsource.h"
#include "novapasta.h"
#include "support/cases.h"

#include <QStandardPaths>

#include <numeric>

using importar::MdbSource;
using importar::Row;

namespace {

constexpr int PageSize = 4096;
// In antigo.mdb: the page that defines VEICULO, and in it the number of the rows.
constexpr int Vehicles = 64 * PageSize;
constexpr int DeclaredVehicles = Vehicles + 16;
constexpr int TypeOfCode = Vehicles + 75;
constexpr int TypeOfDescription = Vehicles + 100;
// The page with its rows: their number, then two bytes for each that tell where it begins.
constexpr int RowsOfVehicles = 67 * PageSize + 12;

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

QByteArray Coded(QByteArray bytes, const QByteArray& key) {
    std::array<quint8, 256> state;
    std::iota(state.begin(), state.end(), 0);
    quint8 j = 0;
    for (int i = 0; i < 256; ++i) {
        j += state[i] + key.at(i % key.size());
        std::swap(state[i], state[j]);
    }
    quint8 i = 0;
    j = 0;
    for (char& byte : bytes) {
        j += state[++i];
        std::swap(state[i], state[j]);
        byte ^= state[(state[i] + state[j]) & 0xFF];
    }
    return bytes;
}

}  // namespace

struct TestAntigos : InAFolder {
    importar::Outcome Import(const QString& from) const { return ImportBy({from, In("novo")}); }

    const QByteArray whole_ = sys::ReadBytes(Given("antigo.mdb"));

    // The first old catalogue with other bytes at some place.
    QByteArray With(qsizetype at, const QByteArray& bytes) const {
        return QByteArray(whole_).replace(at, bytes.size(), bytes);
    }

    QString File(const QByteArray& bytes) const {
        Write(In("velho.mdb"), bytes);
        return In("velho.mdb");
    }

    void init() override {
        InAFolder::init();
        importar::SetMdbReader(QStringLiteral(TARVO_LEITOR));
    }
    ~TestAntigos() override { importar::SetMdbReader({}); }
};

TEST(TestAntigos, TheProgramFindsItsReader) {
    Ends({Given("antigo.mdb"), "--conferir", "--exemplos", "0"}, "0 *1.200 linhas*");
}

// `markers`: what a row of the old FIGURADETALHADA1 became, less the first cells of it. The
// codes of a figure that several parts share are those of the first.
TEST(TestAntigos, EveryRowArrives) {
    Each<QString, QString, int, QStringList> catalogues{
        {"antigo",
         "SELECT CodigoPeca, ItemComponente, ArquivoFigura, LLeft, TTop FROM "
         "FIGURADETALHADA1",
         "39877| A|40360.6041666667|0|http://atualizacao.example/tarvo/|41|40",
         1,
         {}},
        {"antigo-outra-forma",
         "SELECT CodigoFigura, CodigoFiguraDetalhada, ItemComponente FROM FIGURADETALHADA",
         "39877|-|-|0|http://atualizacao.example/tarvo/|41|40",
         0,
         {"tabela REF_CRUZADA_BASE foi tomada como REFERENCIACRUZADA, pelas suas colunas.",
          "tabela REF_CRUZADA_BASE: sem uso no catálogo: Observacao.",
          "tabela Erros ao colar não é do catálogo e fica de fora.",
          "tabela MENSAGENS não é do catálogo e fica de fora."}},
    };
    for (const auto& [markers, settings, less, told] : catalogues) {
        const QString name = QString::fromUtf8(catalogues.Name());
        const auto outcome = Import(Given(name + u".mdb"_s));
        QVERIFY(outcome.made);
        QCOMPARE(outcome.refused, 0);
        QCOMPARE(outcome.remarks, told);
        QCOMPARE(NamesIn(root_->path()), List("novo"));
        QCOMPARE(NamesIn(In("novo")), List("Figuras", "FotoPeca", "Tarvo.ldb", "Tarvo.mdb"));
        QCOMPARE(RowsIn(In("novo"), "SELECT * FROM UMREGISTRO").value(0), settings);
        const QDir written(Given(name + u"-rows"_s));
        QCOMPARE(written.entryList(QDir::Files).size(), 11);
        QVERIFY(ComplaintOf({In("novo/Tarvo.mdb"), In("outro")})
                    .contains(u"já é um catálogo deste programa"_s));
        for (const QString& file : written.entryList(QDir::Files)) {
            const bool marks = file.startsWith(u"FIGURADETALHADA1"_s);
            QStringList expected;
            const QString text = sys::ReadText(written.filePath(file));
            for (const QString& line : text.split(u'\n', Qt::SkipEmptyParts)) {
                expected += Written(line).section(u'|', marks ? less : 0);
            }
            QStringList found =
                RowsIn(In("novo"), marks ? markers : u"SELECT * FROM "_s + file.chopped(4));
            expected.sort();
            found.sort();
            QCOMPARE(found, expected);
        }
    }
}

// Pages coded with a key that stands in the header, as the old engine offered.
TEST(TestAntigos, ACodedFileIsRead) {
    constexpr int HeaderAt = 0x18;
    constexpr int HeaderSize = 128;
    constexpr quint32 Key = 0x12345678;
    const QByteArray headerKey = QByteArray::fromHex("C7DA396B");
    const auto word = [](quint32 number) {
        return QByteArray(reinterpret_cast<const char*>(&number), sizeof number);
    };
    QByteArray header = Coded(whole_.sliced(HeaderAt, HeaderSize), headerKey);
    header.replace(0x3E - HeaderAt, 4, word(Key));
    QByteArray bytes = With(HeaderAt, Coded(header, headerKey)).first(PageSize);
    for (quint32 page = 1; page < quint32(whole_.size()) / PageSize; ++page) {
        bytes += Coded(whole_.sliced(page * PageSize, PageSize), word(Key ^ page));
    }
    QVERIFY(Import(File(bytes)).made);
    QCOMPARE(RowsIn(In("novo"), "SELECT count(*) FROM REFERENCIACRUZADA"), List("1200"));
}

TEST(TestAntigos, ADeletedRowIsGone) {
    QByteArray bytes = With(DeclaredVehicles, QByteArray(1, 59));
    char& flags = bytes.data()[RowsOfVehicles + 3];
    flags = static_cast<char>(static_cast<quint8>(flags) | 0xC0);
    Write(In("velho.Ldb"));  // as while somebody has it open
    const auto outcome = Import(File(bytes));
    QCOMPARE(outcome.remarks,
             List(u"Há \"%1\": se alguém está com o catálogo antigo aberto, feche-o e importe de "
                  "novo."_s.arg(In("velho.Ldb"))));
    QCOMPARE(RowsIn(In("novo"), "SELECT count(*), min(CodigoVeiculo) FROM VEICULO"), List("59|2"));
    QCOMPARE(outcome.refused, 2);  // what fitted the vehicle
}

// Columns that are declared as what the catalogue does not hold there.
TEST(TestAntigos, OtherTypes) {
    for (const auto& [at, type, why] : Each<int, QByteArray, QString>{
             {"single precision", TypeOfCode, "\6",
              "CodigoVeiculo: \"0,000000000000000000000000000000000000000000001\" não é um número "
              "inteiro"},
             {"bytes", TypeOfDescription, "\x9",
              "DescricaoVeiculo é de um tipo que não pode ser lido"},
         }) {
        const auto outcome = Import(File(With(at, type)));
        QCOMPARE(outcome.refusedExamples.value(0), u"tabela VEICULO, linha 1: "_s + why);
        QVERIFY(QDir(In("novo")).removeRecursively());
    }
}

TEST(TestAntigos, Refuses) {
    for (const auto& [bytes, why] : Each<QByteArray, QString>{
             {"nothing in it", {}, "velho.mdb\" está vazio."},
             {"another file", "PK\3\4 what else", "não começa como um arquivo .mdb"},
             {"enciphered as a whole", Coded(whole_, "any key"), "cifrado por inteiro"},
             {"a newer format", With(4, "Standard ACE DB"), "é de um formato mais novo"},
             {"a newer version", With(0x14, "\3"), "é de um formato mais novo"},
             {"another engine", "SQLite format 3\0", "é um banco de outro tipo (SQLite)"},
             {"cut in the mark", whole_.first(0x14), "está cortado"},
             {"cut within a page", whole_.chopped(100), "está cortado"},
             {"cut behind two pages", whole_.first(2 * PageSize), "está cortado"},
             {"cut in the middle", whole_.first(40 * PageSize), "velho.mdb\" "},
             {"cut behind the first pages", whole_.first(3 * PageSize), "não pode ser lido"},
             {"rows that are missing", With(DeclaredVehicles, QByteArray(1, 61)),
              "A tabela VEICULO de \"%1\" diz ter 61 linhas, e 60 puderam ser lidas. "
              "Compacte e repare o arquivo no programa que o criou, e importe de novo."},
             {"a table without a column",
              QByteArray(whole_).replace("D\0e\0s\0c\0r\0i\0c\0a\0o\0V\0"_ba,
                                         "X\0e\0s\0c\0r\0i\0c\0a\0o\0V\0"_ba),
              "tabela VEICULO não tem a coluna DescricaoVeiculo"},
             {"a definition that is no definition", With(Vehicles, "\7"),
              "a definição da tabela VEICULO está danificada"},
         }) {
        const QString complaint = ComplaintOf({File(bytes), In("novo")});
        QVERIFY2(complaint.contains(QString(why).replace(u"%1"_s, In("velho.mdb"))),
                 qPrintable(complaint));
        QCOMPARE(NamesIn(root_->path()), List("velho.mdb"));
    }
}

// Each case of readers.data is a script in the reader's place and (">") what is told of it.
TEST(TestAntigos, Readers) {
    for (auto [one] : Cases(TARVO_ANTIGOS "/readers.data")) {
        const QString why = one.Take(u'>').first();
        const QTemporaryDir folder;
        const QString program = folder.filePath(u"leitor"_s);
        Write(program, "#!/bin/sh\n" + one.lines.join(u'\n').toUtf8() + '\n');
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
}

// Any byte may be wrong: an error in words or all rows, but no crash and nothing half made.
TEST(TestAntigos, DamagedAnywhere) {
    QRandomGenerator random(17);
    for (int round = 0; round < 40; ++round) {
        QByteArray bytes = whole_;
        for (int i = 0; i < 400; ++i) {
            bytes[random.bounded(PageSize, static_cast<int>(bytes.size()))] =
                static_cast<char>(random.bounded(256));
        }
        importar::Order order{File(bytes), {}};
        order.check = true;
        order.patience = std::chrono::milliseconds(5000);
        ComplaintOf(order);
        QCOMPARE(NamesIn(root_->path()), List("velho.mdb"));
    }
}

// The files of the original engine: every kind of value, letters of both formats, and row for
// row what the reader's own tool counts.
TEST(TestAntigos, RealFiles) {
    for (const auto& [file, tables, values] : Each<QString, int, QString>{
             {"Jet 3", "V1997-test.mdb", 4,
              "Table1: abcdefg|ação€ ÜñX|2|222|333333333|444,555|27293|3,5|1"},
             {"Jet 4", "V2000-test.mdb", 4,
              "Table1: abcdefg|hijklmnop|2|222|333333333|444,555|27293|3,5|1"},
             {"numeric", "V2000-numeric.mdb", 1, "test: some data|1|0|0|4|-1|1"},
             {"password", "V2000-with-password.mdb", 1, ""},
         }) {
        const QString path = QStringLiteral(TARVO_JET_FILES) + u'/' + file;
        if (!QFile::exists(path)) {
            QSKIP("the real files are not on this machine");
        }
        QByteArray bytes = sys::ReadBytes(path);
        if (file.contains(u"1997"_s)) {
            bytes.replace("hijklmnop", "a\xE7\xE3o\x80 \xDC\xF1X");
        }
        MdbSource source(File(bytes), root_->path(), std::chrono::minutes(1));
        QCOMPARE(int(source.Tables().size()), tables);
        const QString other = QStandardPaths::findExecutable(u"mdb-count"_s);
        QStringList rows;
        for (std::size_t i = 0; i < source.Tables().size(); ++i) {
            const importar::SourceTable& table = source.Tables()[i];
            source.Read(i, [&](const Row& each, qint64) {
                QStringList cells;
                for (const importar::Value& value : each.values) {
                    cells += value.Shown();
                }
                rows += table.name + u": "_s + cells.join(u'|');
            });
            if (!other.isEmpty()) {
                QCOMPARE(OutputOf(other, {path, table.name}).trimmed(),
                         QString::number(table.size));
            }
        }
        QVERIFY2(values.isEmpty() || rows.contains(values), qPrintable(rows.join(u'\n')));
    }
}
