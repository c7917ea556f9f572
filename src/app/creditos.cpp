#include "app/creditos.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

frmCreditos::frmCreditos() : TelaDePassagem(u"frmCreditos"_s, u"creditos"_s) {
    LigarRelogio();
}

void frmCreditos::Unloading() {
    DesligarRelogio();
    QCoreApplication::exit(0);
}
