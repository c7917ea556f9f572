#pragma once

#include <QByteArray>
#include <QFile>
#include <QStringList>

#include <optional>

namespace sys {

// Reads the rows of a CSV file as spreadsheets write it: ";", "," or a tab between the cells, which
// the first line tells, or a line "sep=" before it; UTF-8 with or without its mark, or
// Windows-1252; any line end, also inside quotes. Holds one row at a time.
class CsvReader {
public:
    // Erro 53, 75; Erro 5 with words for a file that is no such text.
    explicit CsvReader(const QString& path);

    // The next row that is not blank; false at the end. Erro 75; Erro 5 with words for a quote that
    // is never closed, since nobody can tell which rows it has swallowed.
    bool Next(QStringList& cells);

    qint64 Line() const { return line_; }          // on which the row begins, from 1
    bool Malformed() const { return malformed_; }  // the row has text behind a closing quote
    QChar Separator() const { return QLatin1Char(separator_); }
    qint64 Position() const { return read_; }  // bytes read so far
    qint64 Size() const { return file_.size(); }

private:
    void Inspect();
    void Restart();
    int Get();  // the next byte, negative at the end
    int Peek();
    bool Fill();
    void ReadQuoted();
    QString Decode(const QByteArray& bytes) const;

    QFile file_;
    QByteArray block_;
    qsizetype at_ = 0;
    qint64 read_ = 0;
    qint64 line_ = 0;
    qint64 nextLine_ = 1;
    QByteArray cell_;
    char separator_ = ';';
    bool utf8_ = true;
    bool malformed_ = false;
};

}  // namespace sys
