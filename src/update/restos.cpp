#include "update/restos.h"

#include "platform/erro.h"
#include "platform/system/paths.h"
#include "session/arquivos.h"
#include "session/global.h"

#include <QDateTime>
#include <QDir>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

constexpr auto Final = ".tmp"_L1;
constexpr auto FinalDoRecebido = "-recebido.tmp"_L1;

// The clock of the disk, which may be another computer's. The file that tells it is a rest itself.
QDateTime AgoraEm(const QString& pasta) {
    const QString amostra = NomeDoRecebido(pasta);
    sys::WriteWhole(amostra, {});
    return QFileInfo(sys::ToNative(amostra)).lastModified();
}

}  // namespace

QString NomeDoRecebido(const QString& pasta) {
    QString caminho;
    do {  // a name that is free without the mark need not be with it
        const QString nome = NomeArquivoTemporario().mid(gCaminho.size());
        caminho = pasta + nome.chopped(Final.size()) + FinalDoRecebido;
    } while (sys::Exists(caminho));
    return caminho;
}

bool EhTemporario(const QString& nome) {
    // Moment, volume, a random number; see NomeArquivoTemporario.
    static const QRegularExpression forma(u"^\\d{12}[0-9A-F]{8}\\d{1,4}(-recebido)?\\.tmp$"_s);
    return forma.match(nome).hasMatch();
}

void ExcluirRestos(const QString& pasta) {
    try {
        const QDateTime agora = AgoraEm(pasta);
        const QFileInfoList arquivos =
            QDir(sys::ToNative(pasta)).entryInfoList({u"*"_s + Final}, QDir::Files);
        for (const QFileInfo& arquivo : arquivos) {
            const bool morto = arquivo.fileName().endsWith(FinalDoRecebido) ||
                               arquivo.lastModified().addDays(1) < agora;
            if (morto && EhTemporario(arquivo.fileName())) {
                QFile::remove(arquivo.filePath());
            }
        }
    } catch (const Erro&) {
        // Where nothing can be written the update itself will say so.
    }
}
