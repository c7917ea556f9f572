#pragma once

#include "render/componentkind.h"

#include <QtGlobal>

#include <span>

// The words of the demonstration: what the maker sells, of what it is made, who buys it. Constant
// tables; the texts in braces are places of a Wording.
namespace demo {

using render::ComponentKind;

using Text = const char16_t*;

// --- components (componentkinds.cpp)

// What a kit gathers. A component is of one class or of none.
enum class Class : quint8 {
    None,
    Seal,
    Membrane,
    Spring,
    Wear,  // what a full repair replaces besides seals and springs
    Fixing,
    PistonRing,
    Bearing,
    Valve,
};

struct Component {
    ComponentKind kind;
    Class group;
    quint8 most;  // of one item in a part; 1: never more
    Text wording;
};

std::span<const Component> Components();  // one for each kind, in its order

// --- bills of material (bills.cpp)

// A run of items of one kind, in the order in which a figure pulls a part apart.
struct BillLine {
    ComponentKind kind;
    quint8 least;
    quint8 most;
    quint8 percent = 100;  // of the constructions have the line at all
};

enum class Bill : quint8 {
    None,
    PistonValve,
    PedalValve,
    DiscValve,
    BlockValve,
    LeverValve,
    LevellingValve,
    InlineValve,
    SolenoidValve,
    Chamber,
    SpringChamber,
    HydraulicCylinder,
    AirCylinder,
    Booster,
    Compressor,
    CompressorHead,
    Dryer,
    Regulator,
    Filter,
    Coupling,
    Adjuster,
    Calliper,
    Count
};

std::span<const BillLine> LinesOf(Bill bill);

// --- repair kits (kitkinds.cpp)

struct KitKind {
    Text title;
    std::span<const Class> groups;
};

std::span<const KitKind> KitsOf(Bill bill);

// --- families of parts (families_*.cpp)

enum Use : quint8 { Truck = 1, Bus = 2, Trailer = 4, Motor = Truck | Bus, Any = Motor | Trailer };

enum class Finish : quint8 {
    Aluminium,
    Black,
    Zinc,
    CastIron,
    Brass,
    Plastic,
    Rubber,
    Red,
    Yellow
};

// A kind of part: one gallery picture, one photograph for each look, one drawing for each
// construction. The places of the wording are the parameters of all three.
struct Family {
    Text slug;     // in file names
    Text caption;  // under the gallery picture
    Text prefix;   // letters of its numbers
    Text wording;
    Text kitNoun;  // how a kit names the family; "{saídas}" takes the construction's own value
    Bill bill;
    quint8 weight;
    Use use;
    Finish finish;
};

std::span<const Family> ValveFamilies();
std::span<const Family> ActuatorFamilies();
std::span<const Family> SupplyFamilies();
std::span<const Family> LineFamilies();

// --- vehicle makers and competitors (companies.cpp)

// In a number, "+" stands for a digit from 1 to 9, "#" for any digit, "?" for a letter, "@" for the
// family's prefix; all else for itself.
struct Company {
    Text name;
    std::span<const Text> numbers;
};

struct Maker {
    Company company;
    Use use;
    std::span<const Text> vehicles;
};

std::span<const Maker> Makers();
std::span<const Company> Competitors();

}  // namespace demo
