// One update in a process of its own, which a test can kill:
//   update_runner FOLDER
// Takes the update lock, or says that another has it, and goes from version 1 to 2. Prints each
// message box and, when the update has come to its end, the catalogue's version, its number of
// customers and whether it is sound. The publisher's key stands in TARVO_TEST_KEY. TARVO_TEST_DEATH
// is the number of the file in whose place nothing comes any more: the process dies instead of
// renaming.
#include "platform/convert.h"
#include "platform/dao/connection.h"
#include "platform/erro.h"
#include "platform/forms/application.h"
#include "platform/forms/msgbox.h"
#include "session/banco.h"
#include "session/global.h"
#include "support/quickkeys.h"
#include "update/atualizando.h"
#include "update/prova.h"

#include <QTextStream>

#ifdef Q_OS_UNIX
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

// In the place of the system's own, for all libraries of this process.
extern "C" int rename(const char* from, const char* to) noexcept {
    static const int death = qEnvironmentVariableIntValue("TARVO_TEST_DEATH");
    static int renamed = 0;
    if (++renamed == death) {
        kill(getpid(), SIGKILL);
    }
    return renameat(AT_FDCWD, from, AT_FDCWD, to);
}
#endif

namespace {

QString Value(const char* sql) {
    return convert::ToTextOrEmpty(gDB->OpenRecordset(QLatin1String(sql))->Fields(0).Value());
}

void Run(const QStringList& arguments, QTextStream& out) {
    gCaminho = arguments.at(1) + u'\\';
    AbrirBancoDados(gWS, QStringLiteral("gWS"), gDB, false);
    forms::SetMsgBoxHandler([&out](QString text, int, const QString&) {
        out << text.replace(u'\n', u'|') << '\n' << Qt::flush;
        return forms::vbOK;
    });
    if (const QByteArray key = qgetenv("TARVO_TEST_KEY"); !key.isEmpty()) {
        UsarChaves(ChavesDaAtualizacao{QStringLiteral("loja"), {QByteArray::fromHex(key)}});
    }
    if (!BloquearBancoDados(true)) {
        out << "locked\n";
        return;
    }
    ParametroFormulario = QStringLiteral("1|2");
    (new frmAtualizando)->ShowModal();
    out << Value("SELECT Versao FROM UMREGISTRO") << ' '
        << Value("SELECT Count(*) FROM CLIENTECONCORRENTE") << ' '
        << gDB->GetConnection()->Value("PRAGMA integrity_check").toString()
        << gDB->GetConnection()->Value("PRAGMA cipher_integrity_check").toString() << '\n';
    BloquearBancoDados(false);
    FecharBancoDados(gWS, gDB);
}

}  // namespace

int main(int argc, char** argv) {
    forms::Application application(argc, argv, TituloCatalogo);
    testing_support::UseQuickKeys();
    QTextStream out(stdout);
    try {
        Run(application.arguments(), out);
    } catch (const Erro& erro) {
        out << "untrapped " << erro.Number() << ' ' << erro.Description() << '\n';
    }
    return 0;
}
