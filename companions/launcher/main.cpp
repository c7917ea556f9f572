#include "platform/erro.h"
#include "platform/forms/application.h"
#include "platform/forms/msgbox.h"
#include "platform/system/paths.h"
#include "platform/system/process.h"
#include "platform/system/usage.h"
#include "session/global.h"

#include <QCoreApplication>

#include <optional>

using namespace Qt::StringLiterals;

// The program that users start, and schedulers. It starts the catalogue of its own folder with the
// launch word and ends at once; given a process identifier it first waits for that process's end,
// which is how the catalogue starts itself anew.

namespace {

const QString Uso =
    u"Uso: Tarvo.exe [IDENTIFICADOR]\n"
    "     Tarvo.exe --atualizar [--espera MINUTOS]\n"
    "Inicia o Catálogo TARVO-LINDEN.\n"
    "\n"
    "  IDENTIFICADOR  espera antes o fim do processo com este identificador\n"
    "  --atualizar    instala, sem nenhuma janela, o que há de novo; os códigos de saída estão\n"
    "                 no manual\n"
    "  --espera       por quanto tempo, no máximo, por quem usa o catálogo (10 minutos)\n"
    "  --help         mostra esta ajuda\n"
    "  --version      mostra a versão\n"_s;

const QString Atualizar = u"--atualizar"_s;

QString Catalogo() {
    return sys::ProgramFolder() + u"\\CatalogoTarvo"_s;
}

QString NaoIniciou(const Erro& erro) {
    return u"Não foi possível iniciar \"%1\": %2."_s.arg(sys::ToNative(Catalogo()),
                                                         erro.Description());
}

// For a scheduler: whatever happens, no window comes up.
int AtualizarSemJanela(const QStringList& argumentos) {
    try {
        return sys::GoOnAs(Catalogo(), argumentos);
    } catch (const Erro& erro) {
        sys::Print(stderr, NaoIniciou(erro) + u'\n');
        return 1;
    }
}

// The work, without any window. Returns what to tell the user, nothing when all went well.
std::optional<QString> Iniciar(const QStringList& argumentos) {
    if (argumentos.size() > 1) {
        return u"Argumentos demais. Informe no máximo um identificador de processo."_s;
    }
    if (!argumentos.isEmpty()) {
        bool numero = false;
        const sys::ProcessId processo = argumentos.first().toLongLong(&numero);
        if (!numero || processo <= 0) {
            return u"\"%1\" não é um identificador de processo."_s.arg(argumentos.first());
        }
        sys::WaitForEnd(processo);
    }
    try {
        sys::Start(u"\"%1\" %2"_s.arg(Catalogo(), PalavraDeInicio), 1);
    } catch (const Erro& erro) {
        return NaoIniciou(erro);
    }
    return std::nullopt;
}

}  // namespace

int main(int argc, char** argv) {
    std::optional<QString> falha;
    {
        const QCoreApplication aplicacao(argc, argv);
        const QStringList argumentos = QCoreApplication::arguments().mid(1);
        if (sys::AnswerUsage(argumentos, u"Tarvo.exe"_s, Uso)) {
            return 0;
        }
        if (argumentos.value(0) == Atualizar) {
            return AtualizarSemJanela(argumentos);
        }
        falha = Iniciar(argumentos);
    }
    if (!falha) {
        return 0;
    }
    sys::Print(stderr, *falha + u'\n');
    if (forms::HasScreen()) {
        const forms::Application aplicacao(argc, argv, TituloCatalogo);
        forms::MsgBox(*falha, forms::vbCritical, TituloCatalogo);
    }
    return 1;
}
