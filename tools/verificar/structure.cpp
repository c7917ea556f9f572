#include "verificar/structure.h"

#include "platform/dao/connection.h"
#include "platform/dao/statement.h"
#include "session/banco.h"
#include "session/esquema.h"

#include <QHash>
#include <QSet>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace verificar {
namespace {

// Names in the letters in which the file was made; they are compared without regard to case.
constexpr char TablesSql[] =
    "SELECT upper(name) FROM sqlite_master WHERE type IN ('table', 'view') "
    "AND name NOT LIKE 'sqlite_%' ORDER BY type, name";
constexpr char ColumnsSql[] = "SELECT name FROM pragma_table_info(?1)";
// Of each index its columns in order; an expression has no name. The last column of the pragma's
// rows, the row's own key, is no part of the definition.
constexpr char IndexesSql[] =
    "SELECT CASE \"unique\" WHEN 1 THEN 'único ' ELSE '' END || '(' || (SELECT group_concat("
    "coalesce(name, 'constante') || CASE coll WHEN 'BINARY' THEN '' ELSE ' ' || coll END, ', ') "
    "FROM pragma_index_xinfo(I.name) WHERE \"key\" = 1) || ')' FROM pragma_index_list(?1) AS I";

QStringList Names(dao::Connection& connection, const char* sql, const QString& table = {}) {
    dao::Statement statement(connection, sql);
    if (!table.isNull()) {
        statement.Bind(1, table);
    }
    QStringList names;
    while (statement.Step()) {
        names += statement.Column(0).toString();
    }
    return names;
}

QSet<QString> Folded(const QStringList& names) {
    QSet<QString> folded;
    for (const QString& name : names) {
        folded += name.toCaseFolded();
    }
    return folded;
}

struct Structure {
    QStringList tables;
    QHash<QString, QStringList> columns;
    QHash<QString, QStringList> indexes;
};

// Of a catalogue that has just been made.
const Structure& NewCatalogue() {
    static const Structure structure = [] {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"novo.mdb"_s);
        CriarCatalogo(path, SenhaBancoDados());
        const auto made = std::make_shared<dao::Connection>(path, SenhaBancoDados().toUtf8(),
                                                            dao::Connection::Mode::ReadOnly);
        Structure read;
        read.tables = Names(*made, TablesSql);
        for (const QString& table : std::as_const(read.tables)) {
            read.columns.insert(table, Names(*made, ColumnsSql, table));
            read.indexes.insert(table, Names(*made, IndexesSql, table));
        }
        return read;
    }();
    return structure;
}

}  // namespace

bool CheckStructure(dao::Connection& catalogue, int examples, QList<Finding>& findings) {
    const qsizetype before = findings.size();
    const Structure& model = NewCatalogue();
    Cases tables(Weight::Fault, u"Falta a tabela"_s, examples);
    Cases columns(Weight::Fault, u"Falta a coluna"_s, examples);
    Cases indexes(Weight::Fault,
                  u"Falta o índice (as pesquisas ficam lentas, ou linhas iguais são "
                  "aceitas)"_s,
                  examples);
    const QSet<QString> present = Folded(Names(catalogue, TablesSql));
    for (const QString& table : model.tables) {
        if (!present.contains(table.toCaseFolded())) {
            tables.Add(table);
            continue;
        }
        const auto missing = [&](const char* sql, const QStringList& wanted, Cases& cases) {
            const QSet<QString> there = Folded(Names(catalogue, sql, table));
            for (const QString& name : wanted) {
                if (!there.contains(name.toCaseFolded())) {
                    cases.Add(table + u' ' + name);
                }
            }
        };
        missing(ColumnsSql, model.columns.value(table), columns);
        missing(IndexesSql, model.indexes.value(table), indexes);
    }
    tables.AppendTo(findings);
    columns.AppendTo(findings);
    indexes.AppendTo(findings);
    return findings.size() == before;
}

}  // namespace verificar
