#pragma once

// Gives the controls and message boxes the colours and type sizes of the painted screens. To be
// called once, after the application object and before the first screen.
void AplicarTema();
