#include "importar/copyfile.h"

#include "platform/erro.h"
#include "platform/system/output.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace importar {

void CopyFile(const QString& from, const QString& to) {
    QFile source(from);
    if (!source.open(QIODevice::ReadOnly)) {
        throw Erro(Erro::PathFileAccess, u"Não foi possível ler \"%1\"."_s.arg(from));
    }
    sys::Output target(to);
    constexpr qint64 Piece = 1 << 20;
    qint64 copied = 0;
    for (QByteArray bytes = source.read(Piece); !bytes.isEmpty(); bytes = source.read(Piece)) {
        target.Write(bytes.constData(), bytes.size());
        copied += bytes.size();
    }
    target.Close();
    if (source.error() != QFileDevice::NoError || copied != source.size()) {
        throw Erro(Erro::PathFileAccess, u"Não foi possível ler \"%1\" até o fim."_s.arg(from));
    }
}

}  // namespace importar
