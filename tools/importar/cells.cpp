#include "importar/cells.h"

#include "parts/item.h"
#include "platform/convert.h"
#include "platform/system/csv_writer.h"
#include "session/numeros.h"
#include "tabelas/dates.h"

#include <QLocale>
#include <QRegularExpression>

#include <cmath>

using namespace Qt::StringLiterals;
using tabelas::Column;
using tabelas::Kind;

namespace importar {
namespace {

const QString Missing = u"está vazio"_s;
const QString NoWholeNumber = u"não é um número inteiro"_s;
const QString NoNumber = u"não é um número"_s;
const QString Ambiguous = u"pode ser milhar ou decimal: escreva sem ponto, ou com vírgula"_s;
const QString Spoilt =
    u"foi estragado pela planilha: formate a coluna como texto e digite o número de novo"_s;
const QString SpreadsheetError = u"é um erro da planilha"_s;
const QString NoItem = u"não é um item (até quatro algarismos e, se houver, uma letra)"_s;

Cell Stored(const QVariant& value, bool changed = false) {
    return {value, {}, changed};
}

Cell Refused(const QString& complaint) {
    return {{}, complaint, false};
}

// What a spreadsheet makes of a long number, of one with an E between digits, and of one that looks
// like a month.
bool IsSpoilt(const QString& text) {
    static const QRegularExpression scientific(
        u"^[+-]?\\d+([.,]\\d+)?E[+-]\\d+$|^[+-]?\\d+[.,]\\d+E\\d+$"_s,
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression month(
        u"^(\\d{1,4}/)?(jan|fev|mar|abr|mai|jun|jul|ago|set|out|nov|dez)(/\\d{1,4})?$"_s,
        QRegularExpression::CaseInsensitiveOption);
    return (text.contains(u'e', Qt::CaseInsensitive) && scientific.match(text).hasMatch()) ||
           (text.contains(u'/') && month.match(text).hasMatch());
}

bool IsSpreadsheetError(const QString& text) {
    static const QRegularExpression error(
        u"^#(N/D|N/A|REF!|VALOR!|VALUE!|NOME\\?|NAME\\?|DIV/0!|N[ÚU]M!|NULO!|NULL!|#+)$"_s,
        QRegularExpression::CaseInsensitiveOption);
    return text.startsWith(u'#') && error.match(text).hasMatch();
}

std::optional<qint64> WholeNumber(const Value& value) {
    if (value.type == Value::Type::Integer) {
        return value.integer;
    }
    if (value.type == Value::Type::Real) {
        const bool whole = std::trunc(value.real) == value.real && std::abs(value.real) < 0x1p53;
        return whole ? std::optional(static_cast<qint64>(value.real)) : std::nullopt;
    }
    bool number = false;
    const qint64 whole = value.text.trimmed().toLongLong(&number);
    return number ? std::optional(whole) : std::nullopt;
}

Cell Whole(const Value& value, qint64 smallest, qint64 largest) {
    const auto whole = WholeNumber(value);
    if (!whole) {
        return Refused(NoWholeNumber);
    }
    if (*whole < smallest || *whole > largest) {
        return Refused(u"fora da faixa de %1 a %2"_s.arg(smallest).arg(largest));
    }
    return Stored(*whole);
}

// An optional link of an old catalogue may hold 0 or -5 for none.
Cell Code(const Column& column, const Value& value) {
    if (column.mayBeEmpty) {
        const auto whole = WholeNumber(value);
        if (whole && (*whole == 0 || *whole == tabelas::NoCode)) {
            return Stored({});
        }
    }
    return Whole(value, 1, column.largest);
}

// "1.234,5" and "1234,5"; "1.5" where no thousands can be meant. Nothing for what is no number.
std::optional<double> Decimal(const QString& text) {
    static const QRegularExpression brazilian(u"^[+-]?(\\d{1,3}(\\.\\d{3})+|\\d+),\\d+$"_s);
    static const QRegularExpression plain(u"^[+-]?\\d+(\\.\\d+)?$"_s);
    QString number = text;
    if (brazilian.match(text).hasMatch()) {
        number.remove(u'.').replace(u',', u'.');
    } else if (!plain.match(text).hasMatch()) {
        return std::nullopt;
    }
    return QLocale::c().toDouble(number);
}

Cell Number(const Value& value, bool pointDecimals) {
    static const QRegularExpression thousands(u"^[+-]?[1-9]\\d{0,2}(\\.\\d{3})+$"_s);
    if (value.type == Value::Type::Integer) {
        return Stored(value.integer);
    }
    if (value.type == Value::Type::Real) {
        return std::isfinite(value.real) ? Stored(value.real) : Refused(NoNumber);
    }
    const QString text = value.text.trimmed();
    if (!pointDecimals && thousands.match(text).hasMatch()) {
        return Refused(Ambiguous);
    }
    const auto number = Decimal(text);
    return number ? Stored(*number) : Refused(NoNumber);
}

Cell PartNumber(const Value& value, QString (*normalize)(const QString&)) {
    const QString text = value.Shown();
    if (IsSpoilt(text.trimmed()) || (value.type == Value::Type::Real && !WholeNumber(value))) {
        return Refused(Spoilt);
    }
    const QString number = normalize(text);
    return number.isEmpty() ? Refused(u"não tem letra nem algarismo além de zeros"_s)
                            : Stored(number, number != text);
}

QString NormalizeCustomerNumber(const QString& text) {
    return RemoverZerosEsquerda(SomenteAlfanumericos(text));
}

Cell Item(const QString& text) {
    static const QRegularExpression item(u"^\\s*\\d+[a-zA-Z]?\\s*$"_s);
    if (IsSpoilt(text.trimmed())) {
        return Refused(Spoilt);
    }
    try {
        const QString stored = item.match(text).hasMatch() ? FormatarItem(text) : QString();
        return stored.isEmpty() ? Refused(NoItem)
                                : Stored(stored, stored.trimmed() != text.trimmed());
    } catch (const Erro&) {  // five digits
        return Refused(NoItem);
    }
}

Cell Description(const QString& text) {
    qsizetype blanks = 0;
    while (blanks < text.size() && text.at(blanks).isSpace()) {
        ++blanks;
    }
    const QString stored = text.mid(blanks).replace(u'\'', u'´');
    return stored.isEmpty() ? Refused(Missing) : Stored(stored, stored != text);
}

Cell FileName(const QString& text) {
    const QString name = text.trimmed();
    return name.contains(u'/') || name.contains(u'\\')
               ? Refused(u"tem pasta: só o nome do arquivo serve"_s)
               : Stored(name, name != text);
}

Cell Date(const Value& value) {
    if (value.type == Value::Type::Text) {
        const auto date = tabelas::ParseDate(value.text);
        return date ? Stored(*date)
                    : Refused(u"não é uma data (dd/mm/aaaa, com ano de quatro algarismos)"_s);
    }
    const double serial =
        value.type == Value::Type::Real ? value.real : static_cast<double>(value.integer);
    return tabelas::IsDate(serial) ? Stored(serial) : Refused(u"não é uma data"_s);
}

Cell Flag(const Value& value) {
    static const QStringList yes = {u"sim"_s, u"verdadeiro"_s, u"true"_s};
    static const QStringList no = {u"não"_s, u"falso"_s, u"false"_s};
    const QString word = value.text.trimmed().toLower();
    if (yes.contains(word) || no.contains(word)) {
        return Stored(yes.contains(word) ? 1 : 0);
    }
    // The old engine's "true" is -1.
    const Cell whole = Whole(value, -1, 1);
    return whole.complaint.isEmpty() ? Stored(whole.value.toLongLong() == 0 ? 0 : 1)
                                     : Refused(u"não é 0 nem 1"_s);
}

}  // namespace

QString Value::Shown() const {
    switch (type) {
        case Type::Integer:
            return QString::number(integer);
        case Type::Real:
            return sys::CsvNumber(real);
        case Type::Text:
            return text;
        default:
            return {};
    }
}

Cell Convert(const Column& column, const Value& value, bool pointDecimals) {
    if (value.type == Value::Type::Unreadable) {
        return Refused(u"é de um tipo que não pode ser lido"_s);
    }
    const bool text = value.type == Value::Type::Text;
    if (value.type == Value::Type::Null || (text && value.text.trimmed().isEmpty())) {
        return column.mayBeEmpty ? Stored({}) : Refused(Missing);
    }
    if (text && IsSpreadsheetError(value.text.trimmed())) {
        return Refused(SpreadsheetError);
    }
    switch (column.kind) {
        case Kind::Code:
            return Code(column, value);
        case Kind::OwnNumber:
            return PartNumber(value, NormalizarNumero);
        case Kind::CustomerNumber:
            return PartNumber(value, NormalizeCustomerNumber);
        case Kind::Item:
            return Item(value.Shown());
        case Kind::Description:
            return Description(value.Shown());
        case Kind::Caption:
        case Kind::Text:
            return Stored(value.Shown());
        case Kind::FileName:
            return FileName(value.Shown());
        case Kind::Letter:
            return value.Shown().trimmed().size() == 1 ? Stored(value.Shown().trimmed())
                                                       : Refused(u"não é uma letra"_s);
        case Kind::Number:
            return Number(value, pointDecimals);
        case Kind::Date:
            return Date(value);
        case Kind::Flag:
            return Flag(value);
        case Kind::Version:
            return Whole(value, std::numeric_limits<qint16>::min(),
                         std::numeric_limits<qint16>::max());
    }
    return Refused(NoNumber);
}

}  // namespace importar
