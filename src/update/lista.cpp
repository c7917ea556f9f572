#include "update/lista.h"

#include "platform/convert.h"
#include "platform/erro.h"
#include "platform/system/paths.h"
#include "session/global.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

enum Campo : qsizetype { CampoTipo, CampoNome, CampoTamanho };

constexpr qsizetype LetrasDoTipo = 3;

QString LerCampo(const QStringList& campos, Campo campo) {
    if (campo >= campos.size()) {
        throw Erro(Erro::SubscriptOutOfRange);
    }
    return campos.at(campo);
}

// What some systems leave out at the end of a name: ".. " is the folder above there, too.
QString SemFinalVazio(QString pedaco) {
    while (pedaco.endsWith(u'.') || pedaco.endsWith(u' ')) {
        pedaco.chop(1);
    }
    return pedaco;
}

// A name that stays in the folder, whatever lies there: no drive, no step upwards, no root.
bool FicaNaPasta(const QString& nome, const QStringList& pedacos) {
    const bool letraProibida = std::any_of(
        nome.begin(), nome.end(), [](QChar letra) { return letra < u' ' || letra == u':'; });
    return !letraProibida && !pedacos.first().isEmpty() &&
           std::none_of(pedacos.begin(), pedacos.end(), [](const QString& pedaco) {
               return !pedaco.isEmpty() && SemFinalVazio(pedaco).isEmpty();
           });
}

// To put another file in the place of these would damage the catalogue under the program's hands.
bool PertenceAoCatalogo(const QStringList& pedacos) {
    const QString nome = SemFinalVazio(pedacos.first()).toUpper();
    return pedacos.size() == 1 &&
           (nome == "TARVO.MDB"_L1 || nome == "TARVO.LDB"_L1 || nome.startsWith("TARVO.MDB-"_L1) ||
            nome.startsWith("TARVO.LDB-"_L1));
}

}  // namespace

QString ChaveDaLinha(const QString& linha) {
    return LerCampo(linha.split(u';'), CampoNome).trimmed().toUpper();
}

ArquivoAtualizacao LerLinhaDaLista(const QString& linha) {
    const QStringList campos = linha.split(u';');
    ArquivoAtualizacao arquivo{LerCampo(campos, CampoTipo).left(LetrasDoTipo),
                               LerCampo(campos, CampoNome),
                               convert::ToInt32(LerCampo(campos, CampoTamanho)), QString()};
    ConferirNome(arquivo.Nome);
    return arquivo;
}

void ConferirNome(const QString& nome) {
    const QStringList pedacos = QString(nome).replace(u'/', u'\\').split(u'\\');
    if (!FicaNaPasta(nome, pedacos) || !sys::IsInside(gCaminho, gCaminho + nome)) {
        throw Erro(
            Erro::PathFileAccess,
            u"A lista de atualização nomeia \"%1\", que fica fora da pasta de dados"_s.arg(nome));
    }
    if (PertenceAoCatalogo(pedacos)) {
        throw Erro(
            Erro::PathFileAccess,
            u"A lista de atualização nomeia \"%1\", que é parte do catálogo aberto"_s.arg(nome));
    }
}
