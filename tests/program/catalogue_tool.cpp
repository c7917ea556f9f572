#include "platform/dao/connection.h"
#include "platform/erro.h"
#include "platform/system/paths.h"
#include "session/banco.h"
#include "session/esquema.h"

#include <QCoreApplication>

#include <cstdio>

// What the whole-program tests need of a catalogue file and a script cannot do:
//   make FILE PASSWORD   an empty catalogue with this password
//   run FILE SQL         runs a statement in the engine's own SQL, and prints its first value. For
//                        writing, so that what a killed program left behind is rolled back first,
//                        as by the next program that opens the file
int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QString task = application.arguments().at(1);
    const QString path = application.arguments().at(2);
    const QString text = application.arguments().at(3);
    try {
        if (task == QLatin1String("make")) {
            CriarCatalogo(path, text);
        } else {
            using dao::Connection;
            Connection catalogue(sys::ToNative(path), SenhaBancoDados().toUtf8(),
                                 Connection::Mode::ReadWrite);
            std::puts(catalogue.Value(text.toUtf8()).toByteArray().constData());
        }
        return 0;
    } catch (const Erro& erro) {
        std::fprintf(stderr, "%d: %s\n", erro.Number(), erro.what());
        return 1;
    }
}
