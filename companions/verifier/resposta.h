#pragma once

#include "update/falhas.h"

#include <QString>
#include <QStringList>

#include <optional>

// What the catalogue asks its verifier for.
struct Pedido {
    bool automatica = false;  // nobody may be asked for anything
    QString arquivo;          // where the answer goes, a path text
};

// Reads "1|<path>" or "0|<path>". The path is not quoted, so a system that splits command lines at
// blanks hands it over in pieces. Nothing when it is no such request.
std::optional<Pedido> LerPedido(const QStringList& argumentos);

// The text of an answer: "1", the local version, "|", the server's; where the publisher's keys are
// known also "|" and the day on which he signed that number, as "2026-11-22"; or "0" and what went
// wrong, in words for the user.
struct Resposta {
    QString texto;
    Desfecho desfecho = Desfecho::NadaDeNovo;  // this program's exit code
};

// Asks the catalogue for its version and the server for the newest one. Expects gCaminho. Never
// throws.
Resposta Verificar(bool podePerguntar);

// The answer that nothing came of it, and why.
Resposta RespostaDeFalha(const QString& motivo, Desfecho desfecho = Desfecho::Falha);

// Puts the answer where it was asked for, as a whole. A path whose folder is not there lost blanks
// on its way; the file lies in the data folder in any case.
void Responder(const QString& arquivo, const QString& texto);

// Takes away an answer that nobody waits for any more.
void ExcluirResposta(const QString& arquivo);

// Takes away what a check that was cut short has downloaded so far.
void ExcluirBaixado();
