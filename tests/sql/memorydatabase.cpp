#include "memorydatabase.h"

#include "platform/dao/savepoint.h"
#include "platform/dao/schema.h"
#include "platform/sql/parser.h"
#include "platform/sql/writer.h"
#include "support/database.h"

#include <sqlite3.h>

MemoryDatabase::MemoryDatabase()
    : connection_(std::make_shared<dao::Connection>(u":memory:"_s, QByteArray(),
                                                    dao::Connection::Mode::ReadWrite)) {
    RunNative(sys::ReadBytes(QStringLiteral(TARVO_SQL_CASES "/catalogue.sql")));
}

sqlite3* MemoryDatabase::Handle() const {
    return connection_->Handle();
}

QStringList MemoryDatabase::RunNative(const QByteArray& sql, bool names) const {
    const auto add = [](void* to, int columns, char** cells, char** named) {
        QStringList head;
        QStringList row;
        for (int i = 0; i < columns; ++i) {
            head += QString::fromUtf8(named[i]);
            row += cells[i] ? QString::fromUtf8(cells[i]) : u"-"_s;
        }
        auto& rows = *static_cast<QStringList*>(to);
        rows += rows.isEmpty() ? List(head.join(u'|'), row.join(u'|')) : List(row.join(u'|'));
        return 0;
    };
    QStringList rows;
    if (sqlite3_exec(Handle(), sql.constData(), add, &rows, nullptr) != SQLITE_OK) {
        throw Erro(-1, QString::fromUtf8(sqlite3_errmsg(Handle())));
    }
    return rows.mid(names ? 0 : 1);
}

QStringList MemoryDatabase::Run(const AnyText& text, bool names, sql::Accents accents) const {
    const auto translation =
        sql::WriteCommand(sql::Parser::ParseCommand(text.toUtf8()), Schema(), accents);
    QStringList rows;
    dao::Savepoint savepoint(*connection_);
    for (const QByteArray& statement : translation.statements) {
        rows += RunNative(statement, names);
    }
    savepoint.Release();
    return rows;
}

QString MemoryDatabase::RefusalOf(const AnyText& text) const {
    const QString said = SaidBy([&] { Run(text); });
    return said.startsWith("-1 erro "_L1) ? said.mid(8).remove(u':') : said;
}

QStringList MemoryDatabase::Everything() const {
    QStringList all = RunNative("SELECT sql FROM sqlite_schema");
    for (const QString& table : RunNative("SELECT name FROM sqlite_schema WHERE type = 'table'")) {
        all += RunNative("SELECT * FROM [" + table.toUtf8() + ']');
    }
    return all;
}

sql::Schema MemoryDatabase::Schema() const {
    dao::ForgetTables(*connection_);
    return dao::SchemaOf(*connection_);
}
