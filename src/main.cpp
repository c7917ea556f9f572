#include "app/apresentacao.h"
#include "look/tema.h"
#include "platform/forms/application.h"
#include "platform/system/usage.h"
#include "session/erros.h"
#include "session/global.h"
#include "update/semjanela.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {

const QString Uso =
    u"Uso: CatalogoTarvo\n"
    "     CatalogoTarvo --atualizar\n"
    "O Catálogo TARVO-LINDEN. Para acessá-lo, execute \"Tarvo.exe\".\n"
    "\n"
    "  --atualizar    instala, sem nenhuma janela, o que há de novo\n"
    "  --help         mostra esta ajuda\n"
    "  --version      mostra a versão\n"_s;

QStringList Argumentos(int argc, char** argv) {
    QStringList argumentos;
    for (int i = 1; i < argc; ++i) {
        argumentos += QString::fromLocal8Bit(argv[i]);
    }
    return argumentos;
}

// For a scheduler: what was asked for goes to the standard output, what went wrong to the other.
int Atualizar(int argc, char** argv) {
    const QCoreApplication aplicacao(argc, argv);
    const FimSemJanela fim = AtualizarSemJanela();
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
        if (argumentos.size() == 1) {
            return Atualizar(argc, argv);
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
