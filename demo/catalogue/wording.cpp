#include "wording.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace demo {
namespace {

double NumberOf(QStringView text) {
    return text.toString().replace(u',', u'.').toDouble();
}

QString TextOf(double number) {
    return QString::number(number, 'g', 10).replace(u'.', u',');
}

// "6..30/0,5" as single values.
void AppendRange(QStringView source, QStringList& values) {
    const qsizetype dots = source.indexOf(".."_L1);
    const qsizetype slash = source.indexOf(u'/', dots);
    Q_ASSERT(slash > dots);
    const double first = NumberOf(source.first(dots));
    const double last = NumberOf(source.sliced(dots + 2, slash - dots - 2));
    const double step = NumberOf(source.sliced(slash + 1));
    const auto count = std::lround((last - first) / step) + 1;
    for (long i = 0; i < count; ++i) {
        values.append(TextOf(first + static_cast<double>(i) * step));
    }
}

Wording::Axis ParseAxis(QStringView source) {
    Wording::Axis axis;
    if (const qsizetype colon = source.indexOf(u':'); colon >= 0) {
        axis.name = source.first(colon).toString();
        source = source.sliced(colon + 1);
    }
    for (const QStringView value : source.split(u'|')) {
        if (value.contains(".."_L1)) {
            AppendRange(value, axis.values);
        } else {
            axis.values.append(value.toString());
        }
    }
    return axis;
}

}  // namespace

Wording::Wording(QStringView source) {
    while (true) {
        const qsizetype open = source.indexOf(u'{');
        if (open < 0) {
            break;
        }
        const qsizetype close = source.indexOf(u'}', open);
        Q_ASSERT(close > open);
        literals_.append(source.first(open).toString());
        axes_.append(ParseAxis(source.sliced(open + 1, close - open - 1)));
        source = source.sliced(close + 1);
    }
    literals_.append(source.toString());
}

quint64 Wording::Combinations() const {
    quint64 count = 1;
    for (const Axis& axis : axes_) {
        count *= static_cast<quint64>(axis.values.size());
    }
    return count;
}

QString Wording::Text(const Choices& choices) const {
    Q_ASSERT(choices.size() == axes_.size());
    QString text = literals_.first();
    for (qsizetype i = 0; i < axes_.size(); ++i) {
        text += axes_[i].values[choices[i]];
        text += literals_[i + 1];
    }
    return text;
}

Wording::Choices Wording::ChoicesOf(quint64 combination) const {
    Choices choices;
    for (const Axis& axis : axes_) {
        const auto size = static_cast<quint64>(axis.values.size());
        choices.append(static_cast<quint16>(combination % size));
        combination /= size;
    }
    return choices;
}

}  // namespace demo
