#pragma once

#include <QString>

namespace demo {

// Draws the five pages of the tour of the maker, "CK01.bmp" to "CK05.bmp", into the folder. The
// pages stand in demo/tour; what they show of parts is rendered. Needs a QGuiApplication, for the
// text. Throws Erro when a file cannot be written.
void DrawTour(const QString& folder);

}  // namespace demo
