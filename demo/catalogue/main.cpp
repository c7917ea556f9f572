#include "folder.h"
#include "options.h"
#include "platform/erro.h"
#include "platform/system/usage.h"
#include "updatesite.h"

#include <QElapsedTimer>
#include <QGuiApplication>

using namespace Qt::StringLiterals;

namespace {

constexpr int Failed = 1;
constexpr int WrongUse = 2;

void MakeCatalogue(const demo::Order& order) {
    QElapsedTimer timer;
    timer.start();
    demo::MakeDataFolder(order);
    const demo::Sizes& sizes = order.sizes;
    sys::Print(stdout,
               u"Catálogo criado em \"%1\" (%2 s): %3 peças, %4 componentes, %5 jogos de reparo, "
               "%6 veículos, %7 referências cruzadas.\n"_s.arg(order.folder)
                   .arg(static_cast<double>(timer.elapsed()) / 1000, 0, 'f', 1)
                   .arg(sizes.parts)
                   .arg(sizes.components)
                   .arg(sizes.kits)
                   .arg(sizes.vehicles)
                   .arg(sizes.crossReferences));
}

int Make(const demo::Order& order) {
    try {
        if (order.updateSite.isEmpty() || order.overwrite || !demo::HasCatalogue(order)) {
            MakeCatalogue(order);
        }
        if (!order.updateSite.isEmpty()) {
            demo::MakeUpdateSite(order, order.updateSite);
            sys::Print(stdout,
                       u"Servidor de atualizações criado em \"%1\", com as versões 2 e 3.\n"_s.arg(
                           order.updateSite));
        }
        return 0;
    } catch (const Erro& erro) {
        sys::Print(stderr, u"tarvo-demo: %1\n"_s.arg(erro.Description()));
        return Failed;
    }
}

}  // namespace

int main(int argc, char** argv) {
    // Text in pictures needs an application with fonts, but no screen.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QGuiApplication application(argc, argv);
    const auto read = demo::ReadOptions(QCoreApplication::arguments().mid(1));
    if (const auto* show = std::get_if<demo::ShowText>(&read)) {
        sys::Print(stdout, show->text);
        return 0;
    }
    if (const auto* complaint = std::get_if<demo::Complaint>(&read)) {
        sys::Print(stderr,
                   u"tarvo-demo: %1\nUse --help para ver as opções.\n"_s.arg(complaint->text));
        return WrongUse;
    }
    return Make(std::get<demo::Order>(read));
}
