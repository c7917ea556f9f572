#include "memorydatabase.h"

#include "platform/dao/schema.h"
#include "platform/sql/parser.h"
#include "platform/sql/writer.h"

#include <sqlite3.h>

MemoryDatabase::MemoryDatabase()
    : connection_(std::make_shared<dao::Connection>(u":memory:"_s, QByteArray(),
                                                    dao::Connection::Mode::ReadWrite)) {}

sqlite3* MemoryDatabase::Handle() const {
    return connection_->Handle();
}

void MemoryDatabase::MakeCatalogue() const {
    RunNative(sys::ReadBytes(QStringLiteral(TARVO_SQL_CASES "/catalogue.sql")));
}

QStringList MemoryDatabase::RunNative(const QByteArray& sql, bool names) const {
    QStringList rows;
    const char* rest = sql.constData();
    while (*rest) {
        sqlite3_stmt* statement = nullptr;
        int code = sqlite3_prepare_v2(Handle(), rest, -1, &statement, &rest);
        const int columns = sqlite3_column_count(statement);
        QStringList head;
        for (int i = 0; names && i < columns; ++i) {
            head.append(QString::fromUtf8(sqlite3_column_name(statement, i)));
        }
        if (!head.isEmpty()) {
            rows.append(head.join(u'|'));
        }
        while (statement && (code = sqlite3_step(statement)) == SQLITE_ROW) {
            QStringList row;
            for (int i = 0; i < columns; ++i) {
                const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, i));
                row.append(text ? QString::fromUtf8(text) : u"-"_s);
            }
            rows.append(row.join(u'|'));
        }
        sqlite3_finalize(statement);
        if (code != SQLITE_OK && code != SQLITE_DONE) {
            throw Erro(-1, QString::fromUtf8(sqlite3_errmsg(Handle())));
        }
    }
    return rows;
}

sql::Translation MemoryDatabase::Translate(const QString& text, sql::Accents accents) const {
    return sql::WriteCommand(sql::Parser::ParseCommand(text.toUtf8()), Schema(), accents);
}

QStringList MemoryDatabase::Run(const AnyText& text, bool names, sql::Accents accents) const {
    const sql::Translation translation = Translate(text, accents);
    QStringList rows;
    RunNative("SAVEPOINT whole");
    try {
        for (const QByteArray& statement : translation.statements) {
            rows += RunNative(statement, names);
        }
    } catch (const Erro&) {
        RunNative("ROLLBACK TO whole; RELEASE whole");
        throw;
    }
    RunNative("RELEASE whole");
    return rows;
}

QString MemoryDatabase::RefusalOf(const AnyText& text) const {
    try {
        Run(text);
        return u"accepted: "_s + text;
    } catch (const Erro& erro) {
        const QString said = erro.Description();
        return said.startsWith("erro "_L1) ? said.mid(5).remove(u':')
                                           : QString::number(erro.Number()) + u' ' + said;
    }
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
