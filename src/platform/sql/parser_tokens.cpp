// The parser's eyes and hands: looking at the next tokens, and taking them.

#include "platform/sql/errors.h"
#include "platform/sql/parser.h"

#include <algorithm>
#include <iterator>

using namespace std::string_view_literals;

using namespace Qt::StringLiterals;

namespace sql {

namespace {

// Words that stand for themselves and cannot be a bare name.
constexpr std::string_view ReservedWords[] = {
    "ALL"sv,    "ALTER"sv,    "AND"sv,         "AS"sv,    "BETWEEN"sv, "BY"sv,     "CREATE"sv,
    "DELETE"sv, "DISTINCT"sv, "DISTINCTROW"sv, "DROP"sv,  "EQV"sv,     "EXISTS"sv, "FROM"sv,
    "GROUP"sv,  "HAVING"sv,   "IMP"sv,         "IN"sv,    "INNER"sv,   "INSERT"sv, "INTO"sv,
    "IS"sv,     "JOIN"sv,     "LEFT"sv,        "LIKE"sv,  "MOD"sv,     "NOT"sv,    "NULL"sv,
    "ON"sv,     "OR"sv,       "ORDER"sv,       "RIGHT"sv, "SELECT"sv,  "SET"sv,    "TABLE"sv,
    "UNION"sv,  "UPDATE"sv,   "VALUES"sv,      "WHERE"sv, "XOR"sv,
};

bool IsReserved(std::string_view word) {
    return std::any_of(std::begin(ReservedWords), std::end(ReservedWords),
                       [&](std::string_view reserved) { return EqualWords(reserved, word); });
}

}  // namespace

const Token& Parser::Peek(std::size_t ahead) const {
    return tokens_[std::min(at_ + ahead, tokens_.size() - 1)];
}

bool Parser::IsWord(std::string_view word, std::size_t ahead) const {
    const Token& token = Peek(ahead);
    return token.kind == Token::Kind::Word && EqualWords(token.text, word);
}

bool Parser::IsSign(std::string_view sign, std::size_t ahead) const {
    const Token& token = Peek(ahead);
    return token.kind == Token::Kind::Sign && token.text == sign;
}

bool Parser::TakeWord(std::string_view word) {
    const bool found = IsWord(word);
    at_ += found ? 1 : 0;
    return found;
}

bool Parser::TakeAnyWord(std::initializer_list<std::string_view> words) {
    return std::any_of(words.begin(), words.end(),
                       [this](std::string_view word) { return TakeWord(word); });
}

bool Parser::TakeSign(std::string_view sign) {
    const bool found = IsSign(sign);
    at_ += found ? 1 : 0;
    return found;
}

void Parser::ExpectWord(std::string_view word) {
    if (!TakeWord(word)) {
        Fail();
    }
}

void Parser::ExpectSign(std::string_view sign) {
    if (!TakeSign(sign)) {
        Fail();
    }
}

void Parser::ExpectEnd() {
    TakeSign(";");
    if (Peek().kind != Token::Kind::End) {
        Fail();
    }
}

bool Parser::IsName(std::size_t ahead) const {
    const Token& token = Peek(ahead);
    return token.kind == Token::Kind::Name ||
           (token.kind == Token::Kind::Word && !IsReserved(token.text));
}

std::string_view Parser::TakeName() {
    if (!IsName()) {
        Fail();
    }
    return tokens_[at_++].text;
}

std::string Parser::TakeNumber() {
    if (Peek().kind != Token::Kind::Number) {
        Fail();
    }
    return std::string(tokens_[at_++].text);
}

std::vector<std::string_view> Parser::TakeNameList() {
    std::vector<std::string_view> names;
    ExpectSign("(");
    do {
        names.push_back(TakeName());
    } while (TakeSign(","));
    ExpectSign(")");
    return names;
}

void Parser::Fail() const {
    QString near;
    for (std::size_t ahead = 0; ahead < 4 && Peek(ahead).kind != Token::Kind::End; ++ahead) {
        const std::string_view text = Peek(ahead).text.substr(0, 40);
        near += (near.isEmpty() ? QString() : u" "_s) + ToQString(text);
    }
    Throw(Failure::SyntaxError, near);
}

}  // namespace sql
