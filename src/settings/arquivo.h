#pragma once

#include <QString>

// The user's settings: "CatalogoTarvoConfig.txt" in the user's own data folder, readable by the
// user alone. One line of three fields between "|": "1" for the automatic update check, proxy user
// and proxy password (both enciphered). A file that cannot be understood repairs itself in silence.

// `Chave` "VERIFICACAOAUTOMATICA" sets VerificacaoAutomatica, "USUARIO_SENHA" the two texts, which
// the caller wipes after use. Makes the file when there is none, out of the machine-wide one if
// that exists. An Erro of reading the file comes through, as when it could not be made.
void LerConfiguracao(const QString& Chave, QString& Usuario, QString& Senha);

// An empty `Verificacao` leaves the first field as it is; `Usuario` and `Senha` count only with
// `GravarCredenciais`. A file with too few fields goes back to the defaults. Never fails: what
// cannot be written stays as it was.
void GravarConfiguracao(const QString& Verificacao, const QString& Usuario, const QString& Senha,
                        bool GravarCredenciais);
