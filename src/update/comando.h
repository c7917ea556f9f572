#pragma once

#include <QString>

// What one line of an update script asks for.
struct ComandoAtualizacao {
    enum class Tipo { Nada, Sql, Programa, Reinicio };
    Tipo tipo = Tipo::Nada;
    QString texto;  // the statement or the command line
};

// Reads a line, which has no line end. `ComandoBase` is the template in force, "" at the start: a
// "B:" line sets it, a line of data fills a copy of it.
//
// Values go in from the last one down, each at the first place of its number and a question mark,
// so that "1?" is not found inside "11?". A value may hold such a place itself and catches what
// comes after it; scripts know that.
ComandoAtualizacao LerComandoAtualizacao(QString& ComandoBase, const QString& Linha);
