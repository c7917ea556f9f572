#pragma once

#include <QString>

// Files and folders. Path texts separate with the backslash; a `barraFinal` puts one at the end
// unless it is there.

// The folder of the running program.
QString CaminhoPrograma(bool barraFinal);
// The data folder, with a final backslash: the content of "Caminho.txt" beside the program, or the
// program's own folder. Erro 75 for a "Caminho.txt" that cannot be read.
QString LocalizarDados();
// A file that may not be read counts as absent.
bool ArquivoExiste(const QString& caminho);
// The whole file: UTF-8 where its bytes are valid UTF-8, otherwise Windows-1252. Erro 53, 75.
QString LerArquivo(const QString& caminho);
// Nothing happens where there is no such file. Erro 70, 75.
void ExcluirArquivo(const QString& caminho);
bool DiretorioExiste(const QString& caminho);
// Makes what is missing of the folders that `relativo` names below `base`; with `ultimoEhArquivo`
// its last piece is a file's name and left out. Erro 75, 76.
void CriarDiretorios(const QString& base, const QString& relativo, bool ultimoEhArquivo);
// A new name in the data folder: moment, volume serial, a random number, ".tmp".
QString NomeArquivoTemporario();
// Eight hexadecimal digits, "00000000" when it cannot be had.
QString SerialVolume(const QString& raiz);
// "SYSTEM": the folder of the machine-wide settings. The program's own where there is none, and for
// every other name.
QString PastaSistema(const QString& nome, bool barraFinal);
// The user's own folder of this program, made if need be and if it can be.
QString PastaDadosUsuario(bool barraFinal);
