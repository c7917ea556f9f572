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
    {u"Jogo de reparo", repair}, {u"Jogo de vedações", seals},    {u"Jogo de membranas", membranes},
    {u"Jogo de molas", springs}, {u"Jogo de parafusos", fixings},
};

constexpr KitKind hydraulicKits[] = {
    {u"Jogo de reparo", repair},
    {u"Jogo de gaxetas", seals},
    {u"Jogo de molas", springs},
};

constexpr KitKind compressorKits[] = {
    {u"Jogo de juntas", seals},     {u"Jogo de anéis", rings},       {u"Jogo de válvulas", valves},
    {u"Jogo de mancais", bearings}, {u"Jogo de parafusos", fixings},
};

constexpr KitKind headKits[] = {
    {u"Jogo de juntas", seals},
    {u"Jogo de válvulas", valves},
    {u"Jogo de parafusos", fixings},
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
