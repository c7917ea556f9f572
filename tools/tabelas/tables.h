#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

// The tables of a catalogue as the people who fill them see them: columns, what may stand in them,
// and what points where. docs/catalogue-file.md tells the same in prose.
namespace tabelas {

enum class Kind {
    Code,            // a whole number above 0; the table's own, or a link
    OwnNumber,       // what NormalizarNumero leaves
    CustomerNumber,  // the same with the digit in front of a first letter
    Item,            // what FormatarItem leaves
    Description,     // found by its beginning
    Caption,         // a name that is only shown
    Text,
    FileName,
    Letter,
    Number,
    Date,
    Flag,
    Version,  // 16 bits
};

enum class Id {
    Customers,
    Gallery,
    Figures,
    Parts,
    Components,
    Kits,
    Vehicles,
    PartItems,
    KitItems,
    VehicleParts,
    CrossReferences,
    Markers,
    Settings,
    Selection,
};

struct Column {
    QString name;
    Kind kind;
    bool mayBeEmpty = false;
    std::optional<Id> target = {};  // of a link
    qint64 largest = 0;             // of a code that is no link
    QString explanation = {};       // for the user, in Portuguese
};

struct Table {
    Id id;
    QString name;
    std::vector<Column> columns;
    int key;  // so many of the first columns tell a row from every other
    // The column by which other tables may link to a row instead of by its code, -1 for none.
    int byName = -1;
    // The column whose codes are given out where they are missing, -1 for none.
    int givenOut = -1;

    QStringList ColumnNames() const;
    int IndexOf(const QString& column) const;  // without regard to case, -1 for none
};

// In the order in which rows can go in: what a link leads to stands before the link.
const std::vector<Table>& All();
const Table& Of(Id id);

// The column by which `link` is told without a code; null for a column that is no such link.
const Column* NameColumnOf(const Column& link);
// That one where a file of the table's rows may hold it in place of the link. What is the table's
// own column under the same name is no link.
const Column* NameInPlaceOf(const Column& link, const Table& table);

// Codes with six digits are what the way from a search row to its parts carries; those of vehicle
// makers are held in 16 bits.
inline constexpr qint64 LargestMakerCode = 32767;
inline constexpr QChar MakerLetter = u'I';
inline constexpr int NoCode = -5;

}  // namespace tabelas
