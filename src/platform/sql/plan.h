#pragma once

#include "platform/sql/dialect.h"
#include "platform/sql/likepattern.h"

#include <QByteArray>
#include <QString>

#include <functional>

// How a search is run so that its first rows come at once and no single step takes long, however
// many rows there are. The plain translation leaves the choice to the engine, which knows nothing
// of what is asked next: it may sort a million rows before the first one comes, or walk over a
// million rows between two.
namespace sql {

// Result of "SELECT count(*) ..." over at most CountLimit rows, or of "SELECT max(...)" of a
// table's own numbers of its rows.
using Count = std::function<qint64(const QByteArray& sql)>;
inline constexpr int CountLimit = 1000;

// Any text of the dialect. A search gives its rows in the order wanted, up to the order among rows
// with equal keys. What has not the shape of one (one select, or several by UNION ALL, of one table
// each, perhaps left-joined to another one; conditions joined by AND; ordinals to order by) becomes
// the plain translation.
//
// With Translation::resultColumns the statements call dao_pulse(), which is 1 when the reader's
// time is up: then a row that is none comes through, and the reader gets to look up.
//
// `accents` is for LIKE in a query. Throws Erro: 3075 syntax, 3129 no statement, 3085 unknown
// function, 3093 bad pattern, 3000 for what cannot be carried over. Unknown tables and columns are
// left to the engine.
Translation PlanQuery(const QString& text, const Schema& schema, const Count& count,
                      Accents accents = Accents::Minded, Literals literals = Literals::Written);

}  // namespace sql
