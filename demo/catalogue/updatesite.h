#pragma once

#include "folder.h"

namespace demo {

// Makes the folder of an update server with the versions 2 and 3 of the data folder that the order
// made: changed descriptions, a photograph, a figure for a part that had none; a new part with
// list, kits, vehicles, numbers, photograph and figure, and the wish for a restart. What is
// published has been tried on a copy of the catalogue. Throws Erro with a text for the user, also
// for a catalogue that is no longer version 1.
void MakeUpdateSite(const Order& order, const QString& site);

}  // namespace demo
