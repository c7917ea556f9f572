#pragma once

#include "tabelas/progress.h"

#include <QString>

namespace importar {

// Copies what lies beside the rows and belongs to a catalogue: "FotoPeca", "Figuras", the help and
// its folder of pictures, found without regard to case. Makes the two picture folders in any case.
// Returns how many files were copied. Erro 61, 75.
qint64 BringPictures(const QString& from, const QString& to, tabelas::Progress& progress);

void MakePictureFolders(const QString& to);

// Whether there is any picture folder.
bool HasPictures(const QString& folder);

}  // namespace importar
