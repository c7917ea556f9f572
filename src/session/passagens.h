#pragma once

#include <QString>

namespace forms {
class Form;
}

// What one screen may ask of another: screens know no screen but themselves. Where `de` is given,
// it is the screen that the user leaves; the next one is shown before it goes, so that the program
// is never without a window. That lets events through, and the user may close either of them
// meanwhile: the caller touches nothing of its screen afterwards unless it asks forms::StillLoaded.

// --- the road forward; `de` stays loaded, hidden

// A new search screen in gFrmPesquisa, on the open catalogue.
void AbrirPesquisa();
// The parts behind a row that was found: kind in three characters, code in six, the title behind.
void AbrirResultado(forms::Form& de, const QString& referencia);
// The component list of the part in gCodigoPeca.
void AbrirLista(forms::Form& de);
// The same, with the cursor on an item, as stored.
void AbrirListaNoItem(forms::Form& de, const QString& item);
// The figure of the part in gCodigoPeca; it lets the numbers of the selection string blink.
void AbrirFigura(forms::Form& de, const QString& selecao);

// --- the ways back; `de` is unloaded. A part's component list and its figure live side by side:
// whichever of them is left takes the other one along.

// To the parts that were found.
void VoltarAoResultado(forms::Form& de);
// To the search; the parts go as well.
void VoltarAPesquisa(forms::Form& de);

// --- beside the screen

// The print dialog, modal; `selecao` holds its first ticks, "FD:1LC:0" or "FD:0LC:1".
void AbrirImpressao(const QString& selecao);
// Whether a page is being printed: the dialog must stay until its end.
bool ImpressaoEmAndamento();
void AbrirConfiguracoes();
void AbrirTour();
void AbrirAjuda();
// Unloads what may stand open over the search screen: print dialog, tour, settings.
void FecharTelasSecundarias();

// --- the end of a run and its new beginnings

// Stands in the Tag of a form that a reload is about to unload: its unload leaves the session
// alone.
inline const QString Recarregando = QStringLiteral("<RECARREGANDO>");
// Puts a new search screen in the place of all that is loaded; then tells `mensagem`, unless it is
// empty.
void RecarregarFormularios(const QString& mensagem);
// Ends this process; the launcher waits for that and starts the catalogue again.
[[noreturn]] void SairPeloLancador();
// The last screen of a run; its unload ends the process.
void MostrarCreditos();
