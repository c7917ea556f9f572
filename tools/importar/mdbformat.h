#pragma once

#include <QString>

namespace importar {

// Whether a file can be an old catalogue, by its beginning and its size. Throws Erro with words
// that tell what else it is: a catalogue of today, a newer format, something enciphered, cut short.
void CheckFormat(const QString& path);

// The file that the old engine keeps beside one that is open; empty: there is none.
QString LockFileOf(const QString& path);

}  // namespace importar
