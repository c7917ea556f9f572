#include "platform/sql/shape.h"

#include "platform/convert.h"
#include "platform/sql/errors.h"

#include <algorithm>

namespace sql {

namespace {

bool IsLiteral(const Token& token) {
    return token.kind == Token::Kind::Number || token.kind == Token::Kind::Text;
}

char Mark(const Token& token) {
    constexpr std::string_view Marks = "wnNTDS.";  // in the order of the kinds
    const bool whole = token.kind == Token::Kind::Number && IsPlainWhole(token.text);
    return whole ? 'W' : Marks[static_cast<std::size_t>(token.kind)];
}

}  // namespace

bool IsPlainWhole(std::string_view number) {
    return number.size() <= 18 && number.find_first_not_of("0123456789") == std::string_view::npos;
}

QVariant NumberOf(const QString& text) {
    bool whole = false;
    const qlonglong number = text.toLongLong(&whole);
    return whole ? QVariant(number) : QVariant(text.toDouble());
}

QVariant Target::Kept(const QVariant& value) const {
    QVariant kept;
    try {
        kept = type.Store(value);
    } catch (const Erro& erro) {
        throw Erro(erro.Number(), erro.Description() + u' ' + name);
    }
    if (required && convert::IsNull(kept)) {
        Throw(Failure::NotNull, table + u'.' + name);
    }
    return kept;
}

Shape::Shape(const QByteArray& source) : tokens_(Tokenize(source)) {
    key_.reserve(static_cast<std::size_t>(source.size()) + tokens_.size());
    for (const Token& token : tokens_) {
        key_ += Mark(token);
        if (!IsLiteral(token)) {
            key_ += token.text;
            key_ += '\0';  // stands in no text
        }
    }
}

Shape::Fixed Shape::Without(const std::vector<Parameter>& parameters) const {
    Fixed fixed;
    for (int i = 0; i < static_cast<int>(tokens_.size()); ++i) {
        const Token& token = tokens_[static_cast<std::size_t>(i)];
        const bool lifted =
            std::any_of(parameters.begin(), parameters.end(),
                        [i](const Parameter& parameter) { return parameter.token == i; });
        if (IsLiteral(token) && !lifted) {
            fixed.emplace_back(i, Unquote(token));
        }
    }
    return fixed;
}

bool Shape::Has(const Fixed& fixed) const {
    return std::all_of(fixed.begin(), fixed.end(), [this](const auto& literal) {
        return Unquote(tokens_[static_cast<std::size_t>(literal.first)]) == literal.second;
    });
}

QVariant Shape::ValueOf(const Parameter& parameter) const {
    const Token& token = tokens_[static_cast<std::size_t>(parameter.token)];
    const QVariant value = token.kind == Token::Kind::Text
                               ? QVariant(token.text.find(token.quote) == std::string_view::npos
                                              ? ToQString(token.text)
                                              : ToQString(Unquote(token)))
                               : NumberOf((parameter.negated ? QStringLiteral("-") : QString()) +
                                          ToQString(token.text));
    return parameter.target ? parameter.target->Kept(value) : value;
}

}  // namespace sql
