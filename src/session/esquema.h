#pragma once

#include <QString>

// Creates an empty catalogue file (path text of the system) with its password: all tables, indexes
// and views, the one row of CODIGOCLIENTECONCORRENTE (-5), of UMREGISTRO (version 1, no check yet)
// and, in the companion file, of CONTROLETRAN. Throws Erro 3012 when the file is there already,
// 3044 when its folder is not.
void CriarCatalogo(const QString& caminho, const QString& senha);
