// Passes texts through unchanged until the dialect is in place.
#include "platform/dao/dialect.h"
#include "platform/dao/errors.h"
#include "platform/dao/functions.h"

#include <sqlite3.h>

#define STANDIN __attribute__((weak))

namespace dao {

STANDIN void RegisterFunctions(sqlite3* handle) {
    sqlite3_create_collation(handle, "TARVO", SQLITE_UTF8, nullptr,
                             [](void*, int n, const void* a, int m, const void* b) {
                                 return QString::fromUtf8(static_cast<const char*>(a), n)
                                     .compare(QString::fromUtf8(static_cast<const char*>(b), m),
                                              Qt::CaseInsensitive);
                             });
}

namespace dialect {

STANDIN Translation Translate(const QString& text, const Schema&) {
    const QString word = text.trimmed().section(u' ', 0, 0).toUpper();
    if (word.isEmpty()) {
        Throw(Failure::MissingExpression);
    }
    Translation t;
    t.kind = word == QLatin1String("SELECT") || word == QLatin1String("WITH")
                 ? Translation::Kind::Query
             : word == QLatin1String("CREATE") || word == QLatin1String("DROP") ||
                     word == QLatin1String("ALTER")
                 ? Translation::Kind::Definition
                 : Translation::Kind::Change;
    t.statements = {text.toUtf8()};
    if (text.contains(QLatin1String("CONTROLETRAN"), Qt::CaseInsensitive)) {
        t.tables = {QStringLiteral("CONTROLETRAN")};
    }
    return t;
}

struct Criterion::Node {
    int column;
    QString value;
};

STANDIN Criterion::Criterion(const QString& text, const QStringList& columns)
    : root_(std::make_unique<Node>()) {
    root_->column = static_cast<int>(columns.indexOf(text.section(u'=', 0, 0).trimmed(), 0));
    if (root_->column < 0) {
        Throw(Failure::UnknownColumn, text);
    }
    root_->value = text.section(u'=', 1).trimmed().remove(u'\'');
}

STANDIN Criterion::~Criterion() = default;

STANDIN bool Criterion::Matches(const ColumnReader& value) const {
    return value(root_->column).toString() == root_->value.trimmed() ||
           value(root_->column).toString() == root_->value;
}

}  // namespace dialect
}  // namespace dao
