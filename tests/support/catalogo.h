#pragma once

#include "session/banco.h"
#include "session/global.h"
#include "support/test.h"

// Statements of the dialect on the session's database, each of which must succeed.
void Executar(const AnyTexts& comandos);

// A data folder with an empty catalogue, opened as the session's own (gCaminho, gWS, gDB) for the
// life of the object.
class CatalogoDeTeste {
public:
    CatalogoDeTeste();
    ~CatalogoDeTeste();

    static void Executar(const AnyTexts& comandos) { ::Executar(comandos); }
    QString Pasta() const { return pasta_.path(); }
    QStringList Temporarios() const { return QDir(Pasta()).entryList({u"*.tmp"_s}); }

private:
    QTemporaryDir pasta_;
};

// Another computer that has the same catalogue open.
struct OutroComputador {
    OutroComputador();

    std::unique_ptr<dao::Workspace> sessao;
    std::unique_ptr<dao::Database> banco;
};

// The first value of a query on the session's database; Null is an empty text.
QString Valor(const AnyText& sql);

// Statements that put rows into a table; the values are those of all its columns.
QStringList Inserir(const AnyText& tabela, const AnyTexts& linhas);

// The statements of a file, one a line.
QStringList Comandos(const AnyText& arquivo);

// Parts, components and kits with the same shape: three of each kind, with numbers that begin with
// 1, A and K, a vehicle maker (code 7) and a competitor (code 9) with numbers of their own.
QStringList LinhasDePesquisa();

// Part 1 (of LinhasDePesquisa) with items 1, 2, 12a and 100, two kits, a vehicle and a photo; part
// 2 with a list but neither kits nor vehicles; part 3 with nothing; three gallery pictures.
QStringList LinhasDePecas();
