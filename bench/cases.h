#pragma once

#include <QString>

#include <array>

// What is measured: six searches, each in the four orders that the search screen asks for. Used by
// the program that drives the real screen and by the ordinary program beside it, so it knows
// neither of the two databases.
namespace bench {

enum class Party { None, Maker, Competitor };

struct Search {
    const char* name;
    const char16_t* number;
    const char16_t* description;
    Party party;
    const char16_t* partyNumber;  // null: a whole number out of the catalogue
};

inline constexpr std::array<Search, 6> Searches{{
    {"number 1", u"1", u"", Party::None, u""},
    {"description Válvula", u"", u"Válvula", Party::None, u""},
    {"description *relé", u"", u"*relé", Party::None, u""},
    {"customer number 1", u"", u"", Party::Maker, u"1"},
    {"competitor number, whole", u"", u"", Party::Competitor, nullptr},
    {"everything empty", u"", u"", Party::None, u""},
}};

// The order is that of the control that changed last.
enum class Order { Number, Description, PartyNumber, Kind };

struct OrderBy {
    Order order;
    const char* columns;
};

inline constexpr std::array<OrderBy, 4> Orders{{
    {Order::Number, "1"},
    {Order::Description, "2"},
    {Order::PartyNumber, "3"},
    {Order::Kind, "4,1"},
}};

// Codes in the demonstration catalogue of parties whose numbers are digits only.
inline constexpr int MakerCode = 2;
inline constexpr int CompetitorCode = 16;

inline constexpr char CompetitorNumberSql[] =
    "SELECT NumeroClienteConcorrente FROM REFERENCIACRUZADA"
    " WHERE CodigoClienteConcorrente = 16 ORDER BY NumeroClienteConcorrente LIMIT 1";

QString CaseName(const QString& side, const Search& search, const OrderBy& order);

// Repetitions of one case, from the environment variable BENCH_REPETITIONS.
int Repetitions();

}  // namespace bench
