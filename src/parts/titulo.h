#pragma once

#include <QString>

// The line that names the part in gCodigoPeca, with so many blanks in front of its number. Empty
// when the catalogue does not have the part.
QString TituloDaPeca(qsizetype brancos);
