#include "app/apresentacao.h"
#include "look/tema.h"
#include "platform/forms/application.h"
#include "platform/system/usage.h"
#include "session/erros.h"
#include "session/global.h"

using namespace Qt::StringLiterals;

namespace {

const QString Uso =
    u"Uso: CatalogoTarvo\n"
    "O Catálogo TARVO-LINDEN. Para acessá-lo, execute \"Tarvo.exe\".\n"
    "\n"
    "  --help         mostra esta ajuda\n"
    "  --version      mostra a versão\n"_s;

QStringList Argumentos(int argc, char** argv) {
    QStringList argumentos;
    for (int i = 1; i < argc; ++i) {
        argumentos += QString::fromLocal8Bit(argv[i]);
    }
    return argumentos;
}

}  // namespace

int main(int argc, char** argv) {
    // Before the application object, which needs a display.
    if (sys::AnswerUsage(Argumentos(argc, argv), u"CatalogoTarvo"_s, Uso)) {
        return 0;
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
