#pragma once

namespace forms {
class Form;
}

// The ways back out of the part views. A part's component list and its figure live side by side:
// whichever of them is left, `tela`, takes the other one along. The caller touches nothing of its
// screen afterwards.

// To the parts that were found.
void VoltarAoResultado(forms::Form& tela);

// To the search; the parts go as well.
void VoltarAPesquisa(forms::Form& tela);
