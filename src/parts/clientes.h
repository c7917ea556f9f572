#pragma once

namespace forms {
class ComboList;
}

// Fills a cross-reference selector of the part views: an empty row (-5), then the vehicle makers;
// selects the one that the screen before handed over, or the empty row when it is gone.
void PreencherClientes(forms::ComboList& combo);
