#pragma once

#include "platform/system/output.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

// Rows as text for spreadsheets with Brazilian settings: ";" between cells, UTF-8 with its mark,
// line ends CR LF, and in numbers the comma.
namespace sys {

inline constexpr QChar CsvSeparator = u';';

// A cell that a spreadsheet would take for a formula, with an apostrophe in front, so that it stays
// the text that it is. A plain number is left alone, whatever its sign. Of a text that began with
// an apostrophe the first one is doubled, and FromHarmless gives back every text.
QString Harmless(const QString& text);
QString FromHarmless(const QString& text);

// The shortest decimal that reads back as the same number, with a comma and never an exponent.
QString CsvNumber(double number);

// One cell as it stands in the file: made harmless, and quoted where it has to be.
QByteArray CsvCell(const QString& text);

class CsvWriter {
public:
    explicit CsvWriter(const QString& path);  // Erro 61, 75
    void Row(const QStringList& cells);       // Erro 61, 75
    void Close();                             // Erro 61, 75

private:
    Output output_;
    QByteArray pending_;
};

}  // namespace sys
