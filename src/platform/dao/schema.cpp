#include "platform/dao/schema.h"

#include "platform/dao/companion.h"
#include "platform/dao/errors.h"
#include "platform/dao/preparedchange.h"
#include "platform/dao/statement.h"
#include "platform/sql/collation.h"
#include "platform/sql/plan.h"
#include "platform/sql/token.h"

#include <QCache>
#include <QHash>

#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>
#include <string>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace dao {

// Tables of the catalogue as a connection has read them. An update's script names the same one in a
// hundred thousand lines, and reading it anew would take longer than the line itself.
struct TableCache {
    using Clock = std::chrono::steady_clock;

    // Another computer changes definitions only in an update, and even then the engine itself
    // notices; so it is enough to look from time to time whether somebody has.
    static constexpr auto Trusted = 100ms;

    Clock::time_point until;
    std::optional<qint64> version;
    QHash<QString, sql::TableInfo> tables;
    // By shape. No script goes to and fro between more.
    QCache<std::string, std::shared_ptr<PreparedChange>> changes{32};
};

namespace {

// A row of a table whose key counts by itself may come without one.
bool NumbersRows(const QByteArray& definition) {
    const std::vector<sql::Token> tokens = sql::Tokenize(definition);
    return std::any_of(tokens.begin(), tokens.end(), [](const sql::Token& token) {
        return sql::EqualWords(token.text, "AUTOINCREMENT");
    });
}

QStringList ListOf(Connection& connection, const QByteArray& query, const QString& name) {
    QStringList list;
    Statement statement(connection, query);
    statement.Bind(1, name);
    while (statement.Step()) {
        list.append(statement.Column(0).toString());
    }
    return list;
}

std::optional<sql::TableInfo> ReadTable(Connection& connection, const QByteArray& schema,
                                        const QString& name) {
    Statement find(connection, "SELECT name, type, sql FROM " + schema +
                                   ".sqlite_schema WHERE name = ?1 COLLATE " +
                                   sql::collation::Name + " AND type IN ('table', 'view')");
    find.Bind(1, name);
    if (!find.Step()) {
        return std::nullopt;
    }
    sql::TableInfo table;
    table.name = find.Column(0).toString();
    table.isView = find.Column(1).toString() == "view"_L1;
    table.definition = find.Column(2).toString();
    table.numbersRows = NumbersRows(table.definition.toUtf8());
    table.hasRowid =
        ListOf(connection, "SELECT 1 FROM pragma_table_list(?1) WHERE wr = 1", table.name)
            .isEmpty();

    Statement columns(connection,
                      "SELECT name, type, \"notnull\", pk FROM pragma_table_info(?1, '" + schema +
                          "') ORDER BY cid");
    columns.Bind(1, table.name);
    while (columns.Step()) {
        table.columns.append({columns.Column(0).toString(), columns.Column(1).toString(),
                              columns.Int64(2) != 0, static_cast<int>(columns.Int64(3))});
    }

    Statement indexes(connection, "SELECT l.name, l.partial, s.sql FROM pragma_index_list(?1, '" +
                                      schema + "') AS l JOIN " + schema +
                                      ".sqlite_schema AS s ON s.type = 'index' AND s.name = l.name"
                                      " ORDER BY l.name");
    indexes.Bind(1, table.name);
    while (indexes.Step()) {
        const QString index = indexes.Column(0).toString();
        table.indexes.append(
            {index, indexes.Int64(1) != 0,
             ListOf(connection,
                    "SELECT name FROM pragma_index_info(?1, '" + schema + "') ORDER BY seqno",
                    index),
             indexes.Column(2).toString()});
    }
    table.triggers = ListOf(connection,
                            "SELECT sql FROM " + schema +
                                ".sqlite_schema WHERE type = 'trigger' AND tbl_name = ?1"
                                " ORDER BY name",
                            table.name);
    return table;
}

TableCache& Known(Connection& connection) {
    if (connection.Tables() == nullptr) {
        connection.Tables() = std::make_shared<TableCache>();
    }
    TableCache& cache = *connection.Tables();
    if (const auto now = TableCache::Clock::now(); now >= cache.until) {
        const qint64 version = connection.Value("PRAGMA schema_version").toLongLong();
        if (version != cache.version) {
            cache.tables.clear();
            cache.changes.clear();
            cache.version = version;
        }
        cache.until = now + TableCache::Trusted;
    }
    return cache;
}

// What a transaction changes may be rolled back: whoever does that, or sees that the engine did it
// by itself, calls ForgetTables.
std::optional<sql::TableInfo> FindTable(Connection& connection, const QString& name) {
    auto& known = Known(connection).tables;
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

// The lock that such a table is would be gone for good behind a table of its name in the catalogue.
void GuardCompanion(Connection& connection, const sql::Translation& translation) {
    if (IsCompanionTable(translation.defined)) {
        Throw(Failure::TableExists, translation.defined);
    }
    if (translation.kind != sql::Translation::Kind::Definition) {
        return;
    }
    for (const QString& table : translation.tables) {
        if (IsCompanionTable(table) && !FindTable(connection, table)) {
            Throw(Failure::NotSupported, table);
        }
    }
}

}  // namespace

void ForgetTables(const Connection& connection) {
    for (Connection* other : Connection::All()) {
        if (other->Path() == connection.Path()) {
            other->Tables().reset();
        }
    }
}

std::shared_ptr<PreparedChange> FindChange(Connection& connection, const sql::Shape& shape) {
    const auto* known = Known(connection).changes.object(shape.Key());
    return known && (*known)->Fits(shape) ? *known : nullptr;
}

void KeepChange(Connection& connection, const sql::Shape& shape,
                const std::shared_ptr<PreparedChange>& change) {
    constexpr std::size_t LongestShape = 10'000;
    if (shape.Key().size() < LongestShape) {
        Known(connection).changes.insert(shape.Key(), new std::shared_ptr(change));
    }
}

sql::Schema SchemaOf(Connection& connection) {
    sql::Schema schema;
    schema.table = [&connection](const QString& name) {
        auto table = FindTable(connection, name);
        if (!table && HasCompanion(connection)) {
            table = ReadTable(connection, CompanionSchema, name);
        }
        return table;
    };
    return schema;
}

sql::Translation Prepare(Connection& connection, const QString& sql, sql::Accents accents) {
    if (!connection.IsOpen()) {
        Throw(Failure::ObjectInvalid);
    }
    const auto count = [&connection](const QByteArray& query) {
        return connection.Value(query).toLongLong();
    };
    const sql::Schema schema = SchemaOf(connection);
    sql::Translation translation =
        sql::PlanQuery(sql, schema, count, accents, sql::Literals::Lifted);
    GuardCompanion(connection, translation);
    if (std::any_of(translation.tables.begin(), translation.tables.end(), IsCompanionTable)) {
        AttachCompanion(connection);
    }
    return translation;
}

}  // namespace dao
