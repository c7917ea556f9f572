#pragma once

#include "leitor/output.h"

// Sends the tables of the file or, with a table's number, its rows. What fails is sent as a
// failure; false then.
bool Read(const char* path, int table, Output& output);
