#include "update/lista.h"

#include "platform/convert.h"
#include "platform/erro.h"
#include "platform/system/paths.h"
#include "platform/system/proof.h"
#include "session/global.h"
#include "update/onde.h"
#include "update/prova.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

enum Campo : qsizetype { CampoTipo, CampoNome, CampoTamanho, CampoSha256 };

constexpr qsizetype LetrasDoTipo = 3;

QString LerCampo(const QStringList& campos, Campo campo) {
    if (campo >= campos.size()) {
        throw Erro(Erro::SubscriptOutOfRange);
    }
    return campos.at(campo);
}

QByteArray LerSha256(const QString& campo) {
    const QByteArray texto = campo.trimmed().toLatin1();
    const QByteArray bytes = QByteArray::fromHex(texto);
    if (!texto.isEmpty() && (bytes.size() != sys::HashSize || bytes.toHex() != texto.toLower())) {
        throw Erro(Erro::TypeMismatch, u"O quarto campo não é um SHA-256"_s);
    }
    return bytes;
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

// What a system keeps for its devices, in every folder and with any ending: "nul.png" throws away
// what is written into it, "COM1" talks to a port.
bool EhDispositivo(const QString& pedaco) {
    static const QRegularExpression dispositivo(
        u"^(CON|PRN|AUX|NUL|CONIN\\$|CONOUT\\$|(COM|LPT)[0-9¹²³])[ ]*(\\.|$)"_s,
        QRegularExpression::CaseInsensitiveOption);
    return dispositivo.match(pedaco).hasMatch();
}

// A name that every system can give a file. One that only some can give would end the update of the
// others in the middle.
bool ServeEmTodoSistema(const QString& nome, const QStringList& pedacos) {
    static const QString proibidas = u"\"*<>?|"_s;
    return std::none_of(nome.begin(), nome.end(),
                        [](QChar letra) { return proibidas.contains(letra); }) &&
           std::none_of(pedacos.begin(), pedacos.end(), EhDispositivo);
}

// The folder that the file must stay in, whatever links lie on the way.
QString PastaDoNome(const QStringList& pedacos) {
    static const QStringList deFiguras = {u"FotoPeca"_s, u"Figuras"_s};
    const QString pasta = gCaminho + pedacos.first();
    const bool figura =
        pedacos.size() > 1 && deFiguras.contains(pedacos.first(), Qt::CaseInsensitive);
    return figura && sys::Exists(pasta) ? pasta : gCaminho;
}

// To put another file in the place of these would damage the catalogue under the program's hands.
bool PertenceAoCatalogo(const QStringList& pedacos) {
    static const QRegularExpression doCatalogo(u"^TARVO[.](MDB|LDB)(-|$)"_s,
                                               QRegularExpression::CaseInsensitiveOption);
    return pedacos.size() == 1 && doCatalogo.match(SemFinalVazio(pedacos.first())).hasMatch();
}

}  // namespace

void ListasDaAtualizacao::Ler(const QString& nome, const QString& texto, bool exigeSha256) {
    int numero = 0;
    for (const QString& linha : texto.split("\r\n"_L1)) {
        ++numero;
        if (linha.trimmed().isEmpty()) {
            continue;
        }
        DizendoOnde(
            [&] { return u"%1, linha %2: %3"_s.arg(nome).arg(numero).arg(linha.left(120)); },
            [&] { LerLinha(linha, exigeSha256); });
    }
}

void ListasDaAtualizacao::LerLinha(const QString& linha, bool exigeSha256) {
    const QStringList campos = linha.split(u';');
    const QString chave = LerCampo(campos, CampoNome).trimmed().toUpper();
    const QByteArray sha256 = LerSha256(campos.value(CampoSha256));
    if (sha256.isEmpty() && exigeSha256) {
        throw Erro(AssinaturaRecusada, u"A lista assinada não traz o SHA-256 do arquivo"_s);
    }
    const auto lugar = lugares_.constFind(chave);
    if (lugar == lugares_.constEnd()) {
        ArquivoAtualizacao arquivo{LerCampo(campos, CampoTipo).left(LetrasDoTipo),
                                   LerCampo(campos, CampoNome),
                                   convert::ToInt32(LerCampo(campos, CampoTamanho)), QString()};
        ConferirNome(arquivo.Nome);
        TotalBytes = convert::Narrow<qint32>(qint64(TotalBytes) + arquivo.Tamanho);
        lugares_.insert(chave, arquivos.size());
        arquivos.push_back(std::move(arquivo));
    }
    ArquivoAtualizacao& arquivo = arquivos.at(lugares_.value(chave));
    arquivo.Sha256 = sha256;
    if (!sha256.isEmpty()) {
        arquivo.Bytes = convert::ToInt32(LerCampo(campos, CampoTamanho));
    }
}

void ConferirNome(const QString& nome) {
    const QStringList pedacos = QString(nome).replace(u'/', u'\\').split(u'\\');
    if (!FicaNaPasta(nome, pedacos) || !sys::IsInside(PastaDoNome(pedacos), gCaminho + nome)) {
        throw Erro(
            Erro::PathFileAccess,
            u"A lista de atualização nomeia \"%1\", que fica fora da pasta de dados"_s.arg(nome));
    }
    if (!ServeEmTodoSistema(nome, pedacos)) {
        throw Erro(
            Erro::PathFileAccess,
            u"A lista de atualização nomeia \"%1\", que o Windows não aceita como arquivo"_s.arg(
                nome));
    }
    if (PertenceAoCatalogo(pedacos)) {
        throw Erro(
            Erro::PathFileAccess,
            u"A lista de atualização nomeia \"%1\", que é parte do catálogo aberto"_s.arg(nome));
    }
}
