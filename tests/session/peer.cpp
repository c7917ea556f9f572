// Another computer that shares the catalogue: a process that does what it is told, line by line,
// and answers each line with one. Started with the data folder; without one it prints where it
// would look for it.
#include "platform/erro.h"
#include "session/arquivos.h"
#include "session/banco.h"
#include "session/global.h"
#include "support/quickkeys.h"

#include <QCoreApplication>
#include <QFile>
#include <QTextStream>

namespace {

QString Do(const QString& command, const QString& rest, QTextStream& out) {
    if (command == QLatin1String("lock")) {
        return QString::number(BloquearBancoDados(rest == QLatin1String("True")));
    }
    if (command == QLatin1String("value")) {
        return gDB->OpenRecordset(rest)->Fields(0).Value().toString();
    }
    // Begins to read and does not come to the end.
    if (command == QLatin1String("hold")) {
        static std::unique_ptr<dao::Recordset> held;
        held = gDB->OpenRecordset(rest);
        return QStringLiteral("0");
    }
    do {
        gDB->Execute(rest, dao::dbFailOnError);
        if (command == QLatin1String("loop")) {
            out << "0\n" << Qt::flush;
        }
    } while (command == QLatin1String("loop"));  // until somebody ends the process
    return QStringLiteral("0");
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    QTextStream in(stdin);
    QTextStream out(stdout);
    if (argc < 2) {
        out << LocalizarDados();
        return 0;
    }
    gCaminho = application.arguments().at(1) + u'\\';
    testing_support::UseQuickKeys();
    QString line = QStringLiteral("open");
    while (!line.isNull()) {
        QString answer = QStringLiteral("0");
        try {
            if (line == QLatin1String("open")) {
                AbrirSessao();
            } else {
                answer = Do(line.section(u' ', 0, 0), line.section(u' ', 1), out);
            }
        } catch (const Erro& erro) {
            answer = QLatin1String("erro ") + QString::number(erro.Number());
        }
        out << answer << '\n' << Qt::flush;
        line = in.readLine();
    }
    FecharBancoDados(gWS, gDB);
}
