#pragma once

#include "platform/erro.h"

// Runs `trabalho`. An Erro that comes out of it tells what it is about: the text of `onde()`, a
// file's name or a line's place, in brackets behind its description.
template <typename Onde, typename Trabalho>
auto DizendoOnde(Onde onde, Trabalho trabalho) {
    try {
        return trabalho();
    } catch (const Erro& erro) {
        throw Erro(erro.Number(), erro.Description() + QStringLiteral(" (") + onde() + u')');
    }
}
