#include "vocabulary.h"

#include <array>

namespace demo {
namespace {

using enum ComponentKind;

constexpr BillLine pistonValve[] = {
    {TampaoPlastico, 1, 1, 40},
    {TampaSuperior, 1, 1},
    {ParafusoSextavado, 1, 1, 70},
    {ArruelaPressao, 1, 1, 50},
    {Junta, 1, 1, 35},
    {AnelVedacao, 1, 3},
    {MolaCompressao, 1, 1},
    {EmboloComando, 1, 1},
    {Guarnicao, 0, 2},
    {AnelORing, 1, 2},
    {Embolo, 1, 1},
    {LuvaGuia, 1, 1, 60},
    {Corpo, 1, 1},
    {Bujao, 0, 2, 60},
    {AnelVedacao, 1, 2},
    {ValvulaInterna, 1, 1},
    {MolaConica, 1, 1},
    {Assento, 1, 1, 70},
    {CorpoInterno, 1, 1, 50},
    {AnelTrava, 1, 1},
    {Silenciador, 1, 1, 70},
    {Plaqueta, 1, 1, 25},
    {Graxa, 1, 1, 20},
};

constexpr BillLine pedalValve[] = {
    {Pedal, 1, 1, 70},
    {EixoAlavanca, 1, 1},
    {Contrapino, 1, 2},
    {Rolete, 1, 1, 80},
    {Coifa, 1, 1},
    {Base, 1, 1},
    {ParafusoSextavado, 1, 2},
    {ArruelaPressao, 1, 1},
    {PinoComando, 1, 1},
    {Tucho, 1, 1, 70},
    {MolaCompressao, 1, 3},
    {MolaPrato, 0, 1},
    {Embolo, 1, 2},
    {AnelVedacao, 2, 4},
    {Guarnicao, 1, 2},
    {Corpo, 1, 2},
    {ValvulaInterna, 1, 2},
    {MolaConica, 1, 2},
    {AnelORing, 1, 3},
    {Assento, 1, 1},
    {AnelTrava, 1, 2},
    {TampaInferior, 1, 1},
    {ParafusoInterno, 1, 1},
    {Silenciador, 1, 1},
    {TampaoPlastico, 1, 1, 50},
    {Plaqueta, 1, 1, 30},
};

constexpr BillLine discValve[] = {
    {Tampa, 1, 1},        {ParafusoFenda, 1, 1},      {Junta, 1, 1, 60},
    {DiscoValvula, 1, 1}, {MolaCompressao, 1, 1, 60}, {AnelVedacao, 1, 2},
    {Corpo, 1, 1},        {Assento, 1, 1, 50},        {Silenciador, 1, 1, 40},
    {Niple, 0, 1, 40},    {Plaqueta, 1, 1, 20},
};

constexpr BillLine blockValve[] = {
    {Corpo, 1, 1},
    {Membrana, 2, 4},
    {MolaCompressao, 2, 4},
    {Placa, 1, 2},
    {Tampa, 2, 4},
    {ParafusoRegulagem, 1, 2},
    {ParafusoFenda, 1, 2},
    {AnelVedacao, 2, 4},
    {Embolo, 0, 2},
    {AnelORing, 1, 2},
    {ValvulaInterna, 0, 2, 70},
    {Bujao, 0, 2},
    {TampaoPlastico, 1, 2},
    {AnelTrava, 0, 2},
    {Plaqueta, 1, 1, 40},
};

constexpr BillLine leverValve[] = {
    {Alavanca, 1, 1},        {PinoElastico, 1, 1},   {Coifa, 1, 1, 60},
    {Tampa, 1, 1},           {ParafusoFenda, 1, 1},  {Came, 1, 1},
    {EixoAlavanca, 1, 1},    {MolaTorcao, 1, 1, 70}, {Tucho, 1, 1},
    {MolaCompressao, 1, 2},  {Embolo, 1, 1},         {AnelVedacao, 2, 4},
    {Guarnicao, 0, 1},       {Corpo, 1, 1},          {ValvulaInterna, 1, 1},
    {MolaConica, 1, 1},      {AnelTrava, 1, 1},      {TampaInferior, 1, 1, 50},
    {Silenciador, 1, 1, 50}, {Plaqueta, 1, 1, 30},
};

constexpr BillLine levellingValve[] = {
    {Alavanca, 1, 1},        {Porca, 1, 2},      {ArruelaLisa, 1, 1},
    {EixoAlavanca, 1, 1},    {Came, 1, 1},       {Tampa, 1, 1},
    {ParafusoInterno, 1, 1}, {Junta, 1, 1, 70},  {Haste, 1, 1},
    {AnelVedacao, 2, 4},     {Embolo, 1, 1},     {MolaCompressao, 1, 1},
    {ValvulaInterna, 1, 1},  {MolaConica, 1, 1}, {Corpo, 1, 1},
    {Niple, 0, 2},           {Tela, 1, 1, 50},   {TampaoPlastico, 1, 1, 40},
};

constexpr BillLine inlineValve[] = {
    {Tampa, 1, 1},
    {AnelVedacao, 1, 2},
    {MolaCompressao, 1, 1},
    {Embolo, 1, 1, 60},
    {ParafusoRegulagem, 1, 1, 50},
    {Porca, 1, 1, 50},
    {Esfera, 1, 1, 40},
    {Corpo, 1, 1},
    {Assento, 1, 1},
    {AnelTrava, 1, 1, 60},
    {ArruelaVedacao, 1, 1, 60},
};

constexpr BillLine solenoidValve[] = {
    {Porca, 1, 1},        {AnelORing, 1, 2},      {Bobina, 1, 2},          {Conector, 1, 1, 60},
    {Nucleo, 1, 2},       {MolaCompressao, 1, 2}, {AnelVedacao, 1, 3},     {Assento, 1, 1},
    {Membrana, 1, 1, 50}, {Corpo, 1, 1},          {ParafusoInterno, 1, 1}, {Silenciador, 1, 1, 50},
    {Chicote, 1, 1, 40},  {Plaqueta, 1, 1, 50},
};

constexpr BillLine chamber[] = {
    {Tampa, 1, 1},
    {Diafragma, 1, 1},
    {Placa, 1, 1, 50},
    {Haste, 1, 1},
    {MolaRetorno, 1, 1},
    {Carcaca, 1, 1},
    {Abracadeira, 1, 1},
    {ParafusoSextavado, 1, 1},
    {Porca, 1, 1},
    {Forquilha, 1, 1},
    {Contrapino, 1, 1, 60},
    {Coifa, 1, 1, 70},
    {PorcaAutotravante, 1, 1},
    {ArruelaLisa, 1, 1},
    {TampaoPlastico, 1, 1, 50},
};

constexpr BillLine springChamber[] = {
    {TampaoPlastico, 1, 1},
    {ParafusoRegulagem, 1, 1},
    {Porca, 1, 1},
    {TampaSuperior, 1, 1},
    {MolaFreio, 1, 1},
    {Embolo, 1, 1},
    {Guarnicao, 1, 2},
    {AnelORing, 1, 2},
    {Diafragma, 1, 2},
    {Haste, 1, 2},
    {LuvaGuia, 1, 1},
    {AnelVedacao, 1, 3},
    {Flange, 1, 1},
    {AnelTrava, 1, 1},
    {Placa, 1, 1},
    {MolaRetorno, 1, 1},
    {Carcaca, 1, 1},
    {Abracadeira, 1, 2},
    {ParafusoSextavado, 1, 1},
    {PorcaAutotravante, 1, 2},
    {ArruelaLisa, 1, 1},
    {Forquilha, 1, 1},
    {Contrapino, 1, 1},
    {Coifa, 1, 1},
    {Tela, 1, 1, 40},
    {Plaqueta, 1, 1, 50},
};

constexpr BillLine hydraulicCylinder[] = {
    {Coifa, 1, 2},     {Haste, 1, 1},          {AnelTrava, 1, 1},   {ArruelaLisa, 1, 1},
    {Embolo, 1, 2},    {Gaxeta, 1, 3},         {MolaRetorno, 1, 2}, {CorpoCilindro, 1, 1},
    {Bujao, 0, 1, 60}, {ArruelaVedacao, 1, 1}, {AnelVedacao, 0, 2}, {Niple, 0, 1, 50},
};

constexpr BillLine airCylinder[] = {
    {Forquilha, 1, 1, 70}, {Porca, 1, 1},           {Haste, 1, 1},
    {AnelRaspador, 1, 1},  {Vedador, 1, 1},         {Bucha, 1, 1},
    {TampaSuperior, 1, 1}, {AnelORing, 1, 2},       {Embolo, 1, 1},
    {Guarnicao, 1, 2},     {MolaRetorno, 1, 1, 50}, {CorpoCilindro, 1, 1},
    {TampaInferior, 1, 1}, {Prisioneiro, 1, 1, 60}, {PorcaAutotravante, 1, 1, 60},
    {PinoElastico, 0, 1},
};

constexpr BillLine booster[] = {
    {Coifa, 1, 1},
    {Haste, 1, 2},
    {Carcaca, 1, 2},
    {Abracadeira, 1, 1, 60},
    {ParafusoSextavado, 1, 2},
    {Membrana, 1, 2},
    {Embolo, 1, 3},
    {Guarnicao, 1, 3},
    {AnelVedacao, 2, 4},
    {Gaxeta, 1, 2},
    {MolaRetorno, 1, 2},
    {MolaConica, 1, 1},
    {ValvulaInterna, 1, 1},
    {CorpoCilindro, 1, 1},
    {Bujao, 1, 1},
    {ArruelaVedacao, 1, 2},
    {AnelTrava, 1, 2},
    {Retentor, 1, 1},
    {Silenciador, 1, 1, 70},
    {Placa, 1, 1, 50},
    {Plaqueta, 1, 1, 40},
};

constexpr BillLine compressor[] = {
    {ParafusoSextavado, 2, 3},
    {ArruelaLisa, 1, 2},
    {Cabecote, 1, 1},
    {Junta, 2, 4},
    {PlacaValvulas, 1, 1},
    {Lamina, 2, 4},
    {PinoElastico, 1, 2},
    {CorpoCilindro, 1, 1},
    {Prisioneiro, 1, 2},
    {AnelCompressao, 1, 2},
    {AnelOleo, 1, 1},
    {Pistao, 1, 1},
    {PinoPistao, 1, 1},
    {AnelElastico, 1, 2},
    {Biela, 1, 1},
    {Bucha, 1, 1},
    {Bronzina, 1, 2},
    {ParafusoInterno, 1, 2},
    {Carter, 1, 1},
    {Rolamento, 1, 2},
    {Virabrequim, 1, 1},
    {Chaveta, 1, 1},
    {Retentor, 1, 2},
    {Flange, 1, 2},
    {AnelORing, 2, 4},
    {Engrenagem, 1, 1, 70},
    {Porca, 1, 2},
    {ArruelaPressao, 1, 2},
    {Bujao, 0, 2},
    {ArruelaVedacao, 1, 2},
    {Niple, 0, 2},
    {Tampa, 1, 2},
    {Plaqueta, 1, 1, 60},
};

constexpr BillLine compressorHead[] = {
    {ParafusoSextavado, 1, 2}, {ArruelaLisa, 1, 1}, {Cabecote, 1, 1},       {Junta, 1, 3},
    {PlacaValvulas, 1, 1},     {Lamina, 2, 4},      {MolaCompressao, 0, 2}, {PinoElastico, 1, 2},
    {AnelORing, 1, 2},         {Niple, 0, 2},       {Bujao, 0, 1},
};

constexpr BillLine dryer[] = {
    {ElementoFiltrante, 1, 1},
    {AnelORing, 2, 3},
    {Carcaca, 1, 1},
    {MolaCompressao, 1, 2},
    {Base, 1, 1},
    {Corpo, 1, 1},
    {Membrana, 1, 1},
    {ParafusoRegulagem, 1, 1},
    {Porca, 1, 1},
    {Placa, 1, 1},
    {Embolo, 1, 2},
    {AnelVedacao, 2, 4},
    {ValvulaInterna, 1, 1},
    {MolaConica, 1, 1},
    {Assento, 1, 1},
    {AnelTrava, 1, 2},
    {Silenciador, 1, 1},
    {Tela, 1, 1},
    {Resistencia, 1, 1, 50},
    {Conector, 1, 1, 50},
    {ParafusoSextavado, 1, 2},
    {ArruelaPressao, 1, 1},
    {Bujao, 1, 2},
    {Tampa, 1, 1},
    {Esfera, 0, 1},
    {Plaqueta, 1, 1, 60},
};

constexpr BillLine regulator[] = {
    {TampaoPlastico, 1, 1},
    {ParafusoRegulagem, 1, 1},
    {Porca, 1, 1},
    {Tampa, 1, 1},
    {ParafusoFenda, 1, 1},
    {MolaCompressao, 1, 2},
    {Placa, 1, 1},
    {Membrana, 1, 1},
    {Embolo, 1, 2},
    {AnelVedacao, 1, 3},
    {Corpo, 1, 1},
    {ElementoFiltrante, 1, 1, 70},
    {ValvulaInterna, 1, 1},
    {MolaConica, 1, 1},
    {ValvulaEnchimento, 1, 1, 60},
    {Esfera, 0, 1},
    {AnelTrava, 1, 2},
    {Silenciador, 1, 1},
    {Graxa, 1, 1, 20},
};

constexpr BillLine filter[] = {
    {Corpo, 1, 1}, {ElementoFiltrante, 1, 2}, {MolaCompressao, 1, 2}, {AnelORing, 1, 2},
    {Tampa, 1, 2}, {AnelTrava, 1, 2},         {Niple, 0, 1},          {TampaoPlastico, 1, 1, 50},
};

constexpr BillLine coupling[] = {
    {Corpo, 1, 1},
    {Guarnicao, 1, 1},
    {Tampa, 1, 1},
    {MolaTorcao, 1, 1, 60},
    {PinoElastico, 1, 1},
    {Placa, 1, 1},
    {ParafusoFenda, 1, 1, 70},
    {ElementoFiltrante, 1, 1, 40},
    {MolaConica, 1, 1, 50},
    {AnelTrava, 1, 1, 50},
};

constexpr BillLine adjuster[] = {
    {Carcaca, 1, 1},     {CoroaSemFim, 1, 1},    {EixoAlavanca, 1, 1},  {MolaCompressao, 1, 2},
    {Bucha, 1, 2},       {Tampa, 1, 2},          {Rebite, 1, 1},        {Junta, 1, 1},
    {AnelVedacao, 1, 2}, {Bujao, 1, 1},          {Forquilha, 1, 1, 70}, {Contrapino, 1, 1},
    {Esfera, 0, 1},      {Engrenagem, 1, 1, 50},
};

constexpr BillLine calliper[] = {
    {Sapata, 1, 2},          {MolaTorcao, 1, 1},
    {Carcaca, 1, 1},         {Base, 1, 1},
    {Bucha, 2, 3},           {Coifa, 2, 3},
    {Haste, 1, 2},           {Rolamento, 1, 2},
    {Alavanca, 1, 1},        {Retentor, 1, 2},
    {Engrenagem, 1, 1},      {Placa, 1, 2},
    {ParafusoInterno, 1, 2}, {ParafusoSextavado, 1, 2},
    {AnelORing, 1, 3},       {Tampa, 1, 2},
    {TampaoPlastico, 1, 1},  {AnelElastico, 1, 2},
    {MolaRetorno, 1, 1},     {Plaqueta, 1, 1, 40},
};

constexpr std::array<std::span<const BillLine>, static_cast<size_t>(Bill::Count)> bills{{
    {},
    pistonValve,
    pedalValve,
    discValve,
    blockValve,
    leverValve,
    levellingValve,
    inlineValve,
    solenoidValve,
    chamber,
    springChamber,
    hydraulicCylinder,
    airCylinder,
    booster,
    compressor,
    compressorHead,
    dryer,
    regulator,
    filter,
    coupling,
    adjuster,
    calliper,
}};

}  // namespace

std::span<const BillLine> LinesOf(Bill bill) {
    return bills[static_cast<size_t>(bill)];
}

}  // namespace demo
