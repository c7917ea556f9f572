#pragma once

#include "publicar/release.h"

namespace publicar {

// All that can be said about the new version before anybody gets it.
QList<Finding> Check(const Order& order, const std::vector<File>& files);

// Puts the files, the list and at last "Versao.txt" into the site: whoever learns of the version
// finds all of it. Throws Erro; the newest version is then what it was.
void Publish(const Order& order, std::vector<File> files);

}  // namespace publicar
