#pragma once

namespace forms {
class BoundGrid;
class DataSource;
}  // namespace forms

// The first step of every row change in a grid of the part views. A grid that has come to show a
// single one of several rows is filled anew, with the rows up to the current one in view. True: it
// was, and the row change has been dealt with.
bool MostrarVizinhas(forms::BoundGrid& grade, const forms::DataSource& fonte);
