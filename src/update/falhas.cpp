#include "update/falhas.h"

#include "platform/system/http.h"

#include <QRegularExpression>

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;
namespace http = sys::http;

namespace {

struct Frase {
    int numero;
    const char16_t* texto;  // "%1": the host
};

// By the code of the last call, where no answer came.
constexpr Frase PorCodigo[] = {
    {http::Timeout, u"O servidor de atualizações \"%1\" não respondeu a tempo."},
    {http::InvalidAddress, u"O endereço do servidor de atualizações \"%1\" não é válido."},
    {http::NameNotResolved, u"O servidor de atualizações \"%1\" não foi encontrado na rede."},
    {http::CannotConnect, u"Não foi possível conectar ao servidor de atualizações \"%1\"."},
    {http::ConnectionAborted, u"O servidor de atualizações \"%1\" interrompeu a resposta."},
    {http::ConnectionReset, u"A conexão com o servidor de atualizações \"%1\" foi interrompida."},
    {http::InvalidAuthority, u"O certificado do proxy da rede não é reconhecido."},
    {http::InvalidAnswer, u"O servidor de atualizações \"%1\" enviou uma resposta inválida."},
};

// By the status of the answer.
constexpr Frase PorEstado[] = {
    {401, u"O servidor de atualizações \"%1\" recusou o acesso."},
    {403, u"O servidor de atualizações \"%1\" recusou o acesso."},
    {404, u"O servidor de atualizações \"%1\" não informa qual é a versão mais nova."},
    {407, u"O proxy da rede pede usuário e senha, ou recusou os que estão nas Configurações."},
};

constexpr int AcessoCancelado = -106;
constexpr auto Cancelado = u"O acesso ao proxy da rede foi cancelado.";
constexpr int NaoHa = 404;
constexpr auto ArquivoAusente = u"O servidor de atualizações \"%1\" não tem um dos arquivos.";
constexpr auto EstadoInesperado = u"O servidor de atualizações \"%1\" respondeu com o estado %2.";
constexpr auto Desconhecida = u"A conversa com o servidor de atualizações \"%1\" falhou.";

template <std::size_t N>
QString Procurar(const Frase (&frases)[N], int numero) {
    const auto* frase = std::find_if(std::begin(frases), std::end(frases),
                                     [numero](const Frase& f) { return f.numero == numero; });
    return frase == std::end(frases) ? QString() : QString::fromUtf16(frase->texto);
}

// The one text of a failed request, taken apart (update/internet.h).
struct Composto {
    bool valido;
    int codigo;  // of the last call
    int interno;
    int estado;    // of an answer; 0 for none
    bool arquivo;  // the file that was asked for is named behind it
};

Composto Ler(const QString& descricao) {
    static const QRegularExpression forma(
        u"^[A-Za-z ]\\w*:(\\d+)(?:;(-?\\d+);(?:Status=(\\d+)|.*?))?( \\([^()]*\\))?$"_s,
        QRegularExpression::DotMatchesEverythingOption);
    const auto partes = forma.match(descricao);
    return {partes.hasMatch(), partes.captured(1).toInt(), partes.captured(2).toInt(),
            partes.captured(3).toInt(), partes.hasCaptured(4)};
}

}  // namespace

QString FalhaEmPalavras(const Erro& erro, const QString& servidor) {
    const Composto composto = Ler(erro.Description());
    if (!composto.valido) {
        return erro.Description();
    }
    QString frase;
    if (composto.estado == NaoHa && composto.arquivo) {
        frase = QString::fromUtf16(ArquivoAusente);
    } else if (composto.estado != 0) {
        frase = Procurar(PorEstado, composto.estado);
        if (frase.isEmpty()) {
            frase = QString::fromUtf16(EstadoInesperado)
                        .replace("%2"_L1, QString::number(composto.estado));
        }
    } else if (composto.interno == AcessoCancelado) {
        frase = QString::fromUtf16(Cancelado);
    } else {
        frase = Procurar(PorCodigo, composto.codigo);
    }
    if (frase.isEmpty()) {
        frase = QString::fromUtf16(Desconhecida);
    }
    return frase.replace("%1"_L1, servidor) + u" ("_s + erro.Description() + u')';
}

Desfecho DesfechoDaFalha(const Erro& erro) {
    constexpr int Proxy = 407;
    constexpr int ServidorComProblema = 500;
    const Composto composto = Ler(erro.Description());
    if (!composto.valido) {
        return Desfecho::Falha;
    }
    if (composto.estado == Proxy) {
        return Desfecho::ProxyPedeSenha;
    }
    const bool caminho = composto.codigo != 0 || composto.estado >= ServidorComProblema;
    return caminho ? Desfecho::SemServidor : Desfecho::Falha;
}
