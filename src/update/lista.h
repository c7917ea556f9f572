#pragma once

#include <QHash>
#include <QString>

#include <vector>

// One file of an update, as the lists on the server name it.
struct ArquivoAtualizacao {
    QString Tipo;        // three characters: "SDB" a script, "EXE" a file to start; others: a file
    QString Nome;        // under the server's base path and under the data folder, as written
    qint32 Tamanho = 0;  // bytes, for the progress bar
    QString Conteudo;    // once it is there: a script's text, otherwise its temporary file's path
    QByteArray
        Sha256{};      // of the content, raw; empty: the lists tell none, and nothing is compared
    qint64 Bytes = 0;  // with Sha256: the content has exactly so many
};

// The files of all lists of an update. Of two lines that name the same file the first one counts,
// with its type and its place in the order. But what lies under a name on the server is its present
// content, and so the SHA-256 is that of the last line.
class ListasDaAtualizacao {
public:
    // Lists in ascending order. `nome` is the list's, for errors: each Erro tells list and line.
    // Erro 9 for a line with too few fields, 13 and 6 for a size that is no number or too large, 13
    // for a SHA-256 that is none, 75 for a name that must not be written; -110 for a line without
    // SHA-256 where `exigeSha256`.
    void Ler(const QString& nome, const QString& texto, bool exigeSha256);

    std::vector<ArquivoAtualizacao> arquivos;
    qint32 TotalBytes = 0;

private:
    void LerLinha(const QString& linha, bool exigeSha256);
    QHash<QString, std::size_t> lugares_;  // of the files named so far, by their key
};

// Lists come over an open network. Erro 75 for a name that leads out of the data folder, by its own
// pieces or through a link, that not every system can give a file, or that belongs to the open
// catalogue. The picture folders themselves
// may be links: whoever looks after the computers has put the pictures where there is room for
// them.
void ConferirNome(const QString& nome);
