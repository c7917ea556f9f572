#pragma once

#include "update/falhas.h"

#include <QString>

#include <chrono>

// What became of an update without a window, for a scheduler: one line, and the exit code.
struct FimSemJanela {
    Desfecho desfecho = Desfecho::Falha;
    QString linha;
};

// Checks, takes the update lock, checks again under it, installs: the window's own steps, without a
// question to anybody. Opens the catalogue of this program's data folder and closes it again; needs
// a QCoreApplication. Who reads or writes the catalogue meanwhile is waited for so long and no
// longer. Never throws.
FimSemJanela AtualizarSemJanela(std::chrono::minutes maiorEspera);

// The same for a catalogue that is open as the session's own, and stays so.
FimSemJanela AtualizarAberto(std::chrono::minutes maiorEspera);

inline constexpr std::chrono::minutes EsperaPadrao{10};
