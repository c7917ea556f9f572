#pragma once

#include <QByteArray>
#include <QString>

#include <string>
#include <string_view>
#include <vector>

namespace sql {

// A piece of a text of the dialect. `text` points into the text that was cut up.
struct Token {
    enum class Kind {
        Word,  // a bare name or a word of the language
        Name,  // a name in brackets: never a word of the language
        Number,
        Text,  // without its quotes; doubled quotes inside are still doubled
        Date,  // without its signs
        Sign,
        End,
    };
    Kind kind = Kind::End;
    char quote = 0;  // of a Text
    std::string_view text;
};

// Throws Erro 3075 for what belongs to no token (a quote left open, say). Ends with an End token.
std::vector<Token> Tokenize(const QByteArray& source);

// Without regard to the case of ASCII letters, the only ones in words of the language.
bool EqualWords(std::string_view a, std::string_view b);

std::string UpperAscii(std::string_view word);  // the same letters made capitals

bool IsAscii(std::string_view text);

// Without regard to the case of any letter: names of tables and columns may have accents.
bool SameName(std::string_view a, std::string_view b);
bool SameName(const QString& a, QAnyStringView b);

QString ToQString(std::string_view text);

// A Text token's content with doubled quotes made single.
std::string Unquote(const Token& token);

}  // namespace sql
