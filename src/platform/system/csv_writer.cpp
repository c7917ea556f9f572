#include "platform/system/csv_writer.h"

#include "platform/sizes.h"

#include <QLocale>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView FormulaStarts = u"=+-@\t\r";
constexpr QChar Apostrophe = u'\'';
constexpr qsizetype PieceSize = 64_KiB;

// A sign, digits, at most one comma with digits behind it.
bool IsPlainNumber(QStringView text) {
    if (text.startsWith(u'-') || text.startsWith(u'+')) {
        text = text.mid(1);
    }
    const auto digits = [](QStringView part) {
        return !part.isEmpty() && std::all_of(part.begin(), part.end(),
                                              [](QChar c) { return c >= u'0' && c <= u'9'; });
    };
    const qsizetype comma = text.indexOf(u',');
    return comma < 0 ? digits(text) : digits(text.first(comma)) && digits(text.mid(comma + 1));
}

bool MustBeQuoted(QStringView text) {
    return std::any_of(text.begin(), text.end(),
                       [](QChar c) {
                           return c == sys::CsvSeparator || c == u'"' || c == u'\n' || c == u'\r';
                       }) ||
           // Some readers trim what is not quoted.
           (!text.isEmpty() && (text.front().isSpace() || text.back().isSpace()));
}

}  // namespace

QString sys::Harmless(const QString& text) {
    const bool formula =
        !text.isEmpty() && FormulaStarts.contains(text.front()) && !IsPlainNumber(text);
    return formula || text.startsWith(Apostrophe) ? Apostrophe + text : text;
}

QString sys::FromHarmless(const QString& text) {
    const bool prefixed = text.size() > 1 && text.front() == Apostrophe &&
                          (text.at(1) == Apostrophe || FormulaStarts.contains(text.at(1)));
    return prefixed ? text.mid(1) : text;
}

QString sys::CsvNumber(double number) {
    return QString::number(number, 'f', QLocale::FloatingPointShortest).replace(u'.', u',');
}

QByteArray sys::CsvCell(const QString& text) {
    const QString harmless = Harmless(text);
    if (!MustBeQuoted(harmless)) {
        return harmless.toUtf8();
    }
    return '"' + QString(harmless).replace(u'"', u"\"\""_s).toUtf8() + '"';
}

sys::CsvWriter::CsvWriter(const QString& path) : output_(path), pending_("\xEF\xBB\xBF") {}

void sys::CsvWriter::Row(const QStringList& cells) {
    for (qsizetype i = 0; i < cells.size(); ++i) {
        if (i > 0) {
            pending_ += static_cast<char>(CsvSeparator.unicode());
        }
        pending_ += CsvCell(cells.at(i));
    }
    pending_ += "\r\n";
    if (pending_.size() >= PieceSize) {
        output_.Write(pending_.constData(), pending_.size());
        pending_.clear();
    }
}

void sys::CsvWriter::Close() {
    output_.Write(pending_.constData(), pending_.size());
    pending_.clear();
    output_.Close();
}
