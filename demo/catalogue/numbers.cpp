#include "numbers.h"

#include <array>

namespace demo {
namespace {

// Letters that nobody takes for a digit.
constexpr QStringView Letters = u"ABCDEFGHJKLMNPRSTUVWXYZ";

// Grown over the years: plain numbers of the beginnings, then the family's letters, a change letter
// behind, the long ones of today. A form without a prefix never has a letter behind its first
// digit, since the search takes that digit for one that users put in front.
struct System {
    Text pattern;
    quint32 percent;
};
constexpr std::array<System, 7> systems{{
    {u"@+####", 16},
    {u"@+#####", 18},
    {u"@+#####?", 10},
    {u"@+######", 14},
    {u"+#####", 10},
    {u"+######", 20},
    {u"+######?", 12},
}};

quint64 InBase37(QStringView number) {
    Q_ASSERT(number.size() <= 12);
    quint64 value = 0;
    for (const QChar symbol : number) {
        const bool digit = symbol.unicode() <= u'9';
        value = value * 37 + (digit ? symbol.unicode() - u'0' + 1U : symbol.unicode() - u'A' + 11U);
    }
    return value;
}

}  // namespace

QString NumberLike(QStringView pattern, QStringView prefix, Random& random) {
    QString number;
    number.reserve(pattern.size() + prefix.size());
    for (const QChar symbol : pattern) {
        switch (symbol.unicode()) {
            case u'+':
                number += QChar(u'1' + random.Below(9));
                break;
            case u'#':
                number += QChar(u'0' + random.Below(10));
                break;
            case u'?':
                number += Letters[random.Below(static_cast<quint32>(Letters.size()))];
                break;
            case u'@':
                number += prefix;
                break;
            default:
                number += symbol;
        }
    }
    return number;
}

QString OwnNumbers::Take(QStringView prefix, Random& random) {
    while (true) {
        quint32 draw = random.Below(100);
        size_t i = 0;
        while (draw >= systems[i].percent) {
            draw -= systems[i++].percent;
        }
        QString number = NumberLike(systems[i].pattern, prefix, random);
        if (given_.insert(InBase37(number)).second) {
            return number;
        }
    }
}

}  // namespace demo
