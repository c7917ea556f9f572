#include "platform/sql/tabledefinition.h"

#include "platform/sql/errors.h"
#include "platform/sql/token.h"

#include <algorithm>
#include <iterator>
#include <span>

namespace sql {

namespace {

using Tokens = std::span<const Token>;

QByteArray Bracketed(const QByteArray& name) {
    return "[" + name + "]";
}

bool IsSign(const Token& token, std::string_view sign) {
    return token.kind == Token::Kind::Sign && token.text == sign;
}

bool IsWord(const Token& token, std::string_view word) {
    return token.kind == Token::Kind::Word && EqualWords(token.text, word);
}

// Behind what stands in the brackets that open at `at`; where none open, behind that token.
std::size_t Behind(Tokens tokens, std::size_t at) {
    int depth = 0;
    do {
        depth += IsSign(tokens[at], "(") ? 1 : (IsSign(tokens[at], ")") ? -1 : 0);
        ++at;
    } while (depth > 0 && at < tokens.size());
    return at;
}

// The place of two words in a row outside brackets, or the number of tokens.
std::size_t FindWords(Tokens tokens, std::string_view first, std::string_view second = {}) {
    std::size_t at = 0;
    while (at < tokens.size()) {
        const bool followed =
            second.empty() || (at + 1 < tokens.size() && IsWord(tokens[at + 1], second));
        if (IsWord(tokens[at], first) && followed) {
            break;
        }
        at = Behind(tokens, at);
    }
    return at;
}

bool HasWords(const QByteArray& text, std::string_view first, std::string_view second) {
    const std::vector<Token> tokens = Tokenize(text);
    return FindWords(tokens, first, second) < tokens.size();
}

// Where a token begins in the text that was cut up, its quote or bracket included.
std::size_t BeginOf(const QByteArray& text, const Token& token) {
    if (token.kind == Token::Kind::End) {
        return static_cast<std::size_t>(text.size());
    }
    const auto place = static_cast<std::size_t>(token.text.data() - text.constData());
    const bool plain = token.kind == Token::Kind::Word || token.kind == Token::Kind::Number ||
                       token.kind == Token::Kind::Sign;
    return place - (plain ? 0 : 1);
}

QByteArray Between(const QByteArray& text, const Token& first, const Token& behind) {
    const auto begin = static_cast<qsizetype>(BeginOf(text, first));
    return text.mid(begin, static_cast<qsizetype>(BeginOf(text, behind)) - begin).trimmed();
}

}  // namespace

QString EngineIndexName(const TableInfo& table, std::string_view index) {
    const QString full = table.name + u'.' + ToQString(index);
    for (const IndexInfo& known : table.indexes) {
        if (!known.definition.isEmpty() &&
            (SameName(known.name, index) || SameName(known.name, full))) {
            return known.name;
        }
    }
    return {};
}

TableDefinition::TableDefinition(const TableInfo& table) : table_(table) {
    if (table.isView) {
        Throw(Failure::NotUpdatable, table.name);
    }
    constexpr std::string_view Begins[] = {"CONSTRAINT", "PRIMARY", "UNIQUE", "FOREIGN", "CHECK"};
    const QByteArray text = table.definition.toUtf8();
    const std::vector<Token> tokens = Tokenize(text);
    const auto open = std::find_if(tokens.begin(), tokens.end(),
                                   [](const Token& token) { return IsSign(token, "("); });
    if (open == tokens.end()) {
        Throw(Failure::NotSupported, table.name);
    }
    auto at = static_cast<std::size_t>(open - tokens.begin()) + 1;
    bool more = true;
    while (more && at + 1 < tokens.size()) {
        const std::size_t begin = at;
        while (at + 1 < tokens.size() && !IsSign(tokens[at], ",") && !IsSign(tokens[at], ")")) {
            at = Behind(tokens, at);
        }
        const bool constraint =
            std::any_of(std::begin(Begins), std::end(Begins),
                        [&](std::string_view word) { return IsWord(tokens[begin], word); });
        const bool named = IsWord(tokens[begin], Begins[0]);
        const std::string_view name =
            named ? tokens[begin + 1].text : (constraint ? std::string_view() : tokens[begin].text);
        pieces_.push_back({constraint, ToQString(name), Between(text, tokens[begin], tokens[at])});
        more = IsSign(tokens[at], ",");
        ++at;
    }
    tail_ = Between(text, tokens[std::min(at, tokens.size() - 1)], tokens.back());
}

TableDefinition::Piece& TableDefinition::FindColumn(std::string_view name) {
    const auto found = std::find_if(pieces_.begin(), pieces_.end(), [&](const Piece& piece) {
        return !piece.constraint && SameName(piece.name, name);
    });
    if (found == pieces_.end()) {
        Throw(Failure::UnknownColumn, ToQString(name));
    }
    return *found;
}

bool TableDefinition::HasPrimaryKey() const {
    return std::any_of(table_.columns.begin(), table_.columns.end(),
                       [](const ColumnInfo& column) { return column.primaryKey > 0; });
}

void TableDefinition::SetColumn(std::string_view name, const QByteArray& text) {
    if (table_.Column(name)) {
        Piece& piece = FindColumn(name);
        const bool key =
            HasWords(piece.text, "PRIMARY", "KEY") && !HasWords(text, "PRIMARY", "KEY");
        piece.text = key ? text + " PRIMARY KEY" : text;
        return;
    }
    const auto behindColumns = std::find_if(pieces_.begin(), pieces_.end(),
                                            [](const Piece& piece) { return piece.constraint; });
    pieces_.insert(behindColumns, {false, ToQString(name), text});
}

void TableDefinition::SetDefault(std::string_view name, const QByteArray& value) {
    Piece& piece = FindColumn(name);
    const std::vector<Token> tokens = Tokenize(piece.text);
    const std::size_t at = FindWords(tokens, "DEFAULT");
    QByteArray text = piece.text;
    if (at < tokens.size()) {
        // A number may have its sign in front.
        const bool sign = IsSign(tokens[at + 1], "-") || IsSign(tokens[at + 1], "+");
        const std::size_t behind = Behind(tokens, at + (sign ? 2 : 1));
        text = Between(text, tokens.front(), tokens[at]) + ' ' +
               Between(text, tokens[behind], tokens.back());
    }
    piece.text = value.isEmpty() ? text : text.trimmed() + " DEFAULT (" + value + ")";
}

void TableDefinition::RequireValue(std::string_view column) {
    Piece& piece = FindColumn(column);
    if (!HasWords(piece.text, "NOT", "NULL")) {
        piece.text += " NOT NULL";
    }
}

void TableDefinition::AddConstraint(const QByteArray& text) {
    pieces_.push_back({true, {}, text});
}

bool TableDefinition::DropConstraint(std::string_view name) {
    return std::erase_if(pieces_, [&](const Piece& piece) {
               return piece.constraint && SameName(piece.name, name);
           }) > 0;
}

// By way of a copy: renaming the new table would stumble over every view that names the old one.
QList<QByteArray> TableDefinition::Rebuild(const QList<NewValue>& values) const {
    const QByteArray name = Bracketed(table_.name.toUtf8());
    QByteArray create = "CREATE TABLE " + name + " (";
    QByteArray columns;
    QByteArray selected;
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
        const Piece& piece = pieces_[i];
        create += (i ? ", " : "") + piece.text;
        const auto given = std::find_if(values.begin(), values.end(), [&](const NewValue& value) {
            return SameName(value.column, piece.name);
        });
        const bool had = table_.Column(piece.name) != nullptr;
        if (piece.constraint || (!had && given == values.end())) {
            continue;  // a new column gets its default, or the next number of a counter
        }
        const QByteArray column = Bracketed(piece.name.toUtf8());
        const QByteArray separator = columns.isEmpty() ? "" : ", ";
        columns += separator + column;
        selected += separator + (given == values.end() ? column : given->sql);
    }
    QList<QByteArray> statements = {
        "CREATE TEMP TABLE dao_copy AS SELECT * FROM " + name,
        "DROP TABLE " + name,
        create + ") " + tail_,
        "INSERT INTO " + name + " (" + columns + ") SELECT " + selected + " FROM temp.dao_copy",
        "DROP TABLE temp.dao_copy",
    };
    for (const IndexInfo& index : table_.indexes) {
        if (!index.definition.isEmpty()) {
            statements.append(index.definition.toUtf8());
        }
    }
    for (const QString& trigger : table_.triggers) {
        statements.append(trigger.toUtf8());
    }
    return statements;
}

}  // namespace sql
