#pragma once

#include <QString>

// The box of every trapped error. Puts the mouse pointer back first.
void MostrarErro(const QString& numero, const QString& descricao);
void MostrarErro(int numero, const QString& descricao);
