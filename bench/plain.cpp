// tarvo-bench-plain <data folder> <file>: copies the searched tables of a catalogue into an
// ordinary, unenciphered SQLite file with the same indexes, for the ordinary program beside ours.
#include "platform/dao/connection.h"
#include "platform/dao/statement.h"
#include "platform/system/paths.h"
#include "session/banco.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>
#include <exception>

using namespace Qt::StringLiterals;

namespace {

constexpr char Searched[] = "('PECA', 'COMPONENTE', 'JOGOREPARO', 'REFERENCIACRUZADA')";

QList<QByteArray> Definitions(dao::Connection& connection, const char* kind) {
    QList<QByteArray> definitions;
    dao::Statement rows(connection, QByteArray("SELECT sql FROM sqlite_schema WHERE sql IS NOT NULL"
                                               " AND type = '") +
                                        kind + "' AND tbl_name IN " + Searched);
    while (rows.Step()) {
        // The collation is our own; the nearest that every program has is NOCASE.
        definitions.append(rows.Read(0)
                               .utf8.toByteArray()
                               .replace("TARVO,", "NOCASE,")
                               .replace("TARVO)", "NOCASE)"));
    }
    return definitions;
}

QByteArray InPlain(QByteArray definition) {
    for (const char* word : {"CREATE TABLE ", "CREATE INDEX ", "CREATE UNIQUE INDEX "}) {
        definition.replace(word, QByteArray(word) + "plain.");
    }
    return definition;
}

void Copy(const QString& folder, const QString& file) {
    QFile::remove(file);
    const auto connection = std::make_shared<dao::Connection>(
        sys::ToNative(folder + u"\\Tarvo.mdb"_s), SenhaBancoDados().toUtf8(),
        dao::Connection::Mode::ReadWrite);
    QFile(file).open(QIODevice::WriteOnly);
    dao::Statement attach(*connection, "ATTACH ?1 AS plain KEY ''");
    attach.Bind(1, file);
    attach.Step();
    connection->Run("PRAGMA plain.journal_mode = OFF; BEGIN");
    for (const QByteArray& definition : Definitions(*connection, "table")) {
        connection->Run(InPlain(definition));
    }
    for (const char* table : {"PECA", "COMPONENTE", "JOGOREPARO", "REFERENCIACRUZADA"}) {
        connection->Run(QByteArray("INSERT INTO plain.") + table + " SELECT * FROM main." + table);
    }
    for (const QByteArray& definition : Definitions(*connection, "index")) {
        connection->Run(InPlain(definition));
    }
    connection->Run("COMMIT");
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    if (argc != 3) {
        std::fputs("usage: tarvo-bench-plain <data folder> <file>\n", stderr);
        return 2;
    }
    try {
        Copy(QString::fromLocal8Bit(argv[1]), QString::fromLocal8Bit(argv[2]));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tarvo-bench-plain: %s\n", error.what());
        return 1;
    }
    return 0;
}
