#pragma once

#include "importar/load.h"
#include "verificar/finding.h"

namespace importar {

struct Order {
    QString from;        // an old .mdb file or a folder of CSV files
    QString folder;      // the new data folder; empty with `check`
    bool check = false;  // writes nothing
    bool allOrNothing = false;
    bool pictures = true;  // brings along the pictures and the help that lie beside the source
    QString refused = {};  // the file of refused rows; empty: its usual place
    int examples = 5;
    std::chrono::milliseconds patience{60'000};  // with a reader of .mdb files that says nothing
};

struct Outcome {
    bool made = false;  // the new folder is there
    LoadResult loaded;
    QStringList remarks;
    qint64 refused = 0;
    QStringList refusedExamples;
    QString refusedFile;  // empty: none was written
    qint64 pictures = 0;  // copied
    QList<verificar::Finding> findings;

    bool Whole() const { return made && refused == 0 && !verificar::HasFault(findings); }
};

// Makes a data folder from what people have. The folder is there as a whole or not at all. Throws
// Erro with words for the user where nothing could be made.
Outcome Import(const Order& order, tabelas::Progress& progress);

// What the program prints at the end.
QString Report(const Order& order, const Outcome& outcome);

// Empty CSV files into a new folder: headings, and below each a line that explains it.
void WriteModels(const QString& folder);

}  // namespace importar
