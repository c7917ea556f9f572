#pragma once

#include "publicar/release.h"
#include "update/comando.h"

namespace publicar {

// One line of a script that does something, as an installer understands it.
struct Line {
    QString script;
    int number = 0;  // from 1
    ComandoAtualizacao command;
};

// Where the line stands, for the user.
QString PlaceOf(const Line& line);

// Reads all scripts as one installation does, with one template in force from script to script, and
// finds what would be read otherwise than it looks.
std::vector<Line> ReadLines(const Order& order, const std::vector<File>& files,
                            QList<Finding>& findings);

}  // namespace publicar
