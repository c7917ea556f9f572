#include "platform/sql/token.h"

#include "platform/sql/errors.h"

#include <algorithm>

namespace sql {

namespace {

constexpr std::string_view TwoCharacterSigns[] = {"<>", "<=", ">="};
// The bar stands in no text of the dialect, but in definitions that the engine keeps.
constexpr std::string_view Signs = "+-*/\\^&=<>(),.;!|";

// A text of more pieces than this is no statement that anybody wrote, and its tree would fill the
// memory.
constexpr std::size_t MostTokens = 300'000;

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool BeginsWord(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}

bool ContinuesWord(char c) {
    return BeginsWord(c) || IsDigit(c) || c == '$';
}

char Upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

class Tokenizer {
public:
    explicit Tokenizer(std::string_view source) : source_(source) {}

    std::vector<Token> Run() {
        std::vector<Token> tokens;
        std::size_t end = 0;
        for (SkipBlanks(); at_ < source_.size(); SkipBlanks()) {
            const bool afterName = !tokens.empty() && end == at_ &&
                                   (tokens.back().kind == Token::Kind::Word ||
                                    tokens.back().kind == Token::Kind::Name);
            if (tokens.size() == MostTokens) {
                Fail();
            }
            tokens.push_back(Next(afterName));
            end = at_;
        }
        tokens.push_back({});
        return tokens;
    }

private:
    [[noreturn]] void Fail() const {
        Throw(Failure::SyntaxError, ToQString(source_.substr(at_, 200)).left(40));
    }

    void SkipBlanks() {
        while (at_ < source_.size() &&
               std::string_view(" \t\r\n\v\f").find(source_[at_]) != std::string_view::npos) {
            ++at_;
        }
    }

    char Peek(std::size_t ahead = 0) const {
        return at_ + ahead < source_.size() ? source_[at_ + ahead] : '\0';
    }

    Token Take(Token::Kind kind, std::size_t length) {
        const Token token{kind, 0, source_.substr(at_, length)};
        at_ += length;
        return token;
    }

    Token Next(bool afterName) {
        const char c = Peek();
        if (BeginsWord(c)) {
            std::size_t length = 1;
            while (ContinuesWord(Peek(length))) {
                ++length;
            }
            return Take(Token::Kind::Word, length);
        }
        // Right behind a name a point belongs to a dotted name, even in front of a digit.
        if (IsDigit(c) || (c == '.' && IsDigit(Peek(1)) && !afterName)) {
            return Number();
        }
        switch (c) {
            case '\'':
            case '"':
                return QuotedText(c);
            case '[':
                return Enclosed(Token::Kind::Name, ']');
            case '`':
                return Enclosed(Token::Kind::Name, '`');
            case '#':
                return Enclosed(Token::Kind::Date, '#');
            default:
                break;
        }
        for (const std::string_view sign : TwoCharacterSigns) {
            if (source_.substr(at_, 2) == sign) {
                return Take(Token::Kind::Sign, 2);
            }
        }
        if (c == '\0' || Signs.find(c) == std::string_view::npos) {
            Fail();
        }
        return Take(Token::Kind::Sign, 1);
    }

    Token Number() {
        std::size_t length = 0;
        const auto digits = [&] {
            while (IsDigit(Peek(length))) {
                ++length;
            }
        };
        digits();
        if (Peek(length) == '.') {
            ++length;
            digits();
        }
        if (Upper(Peek(length)) == 'E') {
            const bool sign = Peek(length + 1) == '+' || Peek(length + 1) == '-';
            if (IsDigit(Peek(length + (sign ? 2 : 1)))) {
                length += sign ? 2 : 1;
                digits();
            }
        }
        if (ContinuesWord(Peek(length))) {
            Fail();
        }
        return Take(Token::Kind::Number, length);
    }

    Token QuotedText(char quote) {
        std::size_t length = 1;
        for (;; ++length) {
            if (at_ + length >= source_.size() || Peek(length) == '\0') {
                Fail();
            }
            if (Peek(length) != quote) {
                continue;
            }
            if (Peek(length + 1) != quote) {
                break;
            }
            ++length;
        }
        const Token token{Token::Kind::Text, quote, source_.substr(at_ + 1, length - 1)};
        at_ += length + 1;
        return token;
    }

    Token Enclosed(Token::Kind kind, char close) {
        const std::size_t end = source_.find(close, at_ + 1);
        const std::string_view inside =
            end == std::string_view::npos ? "" : source_.substr(at_ + 1, end - at_ - 1);
        // The engine quotes names with brackets, so that neither bracket may stand inside one.
        if (inside.empty() || inside.find_first_of(std::string_view("[]\0", 3)) != inside.npos) {
            Fail();
        }
        at_ = end + 1;
        return {kind, 0, inside};
    }

    std::string_view source_;
    std::size_t at_ = 0;
};

}  // namespace

std::vector<Token> Tokenize(const QByteArray& source) {
    // Twice what the longest value takes; the tree and what is made of it take several times that.
    constexpr qsizetype LongestSource = 12'000'000;
    if (source.size() > LongestSource) {
        Throw(Failure::Resources);
    }
    return Tokenizer({source.constData(), static_cast<std::size_t>(source.size())}).Run();
}

bool EqualWords(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return Upper(x) == Upper(y); });
}

std::string UpperAscii(std::string_view word) {
    std::string upper(word);
    std::transform(upper.begin(), upper.end(), upper.begin(), Upper);
    return upper;
}

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool SameName(std::string_view a, std::string_view b) {
    if (IsAscii(a)) {
        return EqualWords(a, b);
    }
    return SameName(ToQString(a), b);
}

bool SameName(const QString& a, QAnyStringView b) {
    return QAnyStringView::compare(a, b, Qt::CaseInsensitive) == 0;
}

QString ToQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string Unquote(const Token& token) {
    std::string text;
    for (std::size_t i = 0; i < token.text.size(); ++i) {
        text += token.text[i];
        i += token.text[i] == token.quote ? 1 : 0;
    }
    return text;
}

}  // namespace sql
