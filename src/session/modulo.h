#pragma once

#include "platform/forms/controls.h"
#include "platform/forms/form.h"

#include <QString>

// Small routines that several screens share. Path texts separate with the backslash; a
// `barraFinal` puts one at the end unless it is there.

// --- start (inicio.cpp)

// The folder of the running program.
QString CaminhoPrograma(bool barraFinal);
// The data folder, with a final backslash: the content of "Caminho.txt" beside the program, or the
// program's own folder. Erro 75 for a "Caminho.txt" that cannot be read.
QString LocalizarDados();
// A file that may not be read counts as absent.
bool ArquivoExiste(const QString& caminho);
// The whole file: UTF-8 where its bytes are valid UTF-8, otherwise Windows-1252. Erro 53, 75.
QString LerArquivo(const QString& caminho);
// The box of every trapped error. Puts the mouse pointer back first.
void MostrarErro(const QString& numero, const QString& descricao);
void MostrarErro(int numero, const QString& descricao);
// Puts a new search screen in the place of all that is loaded, on the open database; then tells
// `mensagem`, unless it is empty. (sessao.cpp)
void RecarregarFormularios(const QString& mensagem);

// --- numbers (numeros.cpp)

// Its letters A to Z, made upper-case, and its digits; everything else goes.
QString SomenteAlfanumericos(const QString& texto);
QString RemoverZerosEsquerda(const QString& texto);
// The stored form of one of the maker's numbers: both of the above, and without a first digit that
// a letter follows.
QString NormalizarNumero(const QString& texto);

// --- combo lists and forms (formularios.cpp)

// The row with this ItemData, -1 without one. Erro 6 for a row beyond 16 bits.
qint16 IndiceItemData(const forms::ComboList& combo, qint16 codigo);
bool FormularioCarregado(const QString& nome);
// Brings a form to the front, loading it if need be.
void MostrarFormulario(forms::Form& formulario);
// The form that lies disabled behind a modal dialog or box; without one the active form, or null.
forms::Form* JanelaModalAtiva();
// Lets that form's button in the task bar flash five times.
void PiscarJanelaAtiva();

// --- files and folders (arquivos.cpp)

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

// --- dates, as serial numbers: days since 30 December 1899 (datas.cpp)

QString MesAbreviado(quint8 mes);       // "JAN" to "DEZ"; empty outside 1 to 12
QString FormatarData(double data);      // "05-MAR-2026"
QString FormatarDataHora(double data);  // "05-MAR-2026 14:07:09"
// The moment as an SQL expression; of 1.0 the present one.
QString DataHoraSql(double data);

// --- processes (processos.cpp)

// Starts a program and returns at its end; the window lives on meanwhile. Erro 5, 53, 70.
void ExecutarEAguardar(const QString& comando, qint16 estiloJanela);
