#include "support/peer.h"

#include "session/arquivos.h"
#include "session/banco.h"
#include "session/global.h"
#include "support/quickkeys.h"

#include <QTextStream>

namespace {

QString Do(const QString& command, const QString& rest, QTextStream& out) {
    static std::unique_ptr<dao::Recordset> held;
    if (command == "open"_L1) {
        AbrirSessao();
    } else if (command == "lock"_L1) {
        return QString::number(BloquearBancoDados(rest == "True"_L1));
    } else if (command == "value"_L1) {
        return gDB->OpenRecordset(rest)->Fields(0).Value().toString();
    } else if (command == "hold"_L1) {
        held = gDB->OpenRecordset(rest);
    } else {
        gDB->Execute(rest, dao::dbFailOnError);
        while (command == "loop"_L1) {
            out << "0\n" << Qt::flush;
            gDB->Execute(rest, dao::dbFailOnError);
        }
    }
    return u"0"_s;
}

}  // namespace

int PlayPeer(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    QTextStream in(stdin);
    QTextStream out(stdout);
    if (argc < 2) {
        out << LocalizarDados();
        return 0;
    }
    gCaminho = application.arguments().at(1) + u'\\';
    UseQuickKeys();
    for (QString line = u"open"_s; !line.isNull(); line = in.readLine()) {
        QString answer;
        const int error =
            ErrorOf([&] { answer = Do(line.section(u' ', 0, 0), line.section(u' ', 1), out); });
        out << (error == 0 ? answer : u"erro %1"_s.arg(error)) << '\n' << Qt::flush;
    }
    FecharBancoDados(gWS, gDB);
    return 0;
}
