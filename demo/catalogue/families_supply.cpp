#include "vocabulary.h"

namespace demo {
namespace {

constexpr Family families[] = {
    {u"compressor-mono", u"Compressores de ar monocilíndricos", u"CA",
     u"Compressor de ar monocilíndrico {diâmetro:75|80|85|88|90|92|100} mm{variante:|, a água|, a "
     u"ar}{acionamento:| c/ polia}",
     u"compressor de ar {diâmetro} mm", Bill::Compressor, 34, Motor, Finish::CastIron},
    {u"compressor-bi", u"Compressores de ar bicilíndricos", u"CA",
     u"Compressor de ar bicilíndrico {diâmetro:75|80|85|88|90|92} mm{variante:|, a "
     u"água}{acionamento:| c/ polia}",
     u"compressor bicilíndrico {diâmetro} mm", Bill::Compressor, 24, Motor, Finish::CastIron},
    {u"cabecote-compressor", u"Cabeçotes do compressor", u"CG",
     u"Cabeçote do compressor {diâmetro:75|80|85|88|90|92|100} mm{variante:|, a água|, a "
     u"ar}{saídas:| c/ alívio}",
     u"cabeçote {diâmetro} mm", Bill::CompressorHead, 22, Motor, Finish::Aluminium},
    {u"secador-ar", u"Secadores de ar", u"SA",
     u"Secador de ar{variante:| c/ regulador| c/ aquecedor}, {pressão:8,1|8,5|9,3|10|12,5} "
     u"bar{tensão:|, 12 V|, 24 V}",
     u"secador de ar, {pressão} bar", Bill::Dryer, 34, Motor, Finish::Aluminium},
    {u"cartucho-secador", u"Cartuchos do secador de ar", u"FS",
     u"Cartucho do secador{variante:| c/ separador}, {rosca:M33x2|M39x1,5|M41x2}{pressão:|, 13 "
     u"bar|, 14 bar}",
     nullptr, Bill::None, 14, Motor, Finish::Black},
    {u"regulador-pressao", u"Reguladores de pressão", u"RP",
     u"Regulador de pressão {pressão:7,3|8,1|8,5|9,3|10|12} bar{variante:| c/ filtro}, "
     u"{rosca:M16x1,5|M22x1,5}",
     u"regulador de pressão {pressão} bar", Bill::Regulator, 32, Motor, Finish::Aluminium},
    {u"separador-agua", u"Separadores de água", u"SG",
     u"Separador de água {comando:automático|manual}, {rosca:M16x1,5|M22x1,5|M26x1,5}{tensão:|, 12 "
     u"V|, 24 V}",
     u"separador de água {comando}", Bill::Filter, 14, Motor, Finish::Aluminium},
    {u"filtro-linha", u"Filtros de linha", u"FL",
     u"Filtro de linha{variante:| duplo| c/ dreno}, "
     u"{rosca:M16x1,5|M18x1,5|M22x1,5|M26x1,5}{material:|, latão}",
     u"filtro de linha, {rosca}", Bill::Filter, 20, Any, Finish::Aluminium},
    {u"reservatorio-ar", u"Reservatórios de ar", u"RA",
     u"Reservatório de ar {volume:5|10|15|20|25|30|40|60} l, diâm. {diâmetro:206|246|276|310|396} "
     u"mm{material:|, alumínio}",
     nullptr, Bill::None, 28, Any, Finish::Black},
    {u"reservatorio-fluido", u"Reservatórios de fluido de freio", u"RF",
     u"Reservatório de fluido{tipo:| duplo} {volume:0,25|0,4|0,5|0,75|1} l{variante:| c/ sensor de "
     u"nível| c/ filtro}",
     nullptr, Bill::None, 14, Motor, Finish::Plastic},
    {u"manometro", u"Manômetros", u"MN",
     u"Manômetro {variante:simples|duplo} 0 a {pressão:10|12|16} bar, {diâmetro:52|60} "
     u"mm{tensão:|, 12 V|, 24 V}",
     nullptr, Bill::None, 16, Motor, Finish::Plastic},
    {u"interruptor-pressao", u"Interruptores de pressão", u"IP",
     u"Interruptor {comando:da luz de freio|de pressão|do freio de mão} {pressão:0,3|0,5|4|5,5|6} "
     u"bar, {rosca:M10x1|M12x1,5|1/4 NPTF}",
     nullptr, Bill::None, 22, Motor, Finish::Brass},
    {u"modulador-abs", u"Moduladores do ABS", u"MD",
     u"Modulador do ABS{variante:| duplo| c/ silenciador} {tensão:12|24} V, "
     u"{rosca:M12x1,5|M16x1,5|M22x1,5}",
     u"modulador do ABS {tensão} V", Bill::SolenoidValve, 24, Any, Finish::Aluminium},
    {u"sensor-rotacao", u"Sensores do ABS", u"SR",
     u"Sensor do ABS {variante:reto|angular}, cabo {comprimento:400|600|800|1000|1300|1700|2100} "
     u"mm{material:| c/ bucha}",
     nullptr, Bill::None, 24, Any, Finish::Black},
    {u"unidade-abs", u"Unidades eletrônicas do ABS", u"UE",
     u"Unidade eletrônica do ABS {vias:2 canais|3 canais|4 canais|6 canais}, {tensão:12|24} "
     u"V{variante:| c/ chicote}",
     nullptr, Bill::None, 16, Any, Finish::Black},
    {u"bobina", u"Bobinas de solenoide", u"BS",
     u"Bobina de solenoide {tensão:12|24} V, {diâmetro:9|11|13|14,5} mm{variante:| c/ conector| c/ "
     u"cabo}",
     nullptr, Bill::None, 16, Any, Finish::Black},
    {u"buzina", u"Buzinas pneumáticas", u"BZ",
     u"Buzina pneumática {variante:simples|dupla}{tensão:|, 12 V|, 24 V}{comprimento:|, 420 mm|, "
     u"580 mm}",
     nullptr, Bill::None, 12, Motor, Finish::Zinc},
};

}  // namespace

std::span<const Family> SupplyFamilies() {
    return families;
}

}  // namespace demo
