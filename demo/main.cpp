#include "folder.h"
#include "options.h"
#include "platform/erro.h"
#include "platform/system/usage.h"

#include <QElapsedTimer>
#include <QGuiApplication>

using namespace Qt::StringLiterals;

namespace {

constexpr int Failed = 1;
constexpr int WrongUse = 2;

int Make(const demo::Order& order) {
    QElapsedTimer timer;
    timer.start();
    try {
        demo::MakeDataFolder(order);
    } catch (const Erro& erro) {
        sys::Print(stderr, u"tarvo-demo: %1\n"_s.arg(erro.Description()));
        return Failed;
    }
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
    return 0;
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
