#pragma once

#include "platform/erro.h"

#include <QString>

// What to tell the user about a failure on the way to the server: a sentence of his language, and
// in brackets the stage and the numbers by which support knows it. `servidor` is the host. A
// failure of another kind tells its own description.
QString FalhaEmPalavras(const Erro& erro, const QString& servidor);
