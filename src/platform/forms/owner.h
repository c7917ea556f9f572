#pragma once

class QWidget;

namespace forms {

// Ties a dialog to the active screen without making it that screen's child: it stays above it,
// centred over it, and does not die with it. Call before it is shown, with its size set.
void PlaceOverActiveForm(QWidget& dialog);

}  // namespace forms
