#include "vocabulary.h"

namespace demo {
namespace {

constexpr Class repair[] = {Class::Seal, Class::Membrane, Class::Spring, Class::Wear, Class::Valve};
constexpr Class seals[] = {Class::Seal};
constexpr Class membranes[] = {Class::Membrane};
constexpr Class springs[] = {Class::Spring};
constexpr Class fixings[] = {Class::Fixing};
constexpr Class rings[] = {Class::PistonRing};
constexpr Class bearings[] = {Class::Bearing, Class::Seal};
constexpr Class valves[] = {Class::Valve, Class::Spring};

constexpr KitKind pneumaticKits[] = {
    {u"Jogo de reparo", repair}, {u"Vedações", seals},    {u"Membranas", membranes},
    {u"Molas", springs},         {u"Parafusos", fixings},
};

constexpr KitKind hydraulicKits[] = {
    {u"Jogo de reparo", repair},
    {u"Gaxetas", seals},
    {u"Molas", springs},
};

constexpr KitKind compressorKits[] = {
    {u"Juntas", seals},     {u"Anéis", rings},       {u"Válvulas", valves},
    {u"Mancais", bearings}, {u"Parafusos", fixings},
};

constexpr KitKind headKits[] = {
    {u"Juntas", seals},
    {u"Válvulas", valves},
    {u"Parafusos", fixings},
};

}  // namespace

std::span<const KitKind> KitsOf(Bill bill) {
    switch (bill) {
        case Bill::None:
            return {};
        case Bill::HydraulicCylinder:
            return hydraulicKits;
        case Bill::Compressor:
            return compressorKits;
        case Bill::CompressorHead:
            return headKits;
        default:
            return pneumaticKits;
    }
}

}  // namespace demo
