#include "platform/system/csv_reader.h"
#include "platform/system/csv_writer.h"
#include "support/database.h"

struct TestCsv : Fixture {
    QTemporaryDir folder_;
    QString path_ = folder_.filePath(u"linhas.csv"_s);

    // Each row as "line: cell|cell", with "!" in front when it is malformed.
    QStringList Rows(const QByteArray& content) {
        Write(path_, content);
        sys::CsvReader reader(path_);
        QStringList rows;
        for (QStringList cells; reader.Next(cells);) {
            rows += (reader.Malformed() ? u"!"_s : QString()) + QString::number(reader.Line()) +
                    u": "_s + cells.join(u'|');
        }
        return rows;
    }
};

TEST(TestCsv, Reads) {
    for (const auto& [content, rows] : Each<QByteArray, QStringList>{
             {"semicolons", "a;b\n1;2,5\n", List("1: a|b", "2: 1|2,5")},
             {"commas, the semicolon is text", "a,b,c\n1,x;y,\"2,5\"\n",
              List("1: a|b|c", "2: 1|x;y|2,5")},
             {"tabs", "a\tb\n1;2\t3", List("1: a|b", "2: 1;2|3")},
             {"quoted separators of a heading do not count", "\"a,b,c\";d\n1;2\n",
              List("1: a,b,c|d", "2: 1|2")},
             {"nothing in the heading", "\na,b,c;1\n", List("2: a,b,c|1")},
             {"a line that tells the separator", "sep=|\r\na|b;c\r\n", List("2: a|b;c")},
             {"mark", "\xEF\xBB\xBFPeça;b\n,,,,\n", List("1: Peça|b", "2: ,,,,")},
             {"Windows-1252", "Pe\347a;\x80;\x93\n", List("1: Peça|€|“")},
             {"cut within a character", "Pe\347a;\xC3", List("1: Peça|Ã")},
             {"line ends", "a;b\r\nc;d\re;f\n\n ; \ng;h",
              List("1: a|b", "2: c|d", "3: e|f", "6: g|h")},
             {"quoted line ends are counted", "a;b\n\"x\r\ny\nz\rw\";\"\"\n1;2\n",
              List("1: a|b", "2: x\r\ny\nz\rw|", "6: 1|2")},
             {"quotes", "a;\"b \"\"c\"\"\"\n1/2\" x 3;\" d \"",
              List("1: a|b \"c\"", "2: 1/2\" x 3| d ")},
             {"text behind a closing quote", "a;b\n\"1/2\" x;2\n3;4\n",
              List("1: a|b", "!2: 1/2 x|2", "3: 3|4")},
             {"nothing", "", List()},
         }) {
        QCOMPARE(Rows(content), rows);
    }
}

TEST(TestCsv, Refuses) {
    for (const auto& [content, why] : Each<QByteArray, QString>{
             {"an open quote", "a;b\n1;2\n\"3;4\n5;6\n",
              ", linha 3: as aspas que se abrem nesta linha não se fecham."},
             {"a very long one", "a\n\"" + QByteArray(5 << 20, 'x') + "\"\n",
              ", linha 2: as aspas que se abrem nesta linha não se fecham."},
             {"UTF-16",
              {"\377\376a\0;\0", 6},
              " está em UTF-16: na planilha, salve como CSV UTF-8."},
             {"no text", {"a;b\0c", 5}, " não é um texto."},
         }) {
        QCOMPARE(SaidBy([&] { Rows(content); }), u"5 \""_s + path_ + u'"' + why);
    }
    QCOMPARE(ErrorOf([&] { sys::CsvReader(folder_.filePath(u"nada.csv"_s)); }), 53);
}

TEST(TestCsv, Cells) {
    for (const auto& [text, cell] : Each<QString, QString>{
             {"plain", "Válvula 24 V", "Válvula 24 V"},
             {"formula", "=1+1", "'=1+1"},
             {"call", "@SOMA(A1)", "'@SOMA(A1)"},
             {"sum that looks like a number", "-1+2", "'-1+2"},
             {"plus", "+a", "'+a"},
             {"tab in front", "\t=1", "'\t=1"},
             {"negative number", "-10,5", "-10,5"},
             {"two commas", "-1,2,3", "'-1,2,3"},
             {"sign alone", "-", "'-"},
             {"apostrophe", "'x", "''x"},
             {"separator and quotes", "a;\"b\"", "\"a;\"\"b\"\"\""},
             {"line end", "a\nb", "\"a\nb\""},
             {"blank in front", "  12a", "\"  12a\""},
             {"blank behind", "a ", "\"a \""},
             {"empty", "", ""},
         }) {
        QCOMPARE(QString::fromUtf8(sys::CsvCell(text)), cell);
        QCOMPARE(sys::FromHarmless(sys::Harmless(text)), text);
    }
}

TEST(TestCsv, Numbers) {
    QCOMPARE(sys::CsvNumber(2), u"2"_s);
    QCOMPARE(sys::CsvNumber(-0.1), u"-0,1"_s);
    QCOMPARE(sys::CsvNumber(1e21), u"1000000000000000000000"_s);
    QCOMPARE(sys::CsvNumber(20.100000381469727), u"20,100000381469727"_s);
}

// Cells, marks and line ends that fall on the border between two blocks among them.
TEST(TestCsv, WritesWhatItReads) {
    sys::CsvWriter writer(path_);
    QStringList expected;
    for (int i = 1; i <= 20000; ++i) {
        writer.Row({QString::number(i), u"=ação; \"%1\""_s.arg(i)});
        expected += u"%1: %1|'=ação; \"%1\""_s.arg(i);
    }
    writer.Close();
    const QByteArray bytes = sys::ReadBytes(path_);
    QVERIFY(bytes.startsWith("\357\273\2771;\"'=ação; \"\"1\"\"\"\r\n2;"));
    QVERIFY(bytes.endsWith("\r\n"));
    QCOMPARE(Rows(bytes), expected);
}
