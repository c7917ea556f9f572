#pragma once

#include "leitor/output.h"

#include <mdbtools.h>

// Sends one value of the row that stands in the file's page buffer. False when it is damaged.
bool SendValue(MdbHandle* file, const MdbColumn& column, const MdbField& field, Output& output);
