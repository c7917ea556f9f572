#include "platform/dao/companion.h"

#include "platform/dao/connection.h"
#include "platform/dao/savepoint.h"
#include "platform/dao/statement.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

// The engine locks a whole file for writing. A lock that is held for the length of an update must
// not stop everybody else's small writes, so its table stands in a file of its own. That file holds
// one row without meaning and is not enciphered: a key would buy nothing and cost a derivation.
// The product names the table.
constexpr char CompanionDefinition[] =
    "CREATE TABLE IF NOT EXISTS companion." COMPANION_TABLE
    " (a INTEGER);"
    // With no row the lock statement would succeed without a lock; a second row has no use.
    "CREATE UNIQUE INDEX IF NOT EXISTS companion." COMPANION_TABLE "_UMA ON " COMPANION_TABLE
    " ((1));"
    "INSERT INTO companion." COMPANION_TABLE
    " SELECT 0 WHERE NOT EXISTS (SELECT 1 FROM companion." COMPANION_TABLE ")";

QString CompanionPath(const QString& catalogue) {
    const QFileInfo file(catalogue);
    return file.path() + u'/' + file.completeBaseName() + ".ldb"_L1;
}

bool CompanionIsWhole(Connection& connection) {
    return connection
                   .Value(
                       "SELECT count(*) FROM companion.sqlite_schema"
                       " WHERE name = '" COMPANION_TABLE "'")
                   .toLongLong() == 1 &&
           connection.Value("SELECT count(*) FROM companion." COMPANION_TABLE).toLongLong() == 1;
}

}  // namespace

bool IsCompanionTable(const QString& name) {
    return name.compare(QLatin1String(COMPANION_TABLE), Qt::CaseInsensitive) == 0;
}

bool HasCompanion(Connection& connection) {
    return connection.Value("SELECT count(*) FROM pragma_database_list WHERE name = 'companion'")
               .toLongLong() == 1;
}

void AttachCompanion(Connection& connection) {
    if (!HasCompanion(connection)) {
        const QString path = CompanionPath(connection.Path());
        // An empty file is an empty database; the engine itself attaches only what is there.
        QFile(path).open(QIODevice::WriteOnly | QIODevice::NewOnly);
        Statement attach(connection, "ATTACH ?1 AS companion KEY ''");
        attach.Bind(1, path);
        attach.Step();
    }
    if (!CompanionIsWhole(connection)) {
        // Two computers may come here at once: the second one finds the work done.
        Savepoint savepoint(connection);
        connection.Run(CompanionDefinition);
        savepoint.Release();
    }
}

}  // namespace dao
