#pragma once

#include <QString>

// The description of an error, and behind it, where that is so, that the data folder has gone away
// since the catalogue was opened, or cannot be read any more, and which it is.
QString DescreverErro(const QString& numero, const QString& descricao);

// The box of every trapped error. Puts the mouse pointer back first.
void MostrarErro(const QString& numero, const QString& descricao);
void MostrarErro(int numero, const QString& descricao);
