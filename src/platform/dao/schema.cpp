#include "platform/dao/schema.h"

#include "platform/dao/errors.h"
#include "platform/dao/savepoint.h"
#include "platform/sql/plan.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>

#include <algorithm>
#include <array>
#include <chrono>
#include <memory>

namespace dao {

// Tables of the catalogue as a connection has read them. An update's script names the same one in a
// hundred thousand lines, and reading it anew would take longer than the line itself.
struct TableCache {
    using Clock = std::chrono::steady_clock;

    // Another computer changes definitions only in an update, and even then the engine itself
    // notices; so it is enough to look from time to time whether somebody has.
    static constexpr std::chrono::milliseconds Trusted{100};

    Clock::time_point until;
    qint64 version = -1;
    QHash<QString, sql::TableInfo> tables;
};

namespace {

constexpr char CompanionSchema[] = "companion";

// The engine locks a whole file for writing. A lock that is held for the length of an update must
// not stop everybody else's small writes, so its table stands in a file of its own. That file holds
// one row without meaning and is not enciphered: a key would buy nothing and cost a derivation.
constexpr std::array CompanionTables = {"CONTROLETRAN"};
constexpr char CompanionDefinition[] =
    "CREATE TABLE IF NOT EXISTS companion.CONTROLETRAN (a INTEGER);"
    // With no row the lock statement would succeed without a lock; a second row has no use.
    "CREATE UNIQUE INDEX IF NOT EXISTS companion.CONTROLETRAN_UMA ON CONTROLETRAN ((1));"
    "INSERT INTO companion.CONTROLETRAN SELECT 0"
    " WHERE NOT EXISTS (SELECT 1 FROM companion.CONTROLETRAN)";

QString CompanionPath(const QString& catalogue) {
    const QFileInfo file(catalogue);
    return file.path() + u'/' + file.completeBaseName() + QLatin1String(".ldb");
}

bool HasCompanion(Connection& connection) {
    return connection.Value("SELECT count(*) FROM pragma_database_list WHERE name = 'companion'")
               .toLongLong() == 1;
}

bool CompanionIsWhole(Connection& connection) {
    return connection
                   .Value(
                       "SELECT count(*) FROM companion.sqlite_schema WHERE name = 'CONTROLETRAN'")
                   .toLongLong() == 1 &&
           connection.Value("SELECT count(*) FROM companion.CONTROLETRAN").toLongLong() == 1;
}

std::optional<sql::TableInfo> ReadTable(Connection& connection, const QByteArray& schema,
                                        const QString& name) {
    Statement find(connection, "SELECT name, type, sql FROM " + schema +
                                   ".sqlite_schema WHERE name = ?1 COLLATE NOCASE"
                                   " AND type IN ('table', 'view')");
    find.Bind(1, name);
    if (!find.Step()) {
        return std::nullopt;
    }
    sql::TableInfo table;
    table.name = find.Column(0).toString();
    table.isView = find.Column(1).toString() == QLatin1String("view");
    table.definition = find.Column(2).toString();

    Statement columns(connection,
                      "SELECT name, type, \"notnull\", pk FROM pragma_table_info(?1, '" + schema +
                          "') ORDER BY cid");
    columns.Bind(1, table.name);
    while (columns.Step()) {
        table.columns.append({columns.Column(0).toString(), columns.Column(1).toString(),
                              columns.Int64(2) != 0, static_cast<int>(columns.Int64(3))});
    }

    Statement indexes(connection,
                      "SELECT sql FROM " + schema +
                          ".sqlite_schema WHERE type IN ('index', 'trigger') AND tbl_name = ?1"
                          " AND sql IS NOT NULL ORDER BY name");
    indexes.Bind(1, table.name);
    while (indexes.Step()) {
        table.indexes.append(indexes.Column(0).toString());
    }
    return table;
}

QHash<QString, sql::TableInfo>& KnownTables(Connection& connection) {
    if (connection.Tables() == nullptr) {
        connection.Tables() = std::make_shared<TableCache>();
    }
    TableCache& cache = *connection.Tables();
    if (const auto now = TableCache::Clock::now(); now >= cache.until) {
        const qint64 version = connection.Value("PRAGMA schema_version").toLongLong();
        if (version != cache.version) {
            cache.tables.clear();
            cache.version = version;
        }
        cache.until = now + TableCache::Trusted;
    }
    return cache.tables;
}

// What a transaction changes may be rolled back: whoever does that, or sees that the engine did it
// by itself, calls ForgetTables.
std::optional<sql::TableInfo> FindTable(Connection& connection, const QString& name) {
    auto& known = KnownTables(connection);
    const QString key = name.toUpper();
    if (const auto table = known.constFind(key); table != known.constEnd()) {
        return *table;
    }
    auto table = ReadTable(connection, "main", name);
    if (table) {
        known.insert(key, *table);
    }
    return table;
}

}  // namespace

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

void ForgetTables(const Connection& connection) {
    for (Connection* other : Connection::All()) {
        if (other->Path() == connection.Path()) {
            other->Tables().reset();
        }
    }
}

sql::Translation Prepare(Connection& connection, const QString& sql, sql::Accents accents) {
    if (!connection.IsOpen()) {
        Throw(Failure::ObjectInvalid);
    }
    sql::Schema schema;
    schema.table = [&connection](const QString& name) {
        auto table = FindTable(connection, name);
        if (!table && HasCompanion(connection)) {
            table = ReadTable(connection, CompanionSchema, name);
        }
        return table;
    };
    const auto count = [&connection](const QByteArray& query) {
        return connection.Value(query).toLongLong();
    };
    sql::Translation translation = sql::PlanQuery(sql, schema, count, accents);
    const bool apart = std::any_of(
        CompanionTables.begin(), CompanionTables.end(), [&translation](const char* name) {
            return translation.tables.contains(QLatin1String(name), Qt::CaseInsensitive);
        });
    if (apart) {
        AttachCompanion(connection);
    }
    return translation;
}

}  // namespace dao
