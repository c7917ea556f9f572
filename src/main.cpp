#include "look/tema.h"
#include "platform/forms/application.h"
#include "session/apresentacao.h"
#include "session/banco.h"
#include "session/global.h"

int main(int argc, char** argv) {
    forms::Application application(argc, argv);
    AplicarTema();
    application.SetEmergencyExit([] { FecharBancoDados(gWS, gDB); });
    return application.Run(
        [&] { (new frmApresentacao(application.arguments().mid(1).join(u' ')))->Show(); });
}
