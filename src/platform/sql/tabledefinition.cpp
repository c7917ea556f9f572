#include "platform/sql/tabledefinition.h"

#include "platform/sql/errors.h"

#include <algorithm>

namespace sql {

namespace {

bool SameName(const QString& a, const QString& b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

char CloseOf(char open) {
    return open == '[' ? ']' : open;
}

// Where a quoted piece that begins at `at` ends (behind it); `at` when none begins there.
qsizetype BehindQuoted(const QByteArray& text, qsizetype at) {
    if (!QByteArrayView("'\"`[").contains(text.at(at))) {
        return at;
    }
    const qsizetype close = text.indexOf(CloseOf(text.at(at)), at + 1);
    return close < 0 ? text.size() : close + 1;
}

// Cuts at the commas outside brackets; stops behind the bracket that closes the list.
QList<QByteArray> CutList(const QByteArray& text, qsizetype at, qsizetype& end) {
    QList<QByteArray> pieces;
    int depth = 0;
    qsizetype begin = at;
    while (at < text.size()) {
        const qsizetype behind = BehindQuoted(text, at);
        if (behind > at) {
            at = behind;
            continue;
        }
        const char c = text.at(at);
        if ((c == ',' && depth == 0) || (c == ')' && depth == 0)) {
            pieces.append(text.mid(begin, at - begin).trimmed());
            begin = at + 1;
        }
        if (c == ')' && depth == 0) {
            break;
        }
        depth += c == '(' ? 1 : (c == ')' ? -1 : 0);
        ++at;
    }
    end = at + 1;
    return pieces;
}

bool Contains(const QByteArray& text, const char* words) {
    return QString::fromUtf8(text).simplified().contains(QLatin1String(words), Qt::CaseInsensitive);
}

}  // namespace

QString FirstName(const QByteArray& text, QByteArray* rest) {
    const QByteArray trimmed = text.trimmed();
    qsizetype end = trimmed.isEmpty() ? 0 : BehindQuoted(trimmed, 0);
    const bool quoted = end > 0;
    while (!quoted && end < trimmed.size() &&
           !QByteArrayView(" \t\r\n(,)").contains(trimmed.at(end))) {
        ++end;
    }
    if (rest) {
        *rest = trimmed.mid(end);
    }
    return QString::fromUtf8(quoted ? trimmed.mid(1, end - 2) : trimmed.left(end));
}

QString EngineIndexName(const TableInfo& table, const QString& index) {
    for (const QString& definition : table.indexes) {
        QByteArray rest = definition.toUtf8();
        QString word = FirstName(rest, &rest);  // CREATE
        word = FirstName(rest, &rest);
        if (SameName(word, QStringLiteral("UNIQUE"))) {
            word = FirstName(rest, &rest);
        }
        if (!SameName(word, QStringLiteral("INDEX"))) {
            continue;  // a trigger
        }
        const QString name = FirstName(rest);
        if (SameName(name, index) || SameName(name, table.name + u'.' + index)) {
            return name;
        }
    }
    return {};
}

TableDefinition::TableDefinition(const TableInfo& table) : table_(table) {
    if (table.isView) {
        Throw(Failure::NotSupported, table.name);
    }
    const QByteArray definition = table.definition.toUtf8();
    qsizetype end = 0;
    const qsizetype open = definition.indexOf('(');
    for (const QByteArray& text : CutList(definition, open + 1, end)) {
        QByteArray rest;
        const QString word = FirstName(text, &rest);
        static const QStringList begins = {QStringLiteral("CONSTRAINT"), QStringLiteral("PRIMARY"),
                                           QStringLiteral("UNIQUE"), QStringLiteral("FOREIGN"),
                                           QStringLiteral("CHECK")};
        const bool quoted = !text.isEmpty() && QByteArrayView("\"`[").contains(text.front());
        const bool constraint = !quoted && begins.contains(word, Qt::CaseInsensitive);
        const bool named = constraint && SameName(word, begins.front());
        pieces_.push_back(
            {constraint, named ? FirstName(rest) : (constraint ? QString() : word), text});
    }
    tail_ = definition.mid(end).trimmed();
}

TableDefinition::Piece* TableDefinition::FindColumn(const QString& name) {
    const auto found = std::find_if(pieces_.begin(), pieces_.end(), [&](const Piece& piece) {
        return !piece.constraint && SameName(piece.name, name);
    });
    return found == pieces_.end() ? nullptr : &*found;
}

bool TableDefinition::HasPrimaryKey() const {
    return std::any_of(table_.columns.begin(), table_.columns.end(),
                       [](const ColumnInfo& column) { return column.primaryKey > 0; });
}

void TableDefinition::SetColumn(const QString& name, const QByteArray& text) {
    if (Piece* piece = FindColumn(name)) {
        const bool key = Contains(piece->text, "PRIMARY KEY") && !Contains(text, "PRIMARY KEY");
        piece->text = key ? text + " PRIMARY KEY" : text;
        return;
    }
    const auto behindColumns = std::find_if(pieces_.begin(), pieces_.end(),
                                            [](const Piece& piece) { return piece.constraint; });
    pieces_.insert(behindColumns, {false, name, text});
}

void TableDefinition::RequireValue(const QString& column) {
    Piece* piece = FindColumn(column);
    if (!piece) {
        Throw(Failure::UnknownColumn, column);
    }
    if (!Contains(piece->text, "NOT NULL")) {
        piece->text += " NOT NULL";
    }
}

void TableDefinition::AddConstraint(const QByteArray& text) {
    pieces_.push_back({true, {}, text});
}

bool TableDefinition::DropConstraint(const QString& name) {
    const auto gone = std::remove_if(pieces_.begin(), pieces_.end(), [&](const Piece& piece) {
        return piece.constraint && SameName(piece.name, name);
    });
    const bool found = gone != pieces_.end();
    pieces_.erase(gone, pieces_.end());
    return found;
}

// By way of a copy: renaming the new table would stumble over every view that names the old one.
QList<QByteArray> TableDefinition::Rebuild(const QList<NewValue>& values) const {
    const QByteArray name = "[" + table_.name.toUtf8() + "]";
    QByteArray create = "CREATE TABLE " + name + " (";
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
        create += (i ? ", " : "") + pieces_[i].text;
    }
    create += ") " + tail_;
    QByteArray columns;
    QByteArray selected;
    for (const Piece& piece : pieces_) {
        if (piece.constraint) {
            continue;
        }
        const QByteArray column = "[" + piece.name.toUtf8() + "]";
        const bool had =
            std::any_of(table_.columns.begin(), table_.columns.end(),
                        [&](const ColumnInfo& info) { return SameName(info.name, piece.name); });
        const auto given = std::find_if(values.begin(), values.end(), [&](const NewValue& value) {
            return SameName(value.column, piece.name);
        });
        if (!had && given == values.end()) {
            continue;  // its default, or the next number of a counter
        }
        const QByteArray separator = columns.isEmpty() ? "" : ", ";
        columns += separator + column;
        selected += separator + (given == values.end() ? column : given->sql);
    }
    QList<QByteArray> statements = {
        "CREATE TEMP TABLE dao_copy AS SELECT * FROM " + name,
        "DROP TABLE " + name,
        create,
        "INSERT INTO " + name + " (" + columns + ") SELECT " + selected + " FROM temp.dao_copy",
        "DROP TABLE temp.dao_copy",
    };
    for (const QString& index : table_.indexes) {
        statements.append(index.toUtf8());
    }
    return statements;
}

}  // namespace sql
