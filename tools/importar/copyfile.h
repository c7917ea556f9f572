#pragma once

#include <QString>

namespace importar {

// Copies a file to a name that nothing has yet. Throws Erro 75, which names `from`, when it cannot
// be read to its end, and what sys::Output throws when the copy cannot be written; what was written
// stays.
void CopyFile(const QString& from, const QString& to);

}  // namespace importar
