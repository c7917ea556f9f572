#include "app/apresentacao.h"

#include "platform/erro.h"
#include "platform/forms/application.h"
#include "platform/forms/msgbox.h"
#include "platform/system/process.h"
#include "session/arquivos.h"
#include "session/banco.h"
#include "session/erros.h"
#include "session/global.h"
#include "session/passagens.h"
#include "session/travas.h"

#include <QCoreApplication>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

constexpr int SemPalavraDeInicio = -3;

void ExigirPalavraDeInicio(const QString& linhaDeComando) {
    if (linhaDeComando.trimmed().toUpper() != PalavraDeInicio) {
        throw Erro(SemPalavraDeInicio,
                   u"Para acessar o Catálogo TARVO-LINDEN: executar \"Tarvo.exe\""_s);
    }
}

}  // namespace

frmApresentacao::frmApresentacao(const QString& linhaDeComando)
    : TelaDePassagem(u"frmApresentacao"_s, u"apresentacao"_s), linhaDeComando_(linhaDeComando) {}

void frmApresentacao::Load() {
    try {
        gCaminho = LocalizarDados();
        ExigirPalavraDeInicio(linhaDeComando_);
        gFaltaDeTravas = FaltaDeTravas(gCaminho);
        AbrirSessao();
    } catch (const Erro& erro) {
        MostrarErro(erro.Number(), erro.Description());
        sys::ExitNow(1);
    }
    LigarRelogio();
}

// There is no other screen yet, and the program ends by nothing but an exit.
void frmApresentacao::CloseRequested() {
    if (gFrmPesquisa) {
        return;  // the search screen is coming up, and this one goes by itself
    }
    DesligarRelogio();
    FecharBancoDados(gWS, gDB);
    Unload();
    QCoreApplication::exit(0);
}

void frmApresentacao::IniciarCatalogo() {
    const forms::Busy ocupado;
    DesligarRelogio();
    const forms::StillLoaded aberta(this);
    AbrirPesquisa();
    if (aberta) {
        Unload();
    }
    if (!gFaltaDeTravas.isEmpty()) {
        // Behind the first paint of the screen that it stands over.
        QTimer::singleShot(0, QCoreApplication::instance(), [] {
            forms::MsgBox(gFaltaDeTravas + u"\n\nO catálogo funciona, mas não se atualiza assim."_s,
                          forms::vbInformation, TituloCatalogo);
        });
    }
}
