#pragma once

#include "platform/erro.h"

#include <QString>

// What to tell the user about a failure on the way to the server: a sentence of his language, and
// in brackets the stage and the numbers by which support knows it. `servidor` is the host. A
// failure of another kind tells its own description.
QString FalhaEmPalavras(const Erro& erro, const QString& servidor);

// How an update without a window, and the question for one, end: the program's exit code.
// Documented for schedulers, so a number keeps its meaning.
enum class Desfecho : int {
    NadaDeNovo = 0,
    Falha = 1,
    UsoErrado = 2,
    Atualizado = 3,
    OutroComputador = 4,  // it is updating the catalogue
    SemTravas = 5,        // locks in the data folder keep no other computer out
    SemServidor = 6,      // not reached, or in trouble itself: later it may work
    ProxyPedeSenha = 7,
};

// What a failure on the way to the server, or of another kind, comes to.
Desfecho DesfechoDaFalha(const Erro& erro);
