#pragma once

#include <QString>

#include "platform/forms/controls.h"
#include "platform/forms/form.h"

// Small routines that several screens share.

// --- start (inicio.cpp)
QString CaminhoPrograma(bool barraFinal);
// The data folder, with a final backslash: the content of "Caminho.txt" beside the program, or the
// program's own folder.
QString LocalizarDados();
bool ArquivoExiste(const QString& caminho);
QString LerArquivo(const QString& caminho);
void MostrarErro(const QString& numero, const QString& descricao);
void MostrarErro(int numero, const QString& descricao);
void RecarregarFormularios(const QString& mensagem);

// --- numbers (numeros.cpp)
QString SomenteAlfanumericos(const QString& texto);
QString RemoverZerosEsquerda(const QString& texto);
QString NormalizarNumero(const QString& texto);

// --- combo lists and forms (formularios.cpp)
qint16 IndiceItemData(const forms::ComboList& combo, qint16 codigo);
bool FormularioCarregado(const QString& nome);
void MostrarFormulario(forms::Form& formulario);
forms::Form* JanelaModalAtiva();
void PiscarJanelaAtiva();

// --- files and folders (arquivos.cpp)
void ExcluirArquivo(const QString& caminho);
bool DiretorioExiste(const QString& caminho);
void CriarDiretorios(const QString& base, const QString& relativo, bool ultimoEhArquivo);
QString NomeArquivoTemporario();
QString SerialVolume(const QString& raiz);
QString PastaSistema(const QString& nome, bool barraFinal);
QString PastaDadosUsuario(bool barraFinal);

// --- dates, as serial numbers (datas.cpp)
QString MesAbreviado(quint8 mes);
QString FormatarData(double data);
QString FormatarDataHora(double data);
QString DataHoraSql(double data);  // 1.0: the present moment

// --- processes (processos.cpp)
void ExecutarEAguardar(const QString& comando, qint16 estiloJanela);
