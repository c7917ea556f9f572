#pragma once

#include <QString>

// Stored form of an item number: the number right-aligned in four characters, and a letter, where
// there is one, in lower case as a fifth, so that plain text order is number order. A text without
// a number counts as 0. Throws Erro 5 for a number of five or more digits.
QString FormatarItem(const QString& texto);

// A field of a selection string: the value between "X:" and ":X". The letter is J for a kit's code,
// I for an item as stored, C for a component's code.
QString CampoDeSelecao(QChar letra, const QString& valor);
