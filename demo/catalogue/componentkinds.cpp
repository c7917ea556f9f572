#include "vocabulary.h"

#include <array>

namespace demo {
namespace {

using enum ComponentKind;

constexpr std::array<Component, static_cast<size_t>(ComponentKind::Count)> components{{
    {AnelVedacao, Class::Seal, 2, u"Anel de vedação {6..48/0,5} x {1,5|2|2,5|3}"},
    {AnelORing, Class::Seal, 2, u"Anel O´ring {10..140/1} x {2|2,5|3|3,5|4|5,3}"},
    {AnelRaspador, Class::Seal, 1, u"Anel raspador {12..60/1} mm"},
    {Guarnicao, Class::Seal, 2, u"Guarnição {|labial |em U }{18..96/1} mm"},
    {Gaxeta, Class::Seal, 1,
     u"Gaxeta {|primária |secundária "
     u"}{15,87|17,46|19,05|20,64|22,2|23,81|25,4|28,57|31,75|34,92|38,1|44,45} mm"},
    {Retentor, Class::Seal, 1,
     u"Retentor {16 x 28 x 7|20 x 32 x 7|22 x 35 x 7|25 x 38 x 7|28 x 42 x 7|30 x 44 x 8|32 x 47 x "
     u"8|35 x 52 x 8|38 x 55 x 8|40 x 56 x 8|42 x 62 x 10|45 x 65 x 10|50 x 72 x 10}"},
    {Junta, Class::Seal, 1,
     u"Junta {da tampa|da base|do flange|do corpo}{| de papelão hidráulico| metálica| de "
     u"borracha}"},
    {ArruelaVedacao, Class::Seal, 2,
     u"Arruela de vedação {10 x 13,5|12 x 15,5|14 x 18|16 x 20|18 x 22|22 x 27|26 x 31} x "
     u"{1|1,5|2}{| cobre| alumínio}"},
    {Vedador, Class::Seal, 1, u"Vedador da haste {8..30/1} mm"},
    {Assento, Class::Seal, 1, u"Assento da válvula {10..36/1} mm"},
    {Coifa, Class::Seal, 1, u"Coifa {protetora|da haste|da alavanca} {14..60/2} mm"},
    {Membrana, Class::Membrane, 1, u"Membrana {|superior |inferior |central }{44..180/2} mm"},
    {Diafragma, Class::Membrane, 1,
     u"Diafragma tipo {9|12|14|16|20|24|30|36}{|, reforçado|, longa vida}"},
    {DiscoValvula, Class::Membrane, 1, u"Disco da válvula {18..64/2} mm"},
    {MolaCompressao, Class::Spring, 1, u"Mola de compressão {8..52/0,5} x {18..90/2}"},
    {MolaConica, Class::Spring, 1, u"Mola cônica {16..48/1} x {20..70/2}"},
    {MolaRetorno, Class::Spring, 1,
     u"Mola de retorno {do êmbolo|da haste|da membrana} {14..58/1} mm"},
    {MolaTorcao, Class::Spring, 1, u"Mola de torção {|direita |esquerda }{12..32/1} mm"},
    {MolaPrato, Class::Spring, 4,
     u"Mola prato {16 x 8,2|18 x 9,2|20 x 10,2|23 x 12,2|25 x 12,2|28 x 14,2|31,5 x 16,3} x "
     u"{0,8|1|1,1|1,25|1,5}"},
    {MolaFreio, Class::None, 1, u"Mola do freio de estacionamento tipo {16|20|24|30}"},
    {Embolo, Class::Wear, 1,
     u"Êmbolo {|primário |secundário |intermediário |do relé }{18..110/1} mm"},
    {EmboloComando, Class::Wear, 1, u"Êmbolo de comando {20..90/1} mm"},
    {Haste, Class::None, 1, u"Haste {do êmbolo|da válvula|de acionamento} {6..24/1} x {40..260/5}"},
    {PinoComando, Class::Wear, 1, u"Pino de comando {5..16/1} x {18..72/2}"},
    {Tucho, Class::Wear, 1, u"Tucho {8..26/1} x {20..60/2}"},
    {LuvaGuia, Class::Wear, 1, u"Luva guia {10..48/1} x {12..60/2}"},
    {Bucha, Class::Wear, 2,
     u"Bucha {|de bronze |plástica }{8 x 12|10 x 14|12 x 16|14 x 18|16 x 20|18 x 22|20 x 24|22 x "
     u"26|25 x 30} x {8..40/2}"},
    {ValvulaInterna, Class::Valve, 1,
     u"Válvula de {admissão|escape|admissão e escape} {12..40/1} mm"},
    {CorpoInterno, Class::None, 1, u"Corpo interno {24..90/1} mm"},
    {Rolete, Class::Wear, 2, u"Rolete {8..24/1} x {6..20/1}"},
    {Came, Class::Wear, 1, u"Came {de comando|da alavanca|de regulagem} {16..40/1} mm"},
    {Alavanca, Class::None, 1, u"Alavanca {de acionamento|de comando|de alívio} {60..240/5} mm"},
    {EixoAlavanca, Class::Wear, 1, u"Eixo da alavanca {8..18/1} x {30..80/2}"},
    {Forquilha, Class::None, 1,
     u"Forquilha {M10x1,5|M12x1,75|M14x1,5|M16x1,5} {|curta |longa }c/ pino"},
    {Pedal, Class::None, 1, u"Pedal {curto|longo|articulado} {180..320/5} mm"},
    {Corpo, Class::None, 1,
     u"Corpo {|superior |inferior |intermediário }da válvula{| - alumínio| - usinado}"},
    {CorpoCilindro, Class::None, 1, u"Corpo do cilindro {30..140/1} mm"},
    {Carcaca, Class::None, 1, u"Carcaça {60..240/2} mm{| pintada| zincada}"},
    {Tampa, Class::None, 1, u"Tampa {|cega |roscada |c/ respiro }{24..140/1} mm"},
    {TampaSuperior, Class::None, 1, u"Tampa superior {30..180/1} mm"},
    {TampaInferior, Class::None, 1, u"Tampa inferior {30..180/1} mm"},
    {Flange, Class::None, 1, u"Flange {|de fixação |intermediário }{48..160/2} mm"},
    {Base, Class::None, 1, u"Base {de fixação|de apoio|do suporte} {60..180/5} mm"},
    {ParafusoSextavado, Class::Fixing, 8,
     u"Parafuso sextavado {M6|M8|M10|M12} x {16|20|25|30|35|40|45|50|60|70|80}{| 10.9}"},
    {ParafusoInterno, Class::Fixing, 8,
     u"Parafuso sext. interno {M5|M6|M8|M10} x {12|16|20|25|30|35|40|50|60}"},
    {ParafusoFenda, Class::Fixing, 6,
     u"Parafuso {fenda|fenda cruzada} {M4|M5|M6} x {8|10|12|16|20|25|30}"},
    {ParafusoRegulagem, Class::Fixing, 1,
     u"Parafuso de regulagem {M6|M8|M8x1|M10x1|M12x1,5} x {20..70/5}"},
    {Prisioneiro, Class::Fixing, 6, u"Prisioneiro {M6|M8|M10|M12} x {25..120/5}"},
    {Porca, Class::Fixing, 8,
     u"Porca sextavada {M5|M6|M8|M8x1|M10|M10x1|M12|M12x1,5|M14x1,5|M16x1,5}{| baixa}"},
    {PorcaAutotravante, Class::Fixing, 8, u"Porca autotravante {M5|M6|M8|M10|M12|M14x1,5|M16x1,5}"},
    {ArruelaLisa, Class::Fixing, 8,
     u"Arruela lisa {5,3|6,4|8,4|10,5|13|15|17|21}{| zincada| latão}"},
    {ArruelaPressao, Class::Fixing, 8, u"Arruela de pressão {5|6|8|10|12|14|16}{| zincada}"},
    {AnelTrava, Class::Wear, 2, u"Anel trava {p/ eixo|p/ furo} {8..90/1} mm"},
    {AnelElastico, Class::Wear, 1, u"Anel elástico {10..80/1} x {1|1,2|1,5|1,75|2|2,5}"},
    {Contrapino, Class::Wear, 2, u"Contrapino {2|2,5|3,2|4|5} x {16|20|25|32|40|50}"},
    {PinoElastico, Class::Wear, 2, u"Pino elástico {2,5|3|4|5|6|8} x {12|16|20|24|30|36|40|50}"},
    {Rebite, Class::None, 4, u"Rebite {3,2|4|4,8} x {8|10|12|16}"},
    {Abracadeira, Class::None, 1, u"Abraçadeira {|bipartida |inferior |superior }{110..240/2} mm"},
    {Bujao, Class::None, 2,
     u"Bujão {M10x1|M12x1,5|M16x1,5|M18x1,5|M22x1,5}{| c/ anel de vedação| sext. interno}"},
    {Chaveta, Class::None, 1, u"Chaveta {meia-lua |paralela }{3 x 5|4 x 6,5|5 x 7,5|6 x 9}"},
    {Niple, Class::None, 2, u"Niple {M12x1,5|M14x1,5|M16x1,5|M18x1,5|M22x1,5} x {20..60/2}"},
    {TampaoPlastico, Class::None, 4,
     u"Tampão plástico {M10x1|M12x1,5|M16x1,5|M22x1,5}{| amarelo| preto}"},
    {Silenciador, Class::None, 1, u"Silenciador {|plástico |sinterizado }{22..68/2} mm"},
    {ElementoFiltrante, Class::Wear, 1, u"Elemento filtrante {24..90/2} x {20..120/5}"},
    {Tela, Class::Wear, 1, u"Tela filtrante {12..48/1} mm"},
    {Esfera, Class::Wear, 3, u"Esfera {de aço|de náilon} {4..16/0,5} mm"},
    {Plaqueta, Class::None, 1, u"Plaqueta de identificação{| adesiva| de alumínio}"},
    {ValvulaEnchimento, Class::None, 1, u"Válvula de enchimento {M12x1,5|M16x1,5}{| c/ tampa}"},
    {Bobina, Class::None, 1, u"Bobina {12|24} V{| - baioneta| - cabo de 250 mm| - cabo de 400 mm}"},
    {Conector, Class::None, 1, u"Conector {2|3|4|6|7|15} vias{| macho| fêmea}"},
    {Chicote, Class::None, 1, u"Chicote elétrico {200..900/50} mm"},
    {Nucleo, Class::Wear, 1, u"Núcleo magnético {6..16/0,5} mm"},
    {Resistencia, Class::None, 1, u"Resistência de aquecimento {12|24} V {60|80|100|125} W"},
    {Placa, Class::None, 1, u"Placa {de apoio|de encosto|de pressão} {30..140/2} mm"},
    {Cabecote, Class::None, 1, u"Cabeçote {70..100/1} mm{| refrig. a água| refrig. a ar}"},
    {PlacaValvulas, Class::Valve, 1, u"Placa de válvulas {70..100/1} mm"},
    {Lamina, Class::Valve, 2,
     u"Lâmina de {admissão|descarga} {0,3|0,4|0,5|0,6} mm{| esquerda| direita}"},
    {Pistao, Class::None, 2, u"Pistão {70..100/1} mm {STD|0,25|0,50|0,75|1,00}"},
    {AnelCompressao, Class::PistonRing, 2,
     u"Anel de compressão {70..100/1} mm {STD|0,25|0,50|0,75|1,00}"},
    {AnelOleo, Class::PistonRing, 2, u"Anel de óleo {70..100/1} mm {STD|0,25|0,50|0,75|1,00}"},
    {PinoPistao, Class::PistonRing, 2, u"Pino do pistão {14..24/1} x {50..80/2}"},
    {Biela, Class::None, 2, u"Biela {110..180/2} mm"},
    {Bronzina, Class::Bearing, 2,
     u"Bronzina {da biela|de mancal} {STD|0,25|0,50|0,75|1,00}{| c/ canal}"},
    {Virabrequim, Class::None, 1, u"Virabrequim {cônico|estriado|p/ engrenagem} {180..340/5} mm"},
    {Rolamento, Class::Bearing, 2, u"Rolamento {62|63|64}{04|05|06|07|08|09}{| 2RS| ZZ| C3}"},
    {Engrenagem, Class::None, 1, u"Engrenagem {24..56/1} dentes"},
    {Carter, Class::None, 1, u"Cárter do compressor{| c/ flange| usinado}"},
    {CoroaSemFim, Class::Wear, 1, u"Coroa do sem-fim {10|24|26|28|37} estrias{| reforçada}"},
    {Sapata, Class::None, 2, u"Pastilha {|interna |externa }{17,5|19,5|22,5} pol."},
    {Graxa, Class::None, 1, u"Graxa especial {5|10|20|30} g"},
}};

consteval bool InOrder() {
    for (size_t i = 0; i < components.size(); ++i) {
        if (components[i].kind != static_cast<ComponentKind>(i)) {
            return false;
        }
    }
    return true;
}
static_assert(InOrder());

}  // namespace

std::span<const Component> Components() {
    return components;
}

}  // namespace demo
