#include "platform/convert.h"

#include <QLocale>
#include <QRegularExpression>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

double NumberOf(const QString& text) {
    bool ok = false;
    // Not by way of a locale, which would skip the commas of "1,000".
    const double number = text.trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(number)) {
        throw Erro(Erro::TypeMismatch);
    }
    return number;
}

}  // namespace

QString convert::ToText(const QVariant& value) {
    if (IsNull(value)) {
        throw Erro(Erro::InvalidUseOfNull);
    }
    return ToTextOrEmpty(value);
}

QString convert::ToTextOrEmpty(const QVariant& value) {
    if (value.typeId() != QMetaType::Double) {
        return value.toString();
    }
    return QLocale::c().toString(value.toDouble(), 'g', 15).remove(QLatin1Char(','));
}

QString convert::ToShownText(const QVariant& value) {
    const bool isNumber = value.typeId() == QMetaType::Double;
    return isNumber ? ToTextOrEmpty(value).replace(u'.', u',') : ToTextOrEmpty(value);
}

double convert::ToDouble(const QVariant& value) {
    if (IsNull(value)) {
        throw Erro(Erro::InvalidUseOfNull);
    }
    if (value.typeId() == QMetaType::QString) {
        return NumberOf(value.toString());
    }
    bool ok = false;
    const double number = value.toDouble(&ok);
    if (!ok) {
        throw Erro(Erro::TypeMismatch);
    }
    return number;
}

qint64 convert::ToInt64(const QVariant& value) {
    if (value.typeId() == QMetaType::LongLong || value.typeId() == QMetaType::Int) {
        return value.toLongLong();
    }
    const double number = std::nearbyint(ToDouble(value));
    // 2^63 is the first double past the range.
    if (!(number >= -0x1p63 && number < 0x1p63)) {
        throw Erro(Erro::Overflow);
    }
    return static_cast<qint64>(number);
}

double convert::Val(QStringView text) {
    QString plain = text.toString();
    plain.remove(u' ').remove(u'\t');
    static const QRegularExpression leading(
        u"^[+-]?(\\d+\\.?\\d*|\\.\\d+)([eEdD][+-]?\\d{1,3})?"_s);
    return leading.match(plain).captured().replace("d"_L1, "e"_L1, Qt::CaseInsensitive).toDouble();
}
