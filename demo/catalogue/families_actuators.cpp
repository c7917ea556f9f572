#include "vocabulary.h"

namespace demo {
namespace {

constexpr Family families[] = {
    {u"camara-simples", u"Câmaras de freio simples", u"CF",
     u"Câmara de freio simples tipo {tipo:9|12|14|16|20|24|30|36}, curso "
     u"{curso:45|57|64|76}{variante: mm| mm, longa}",
     u"câmara simples tipo {tipo}", Bill::Chamber, 42, Any, Finish::Black},
    {u"camara-dupla", u"Câmaras de freio duplas", u"CD",
     u"Câmara de freio dupla tipo {tipo:12/16|16/24|20/24|20/30|24/24|24/30|30/30}, curso "
     u"{curso:57|64|76} mm{variante:| s/ forq.|, p/ disco}",
     u"câmara dupla tipo {tipo}", Bill::SpringChamber, 46, Any, Finish::Black},
    {u"cilindro-mestre", u"Cilindros mestres", u"CM",
     u"Cilindro mestre {circuitos:simples|duplo} "
     u"{diâmetro:19,05|20,64|22,2|23,81|25,4|28,57|31,75} mm{variante:| c/ reservatório| c/ sensor "
     u"de nível}",
     u"cilindro mestre {diâmetro} mm", Bill::HydraulicCylinder, 30, Motor, Finish::CastIron},
    {u"cilindro-roda", u"Cilindros de roda", u"CR",
     u"Cilindro de roda {diâmetro:17,46|19,05|20,64|22,2|23,81|25,4|28,57|31,75|34,92} mm, "
     u"{eixo:dianteiro|traseiro}{lado:| direito| esquerdo}",
     u"cilindro de roda {diâmetro} mm", Bill::HydraulicCylinder, 30, Motor, Finish::CastIron},
    {u"cilindro-embreagem", u"Cilindros de embreagem", u"CE",
     u"Cilindro {posição:mestre|auxiliar} da embreagem "
     u"{diâmetro:15,87|17,46|19,05|20,64|22,2|23,81|25,4|28,57} mm{variante:| c/ interruptor| c/ "
     u"mangueira}",
     u"cil. {posição} embr. {diâmetro} mm", Bill::HydraulicCylinder, 26, Motor, Finish::Aluminium},
    {u"servo-embreagem", u"Servos de embreagem", u"SE",
     u"Servo de embreagem {diâmetro:70|80|85|90|100|102|110} mm{variante:| c/ indicador| c/ "
     u"sensor}{rosca:|, M12x1,5|, M16x1,5}",
     u"servo de embreagem {diâmetro} mm", Bill::Booster, 28, Motor, Finish::Aluminium},
    {u"servofreio", u"Servofreios", u"SF",
     u"Servofreio{tipo:| duplo} {comando:hidropneumático|a vácuo} {diâmetro:6|7|8|9|10} "
     u"pol.{variante:| c/ cilindro mestre}",
     u"servo {comando} {diâmetro} pol.", Bill::Booster, 20, Motor, Finish::Black},
    {u"cilindro-freio-motor", u"Cilindros do freio motor", u"CT",
     u"Cilindro do freio motor {diâmetro:30|32|35|40} x {curso:25|35|40|50|65} mm{variante:| c/ "
     u"forquilha| c/ rótula}",
     u"cilindro do freio motor {diâmetro} mm", Bill::AirCylinder, 18, Motor, Finish::Zinc},
    {u"cilindro-porta", u"Cilindros da porta", u"CP",
     u"Cilindro da porta {diâmetro:32|40|50|63} x {curso:100|125|150|160|200|250} mm{variante:| c/ "
     u"amortecimento| c/ rótula}",
     u"cilindro da porta {diâmetro} mm", Bill::AirCylinder, 18, Bus, Finish::Aluminium},
    {u"cilindro-bloqueio", u"Cilindros do bloqueio do diferencial", u"CB",
     u"Cilindro do bloqueio do dif. {diâmetro:45|50|55|60|70} x {curso:10|12|14|16} mm{variante:| "
     u"c/ garfo}",
     u"cilindro do bloqueio {diâmetro} mm", Bill::AirCylinder, 14, Truck, Finish::Aluminium},
    {u"cilindro-cambio", u"Cilindros do câmbio", u"CC",
     u"Cilindro {comando:da reduzida|do multiplicador|da tomada de força} "
     u"{diâmetro:40|50|60|70|80} mm{variante:| c/ sensor}",
     u"cil. {comando} {diâmetro} mm", Bill::AirCylinder, 16, Motor, Finish::Aluminium},
    {u"ajustador-folga", u"Ajustadores de folga", u"AF",
     u"Ajustador {comando:automático|manual}, {estrias:10|24|26|28|37} estrias, "
     u"{comprimento:127|140|152|165} mm{lado:|, dir.|, esq.}",
     u"ajustador {comando}, {estrias} estr.", Bill::Adjuster, 38, Any, Finish::CastIron},
    {u"pinca-freio", u"Pinças de freio a disco", u"PF",
     u"Pinça de freio a disco {aro:17,5|19,5|22,5} pol. {lado:direita|esquerda}{variante:| c/ "
     u"suporte| c/ sensor}",
     u"pinça de freio {aro} pol.", Bill::Calliper, 22, Any, Finish::CastIron},
    {u"eixo-expansor", u"Eixos expansores", u"EX",
     u"Eixo expansor, {estrias:10|26|28|37} estrias, {comprimento:420|480|510|545|560|590|620} mm, "
     u"{lado:direito|esquerdo}",
     nullptr, Bill::None, 22, Any, Finish::CastIron},
    {u"bolsa-ar", u"Bolsas de ar da suspensão", u"BA",
     u"Bolsa de ar da suspensão {diâmetro:220|254|270|290|310} x {comprimento:190|240|280|320|390} "
     u"mm{variante:| c/ prato}",
     nullptr, Bill::None, 24, Any, Finish::Rubber},
    {u"diafragma", u"Diafragmas", u"DF",
     u"Diafragma da câmara de freio tipo {tipo:9|12|14|16|20|24|30|36}{variante:|, reforçado}",
     nullptr, Bill::None, 16, Any, Finish::Rubber},
    {u"mola-retorno", u"Molas de retorno", u"ML",
     u"Mola de retorno {posição:da sapata|do pedal|da câmara|da alavanca} {diâmetro:16..32/4} x "
     u"{comprimento:80..220/20} mm",
     nullptr, Bill::None, 20, Any, Finish::Zinc},
};

}  // namespace

std::span<const Family> ActuatorFamilies() {
    return families;
}

}  // namespace demo
