#pragma once

#include "platform/dao/errors.h"

namespace verificar {

// Runs a check that reads named tables. Where one of them or a column is missing and CheckStructure
// has told so (`whole` is false) it is left out. Any other failure rises.
void UnlessMissing(bool whole, auto check) {
    try {
        check();
    } catch (const Erro& erro) {
        const bool missing = erro.Number() == int(dao::Failure::UnknownTable) ||
                             erro.Number() == int(dao::Failure::UnknownColumn);
        if (whole || !missing) {
            throw;
        }
    }
}

}  // namespace verificar
