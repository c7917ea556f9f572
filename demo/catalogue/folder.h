#pragma once

#include "assortment.h"
#include "photographs.h"

#include <QString>

namespace demo {

struct Order {
    QString folder;  // in the platform's form; made if it is missing
    Sizes sizes;
    quint64 seed = 1;
    bool overwrite = false;
    Pictures pictures = Pictures::All;
    QString updateSite;  // folder for an update server; empty: none
};

// Makes a data folder: catalogue, picture folders, help. All of it is made aside first, so that
// the folder never holds half a catalogue. Throws Erro with a text for the user.
void MakeDataFolder(const Order& order);

// Whether the order's folder has a catalogue.
bool HasCatalogue(const Order& order);

}  // namespace demo
