#pragma once

#include "support/test.h"

// The data folder of a user of its own, for the life of the object.
class PastaDoUsuario {
public:
    PastaDoUsuario() : anterior_(qgetenv(UserData)) { qputenv(UserData, pasta_.path().toUtf8()); }
    ~PastaDoUsuario() { qputenv(UserData, anterior_); }

    QString Caminho(const AnyText& nome) const { return pasta_.filePath(nome); }
    QString Configuracao() const { return Caminho("Ordavia/CatalogoTarvoConfig.txt"); }

private:
    QTemporaryDir pasta_;
    QByteArray anterior_;
};
