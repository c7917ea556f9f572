#include "platform/erro.h"
#include "platform/system/usage.h"
#include "verificar/check.h"
#include "verificar/network.h"
#include "verificar/report.h"

#include <QCoreApplication>
#include <QDir>

#include <functional>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

enum Outcome { Sound = 0, Faulty = 1, NotChecked = 2 };

const QString Use =
    u"Uso: tarvo-verificar <pasta> [opções]\n"
    "     tarvo-verificar --rede <pasta>\n"
    "\n"
    "Confere uma pasta de dados do Catálogo TARVO-LINDEN: o arquivo Tarvo.mdb, as\n"
    "figuras e as fotos. Nada é alterado. Com --rede, diz se a pasta pode ser usada por\n"
    "vários computadores: se as travas de arquivo valem, quanto custa a primeira\n"
    "pesquisa, se o que se grava chega ao disco.\n"
    "\n"
    "  --examples n   exemplos mostrados de cada caso (padrão: 5)\n"
    "  --full         compara também cada índice com a sua tabela (demora mais)\n"
    "  --version      mostra a versão\n"
    "  --help         mostra esta ajuda\n"
    "\n"
    "Código de saída: 0 sem erros, 1 com erros, 2 quando não foi possível conferir.\n"_s;

QString AbsoluteFolder(const QString& folder) {
    return QDir::cleanPath(QDir(folder).absolutePath());
}

int CheckNetwork(const QString& folder) {
    const auto network = verificar::CheckNetwork(folder, QCoreApplication::applicationFilePath());
    sys::Print(stdout, verificar::Report(folder, network));
    return network.faults.isEmpty() ? Sound : Faulty;
}

int CheckRows(const verificar::Order& order) {
    const auto findings = verificar::Check(order);
    sys::Print(stdout, verificar::Report(order.folder, findings));
    return verificar::HasFault(findings) ? Faulty : Sound;
}

int Trapping(const std::function<int()>& check) {
    try {
        return check();
    } catch (const Erro& erro) {
        sys::Print(stderr, u"tarvo-verificar: %1\n"_s.arg(erro.Description()));
        return NotChecked;
    }
}

std::optional<verificar::Order> ReadOrder(QStringList arguments) {
    verificar::Order order;
    if (const qsizetype at = arguments.indexOf(u"--examples"_s); at >= 0) {
        bool number = false;
        order.examples = arguments.value(at + 1).toInt(&number);
        if (!number || order.examples < 0) {
            return std::nullopt;
        }
        arguments.remove(at, 2);
    }
    order.full = arguments.removeAll(u"--full"_s) > 0;
    if (arguments.size() != 1 || arguments.first().startsWith(u'-')) {
        return std::nullopt;
    }
    order.folder = AbsoluteFolder(arguments.first());
    return order;
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    if (sys::AnswerUsage(arguments, u"tarvo-verificar"_s, Use)) {
        return Sound;
    }
    if (arguments.size() == 2 && arguments.first() == verificar::OtherSide) {
        verificar::PlayOther(arguments.last());
        return Sound;
    }
    if (arguments.size() == 2 && arguments.first() == "--rede"_L1) {
        return Trapping([&] { return CheckNetwork(AbsoluteFolder(arguments.last())); });
    }
    const auto order = ReadOrder(arguments);
    if (!order) {
        sys::Print(stderr, Use);
        return NotChecked;
    }
    return Trapping([&] { return CheckRows(*order); });
}
