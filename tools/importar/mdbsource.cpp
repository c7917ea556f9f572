#include "importar/mdbsource.h"

#include "importar/copyfile.h"
#include "importar/mdbformat.h"
#include "importar/mdbprotocol.h"
#include "platform/erro.h"
#include "platform/system/child.h"
#include "platform/system/paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <bit>
#include <optional>

using namespace Qt::StringLiterals;

namespace importar {
namespace {

const QString ReaderName = QStringLiteral(TARVO_READER);
const QString CopyName = u"origem.tmp"_s;

QString& OtherReader() {
    static QString reader;
    return reader;
}

// Beside this program or, installed, with those that nobody starts by hand.
QString ReaderProgram() {
    if (!OtherReader().isEmpty()) {
        return OtherReader();
    }
    const QDir folder(sys::ProgramFolder());
    const QString beside = folder.filePath(ReaderName);
    return QFileInfo(beside).isFile()
               ? beside
               : folder.filePath(QStringLiteral(TARVO_PROGRAMS_FROM_BIN) + u'/' + ReaderName);
}

// The parts of a frame, from its beginning.
class Payload {
public:
    explicit Payload(const QByteArray& bytes) : rest_(bytes) {}

    char Byte() { return Take(1).front(); }
    quint32 U32() { return qFromLittleEndian<quint32>(Take(sizeof(quint32)).data()); }
    quint64 U64() { return qFromLittleEndian<quint64>(Take(sizeof(quint64)).data()); }
    QString Text() { return QString::fromUtf8(Take(U32())); }

private:
    QByteArrayView Take(qsizetype size) {
        if (size > rest_.size()) {
            throw Erro(Erro::InternalError,
                       u"O leitor de arquivos .mdb enviou dados incompletos."_s);
        }
        const QByteArrayView taken = rest_.first(size);
        rest_ = rest_.sliced(size);
        return taken;
    }

    QByteArrayView rest_;
};

Value ReadValue(Payload& payload) {
    Value value;
    switch (payload.Byte()) {
        case mdbprotocol::Null:
            break;
        case mdbprotocol::Integer:
            value.type = Value::Type::Integer;
            value.integer = static_cast<qint64>(payload.U64());
            break;
        case mdbprotocol::Real:
            value.type = Value::Type::Real;
            value.real = std::bit_cast<double>(payload.U64());
            break;
        case mdbprotocol::Decimal:
            value.type = Value::Type::Real;
            value.real = payload.Text().toDouble();
            break;
        case mdbprotocol::Text:
            value.type = Value::Type::Text;
            value.text = payload.Text();
            break;
        default:
            value.type = Value::Type::Unreadable;
            break;
    }
    return value;
}

// One run of the reader.
class Reading {
public:
    Reading(const QString& file, const QStringList& arguments, std::chrono::milliseconds patience,
            QString shown)
        : shown_(std::move(shown)), child_(Start(file, arguments, patience)) {
        char mark[mdbprotocol::MarkSize];
        Take(mark, sizeof mark);
        if (QByteArrayView(mark, sizeof mark) !=
            QByteArrayView(mdbprotocol::Mark, mdbprotocol::MarkSize)) {
            Broken();
        }
    }

    // The next frame; nothing at the end. Throws what the reader could not do.
    std::optional<mdbprotocol::Frame> Next(QByteArray& payload) {
        char head[mdbprotocol::HeadSize];
        Take(head, sizeof head);
        const auto size = qFromLittleEndian<quint32>(head + 1);
        if (size > mdbprotocol::LargestFrame) {
            Broken();
        }
        payload.resize(size);
        Take(payload.data(), payload.size());
        const auto frame = static_cast<mdbprotocol::Frame>(head[0]);
        if (frame == mdbprotocol::Failure) {
            throw Erro(Erro::InvalidArgument,
                       u"\"%1\" não pode ser lido: %2."_s.arg(shown_, Payload(payload).Text()));
        }
        if (frame == mdbprotocol::End) {
            if (Payload(payload).U32() != frames_) {
                Broken();
            }
            return std::nullopt;
        }
        ++frames_;
        return frame;
    }

private:
    static sys::Child Start(const QString& file, const QStringList& arguments,
                            std::chrono::milliseconds patience) {
        const QString program = ReaderProgram();
        try {
            return sys::Child(program, QStringList{file} + arguments, patience);
        } catch (const Erro& erro) {
            throw Erro(erro.Number(),
                       u"O leitor de arquivos .mdb não pôde ser iniciado: %1."_s.arg(program));
        }
    }

    void Take(char* bytes, qsizetype size) {
        if (!child_.Read(bytes, size)) {
            Broken();
        }
    }

    [[noreturn]] void Broken() const {
        throw Erro(
            Erro::InternalError,
            child_.IsSilent()
                ? u"A leitura de \"%1\" parou no meio: o arquivo deve estar danificado."_s.arg(
                      shown_)
                : u"A leitura de \"%1\" falhou no meio: o arquivo deve estar danificado."_s.arg(
                      shown_));
    }

    QString shown_;
    sys::Child child_;
    quint32 frames_ = 0;
};

}  // namespace

void SetMdbReader(const QString& program) {
    OtherReader() = program;
}

MdbSource::MdbSource(const QString& path, const QString& aside, std::chrono::milliseconds patience)
    : path_(path), copy_(QDir(aside).filePath(CopyName)), patience_(patience) {
    CheckFormat(path);
    if (const QString lock = LockFileOf(path); !lock.isEmpty()) {
        remarks_ +=
            u"Há \"%1\": se alguém está com o catálogo antigo aberto, feche-o e importe de "
            "novo."_s.arg(lock);
    }
    try {
        CopyFile(path, copy_);
    } catch (const Erro& erro) {
        QFile::remove(copy_);
        if (erro.Number() == Erro::DiskFull) {
            throw Erro(Erro::DiskFull,
                       u"Não há espaço no disco para a cópia de \"%1\"."_s.arg(path));
        }
        throw;
    }
    try {
        Reading reading(copy_, {}, patience_, path_);
        QByteArray bytes;
        while (const auto frame = reading.Next(bytes)) {
            Payload payload(bytes);
            if (*frame == mdbprotocol::Linked) {
                remarks_ +=
                    u"A tabela %1 está em outro arquivo, ligado a este, e fica de fora."_s.arg(
                        payload.Text());
                continue;
            }
            numbers_ += QString::number(payload.U32());
            SourceTable table;
            table.size = payload.U32();
            table.name = payload.Text();
            table.label = u"tabela "_s + table.name;
            for (quint32 columns = payload.U32(); columns > 0; --columns) {
                table.columns += payload.Text();
            }
            tables_.push_back(table);
        }
    } catch (const Erro&) {
        QFile::remove(copy_);
        throw;
    }
}

MdbSource::~MdbSource() {
    QFile::remove(copy_);
}

void MdbSource::Read(std::size_t table, const Use& use) {
    Reading reading(copy_, {numbers_.at(static_cast<qsizetype>(table))}, patience_, path_);
    const auto columns = static_cast<std::size_t>(tables_[table].columns.size());
    quint32 came = 0;
    std::optional<quint32> declared;
    Row row;
    QByteArray bytes;
    while (const auto frame = reading.Next(bytes)) {
        Payload payload(bytes);
        if (*frame == mdbprotocol::Rows) {
            payload.U32();  // sent; the frames are counted, too
            declared = payload.U32();
            continue;
        }
        row.line = ++came;
        row.values.clear();
        while (row.values.size() < columns) {
            row.values.push_back(ReadValue(payload));
        }
        use(row, came);
    }
    if (declared != came) {
        throw Erro(
            Erro::InvalidArgument,
            u"A %1 de \"%2\" diz ter %3 linhas, e %4 puderam ser lidas. Compacte e repare o "
            "arquivo no programa que o criou, e importe de novo."_s.arg(tables_[table].label, path_)
                .arg(declared.value_or(0))
                .arg(came));
    }
}

}  // namespace importar
