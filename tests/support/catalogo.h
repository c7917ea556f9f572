#pragma once

#include <QStringList>
#include <QTemporaryDir>

#include <memory>

// A data folder with an empty catalogue, opened as the session's own (gCaminho, gWS, gDB) for the
// life of the object.
class CatalogoDeTeste {
public:
    CatalogoDeTeste();
    ~CatalogoDeTeste();

    // Statements of the dialect, each of which must succeed.
    void Executar(const QStringList& comandos);
    QString Pasta() const { return pasta_.path(); }

private:
    QTemporaryDir pasta_;
};

// Parts, components and kits with the same shape: three of each kind, with numbers that begin with
// 1, A and K, a vehicle maker (code 7) and a competitor (code 9) with numbers of their own.
QStringList LinhasDePesquisa();

// Part 1 (of LinhasDePesquisa) with items 1, 2, 12a and 100, two kits, a vehicle and a figure; part
// 2 with a list but neither kits nor vehicles; part 3 with nothing; three gallery pictures.
QStringList LinhasDePecas();
