#include "exportar/export.h"
#include "platform/erro.h"
#include "platform/system/usage.h"
#include "tabelas/interrupt.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {

enum Result { Done = 0, NotDone = 2 };

const QString Use =
    u"Uso: tarvo-exportar <dados> <pasta>\n"
    "\n"
    "Grava as tabelas do catálogo de uma pasta de dados como arquivos CSV, um por\n"
    "tabela, numa pasta nova ou vazia. O tarvo-importar faz deles o mesmo catálogo.\n"
    "Nos dados nada é alterado.\n"
    "\n"
    "  --versao     mostra a versão\n"
    "  --ajuda      mostra esta ajuda\n"
    "\n"
    "Código de saída: 0 tudo foi gravado, 2 nada foi gravado.\n"_s;

void Run(const QStringList& arguments) {
    tabelas::WatchForInterrupt();
    const auto show = tabelas::OnTerminal();
    tabelas::Progress progress(show);
    const auto written = exportar::Export(arguments.first(), arguments.last(), progress);
    if (show) {
        show({});
    }
    QString text;
    for (const auto& [file, rows] : written) {
        text += u"  %1 %2\n"_s.arg(file, -30).arg(tabelas::Counted(rows), 12);
    }
    sys::Print(stdout, text + u"\nGravado em \"%1\".\n"_s.arg(arguments.last()));
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    if (sys::AnswerUsage(arguments, u"tarvo-exportar"_s, Use)) {
        return Done;
    }
    const bool options = std::any_of(arguments.begin(), arguments.end(),
                                     [](const QString& each) { return each.startsWith(u'-'); });
    if (options || arguments.size() != 2) {
        sys::Print(stderr, Use);
        return NotDone;
    }
    try {
        Run(arguments);
        return Done;
    } catch (const Erro& erro) {
        sys::Print(stderr, u"tarvo-exportar: %1\n"_s.arg(erro.Description()));
        return NotDone;
    }
}
