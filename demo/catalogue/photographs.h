#pragma once

#include "render/parameters.h"

#include <QImage>
#include <QString>

#include <functional>

namespace demo {

class Assortment;
struct PartModel;

// The pictures that a data folder gets.
enum class Pictures : quint8 { None, Small, All };

// Draws and writes the photographs of all looks of the assortment and one a family for the gallery,
// on all processors. The same assortment gives the same pictures. Throws Erro when a file cannot be
// written.
void DrawPhotos(const Assortment& assortment, const QString& folder, Pictures pictures);

// What the model makes of the part's text.
render::Parameters ParametersOf(const Assortment& assortment, const PartModel& model);

// Runs draw(0) to draw(count - 1) on all processors. The first failure, in their order, is thrown.
void DrawAll(size_t count, const std::function<void(size_t)>& draw);

// Throws Erro when it cannot.
void SavePicture(const QImage& picture, const QString& path, int quality = -1);

}  // namespace demo
