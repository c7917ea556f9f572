#pragma once

#include <QString>

#include <optional>

// Stored form of an item number: the number right-aligned in four characters, and a letter, where
// there is one, in lower case as a fifth, so that plain text order is number order. A text without
// a number counts as 0. Throws Erro 5 for a number of five or more digits.
QString FormatarItem(const QString& texto);

// The search criterion for an item, as stored.
QString CriterioDoItem(QString item);

// A field of a selection string: the value between "X:" and ":X". The letter is J for a kit's code,
// I for an item as stored, C for a component's code.
QString CampoDeSelecao(QChar letra, const QString& valor);

// The value of that field in a selection string; nothing when the string does not have the field.
// Places in the string are held in 8 bits: Erro 6 for a marker beyond the 255th character. Erro 5
// for a field that is not closed behind its opening.
std::optional<QString> LerCampoDeSelecao(const QString& selecao, QChar letra);
