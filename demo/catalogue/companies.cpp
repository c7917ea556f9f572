#include "vocabulary.h"

#include <array>

namespace demo {
namespace {

// --- vehicle makers

constexpr Text brandovarNumbers[] = {u"BV+######", u"BV+######??"};
constexpr Text brandovarVehicles[] = {
    u"Trovador {13.170 4x2|15.190 4x2|17.230 4x2|17.280 4x2|24.280 6x2|26.280 6x4|31.330 6x4} - "
    u"{cabine simples|cabine leito} - {1998 a 2003|2004 a 2008|2009 a 2012|2013 em diante}",
    u"Mensageiro {8.120|9.150|10.160|11.180} 4x2 - {1999 a 2005|2006 a 2011|2012 em diante}"};

constexpr Text corvandelNumbers[] = {u"+########", u"+########?"};
constexpr Text corvandelVehicles[] = {
    u"CV {1418 4x2|1620 4x2|1722 4x2|2028 4x2|2431 6x2|2638 6x4} - {chassi curto|chassi "
    u"longo|cavalo mecânico} - {1996 a 2002|2003 a 2009|2010 em diante}",
    u"Barranco {2630|3240|4144} 6x4 - betoneira - {2005 a 2011|2012 em diante}"};

constexpr Text dravemoNumbers[] = {u"D+#####", u"D+#######", u"+####D###"};
constexpr Text dravemoVehicles[] = {
    u"D-Série {410|460|500|540} {4x2|6x2|6x4} - {cabine baixa|cabine alta} - {2007 a 2013|2014 a "
    u"2019|2020 em diante}"};

constexpr Text faldrinNumbers[] = {u"F+#####", u"FA+####?##"};
constexpr Text faldrinVehicles[] = {
    u"Pampeiro {1215|1317|1519|1723|2429} - {chassi|basculante|baú} - {2000 a 2006|2007 a "
    u"2012|2013 em diante}",
    u"Ventaneiro {6.5|7.0|8.5} t - {2008 a 2014|2015 em diante}"};

constexpr Text helvardeNumbers[] = {u"HV+####?", u"HV+#####", u"+######HV"};
constexpr Text helvardeVehicles[] = {
    u"HV {330|370|420|480} {4x2|6x2|6x4|8x4} - {suspensão mecânica|suspensão pneumática} - {2001 a "
    u"2008|2009 a 2016|2017 em diante}"};

constexpr Text kessvoldNumbers[] = {u"+######", u"+#######"};
constexpr Text kessvoldVehicles[] = {
    u"Norral {360|400|440|500|560} {4x2|6x2|6x4} - {cabine leito|cabine alta} - {1998 a 2004|2005 "
    u"a 2012|2013 em diante}",
    u"Norral Canteiro {440|500} {6x4|8x4} - {2010 em diante|2016 em diante}"};

constexpr Text morandezaNumbers[] = {u"MZ+#####", u"M+######?"};
constexpr Text morandezaVehicles[] = {
    u"Lavra {2635|3138|4140} {6x4|8x4} - {canavieiro|fora de estrada|florestal} - {2002 a "
    u"2009|2010 a 2015|2016 em diante}",
    u"Militar {4x4|6x6} {5 t|10 t} - {1995 a 2004|2005 em diante}"};

constexpr Text guarabaNumbers[] = {u"GB+####", u"+#####GB"};
constexpr Text guarabaVehicles[] = {
    u"Sanhaço {urbano|midi|articulado} - {motor dianteiro|motor traseiro} - {piso normal|piso "
    u"baixo} - {1999 a 2005|2006 a 2013|2014 em diante}",
    u"Sanhaço rodoviário {4x2|6x2|8x2} - {12 m|14 m} - {1999 a 2005|2006 a 2013|2014 em diante}"};

constexpr Text jatorimNumbers[] = {u"J+#######", u"JT+####?"};
constexpr Text jatorimVehicles[] = {
    u"Chassi JT {1318|1519|1722|1725|1836} - {motor dianteiro|motor traseiro|motor central} - "
    u"{1997 a 2004|2005 a 2011|2012 em diante}"};

constexpr Text rodalvaNumbers[] = {u"+#####?", u"RD+######"};
constexpr Text rodalvaVehicles[] = {
    u"Micro-ônibus Rodal {R8|R9|R10} - {escolar|urbano|executivo|fretamento} - {2003 a 2008|2009 a "
    u"2014|2015 em diante}"};

constexpr Text pelvarimNumbers[] = {u"PV+####", u"PV+#####?", u"+#######"};
constexpr Text pelvarimVehicles[] = {
    u"Semirreboque {basculante|graneleiro|tanque|frigorífico|sider|porta-contêiner|prancha} - {2 "
    u"eixos|3 eixos} - {suspensão mecânica|suspensão pneumática} - {até 2007|2008 em diante}"};

constexpr Text tirvaneNumbers[] = {u"T+######", u"TV+###?##"};
constexpr Text tirvaneVehicles[] = {
    u"{Bitrem|Rodotrem|Reboque} {canavieiro|florestal|graneleiro|basculante|tanque} - {freio a "
    u"tambor|freio a disco} - {até 2010|2011 em diante}",
    u"Eixo dirigível {9 t|10 t|11 t} - {freio a tambor|freio a disco}"};

constexpr std::array<Maker, 12> makers{{
    {{u"Brandovar Caminhões", brandovarNumbers}, Truck, brandovarVehicles},
    {{u"Corvandel", corvandelNumbers}, Truck, corvandelVehicles},
    {{u"Dravemo", dravemoNumbers}, Truck, dravemoVehicles},
    {{u"Faldrin", faldrinNumbers}, Truck, faldrinVehicles},
    {{u"Guarabá Ônibus", guarabaNumbers}, Bus, guarabaVehicles},
    {{u"Helvarde", helvardeNumbers}, Truck, helvardeVehicles},
    {{u"Jatorim Chassis", jatorimNumbers}, Bus, jatorimVehicles},
    {{u"Kessvold", kessvoldNumbers}, Truck, kessvoldVehicles},
    {{u"Morandeza", morandezaNumbers}, Truck, morandezaVehicles},
    {{u"Pelvarim Implementos", pelvarimNumbers}, Trailer, pelvarimVehicles},
    {{u"Rodalva", rodalvaNumbers}, Bus, rodalvaVehicles},
    {{u"Tirvane Reboques", tirvaneNumbers}, Trailer, tirvaneVehicles},
}};

// --- competitors

constexpr Text digits6[] = {u"+#####"};
constexpr Text digits8[] = {u"+#######", u"+######?"};
constexpr Text digits10[] = {u"+#########"};
constexpr Text birkovatNumbers[] = {u"BK+###", u"BK+####?"};
constexpr Text cendraloxNumbers[] = {u"CX+#####", u"CXR+####"};
constexpr Text estrelvenNumbers[] = {u"E+####", u"ES+#####"};
constexpr Text gelsadurNumbers[] = {u"G+##?###"};
constexpr Text javolteNumbers[] = {u"JV+####??", u"JV+####"};
constexpr Text kromelidNumbers[] = {u"KR+#####", u"K+######"};
constexpr Text lavrondNumbers[] = {u"LV+###", u"LV+###?"};
constexpr Text orvitaldNumbers[] = {u"OR+######"};
constexpr Text sundrakNumbers[] = {u"S+####?", u"SD+#####"};
constexpr Text wexdahlNumbers[] = {u"WX+###", u"W+#####"};

constexpr std::array<Company, 15> competitors{{
    {u"Birkovat Freios", birkovatNumbers},
    {u"Cendralox", cendraloxNumbers},
    {u"Estrelven", estrelvenNumbers},
    {u"Fravonil", digits6},
    {u"Gelsadur Pneumática", gelsadurNumbers},
    {u"Hortvalen", digits8},
    {u"Ilmerac", digits10},
    {u"Javolte", javolteNumbers},
    {u"Kromelid", kromelidNumbers},
    {u"Lavrond", lavrondNumbers},
    {u"Orvitald Peças", orvitaldNumbers},
    {u"Pravelin", digits8},
    {u"Sundrak", sundrakNumbers},
    {u"Trivelnar", digits6},
    {u"Wexdahl Brasil", wexdahlNumbers},
}};

}  // namespace

std::span<const Maker> Makers() {
    return makers;
}

std::span<const Company> Competitors() {
    return competitors;
}

}  // namespace demo
