#include "update/verificador.h"

#include "platform/convert.h"
#include "platform/erro.h"
#include "session/arquivos.h"
#include "update/conversa.h"

using namespace Qt::StringLiterals;

namespace {

// A verifier that died leaves no file or an empty one, and that has no first field.
QString TextoDoResultado(const QString& arquivo) {
    return ArquivoExiste(arquivo) ? LerArquivo(arquivo) : QString();
}

qint16 LerVersao(const QString& campos, qsizetype indice) {
    const QStringList versoes = campos.isEmpty() ? QStringList() : campos.split(u'|');
    if (indice >= versoes.size()) {
        throw Erro(Erro::SubscriptOutOfRange);
    }
    return convert::ToInt16(versoes.at(indice));
}

}  // namespace

void Verificador::Iniciar(bool automatica, const Conversa* conversa) {
    arquivo_ = NomeArquivoTemporario();
    const Conversa::Convite convite(conversa);
    // The path may hold blanks, even several in a row, and is not quoted.
    ProcessoVerificacao =
        sys::Start(u'"' + CaminhoPrograma(true) + u"VerifAtualizCatalogoTarvo.exe\" "_s +
                       (automatica ? u"1|"_s : u"0|"_s) + arquivo_,
                   1, sys::Rest::Whole);
}

bool Verificador::EmCurso() const {
    return sys::ExitCode(ProcessoVerificacao) == sys::StillActive;
}

Verificador::Resposta Verificador::Ler() const {
    const QString resultado = TextoDoResultado(arquivo_);
    if (resultado.startsWith(u'0')) {
        throw Erro(VerificadorFalhou, resultado.mid(1));
    }
    const QString campos = resultado.mid(1);
    return {LerVersao(campos, 0), LerVersao(campos, 1),
            QDate::fromString(campos.section(u'|', 2, 2), Qt::ISODate)};
}

Desfecho Verificador::Fim() const {
    switch (const auto fim = Desfecho(sys::ExitCode(ProcessoVerificacao)); fim) {
        case Desfecho::SemServidor:
        case Desfecho::ProxyPedeSenha:
            return fim;
        default:
            return Desfecho::Falha;
    }
}

void Verificador::ExcluirResposta() const {
    try {
        if (!arquivo_.isEmpty()) {
            ExcluirArquivo(arquivo_);
        }
    } catch (const Erro&) {
        // It lies in the way of nobody.
    }
}
