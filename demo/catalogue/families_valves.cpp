#include "vocabulary.h"

namespace demo {
namespace {

constexpr Family families[] = {
    {u"valvula-pedal", u"Válvulas pedal", u"VP",
     u"Válvula pedal de {circuitos:1 circuito|2 circuitos}{variante:| c/ placa| c/ interruptor| c/ "
     u"trava}, {rosca:M12x1,5|M16x1,5|M22x1,5}",
     u"válvula pedal de {circuitos}", Bill::PedalValve, 40, Motor, Finish::Aluminium},
    {u"valvula-rele", u"Válvulas relé", u"VR",
     u"Válvula relé{variante:| c/ silenciador| c/ dreno}, {saídas:2 saídas|4 saídas|6 saídas} "
     u"{rosca:M12x1,5|M16x1,5|M22x1,5}",
     u"válvula relé, {saídas}", Bill::PistonValve, 45, Any, Finish::Aluminium},
    {u"valvula-rele-emergencia", u"Válvulas relé de emergência", u"VE",
     u"Válvula relé de emergência{variante:| c/ alívio| c/ regulagem}, {rosca:M16x1,5|M22x1,5|3/8 "
     u"NPTF}",
     u"relé de emergência, {rosca}", Bill::PistonValve, 28, Trailer, Finish::Aluminium},
    {u"valvula-descarga-rapida", u"Válvulas de descarga rápida", u"VD",
     u"Válvula de descarga rápida, {rosca:M12x1,5|M16x1,5|M22x1,5|1/4 NPTF|3/8 NPTF}{variante:| c/ "
     u"tela|, lateral}",
     u"descarga rápida, {rosca}", Bill::DiscValve, 28, Any, Finish::Zinc},
    {u"valvula-protetora", u"Válvulas protetoras de 4 circuitos", u"VC",
     u"Válvula protetora de 4 circuitos, {pressão:6,5|6,7|7|7,3|7,5|8} bar{variante:| c/ retenção| "
     u"c/ sangria}",
     u"protetora de 4 circuitos, {pressão} bar", Bill::BlockValve, 34, Motor, Finish::Aluminium},
    {u"valvula-protetora-dupla", u"Válvulas protetoras de 2 circuitos", u"VC",
     u"Válvula protetora de {circuitos:2|3} circuitos, {pressão:5,5|6|6,5|7} bar{rosca:|, "
     u"M16x1,5|, M22x1,5}",
     u"protetora de {circuitos} circuitos", Bill::BlockValve, 18, Motor, Finish::Aluminium},
    {u"valvula-sensora-carga", u"Válvulas sensoras de carga", u"VS",
     u"Válvula sensora de carga {comando:mecânica|pneumática}{variante:| c/ relé}, "
     u"{rosca:M12x1,5|M16x1,5|M22x1,5}",
     u"sensora de carga {comando}", Bill::LevellingValve, 30, Any, Finish::Aluminium},
    {u"valvula-freio-mao", u"Válvulas do freio de mão", u"VM",
     u"Válvula do freio de mão{variante:| c/ teste| c/ trava| p/ reboque}, "
     u"{rosca:M12x1,5|M16x1,5|tubo 6 mm|tubo 8 mm}{pressão:|, 8 bar}",
     u"freio de mão, {rosca}", Bill::LeverValve, 34, Motor, Finish::Black},
    {u"valvula-reboque", u"Válvulas de comando do reboque", u"VB",
     u"Válvula de comando do reboque{rosca:, M16x1,5|, M22x1,5}{pressão:|, 0,2 bar|, 0,5 bar|, 1 "
     u"bar}",
     u"comando do reboque{rosca}", Bill::PistonValve, 28, Truck, Finish::Aluminium},
    {u"valvula-limitadora", u"Válvulas limitadoras de pressão", u"VL",
     u"Válvula limitadora de pressão {pressão:4,5|5|5,5|6|6,5|7|7,5|8} bar, "
     u"{rosca:M12x1,5|M16x1,5|M22x1,5}",
     u"válvula limitadora, {rosca}", Bill::InlineValve, 24, Any, Finish::Zinc},
    {u"valvula-seguranca", u"Válvulas de segurança", u"VG",
     u"Válvula de segurança {pressão:8..14/0,5} bar, {rosca:M12x1,5|M16x1,5|M22x1,5|1/4 NPTF}",
     u"válv. segurança, {rosca}", Bill::InlineValve, 18, Any, Finish::Brass},
    {u"valvula-retencao", u"Válvulas de retenção", u"VN",
     u"Válvula de retenção{variante:| dupla| c/ filtro}, "
     u"{rosca:M12x1,5|M14x1,5|M16x1,5|M22x1,5|1/4 NPTF|3/8 NPTF}",
     u"válvula de retenção, {rosca}", Bill::InlineValve, 20, Any, Finish::Brass},
    {u"valvula-dreno", u"Válvulas de dreno", u"VX",
     u"Válvula de dreno {comando:manual|automática|c/ argola|c/ cabo}, "
     u"{rosca:M12x1,5|M16x1,5|M22x1,5|1/4 NPTF}{variante:|, latão}",
     u"válvula de dreno, {rosca}", Bill::InlineValve, 20, Any, Finish::Brass},
    {u"valvula-solenoide", u"Válvulas solenoides", u"VZ",
     u"Válvula solenoide {vias:2/2|3/2|5/2} vias, {tensão:12|24} V, "
     u"{rosca:M10x1|M12x1,5|M16x1,5}{variante:| c/ cabo}",
     u"válvula solenoide {vias} vias", Bill::SolenoidValve, 30, Any, Finish::Black},
    {u"valvula-niveladora", u"Válvulas niveladoras", u"VV",
     u"Válvula niveladora{variante:| c/ bloqueio}, haste "
     u"{comprimento:120|150|180|200|220|250|280|300} mm{lado:|, direita|, esquerda}",
     u"válvula niveladora", Bill::LevellingValve, 28, Any, Finish::Aluminium},
    {u"valvula-freio-motor", u"Válvulas do freio motor", u"VF",
     u"Válvula do freio motor de {comando:botão|pedal|alavanca}, "
     u"{rosca:M10x1|M12x1,5|M16x1,5}{variante:| c/ retorno| c/ trava}",
     u"freio motor de {comando}", Bill::LeverValve, 18, Motor, Finish::Zinc},
    {u"valvula-eixo-suspensor", u"Válvulas do eixo suspensor", u"VQ",
     u"Válvula do eixo suspensor {comando:manual|elétrica 12 V|elétrica 24 V|automática}, "
     u"{rosca:M12x1,5|M16x1,5|M22x1,5}",
     u"eixo suspensor {comando}", Bill::PistonValve, 18, Any, Finish::Aluminium},
    {u"valvula-transbordo", u"Válvulas de transbordo", u"VT",
     u"Válvula de transbordo {variante:c/ retorno|s/ retorno|c/ retorno parcial}, "
     u"{pressão:5|5,5|6|6,5|7|7,5} bar",
     u"transbordo {variante}", Bill::InlineValve, 20, Any, Finish::Aluminium},
    {u"valvula-distribuidora", u"Válvulas distribuidoras", u"VY",
     u"Válvula distribuidora {saídas:2|3|4} saídas, {rosca:M12x1,5|M16x1,5|M22x1,5}{pressão:|, 8 "
     u"bar}",
     u"distribuidora de {saídas} saídas", Bill::PistonValve, 18, Any, Finish::Aluminium},
    {u"valvula-estacionamento", u"Válvulas de estacionamento", u"VK",
     u"Válvula de estacionamento{variante:| dupla} p/ reboque, {rosca:M12x1,5|M16x1,5|M22x1,5|tubo "
     u"8 mm}",
     u"estacionamento p/ reboque", Bill::LeverValve, 20, Trailer, Finish::Aluminium},
};

}  // namespace

std::span<const Family> ValveFamilies() {
    return families;
}

}  // namespace demo
