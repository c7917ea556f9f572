#include "update/semjanela.h"

#include "platform/dao/errors.h"
#include "session/arquivos.h"
#include "session/banco.h"
#include "session/datas.h"
#include "session/erros.h"
#include "session/global.h"
#include "session/travas.h"
#include "update/endereco.h"
#include "update/instalacao.h"
#include "update/verificador.h"

#include <QEventLoop>
#include <QScopeGuard>
#include <QTimer>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto MaiorComando = 60min;

void EsperarFim(const Verificador& verificador) {
    QEventLoop espera;
    QTimer consulta;
    QObject::connect(&consulta, &QTimer::timeout, &espera, [&] {
        if (!verificador.EmCurso()) {
            espera.quit();
        }
    });
    consulta.start(20ms);
    espera.exec();
}

Verificador::Resposta Perguntar() {
    Verificador verificador;
    verificador.Iniciar(true, nullptr);
    const auto semResposta = qScopeGuard([&] { verificador.ExcluirResposta(); });
    EsperarFim(verificador);
    Verificador::Resposta resposta;
    try {
        resposta = verificador.Ler();
    } catch (const Erro& erro) {
        throw FimSemJanela{
            verificador.Fim(),
            erro.Number() == VerificadorFalhou
                ? erro.Description()
                : u"A verificação não deixou uma resposta (%1)."_s.arg(erro.Description())};
    }
    if (!resposta.HaNovas()) {
        throw FimSemJanela{Desfecho::NadaDeNovo,
                           u"Nada de novo: o catálogo está na versão %1."_s.arg(resposta.local)};
    }
    return resposta;
}

void Bloquear() {
    int falha = 0;
    if (BloquearBancoDados(true, &falha)) {
        return;
    }
    if (falha == int(dao::Failure::Locked)) {
        throw FimSemJanela{
            Desfecho::OutroComputador,
            u"Outro computador, ou outro programa, já está atualizando o catálogo."_s};
    }
    throw Erro(falha, u"Não foi possível bloquear o catálogo para a atualização."_s);
}

// Nobody is there to give up waiting for a computer that sleeps in the middle of a search.
class Paciencia {
public:
    Paciencia(Instalacao& instalacao, std::chrono::minutes maiorEspera) {
        QObject::connect(&limite_, &QTimer::timeout, &instalacao, &Instalacao::Interromper);
        QObject::connect(&instalacao, &Instalacao::Esperando, &limite_,
                         [this, maiorEspera](const QString& quem) {
                             porQuem_ = quem;
                             if (quem.isEmpty()) {
                                 limite_.stop();
                             } else if (!limite_.isActive()) {
                                 limite_.start(maiorEspera);
                             }
                         });
    }

    QString Desistencia() const {
        return u"A atualização esperou demais por %1; a próxima recomeça do início."_s.arg(
            porQuem_);
    }

private:
    QTimer limite_;
    QString porQuem_;
};

FimSemJanela Instalar(std::chrono::minutes maiorEspera) {
    Perguntar();
    Bloquear();
    const auto soltar = qScopeGuard([] {
        try {
            BloquearBancoDados(false);
        } catch (const Erro&) {
            // It ends with the process at the latest.
        }
    });
    // Another computer may have been faster.
    const Verificador::Resposta resposta = Perguntar();
    const QString servidor = EnderecoDoCatalogo().servidor;
    Instalacao instalacao(false);
    instalacao.LimitarComandos(MaiorComando);
    const Paciencia paciencia(instalacao, maiorEspera);
    try {
        instalacao.Atualizar(resposta.local, resposta.servidor);
    } catch (const Erro& erro) {
        if (instalacao.Interrompida()) {
            throw FimSemJanela{Desfecho::OutroComputador, paciencia.Desistencia()};
        }
        if (erro.Number() == int(dao::Failure::Interrupted)) {
            throw FimSemJanela{Desfecho::Falha,
                               u"Um comando da atualização não terminou em %1 minutos: %2"_s
                                   .arg(MaiorComando.count())
                                   .arg(erro.Description())};
        }
        throw FimSemJanela{DesfechoDaFalha(erro), FalhaEmPalavras(erro, servidor)};
    }
    instalacao.IniciarProgramaInstalado();
    return {Desfecho::Atualizado,
            u"O catálogo foi atualizado da versão %1 para a %2."_s.arg(resposta.local)
                .arg(resposta.servidor)};
}

void AnotarVerificacao(Desfecho desfecho) {
    const bool falhou = desfecho != Desfecho::NadaDeNovo && desfecho != Desfecho::Atualizado &&
                        desfecho != Desfecho::OutroComputador;
    try {
        GravarUltimaVerificacao(DataHoraSql(1.0), falhou ? u"1"_s : u"0"_s);
    } catch (const Erro&) {
        // What is known of the check is told all the same.
    }
}

}  // namespace

FimSemJanela AtualizarAberto(std::chrono::minutes maiorEspera) {
    FimSemJanela fim;
    try {
        fim = Instalar(maiorEspera);
    } catch (const FimSemJanela& antes) {
        fim = antes;  // before anything was installed, or in its middle
    } catch (const Erro& erro) {
        fim = {Desfecho::Falha, DescreverErro(QString::number(erro.Number()), erro.Description())};
    }
    AnotarVerificacao(fim.desfecho);
    fim.linha = fim.linha.simplified();
    return fim;
}

FimSemJanela AtualizarSemJanela(std::chrono::minutes maiorEspera) {
    FimSemJanela fim;
    try {
        gCaminho = LocalizarDados();
        gFaltaDeTravas = FaltaDeTravas(gCaminho);
        if (gFaltaDeTravas.isEmpty()) {
            AbrirSessao();
            fim = AtualizarAberto(maiorEspera);
        } else {
            fim = {Desfecho::SemTravas, gFaltaDeTravas.simplified()};
        }
    } catch (const Erro& erro) {
        fim = {Desfecho::Falha, erro.Description().simplified()};
    }
    FecharBancoDados(gWS, gDB);
    return fim;
}
