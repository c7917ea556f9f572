#pragma once

#include <QString>

// Texts that are never written down in clear, such as the proxy's user and password.

// The pass phrase, 26 characters, built anew at each call out of the catalogue's password. The
// caller wipes it.
QString FraseCifra();

// With `Cifrar` the stored form of a clear text, upper-case hexadecimal digits in multiples of 64;
// without it the clear text of a stored form, which the caller wipes. Empty stays empty. The same
// text always has the same stored form. A stored form that is refused gives the empty text or an
// error: 9 for an odd number of digits or an impossible length inside, 13 for what is no digit.
QString CifrarTexto(const QString& Texto, bool Cifrar);
