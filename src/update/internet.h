#pragma once

#include <QString>

#include <chrono>
#include <functional>

// The update's way to its server: one connection to one host, one request after the other, each
// into a file or a text. It gets through a proxy that asks for user and password, and turns every
// failure into one error whose text says at which stage it happened: the stage, ":", the code of
// the last call (platform/system/http.h), ";", the inner number, ";", the inner text. Window events
// are let through while a request waits, after its blocks and between two tries.
//
// One connection at a time. Nothing guards against a second caller: the only one runs under the
// update lock.

// What a request that is cut short says, and what an update does that is.
enum NumeroDoCorte : int { TextoDemais = 14, Interrompido = 18 };

// Called for each block of a body. An Erro that it throws ends the request.
using ProgressoDownload = std::function<void(qint32 Bytes)>;

void HttpConectar(const QString& Servidor);  // a host name; Erro -100
void HttpDesconectar();                      // also when nothing is open

// Fetches `Caminho`, a path without the leading "/", and returns the body's text (`RetornarTexto`)
// or the path of the file that holds the body. `Modo` is "D" for a download; every other one is an
// upload and refused. `ArquivoTemporario` is deleted first and written anew; empty: a new temporary
// name. `ExibirDialogos` lets the user be asked for what a proxy wants; `Usuario` and `Senha` are
// tried before, or what the user has typed in this update already. Erro -104 with the composite
// text. A file that a failure leaves behind half-written stays, unless the disk is full.
QString HttpExecutar(const QString& Modo, bool ExibirDialogos, const QString& Caminho,
                     bool RetornarTexto, const QString& ArquivoTemporario,
                     const QString& EnvioCampo, const QString& EnvioArquivo, const QString& Usuario,
                     const QString& Senha,
                     const ProgressoDownload& AtualizarProgressoDownload = {});

// There is no upload: Erro -107, always.
[[noreturn]] void BodyPostFileUpload(const QString& EnvioCampo, const QString& EnvioArquivo);

// The user has had enough: the request under way, and every further one of this connection, fails.
void HttpInterromper();

// The longest text that may come, bytes; a server that never ends one fails with 14.
void DefinirMaiorTexto(qint64 maximo);

// The longest wait for a connection, for the sending and for bytes: 60 s, less in tests.
void DefinirTempoLimite(std::chrono::milliseconds limite);
