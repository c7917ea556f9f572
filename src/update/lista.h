#pragma once

#include <QString>

// One file of an update, as the lists on the server name it.
struct ArquivoAtualizacao {
    QString Tipo;      // three characters: "SDB" a script, "EXE" a file to start; others: a file
    QString Nome;      // under the server's base path and under the data folder, as written
    qint32 Tamanho;    // bytes, for the progress bar only
    QString Conteudo;  // once it is there: a script's text, otherwise its temporary file's path
};

// By which two lines name the same file.
QString ChaveDaLinha(const QString& linha);  // Erro 9

// Erro 9 for a line with too few fields, 13 and 6 for a size that is no number or too large, 75 for
// a name that must not be written.
ArquivoAtualizacao LerLinhaDaLista(const QString& linha);

// Lists come over an open network. Erro 75 for a name that leads out of the data folder, by its own
// pieces or through a link, or that belongs to the open catalogue.
void ConferirNome(const QString& nome);
