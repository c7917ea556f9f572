#pragma once

#include <QString>

// Starts a program and returns at its end; the window lives on meanwhile. Erro 5, 53, 70.
void ExecutarEAguardar(const QString& comando, qint16 estiloJanela);
