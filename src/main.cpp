#include "app/apresentacao.h"
#include "look/tema.h"
#include "platform/forms/application.h"
#include "platform/system/usage.h"
#include "session/erros.h"
#include "session/global.h"
#include "update/semjanela.h"

#include <QCoreApplication>

#include <chrono>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

const QString Uso =
    u"Uso: CatalogoTarvo\n"
    "     CatalogoTarvo --atualizar [--espera MINUTOS]\n"
    "O Catálogo TARVO-LINDEN. Para acessá-lo, execute \"Tarvo.exe\".\n"
    "\n"
    "  --atualizar    instala, sem nenhuma janela, o que há de novo\n"
    "  --espera       por quanto tempo, no máximo, por quem usa o catálogo (10 minutos)\n"
    "  --help         mostra esta ajuda\n"
    "  --version      mostra a versão\n"_s;

QStringList Argumentos(int argc, char** argv) {
    QStringList argumentos;
    for (int i = 1; i < argc; ++i) {
        argumentos += QString::fromLocal8Bit(argv[i]);
    }
    return argumentos;
}

// What may follow the word that asks for the update; nothing where it is something else.
std::optional<std::chrono::minutes> MaiorEspera(const QStringList& opcoes) {
    if (opcoes.isEmpty()) {
        return EsperaPadrao;
    }
    bool numero = false;
    const ushort minutos = opcoes.value(1).toUShort(&numero);
    if (opcoes.size() != 2 || opcoes.first() != "--espera"_L1 || !numero) {
        return std::nullopt;
    }
    return std::chrono::minutes(minutos);
}

// For a scheduler: what was asked for goes to the standard output, what went wrong to the other.
int Atualizar(int argc, char** argv, std::chrono::minutes maiorEspera) {
    const QCoreApplication aplicacao(argc, argv);
    const FimSemJanela fim = AtualizarSemJanela(maiorEspera);
    const bool bom = fim.desfecho == Desfecho::NadaDeNovo || fim.desfecho == Desfecho::Atualizado;
    sys::Print(bom ? stdout : stderr, fim.linha + u'\n');
    return int(fim.desfecho);
}

}  // namespace

int main(int argc, char** argv) {
    // Before the application object, which needs a display.
    const QStringList argumentos = Argumentos(argc, argv);
    if (sys::AnswerUsage(argumentos, u"CatalogoTarvo"_s, Uso)) {
        return 0;
    }
    if (argumentos.value(0) == "--atualizar"_L1) {
        if (const auto maiorEspera = MaiorEspera(argumentos.mid(1))) {
            return Atualizar(argc, argv, *maiorEspera);
        }
        sys::Print(stderr, Uso);
        return int(Desfecho::UsoErrado);
    }
    forms::Application application(argc, argv, TituloCatalogo);
    AplicarTema();
    application.SetDescriber(DescreverErro);
    // Closed, but still there: a routine that let the failed event through goes on behind it, and
    // has to meet an error, not an empty reference.
    application.SetEmergencyExit([] {
        if (gWS) {
            gWS->Close();
        }
    });
    return application.Run(
        [&] { (new frmApresentacao(application.arguments().mid(1).join(u' ')))->Show(); });
}
