#include "platform/system/csv_reader.h"
#include "platform/system/csv_writer.h"
#include "support/cases.h"
#include "support/database.h"

static QByteArray Decoded(const QString& text) {
    return QByteArray::fromPercentEncoding(text.toUtf8());
}

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
    for (auto [one] : Cases(TARVO_CASES "/reads.data")) {
        const QByteArray rows = Decoded(one.Take(u'>').join(u'\n'));
        QCOMPARE(Rows(Decoded(one.lines.join(u'\n'))).join(u'\n'), QString::fromUtf8(rows));
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

// Each line of cells.data is a text and what is written of it, decoded as a network address is.
TEST(TestCsv, Cells) {
    Lines lines(TARVO_CASES "/cells.data");
    lines("empty", {"", ""});
    for (const auto& [cells] : lines) {
        const QString text = QString::fromUtf8(Decoded(cells.first()));
        QCOMPARE(sys::CsvCell(text), Decoded(cells.at(1)));
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
