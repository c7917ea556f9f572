#pragma once

#include <QString>

// Where updates come from.
struct EnderecoServidor {
    QString servidor;     // the host's name
    QString caminhoBase;  // without the leading "/"; empty or with one at its end
};

// Reads a base address such as "http://host/path", the scheme and the last "/" of which may be left
// out.
EnderecoServidor LerEndereco(const QString& endereco);

// The same of the address in the open catalogue. Throws the engine's errors.
EnderecoServidor EnderecoDoCatalogo();
