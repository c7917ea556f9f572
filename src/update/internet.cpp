#include "update/internet.h"

#include "platform/erro.h"
#include "platform/forms/application.h"
#include "platform/sizes.h"
#include "platform/system/http.h"
#include "platform/system/output.h"
#include "session/arquivos.h"
#include "update/acesso.h"

#include <array>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
namespace http = sys::http;

namespace {

enum Numero : int {
    FalhaAoConectar = -100,
    AutoridadesDemais = -101,
    AcessosDemais = -102,
    StatusInesperado = -103,
    FalhaAoExecutar = -104,
    FalhaAoLer = -105,
    AcessoCancelado = -106,
    EnvioProibido = -107,
};

constexpr int StatusOk = 200;
constexpr int StatusAcessoAoProxy = 407;
constexpr qsizetype Bloco = 4096;
constexpr quint8 TentativasDeAutoridade = 4;
constexpr quint8 TentativasDeAcesso = 6;
constexpr quint8 PontosDeEnvio = 2;

// A text has to fit into memory; a server that never ends one must not take the program down.
qint64 maiorTexto = 256_MiB;

std::unique_ptr<http::Session> hInternet;
std::unique_ptr<http::Connection> hConexao;
std::chrono::milliseconds tempoLimite = 60s;
bool interrompido = false;

void DeixarEventos() {
    forms::DoEventsInTime();
    if (interrompido) {
        throw Erro(Interrompido, u"Interrompido pelo usuário"_s);
    }
}

QString EtapaEValor(const char* etapa) {
    return QLatin1String(etapa) + u':' + QString::number(http::LastCode());
}

// What the trap makes of an error inside a stage.
QString TextoComposto(const char* etapa, const Erro& erro) {
    return EtapaEValor(etapa) + u';' + QString::number(erro.Number()) + u';' + erro.Description();
}

struct Pedido {
    QString modo;
    bool exibirDialogos;
    QString caminho;
    bool retornarTexto;
    QString arquivoTemporario;
    QString usuario;
    QString senha;
    ProgressoDownload progresso;
};

// One request from its opening to the end of its body.
class Requisicao {
public:
    explicit Requisicao(const Pedido& pedido) : pedido_(pedido) {}

    // Throws Erro -104 with the composite text, whatever happened.
    QString Executar(const QString& EnvioCampo, const QString& EnvioArquivo) {
        QString resultado;
        try {
            Abrir();
            if (textoErro_.isEmpty() && pedido_.modo != "D"_L1) {
                PrepararEnvio(EnvioCampo, EnvioArquivo);
            }
            if (textoErro_.isEmpty() && EnviarAteOStatus()) {
                resultado = Receber();
            }
        } catch (const Erro& erro) {
            textoErro_ = TextoComposto(etapa_, erro);
        }
        if (!textoErro_.isEmpty()) {
            throw Erro(FalhaAoExecutar, textoErro_);
        }
        return resultado;
    }

private:
    void Abrir() {
        etapa_ = "HttpOpenRequest";
        if (!hConexao) {
            throw Erro(Erro::InvalidArgument);
        }
        requisicao_.emplace(*hConexao, pedido_.modo == "U"_L1 ? "POST" : "GET", pedido_.caminho);
        if (!requisicao_->IsOpen()) {
            textoErro_ = EtapaEValor(etapa_);
        }
    }

    // The body never comes back, so that nothing is sent.
    void PrepararEnvio(const QString& EnvioCampo, const QString& EnvioArquivo) {
        etapa_ = "HttpAddRequestHeaders";
        requisicao_->AddHeader("Content-Type: multipart/form-data");
        etapa_ = "BodyPostFileUpload";
        BodyPostFileUpload(EnvioCampo, EnvioArquivo);
    }

    // Sends until there is a status to go on with. False: the error text says why there is none.
    bool EnviarAteOStatus() {
        etapa_ = "InternetSetOption_TimeOut";
        requisicao_->SetTimeouts({tempoLimite, tempoLimite, tempoLimite});
        for (;;) {
            etapa_ = "HttpSendRequest";
            if (!requisicao_->Send()) {
                if (!PodeRepetirEnvio(http::LastCode())) {
                    return false;
                }
                continue;
            }
            etapa_ = "HttpQueryInfo";
            const int status = requisicao_->Status();
            if (status == StatusAcessoAoProxy && ObterAcesso()) {
                continue;
            }
            if (status != StatusOk) {
                throw Erro(StatusInesperado, u"Status="_s + QString::number(status));
            }
            return true;
        }
    }

    bool PodeRepetirEnvio(int falha) {
        if (falha == http::InvalidAuthority) {
            etapa_ = "InternetSetOption_SECURITY_FLAG_IGNORE_UNKNOWN_CA";
            requisicao_->IgnoreUnknownAuthority();
            if (++autoridades_ >= TentativasDeAutoridade) {
                throw Erro(AutoridadesDemais, u"Cont="_s + QString::number(autoridades_));
            }
            return true;
        }
        // So a refused connection is tried three times, anything else twice.
        pontos_ += falha == http::CannotConnect ? 1 : 2;
        if (pontos_ > PontosDeEnvio) {
            textoErro_ = EtapaEValor(etapa_);
            return false;
        }
        for (int vez = 0; vez < 3; ++vez) {
            forms::DoEvents();
        }
        return true;
    }

    // True: the request is to be sent again with new credentials. False: nobody may be asked.
    bool ObterAcesso() {
        ++acessos_;
        const AcessoDigitado* lembrado = AcessoLembrado();
        const QString& usuario = lembrado ? lembrado->usuario : pedido_.usuario;
        const QString& senha = lembrado ? lembrado->senha : pedido_.senha;
        if (acessos_ == 1 && !(usuario.isEmpty() && senha.isEmpty())) {
            etapa_ = "InternetSetOptionStr_ProxyUsername";
            requisicao_->SetProxyCredentials(usuario, senha);
            etapa_ = "InternetSetOptionStr_ProxyPassword";
            return true;
        }
        if (!pedido_.exibirDialogos) {
            return false;
        }
        etapa_ = "InternetErrorDlg";
        AcessoAoProxy acesso{requisicao_->ProxyName(), requisicao_->ProxyRealm(), usuario,
                             QString(), acessos_ > 1};
        if (!PedirAcessoAoProxy(acesso)) {
            throw Erro(AcessoCancelado, u"Cancel Proxy Auth"_s);
        }
        if (acessos_ > TentativasDeAcesso) {
            throw Erro(AcessosDemais, u"Cont="_s + QString::number(acessos_));
        }
        LembrarAcesso({acesso.usuario, acesso.senha});
        requisicao_->SetProxyCredentials(acesso.usuario, acesso.senha);
        return true;
    }

    QString Receber() {
        QString caminho = pedido_.arquivoTemporario;
        if (caminho.isEmpty()) {
            caminho = NomeArquivoTemporario();
        } else {
            ExcluirArquivo(caminho);
        }
        try {
            sys::Output arquivo(caminho);
            etapa_ = "InternetReadFile";
            GravarCorpo(arquivo);
        } catch (const Erro& erro) {
            // The catalogue goes on working beside a failed update, and for that it must be able to
            // write.
            if (erro.Number() == Erro::DiskFull || erro.Number() == TextoDemais) {
                ExcluirArquivo(caminho);
            }
            throw;
        }
        etapa_ = "Data Return";
        if (!pedido_.retornarTexto) {
            return caminho;
        }
        const QString texto = LerArquivo(caminho);
        ExcluirArquivo(caminho);
        return texto;
    }

    void GravarCorpo(sys::Output& arquivo) {
        std::array<char, Bloco> bloco;
        qint64 total = 0;
        for (;;) {
            const qsizetype bytes = requisicao_->Read(bloco.data(), Bloco);
            if (bytes < 0) {
                throw Erro(FalhaAoLer, u"Ret=0"_s);
            }
            if (bytes == 0) {
                break;
            }
            arquivo.Write(bloco.data(), bytes);
            total += bytes;
            if (pedido_.retornarTexto && total > maiorTexto) {
                throw Erro(TextoDemais, u"Espaço insuficiente para o texto"_s);
            }
            if (pedido_.progresso) {
                pedido_.progresso(qint32(bytes));
            }
            DeixarEventos();
        }
        arquivo.Close();
    }

    const Pedido& pedido_;
    std::optional<http::Request> requisicao_;
    const char* etapa_ = "";
    QString textoErro_;
    quint8 autoridades_ = 0;
    quint8 acessos_ = 0;
    quint8 pontos_ = 0;
};

}  // namespace

void HttpConectar(const QString& Servidor) {
    const char* etapa = "InternetOpen";
    QString textoErro;
    interrompido = false;
    try {
        HttpDesconectar();
        hInternet = std::make_unique<http::Session>(u"CatalogoDePecasTarvo"_s, DeixarEventos);
        if (!hInternet->IsOpen()) {
            textoErro = EtapaEValor(etapa);
        } else {
            etapa = "InternetConnect";
            hConexao = std::make_unique<http::Connection>(*hInternet, Servidor);
            if (!hConexao->IsOpen()) {
                textoErro = EtapaEValor(etapa);
            }
        }
    } catch (const Erro& erro) {
        textoErro = TextoComposto(etapa, erro);
    }
    if (!textoErro.isEmpty()) {
        HttpDesconectar();
        throw Erro(FalhaAoConectar, textoErro);
    }
}

void HttpDesconectar() {
    hConexao.reset();
    hInternet.reset();
}

QString HttpExecutar(const QString& Modo, bool ExibirDialogos, const QString& Caminho,
                     bool RetornarTexto, const QString& ArquivoTemporario,
                     const QString& EnvioCampo, const QString& EnvioArquivo, const QString& Usuario,
                     const QString& Senha, const ProgressoDownload& AtualizarProgressoDownload) {
    const Pedido pedido{Modo,
                        ExibirDialogos,
                        Caminho,
                        RetornarTexto,
                        ArquivoTemporario,
                        Usuario,
                        Senha,
                        AtualizarProgressoDownload};
    return Requisicao(pedido).Executar(EnvioCampo, EnvioArquivo);
}

void BodyPostFileUpload(const QString& EnvioCampo, const QString& EnvioArquivo) {
    Q_UNUSED(EnvioCampo);
    Q_UNUSED(EnvioArquivo);
    throw Erro(EnvioProibido, u"Não é Permitido UPLOAD"_s);
}

void HttpInterromper() {
    interrompido = true;
}

void DefinirMaiorTexto(qint64 maximo) {
    maiorTexto = maximo;
}

void DefinirTempoLimite(std::chrono::milliseconds limite) {
    tempoLimite = limite;
}
