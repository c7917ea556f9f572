#include "memorydatabase.h"
#include "platform/sql/errors.h"
#include "platform/sql/functiontable.h"
#include "support/test.h"

#include <QLocale>

using sql::Function;

struct TestFunctions : Fixture {
    static std::unique_ptr<MemoryDatabase> Make() {
        auto db = std::make_unique<MemoryDatabase>();
        db->Run("CREATE TABLE V (T TEXT(10), N LONG, D DATETIME)");
        db->Run("INSERT INTO V VALUES ('100', 7, #3/5/2024 18:30#)");
        return db;
    }
    std::unique_ptr<MemoryDatabase> db_ = Make();
};

// What is given for an expression, over one row of a table with a column of each kind: T a text
// '100', N the number 7, D the evening of 5 March 2024.
TEST(TestFunctions, Gives) {
    Each<QString, QString> row;
    const auto rows = [&](std::initializer_list<std::pair<const char*, const char*>> all) {
        for (const auto& [expression, value] : all) {
            row(expression, expression, value);
        }
    };
    rows({{"Left(T, 3) = 100", "-1"},
          {"T = 100", "-1"},
          {"Left(T, 2) = 100", "0"},
          {"Left(T, 3) In (99, 100)", "-1"},
          {"N = '7'", "-1"},
          {"N + 0 = '7'", "-1"},
          {"N + 0 In ('6', ' 7 ')", "-1"},
          {"N Between '6' And '8'", "-1"},
          {"D > '05/03/2024'", "-1"},
          {"D Between '5-mar-2024' And '06/03/2024'", "-1"},
          {"N BETWEEN .5 AND 7.5", "-1"},
          {"Yes & No & On & Off", "-10-10"},
          {"#5-Mar-2024# = #3/5/2024#", "-1"},
          {"CDate('12:30 AM') = #0:30#", "-1"}});
    for (int month = 1; month <= 12; ++month) {
        for (const QLocale& spoken : {QLocale(QLocale::C), QLocale(QLocale::Portuguese)}) {
            const QString name = spoken.monthName(month);
            for (const QString& written : {name, name.left(3).toUpper()}) {
                const QString date = u"Month(#5-%1-2024#) = %2"_s.arg(written).arg(month);
                row(date.toUtf8(), date, "-1");
            }
        }
    }
    // A date that becomes a text is one.
    rows({{"'rev. ' & D", "rev. 05/03/2024 18:30:00"},
          {"#3/5/2024# & ''", "05/03/2024"},
          {"'às ' & #18:30#", "às 18:30:00"},
          {"D - N & ''", "27/02/2024 18:30:00"},
          {"D - D & ''", "0"},
          {"CStr(D)", "05/03/2024 18:30:00"},
          {"Format(D)", "05/03/2024 18:30:00"},
          {"Len(D)", "19"},
          {"D Like '05/03/*'", "-1"},
          {"IIF(N = 7, D, '') & '!'", "05/03/2024 18:30:00!"},
          {"Nz(D) & '!'", "05/03/2024 18:30:00!"},
          {"Max(D) & ''", "05/03/2024 18:30:00"},
          {"(SELECT D FROM V) & ''", "05/03/2024 18:30:00"},
          {"Switch(N = 7, DateAdd('d', 1, D)) & ''", "06/03/2024 18:30:00"},
          {"IsDate(D)", "-1"}});
    // The last argument: 0 compares each character as it is.
    rows({{"StrComp('a', 'A')", "0"},
          {"StrComp('a', 'A', 0)", "1"},
          {"StrComp('a', 'A', 1)", "0"},
          {"StrComp('é', 'e', 2)", "1"},
          {"InStr(1, 'xBb', 'b', 0)", "3"},
          {"InStr(1, 'xBb', 'b', 1)", "2"},
          {"InStr('', 'a')", "0"},
          {"InStr(2, 'aba', '')", "2"},
          {"InStr(9, 'aba', 'a')", "0"},
          {"InStr('aabaab', 'aab')", "1"},
          {"InStr(2, 'aabaab', 'aab')", "4"},
          {"InStr('ababac', 'abac')", "3"},
          {"InStrRev('ababa', 'ba')", "4"},
          {"InStrRev('ababa', 'ba', 4)", "2"},
          {"InStrRev('aBa', 'b', -1, 0)", "0"},
          {"InStrRev('abc', '')", "3"},
          {"InStrRev('abc', 'c', 9)", "0"},
          {"Replace('aAa', 'a', 'b')", "bbb"},
          {"Replace('aAa', 'a', 'b', 1, -1, 0)", "bAb"},
          {"Replace('aaa', 'a', 'b', 2)", "bb"},
          {"Replace('aaa', 'a', 'b', 1, 2)", "bba"},
          {"Replace('aaa', 'a', 'b', 1, 0)", "aaa"},
          {"Replace('abc', '', 'x')", "abc"},
          {"Replace('aaaa', 'aa', 'a')", "aa"}});
    rows({{"String(3, 65)", "AAA"},
          {"String(3, 'xy')", "xxx"},
          {"String(0, 'x') & '.'", "."},
          {"StrConv('válvula RELÉ', 3)", "Válvula Relé"},
          {"StrConv('é', 1) & StrConv('É', 2)", "Éé"},
          {"Val('1e3')", "1000"},
          {"Val('-2.5E-1x')", "-0.25"},
          {"Val('12e')", "12"},
          {"Val('.5.5')", "0.5"},
          {"Val('x')", "0"},
          {"Mid('abc', 2, 0) & '.'", "."},
          {"Right('abc', 9)", "abc"},
          {"Asc('é')", "233"},
          {"CSng(0.1)", "0.1"},
          {"CBool('Verdadeiro') & CBool('não')", "-10"},
          {"Round(-2.5) & Round(0.125, 2)", "-20.12"},
          {"IsNumeric(Null) & IsNumeric('1,5') & IsNumeric('1.5')", "00-1"},
          {"IsDate(Null) & IsDate('31/02/2024') & IsDate('1-jan-2024')", "00-1"},
          {"Nz(Null, 5)", "5"},
          {"9223372036854775807 + 1 > 9e18", "-1"},
          {"9223372036854775807 * 2 > 1.8e19", "-1"},
          {"'7' * '6'", "42.0"},
          {"'5' - 2", "3.0"},
          {"7 / 2 & 6 / 2", "3.53"},
          {"Null - 1 Is Null And 2 * Null Is Null And Null / 2 Is Null", "-1"}});
    rows({{"Format(D, 'hh:nn AM/PM')", "06:30 PM"},
          {"Format(#0:05#, 'h:nn am/pm')", "12:05 am"},
          {"Format(#12:00#, 'hA/P')", "12P"},
          {"Format(D, 'HH:NN')", "18:30"},
          {"Format(#1/7/2024#, 'w ww')", "1 2"},
          {"Format(D, 'yyyy-mm-dd\"T\"hh:mm')", "2024-03-05T18:30"},
          {"Format(D, 'ddd d mmm yy q y')", "ter 5 mar 24 1 65"},
          {"Format(-1234.5, 'Standard')", "-1.234,50"},
          {"Format(123456, 'Standard')", "123.456,00"},
          {"Format(0.5, '#.##')", ",5"},
          {"Format(0, '0;(0);\"zero\"')", "zero"},
          {"Format(12345, 'Scientific')", "1,23E+04"},
          {"Format('ab', '@@@@')", "  ab"},
          {"Format('ab', '>')", "AB"},
          {"Format(5, '0 \"peças\"')", "5 peças"}});
    rows({{"DateAdd('yyyy', 1, #2/29/2024#) & ''", "28/02/2025"},
          {"DateDiff('ww', #1/6/2024#, #1/7/2024#)", "1"},
          {"DateDiff('q', #3/31/2024#, #4/1/2024#)", "1"},
          {"DatePart('y', D) & Weekday(D, 2)", "652"},
          {"DateSerial(24, 13, 1) & ''", "01/01/2025"},
          {"TimeValue('6:30 PM') & ''", "18:30:00"},
          {"DateValue(D) & ''", "05/03/2024"}});
    for (const auto& [expression, value] : row) {
        QCOMPARE(db_->Run(u"SELECT "_s + expression + u" FROM V"_s), List(value));
    }
}

TEST(TestFunctions, NullMakesNull) {
    for (const auto table : {sql::TextFunctions(), sql::NumberFunctions(), sql::DateFunctions()}) {
        for (const Function& function : table) {
            if (function.form != Function::Form::Evaluated || function.takesNull) {
                continue;
            }
            for (int place = 0; place < function.least; ++place) {
                QStringList arguments(function.least, u"1"_s);
                arguments[place] = u"Null"_s;
                const QString call =
                    QString::fromUtf8(function.name.data(), qsizetype(function.name.size())) +
                    u'(' + arguments.join(u',') + u')';
                QVERIFY2(db_->Run(u"SELECT "_s + call) == List("-"), qPrintable(call));
            }
        }
    }
}

TEST(TestFunctions, Refuses) {
    Each<QString, int> row;
    const auto rows = [&](int error, const QStringList& all) {
        for (const QString& expression : all) {
            row(expression.toUtf8(), expression, error);
        }
    };
    rows(Erro::TypeMismatch,
         List("Abs('x')", "CLng('1,000')", "CDbl('nan')", "CDate('x')", "Year('x')", "CBool('x')",
              "1 - 'x'", "2 * 'x'", "1 / 'x'", "'x' \\ 2", "'x' ^ 2", "Left('abc', 'x')",
              "DateAdd('d', 'x', D)", "Space('x')", "-T * 'x'", "CDate('13:00 PM')",
              "CDate('0:30 AM')", "CDate('24:00')", "CDate('32/13/2024')", "CDate('30/2/2024')"));
    rows(Erro::Overflow,
         List("1e308 * 10", "1e308 + 1e308", "-1e308 - 1e308", "1e308 / 1e-10", "10 ^ 400",
              "CByte(256)", "CInt(32768)", "CLng(2147483648)", "CSng(1e39)", "CCur(1e15)",
              "Val('1e999')", "CDate(1e9)", "DateAdd('d', 1e9, D)", "Year(1e9)", "Space(1e9)",
              "String(1e9, 'x')", "Replace(Space(9000000), ' ', 'abc')", "2147483648 \\ 1"));
    rows(Erro::InvalidArgument,
         List("Left('abc', -1)", "Mid('abc', 0)", "Chr(0)", "Chr(70000)", "String(2, '')",
              "Asc('')", "Round(1, 30)", "Sqr(-1)", "StrComp('a', 'b', 3)", "InStr(0, 'a', 'a')",
              "InStrRev('a', 'a', 0)", "Replace('a', 'a', 'b', 0)", "Replace('a', 'a', 'b', 1, -2)",
              "StrConv('a', 4)", "DatePart('x', D)", "Weekday(D, 8)", "Format(1, '0.0E+00')",
              "Format('a', '@-@')", "Format(D, 'ddddd')", "Format(D, 'yyy')", "Format(D, 'hhh')",
              "Format(D, 'qq')"));
    rows(int(sql::Failure::BadPattern), List("'a' Like ('[' & '')"));
    for (const auto& [expression, error] : row) {
        const QString refusal = db_->RefusalOf(u"SELECT "_s + expression + u" FROM V"_s);
        QVERIFY2(refusal.startsWith(QString::number(error) + u' '), qPrintable(refusal));
    }
}

// Would not end within any test's time where a part is looked up at every place anew.
TEST(TestFunctions, LongTextsTakeTimeByTheirLength) {
    const QString text = u"Replace(Space(200000), ' ', 'aaaaaaaaab')"_s;
    QCOMPARE(db_->Run(u"SELECT Len(Replace("_s + text + u", 'b', ''))"_s), List("1800000"));
    QCOMPARE(db_->Run(u"SELECT InStr("_s + text + u", String(5000, 'a') & 'b')"_s), List("0"));
}
