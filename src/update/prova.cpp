#include "update/prova.h"

#include "platform/erro.h"
#include "platform/system/paths.h"
#include "platform/system/proof.h"
#include "session/arquivos.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr auto NomeDasChaves = "ChavesAtualizacao.txt"_L1;

std::optional<ChavesDaAtualizacao>& Substitutas() {
    static std::optional<ChavesDaAtualizacao> chaves;
    return chaves;
}

// Nothing for what is no hexadecimal text of this many bytes.
QByteArray DeHexadecimal(const QByteArray& texto, qsizetype bytes) {
    const QByteArray lidos = QByteArray::fromHex(texto);
    return lidos.size() == bytes && lidos.toHex() == texto.toLower() ? lidos : QByteArray();
}

[[noreturn]] void RecusarChaves(const QString& linha) {
    throw Erro(Erro::PathFileAccess,
               u"O arquivo \"%1\", ao lado do programa, não pode ser entendido: \"%2\"."_s.arg(
                   NomeDasChaves, linha));
}

bool AssinadoPor(const ChavesDaAtualizacao& chaves, const QByteArray& mensagem,
                 const QList<QByteArray>& assinaturas) {
    return std::any_of(assinaturas.begin(), assinaturas.end(), [&](const QByteArray& linha) {
        const QByteArray assinatura = DeHexadecimal(linha.trimmed(), sys::SignatureSize);
        return std::any_of(
            chaves.chaves.begin(), chaves.chaves.end(),
            [&](const QByteArray& chave) { return sys::IsSigned(mensagem, assinatura, chave); });
    });
}

}  // namespace

ChavesDaAtualizacao LerChaves() {
    if (Substitutas()) {
        return *Substitutas();
    }
    const QString caminho = CaminhoPrograma(true) + NomeDasChaves;
    return sys::Exists(caminho) ? LerTextoDasChaves(LerArquivo(caminho)) : ChavesDaAtualizacao();
}

void UsarChaves(std::optional<ChavesDaAtualizacao> chaves) {
    Substitutas() = std::move(chaves);
}

ChavesDaAtualizacao LerTextoDasChaves(const QString& texto) {
    ChavesDaAtualizacao lidas;
    for (const QString& inteira : texto.split(u'\n')) {
        const QString linha = inteira.trimmed();
        if (linha.isEmpty() || linha.startsWith(u'#')) {
            continue;
        }
        const QString nome = linha.section(u':', 0, 0).trimmed().toLower();
        const QString valor = linha.section(u':', 1).trimmed();
        const QByteArray chave = DeHexadecimal(valor.toLatin1(), sys::KeySize);
        if (nome == "site"_L1 && !valor.isEmpty() && lidas.site.isEmpty()) {
            lidas.site = valor;
        } else if (nome == "chave"_L1 && !chave.isEmpty()) {
            lidas.chaves += chave;
        } else {
            RecusarChaves(linha.left(80));
        }
    }
    if (lidas.site.isEmpty() || lidas.chaves.isEmpty()) {
        RecusarChaves(u"falta o site ou a chave"_s);
    }
    return lidas;
}

QByteArray MensagemDaLista(const QString& site, int versao, const QByteArray& lista) {
    return "ListVersao\n" + site.toUtf8() + '\n' + QByteArray::number(versao) + '\n' + lista;
}

QByteArray MensagemDaVersao(const QString& site, int versao, const QDate& data) {
    return "Versao\n" + site.toUtf8() + '\n' + QByteArray::number(versao) + '\n' +
           data.toString(Qt::ISODate).toLatin1();
}

void ConferirLista(const ChavesDaAtualizacao& chaves, int versao, const QByteArray& lista,
                   const QByteArray& assinaturas) {
    if (!AssinadoPor(chaves, MensagemDaLista(chaves.site, versao, lista),
                     assinaturas.split('\n'))) {
        throw Erro(
            AssinaturaRecusada,
            u"A lista da versão %1 não foi assinada por quem publica este catálogo, que continua "
            "como estava."_s.arg(versao));
    }
}

VersaoAssinada ConferirVersao(const ChavesDaAtualizacao& chaves, const QByteArray& texto) {
    const QList<QByteArray> linhas = texto.split('\n');
    const QList<QByteArray> campos = linhas.first().trimmed().split(';');
    const VersaoAssinada lida{campos.value(0).toInt(),
                              QDate::fromString(QString::fromLatin1(campos.value(1)), Qt::ISODate)};
    if (!lida.data.isValid() ||
        !AssinadoPor(chaves, MensagemDaVersao(chaves.site, lida.numero, lida.data),
                     linhas.mid(1))) {
        throw Erro(AssinaturaRecusada,
                   u"O número da versão mais nova não foi assinado por quem publica este "
                   "catálogo."_s);
    }
    return lida;
}
