#include "resposta.h"

#include "platform/convert.h"
#include "platform/secret.h"
#include "platform/system/paths.h"
#include "session/arquivos.h"
#include "session/banco.h"
#include "session/global.h"
#include "settings/arquivo.h"
#include "update/endereco.h"
#include "update/internet.h"
#include "update/prova.h"
#include "update/scripts.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto NomeDaVersao = "Versao.txt"_L1;
constexpr auto NomeDaVersaoAssinada = "Versao.sig"_L1;
// A version is a handful of digits; whatever is longer is something else, or has no end.
constexpr qint64 MaiorResposta = 4096;

QString baixado;  // the file that the request under way writes to

struct Registro {
    qint16 versao;
    QString endereco;
};

Registro LerRegistro() {
    const auto linha = gDB->OpenRecordset(u"SELECT Versao, UrlAtualizacao FROM UMREGISTRO"_s,
                                          dao::dbOpenForwardOnly);
    if (linha->Eof()) {
        throw Erro(RegistroPerdido,
                   u"O catálogo está sem o registro da versão: uma atualização foi "
                   "interrompida. É preciso instalar uma nova cópia do catálogo."_s);
    }
    return {convert::ToInt16(linha->Fields(0).Value()),
            convert::ToTextOrEmpty(linha->Fields(1).Value())};
}

void LerAcesso(QString& usuario, QString& senha) {
    try {
        LerConfiguracao(u"USUARIO_SENHA"_s, usuario, senha);
    } catch (const Erro&) {
        // A proxy is asked without a name then.
    }
}

QString Buscar(const EnderecoServidor& endereco, const QString& nome, bool podePerguntar) {
    QString usuario;
    QString senha;
    const secret::WipeAtEnd semUsuario(usuario);
    const secret::WipeAtEnd semSenha(senha);
    LerAcesso(usuario, senha);
    return HttpExecutar(u"D"_s, podePerguntar, endereco.caminhoBase + nome, true, baixado,
                        QString(), QString(), usuario, senha);
}

// Where the publisher's keys are known, a number that he has not signed counts for nothing. A
// missing signature is a wrong one.
VersaoAssinada BuscarAssinada(const EnderecoServidor& endereco, const ChavesDaAtualizacao& chaves,
                              bool podePerguntar) {
    QString texto;
    try {
        texto = Buscar(endereco, NomeDaVersaoAssinada, podePerguntar);
    } catch (const Erro& erro) {
        if (!erro.Description().contains("Status=404"_L1)) {
            throw;
        }
    }
    return ConferirVersao(chaves, texto.toUtf8());
}

qint16 LerVersao(const QString& texto, const QString& servidor) {
    bool numero = false;
    const qint16 versao = texto.trimmed().toShort(&numero);
    if (!numero || versao < 0) {
        throw Erro(
            Erro::TypeMismatch,
            u"O servidor de atualizações \"%1\" não informou uma versão, e sim \"%2\"."_s.arg(
                servidor, texto.simplified().left(40)));
    }
    return versao;
}

QString LugarDaResposta(const QString& arquivo) {
    const qsizetype nome = qMax(arquivo.lastIndexOf(u'\\'), arquivo.lastIndexOf(u'/')) + 1;
    return DiretorioExiste(arquivo.left(nome)) ? arquivo : gCaminho + arquivo.mid(nome);
}

}  // namespace

std::optional<Pedido> LerPedido(const QStringList& argumentos) {
    const QString texto = argumentos.join(u' ');
    const bool automatica = texto.startsWith("1|"_L1);
    const QString arquivo = texto.mid(2);
    if ((!automatica && !texto.startsWith("0|"_L1)) || arquivo.isEmpty()) {
        return std::nullopt;
    }
    return Pedido{automatica, arquivo};
}

Resposta RespostaDeFalha(const QString& motivo, Desfecho desfecho) {
    return {u'0' + motivo, desfecho};
}

void ExcluirBaixado() {
    try {
        ExcluirArquivo(baixado);
    } catch (const Erro&) {
        // It lies in the way of nobody.
    }
}

Resposta Verificar(bool podePerguntar) {
    QString servidor;
    Resposta resposta;
    try {
        AbrirBancoDados(gWS, u"gWS"_s, gDB, false);
        const Registro registro = LerRegistro();
        FecharBancoDados(gWS, gDB);  // nobody has to wait for the network
        if (registro.endereco.trimmed().isEmpty()) {
            throw Erro(Erro::InvalidArgument,
                       u"O catálogo não tem o endereço do servidor de atualizações."_s);
        }
        const EnderecoServidor endereco = LerEndereco(registro.endereco);
        servidor = endereco.servidor;
        const ChavesDaAtualizacao chaves = LerChaves();
        DefinirMaiorTexto(MaiorResposta);
        baixado = NomeArquivoTemporario();
        HttpConectar(servidor);
        const qint16 nova = LerVersao(Buscar(endereco, NomeDaVersao, podePerguntar), servidor);
        resposta.texto = u"1%1|%2"_s.arg(registro.versao).arg(nova);
        if (chaves.Exigem()) {
            const VersaoAssinada assinada = BuscarAssinada(endereco, chaves, podePerguntar);
            if (assinada.numero != nova) {
                throw Erro(AssinaturaRecusada,
                           u"O servidor de atualizações \"%1\" informa a versão %2, e a assinada é "
                           "a %3."_s.arg(servidor)
                               .arg(nova)
                               .arg(assinada.numero));
            }
            resposta.texto += u'|' + assinada.data.toString(Qt::ISODate);
        }
    } catch (const Erro& erro) {
        resposta = RespostaDeFalha(FalhaEmPalavras(erro, servidor), DesfechoDaFalha(erro));
    }
    ExcluirBaixado();
    return resposta;
}

void ExcluirResposta(const QString& arquivo) {
    try {
        ExcluirArquivo(LugarDaResposta(arquivo));
    } catch (const Erro&) {
        // It lies in the way of nobody.
    }
}

void Responder(const QString& arquivo, const QString& texto) {
    sys::WriteWhole(LugarDaResposta(arquivo), texto.toUtf8());
}
