#pragma once

#include "platform/dao/errors.h"

namespace verificar {

// Runs a check that reads named tables. Where one of them or a column is missing it is left out:
// CheckStructure tells of that. Any other failure rises.
void UnlessMissing(auto check) {
    try {
        check();
    } catch (const Erro& erro) {
        if (erro.Number() != int(dao::Failure::UnknownTable) &&
            erro.Number() != int(dao::Failure::UnknownColumn)) {
            throw;
        }
    }
}

}  // namespace verificar
