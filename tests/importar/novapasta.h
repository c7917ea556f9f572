#pragma once

#include "importar/import.h"
#include "importar/programa.h"
#include "platform/dao/connection.h"
#include "platform/dao/statement.h"
#include "session/banco.h"
#include "support/database.h"

inline QString Given(const AnyText& name) {
    return QStringLiteral(TARVO_ANTIGOS) + u'/' + name;
}

// Rows of a query on a new folder's catalogue, cells with "|" between them, Null as "-".
inline QStringList RowsIn(const QString& folder, const AnyText& sql) {
    const auto catalogue = std::make_shared<dao::Connection>(
        folder + u"/Tarvo.mdb"_s, SenhaBancoDados().toUtf8(), dao::Connection::Mode::ReadOnly);
    QStringList rows;
    for (dao::Statement select(*catalogue, sql.toUtf8()); select.Step();) {
        QStringList cells;
        for (int i = 0; i < select.ColumnCount(); ++i) {
            const QVariant value = select.Column(i);
            cells += value.isNull() ? u"-"_s
                     : value.typeId() == QMetaType::Double
                         ? QString::number(value.toDouble(), 'g', 15)
                         : value.toString();
        }
        rows += cells.join(u'|');
    }
    return rows;
}

inline importar::Outcome ImportBy(const importar::Order& order) {
    tabelas::Progress progress;
    return importar::Import(order, progress);
}

// What an import throws for the user; empty when it does not.
inline QString ComplaintOf(const importar::Order& order) {
    return SaidBy([&] { ImportBy(order); });
}
