#include "platform/system/csv_reader.h"

#include "platform/erro.h"
#include "platform/sizes.h"
#include "platform/system/paths.h"

#include <QFileInfo>
#include <QStringDecoder>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 BlockSize = 256_KiB;
// Longer than any text of a catalogue. Beyond it a quote was left open.
constexpr qsizetype LargestCell = 4_MiB;
constexpr int EndOfFile = -1;
constexpr QByteArrayView Utf8Mark = "\xEF\xBB\xBF";
constexpr QByteArrayView SeparatorLine = "sep=";
constexpr QByteArrayView Separators = ";,\t";

[[noreturn]] void Refuse(const QString& why) {
    throw Erro(Erro::InvalidArgument, why);
}

// Of a heading line: the separator that stands in it most often, outside quotes.
char SeparatorOf(QByteArrayView line) {
    char best = Separators.front();
    qsizetype most = 0;
    for (const char separator : Separators) {
        bool quoted = false;
        const qsizetype count = std::count_if(line.begin(), line.end(), [&](char c) {
            quoted = quoted != (c == '"');
            return !quoted && c == separator;
        });
        if (count > most) {
            most = count;
            best = separator;
        }
    }
    return best;
}

bool IsBlank(const QStringList& cells) {
    return std::all_of(cells.begin(), cells.end(),
                       [](const QString& cell) { return cell.trimmed().isEmpty(); });
}

}  // namespace

namespace sys {

CsvReader::CsvReader(const QString& path) : file_(ToNative(path)) {
    if (!QFileInfo(file_).isFile()) {
        throw Erro(Erro::FileNotFound, u"Não há arquivo \"%1\"."_s.arg(path));
    }
    if (!file_.open(QIODevice::ReadOnly)) {
        throw Erro(Erro::PathFileAccess, u"Não foi possível ler \"%1\"."_s.arg(path));
    }
    Inspect();
    Restart();
}

// One pass over the bytes tells the encoding of the file as a whole.
void CsvReader::Inspect() {
    QStringDecoder decoder(QStringDecoder::Utf8);
    while (Fill()) {
        if (block_.contains('\0')) {
            Refuse(block_.startsWith("\xFF\xFE") || block_.startsWith("\xFE\xFF")
                       ? u"\"%1\" está em UTF-16: na planilha, salve como CSV UTF-8."_s.arg(
                             file_.fileName())
                       : u"\"%1\" não é um texto."_s.arg(file_.fileName()));
        }
        if (utf8_) {
            const QString decoded = decoder(block_);
            utf8_ = !decoder.hasError();
        }
    }
    // A character that the end of the file cuts short.
    if (utf8_) {
        const QString rest = decoder(QByteArrayView("\n"));
        utf8_ = !decoder.hasError();
    }
}

void CsvReader::Restart() {
    file_.seek(0);
    at_ = 0;
    read_ = 0;
    nextLine_ = 1;
    if (!Fill()) {
        return;
    }
    if (block_.startsWith(Utf8Mark)) {
        at_ = Utf8Mark.size();
    }
    const QByteArrayView rest = QByteArrayView(block_).sliced(at_);
    const qsizetype end = rest.indexOf('\n');
    const QByteArrayView first = end < 0 ? rest : rest.first(end);
    if (first.startsWith(SeparatorLine) && first.size() > SeparatorLine.size()) {
        separator_ = first.at(SeparatorLine.size());
        at_ += std::min(first.size() + 1, block_.size() - at_);
        ++nextLine_;
    } else {
        separator_ = SeparatorOf(first);
    }
}

bool CsvReader::Fill() {
    block_ = file_.read(BlockSize);
    at_ = 0;
    read_ += block_.size();
    if (block_.isEmpty() && !file_.atEnd()) {
        throw Erro(Erro::PathFileAccess,
                   u"Não foi possível ler \"%1\" até o fim."_s.arg(file_.fileName()));
    }
    return !block_.isEmpty();
}

int CsvReader::Peek() {
    if (at_ == block_.size() && !Fill()) {
        return EndOfFile;
    }
    return static_cast<unsigned char>(block_.at(at_));
}

int CsvReader::Get() {
    const int byte = Peek();
    at_ += byte == EndOfFile ? 0 : 1;
    return byte;
}

QString CsvReader::Decode(const QByteArray& bytes) const {
    return utf8_ ? QString::fromUtf8(bytes) : DecodeWindows1252(bytes);
}

// From behind the opening quote to behind the closing one.
void CsvReader::ReadQuoted() {
    for (;;) {
        const int byte = Get();
        if (byte == EndOfFile || cell_.size() > LargestCell) {
            Refuse(u"\"%1\", linha %2: as aspas que se abrem nesta linha não se fecham."_s
                       .arg(file_.fileName())
                       .arg(line_));
        }
        if (byte == '"') {
            if (Peek() != '"') {
                return;
            }
            Get();
        }
        nextLine_ += byte == '\n' || (byte == '\r' && Peek() != '\n') ? 1 : 0;
        cell_ += static_cast<char>(byte);
    }
}

bool CsvReader::Next(QStringList& cells) {
    do {
        if (Peek() == EndOfFile) {
            return false;
        }
        cells.clear();
        malformed_ = false;
        line_ = nextLine_;
        cell_.resize(0);
        bool quoted = false;
        for (bool more = true; more;) {
            const int byte = Get();
            if (byte == '"' && cell_.isEmpty() && !quoted) {
                quoted = true;
                ReadQuoted();
            } else if (byte == separator_ || byte == '\n' || byte == '\r' || byte == EndOfFile) {
                cells += Decode(cell_);
                cell_.resize(0);
                quoted = false;
                more = byte == separator_;
                if (byte == '\r' && Peek() == '\n') {
                    Get();
                }
                nextLine_ += more || byte == EndOfFile ? 0 : 1;
            } else {
                malformed_ = malformed_ || quoted;
                cell_ += static_cast<char>(byte);
            }
        }
    } while (IsBlank(cells));
    return true;
}

}  // namespace sys
