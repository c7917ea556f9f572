#include "programa.h"

#include "look/tema.h"
#include "platform/erro.h"
#include "platform/forms/application.h"
#include "platform/system/process.h"
#include "platform/system/usage.h"
#include "resposta.h"
#include "session/arquivos.h"
#include "session/global.h"
#include "update/acesso.h"
#include "update/conversa.h"

#include <QApplication>
#include <QTimer>
#include <QWidget>

#include <chrono>
#include <cstdlib>
#include <memory>
#include <thread>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString Programa = u"VerifAtualizCatalogoTarvo.exe"_s;
const QString Uso =
    u"Uso: VerifAtualizCatalogoTarvo.exe [--limit SEGUNDOS] 0|ARQUIVO\n"
    u"     VerifAtualizCatalogoTarvo.exe [--limit SEGUNDOS] 1|ARQUIVO\n"
    u"Pergunta ao servidor de atualizações qual é a versão mais nova do catálogo\n"
    u"e grava a resposta em ARQUIVO.\n"
    u"\n"
    u"  0                 a pedido do usuário: um proxy pode fazê-lo perguntar usuário e senha\n"
    u"  1                 automática: não mostra nenhuma janela\n"
    u"  --limit SEGUNDOS  tempo máximo de toda a verificação\n"
    u"  --help            mostra esta ajuda\n"
    u"  --version         mostra a versão\n"_s;

constexpr std::chrono::seconds LimiteAutomatico = 2min;
constexpr std::chrono::seconds LimiteAPedido = 10min;  // somebody may be typing a password
constexpr std::chrono::seconds Margem = 15s;

struct Ordem {
    Pedido pedido;
    std::chrono::seconds limite;
};

std::optional<Ordem> LerOrdem(QStringList argumentos) {
    std::chrono::seconds limite = 0s;
    if (argumentos.value(0) == "--limit"_L1) {
        limite = std::chrono::seconds(argumentos.value(1).toInt());
        argumentos = argumentos.mid(2);
        if (limite <= 0s) {
            return std::nullopt;
        }
    }
    const std::optional<Pedido> pedido = LerPedido(argumentos);
    if (!pedido) {
        return std::nullopt;
    }
    if (limite == 0s) {
        limite = pedido->automatica ? LimiteAutomatico : LimiteAPedido;
    }
    return Ordem{*pedido, limite};
}

[[noreturn]] void Encerrar(const Pedido& pedido, const Resposta& resposta) {
    try {
        Responder(pedido.arquivo, resposta.texto);
    } catch (const Erro& erro) {
        sys::Print(stderr, Programa + u": "_s + erro.Description() + u'\n');
    }
    sys::ExitNow(int(resposta.desfecho));
}

// The timer needs a loop that lets events through; a disk of the network that does not answer stops
// that one as well, and there the thread ends the program.
void LimitarTempo(const Ordem& ordem) {
    std::thread([fim = ordem.limite + Margem] {
        std::this_thread::sleep_for(fim);
        std::_Exit(int(Desfecho::Falha));
    }).detach();
    QTimer::singleShot(ordem.limite, [pedido = ordem.pedido] {
        ExcluirBaixado();
        Encerrar(pedido, RespostaDeFalha(u"O servidor de atualizações demorou demais."_s,
                                         Desfecho::SemServidor));
    });
}

void MostrarJanelas() {
    for (QWidget* janela : QApplication::topLevelWidgets()) {
        if (janela->isVisible()) {
            janela->showNormal();
            janela->raise();
            janela->activateWindow();
        }
    }
}

// What the catalogue wants while it waits: to see the question for a password, or no answer at all,
// because it has ended.
void AtenderCatalogo(Conversa& conversa, const Ordem& ordem, QTimer& relogio, bool janelas) {
    QObject::connect(&relogio, &QTimer::timeout, [&conversa, &ordem, janelas] {
        if (conversa.Desistiu()) {
            ExcluirBaixado();
            ExcluirResposta(ordem.pedido.arquivo);
            sys::ExitNow(0);
        }
        if (conversa.FoiChamada() && janelas) {
            MostrarJanelas();
        }
    });
    relogio.start(200ms);
}

std::unique_ptr<QCoreApplication> NovaAplicacao(int& argc, char** argv, bool janelas) {
    if (!janelas) {
        return std::make_unique<QCoreApplication>(argc, argv);
    }
    auto aplicacao = std::make_unique<forms::Application>(argc, argv, TituloCatalogo);
    AplicarTema();
    return aplicacao;
}

}  // namespace

int ExecutarVerificador(int argc, char** argv) {
    std::optional<Ordem> ordem;
    {
        const QCoreApplication aplicacao(argc, argv);
        const QStringList argumentos = QCoreApplication::arguments().mid(1);
        if (sys::AnswerUsage(argumentos, Programa, Uso)) {
            return 0;
        }
        ordem = LerOrdem(argumentos);
    }
    if (!ordem) {
        sys::Print(stderr, Uso);
        return int(Desfecho::UsoErrado);
    }
    const bool podePerguntar = !ordem->pedido.automatica && forms::HasScreen();
    const auto aplicacao = NovaAplicacao(argc, argv, podePerguntar);
    LimitarTempo(*ordem);
    const std::unique_ptr<Conversa> conversa = Conversa::Atender();
    QTimer relogio;
    if (conversa) {
        AtenderCatalogo(*conversa, *ordem, relogio, podePerguntar);
    }
    Resposta resposta;
    try {
        gCaminho = LocalizarDados();
        AcessoDigitado acesso;
        if (conversa && conversa->LerAcesso(acesso.usuario, acesso.senha)) {
            LembrarAcesso(acesso);
        }
        resposta = Verificar(podePerguntar);
        if (const AcessoDigitado* digitado = AcessoLembrado(); digitado && conversa) {
            conversa->GuardarAcesso(digitado->usuario, digitado->senha);
        }
    } catch (const Erro& erro) {
        resposta = RespostaDeFalha(erro.Description());
    }
    Encerrar(ordem->pedido, resposta);
}
