// Plays the other program of the locks' trial, with the tests' quick keys.

#include "support/quickkeys.h"
#include "verificar/network.h"

#include <QCoreApplication>

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    testing_support::UseQuickKeys();
    verificar::PlayOther(application.arguments().at(2));
}
