#pragma once

#include "platform/dao/dao.h"

#include <QString>

#include <memory>

// Database access on behalf of several screens.

// Opens gCaminho + "Tarvo.mdb" in a new workspace. Throws what Workspace::OpenDatabase does.
void AbrirBancoDados(std::unique_ptr<dao::Workspace>& workspace, const QString& nomeWorkspace,
                     std::unique_ptr<dao::Database>& banco, bool somenteLeitura);

// Opens gWS and gDB for a run of the program. The customer in force is this run's own: what another
// computer chooses changes nothing here, and choosing writes nothing into the shared file. Update
// scripts have a connection of their own and see the file's row. Throws what AbrirBancoDados does.
void AbrirSessao();

// The same for what an update has changed in the tables behind it.
void RenovarSessao();

// Closes both and clears the references; ignores errors throughout.
void FecharBancoDados(std::unique_ptr<dao::Workspace>& workspace,
                      std::unique_ptr<dao::Database>& banco);

// The same for what has written: from then on whoever reads sees it. Lets events through.
void FecharGravado(std::unique_ptr<dao::Workspace>& workspace,
                   std::unique_ptr<dao::Database>& banco);

// The catalogue's password, thirteen characters, built anew at each call. The caller wipes it
// (platform/secret.h).
QString SenhaBancoDados();

// Takes or releases the update lock. True: taken or released. False: another computer has it, or
// it cannot be taken here; `motivo` gets the number of the error then, 3260 for another computer.
// Throws only when the catalogue cannot be opened for it.
bool BloquearBancoDados(bool bloquear, int* motivo = nullptr);

// Writes the two columns of UMREGISTRO. Both arguments are SQL expressions; an empty one leaves its
// column as it is. Lets events through. Throws the engine's errors.
void GravarUltimaVerificacao(const QString& dataHora, const QString& flagErro);

// Makes `codigo` the customer or competitor in force in this run (-5: none). An error is shown and
// passed over.
void GravarClienteConcorrente(qint32 codigo);

// Whether a result row ("COM", "JRE", "PCA", "VEI", "FPC") leads to any part. These three throw the
// engine's errors; another kind is Erro 3129.
bool CodigoEmUso(const QString& tipo, qint32 codigo);
bool PossuiFiguraDetalhada(qint32 codigoPeca);
bool PossuiListaComponentes(qint32 codigoPeca);
