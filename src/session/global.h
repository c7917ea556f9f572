#pragma once

#include "platform/dao/dao.h"

#include <QString>

#include <memory>

class frmPesquisa;

// State of the session that all screens share; each has one meaning for the whole run.

// The title of all screens and boxes.
inline const QString TituloCatalogo = QStringLiteral("Catálogo TARVO-LINDEN");
// Names the machine-wide folder of settings and the menu entry.
inline const QString NomeDoPrograma = QStringLiteral("tarvo-catalogo");
// The word on the command line by which the launcher starts the catalogue.
inline const QString PalavraDeInicio = QStringLiteral("INICIOPAINELVERDE");

// Why locks in the data folder keep no other computer out, found out at the start; empty where they
// do, as far as can be told. The catalogue then updates nothing.
extern QString gFaltaDeTravas;

// The customer code that stands for none.
inline constexpr qint32 SemCliente = -5;

// Open from the splash's load to the exit.
extern std::unique_ptr<dao::Workspace> gWS;
extern std::unique_ptr<dao::Database> gDB;

extern QString gCaminho;            // the data folder, always ending in a backslash
extern QString TextoEmissao;        // emission line of the catalogue
extern bool VerificacaoAutomatica;  // whether the update check may run by itself
extern frmPesquisa* gFrmPesquisa;   // the running search screen
extern qint32 gCodigoPeca;          // the part whose views are open
extern qint32
    gCodigoClienteConcorrente;       // carried from one screen's selector to the next; -5: none
extern QString ParametroFormulario;  // one-shot parameter to the next screen
extern bool ReiniciarPrograma;       // an update asked for a relaunch through the launcher
