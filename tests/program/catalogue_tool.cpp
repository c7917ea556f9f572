#include "platform/dao/connection.h"
#include "platform/erro.h"
#include "platform/system/paths.h"
#include "session/banco.h"
#include "session/esquema.h"

#include <QCoreApplication>

#include <cstdio>

// What the whole-program tests need of a catalogue file and a script cannot do:
//   make FILE PASSWORD   an empty catalogue with this password
//   check FILE           fails unless the file is sound in every page
//   value FILE SQL       prints the first value of a query in the engine's own SQL
//   run FILE SQL         runs a statement in it

using namespace Qt::StringLiterals;

namespace {

// For writing, so that what a killed program left behind is rolled back first, as by the next
// program that opens the file.
class Catalogue : public dao::Connection {
public:
    explicit Catalogue(const QString& path)
        : Connection(sys::ToNative(path), SenhaBancoDados().toUtf8(), Mode::ReadWrite) {}
};

void Check(const QString& path) {
    Catalogue catalogue(path);
    const QVariant structure = catalogue.Value("PRAGMA integrity_check");
    if (structure.toString() != "ok"_L1) {
        throw Erro(Erro::InternalError, structure.toString());
    }
    const QVariant firstBadPage = catalogue.Value("PRAGMA cipher_integrity_check");
    if (!firstBadPage.isNull()) {
        throw Erro(Erro::InternalError, firstBadPage.toString());
    }
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    try {
        if (arguments.size() == 3 && arguments.first() == "make"_L1) {
            CriarCatalogo(arguments.at(1), arguments.at(2));
            return 0;
        }
        if (arguments.size() == 2 && arguments.first() == "check"_L1) {
            Check(arguments.at(1));
            return 0;
        }
        if (arguments.size() == 3 && arguments.first() == "value"_L1) {
            const QVariant value = Catalogue(arguments.at(1)).Value(arguments.at(2).toUtf8());
            std::fputs(value.toString().toUtf8().constData(), stdout);
            return 0;
        }
        if (arguments.size() == 3 && arguments.first() == "run"_L1) {
            Catalogue(arguments.at(1)).Run(arguments.at(2).toUtf8());
            return 0;
        }
        std::fputs(
            "catalogue tool: make FILE PASSWORD | check FILE | value FILE SQL | run FILE SQL\n",
            stderr);
    } catch (const Erro& erro) {
        std::fprintf(stderr, "%d: %s\n", erro.Number(), erro.what());
    }
    return 1;
}
