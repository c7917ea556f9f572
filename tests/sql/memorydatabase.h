#pragma once

#include "platform/sql/dialect.h"
#include "platform/sql/likepattern.h"
#include "support/test.h"

struct sqlite3;

namespace dao {
class Connection;
}

// A database in memory with the dialect's collation and functions, and the small catalogue of
// catalogue.sql.
class MemoryDatabase {
public:
    MemoryDatabase();

    sqlite3* Handle() const;
    sql::Schema Schema() const;

    // The engine's own SQL. Rows come as texts, columns with | between them, Null as a hyphen,
    // ahead of the first one, if there is one, the names if they are wanted. A failure is thrown as
    // Erro -1 with the engine's message.
    QStringList RunNative(const QByteArray& sql, bool names = false) const;

    // A text of the dialect without a plan; the rows of all its statements. A failure undoes all of
    // them.
    QStringList Run(const AnyText& text, bool names = false,
                    sql::Accents accents = sql::Accents::Minded) const;

    // What becomes of a text that must fail: the error's number, a blank and its description. The
    // number of an error in the engine's midst stands in the engine's message, "erro 13: ...".
    QString RefusalOf(const AnyText& text) const;

    // Definitions and rows.
    QStringList Everything() const;

private:
    std::shared_ptr<dao::Connection> connection_;
};

struct OverTheCatalogue : Fixture {
    std::unique_ptr<MemoryDatabase> db_;

    void init() override { db_ = std::make_unique<MemoryDatabase>(); }
};
