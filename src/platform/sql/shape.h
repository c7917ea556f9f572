#pragma once

#include "platform/sql/columntypes.h"
#include "platform/sql/token.h"

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <optional>
#include <string>
#include <utility>
#include <vector>

// An update's script says the same in a hundred thousand lines, with other values in each. What
// such texts have in common is their shape: two of one shape are translated alike, but for the
// literals that became parameters.
namespace sql {

// A column that something is stored in.
struct Target {
    QString table;
    QString name;
    ColumnType type;
    bool required = false;  // the engine would make up a value in the place of Null

    // What it keeps of a literal's value. Throws Erro 13, 6, 3163 or 3314, with the column's name.
    QVariant Kept(const QVariant& value) const;
};

// The place of a literal in a translation, from ?1 on in their order.
struct Parameter {
    int token = 0;  // of the text
    bool negated = false;
    std::optional<Target> target;  // none: it is compared as it is
};

// Whether literals of a change become parameters.
enum class Literals { Written, Lifted };

class Shape {
public:
    // Throws Erro 3075 as the tokenizer does. The text must outlive it.
    explicit Shape(const QByteArray& source);

    // Equal for texts that are alike but for the values of their numbers and texts.
    const std::string& Key() const { return key_; }

    // The literals that are no parameters, in which texts of a translation must agree, too.
    using Fixed = std::vector<std::pair<int, std::string>>;
    Fixed Without(const std::vector<Parameter>& parameters) const;
    bool Has(const Fixed& fixed) const;

    // What is bound to the parameter. Throws what Target::Kept does.
    QVariant ValueOf(const Parameter& parameter) const;

private:
    std::vector<Token> tokens_;
    std::string key_;
};

// Whether a number of a text is whole and the engine and this program read it alike.
bool IsPlainWhole(std::string_view number);

// A number as it stands in a text.
QVariant NumberOf(const QString& text);

}  // namespace sql
