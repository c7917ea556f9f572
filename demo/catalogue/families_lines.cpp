#include "vocabulary.h"

namespace demo {
namespace {

constexpr Family families[] = {
    {u"mao-de-amigo-emergencia", u"Mãos de amigo (emergência)", u"MA",
     u"Mão de amigo vermelha{variante:| c/ filtro| c/ válvula| c/ suporte}, "
     u"{rosca:M16x1,5|M22x1,5}{posição:|, caminhão|, reboque}",
     u"mão de amigo, {rosca}", Bill::Coupling, 16, Any, Finish::Red},
    {u"mao-de-amigo-servico", u"Mãos de amigo (serviço)", u"MA",
     u"Mão de amigo amarela{variante:| c/ filtro| c/ válvula| c/ suporte}, "
     u"{rosca:M16x1,5|M22x1,5}{posição:|, caminhão|, reboque}",
     u"mão de amigo, {rosca}", Bill::Coupling, 16, Any, Finish::Yellow},
    {u"engate-rapido", u"Engates rápidos", u"ER",
     u"Engate rápido {forma:reto|em cotovelo|em T}, tubo {diâmetro:6|8|10|12|15|16} mm x "
     u"{rosca:M10x1|M12x1,5|M16x1,5|M22x1,5}",
     nullptr, Bill::None, 34, Any, Finish::Plastic},
    {u"conexao", u"Conexões de compressão", u"CX",
     u"Conexão {forma:reta|em cotovelo|em T|orientável}, tubo {diâmetro:6|8|10|12|15|18} mm x "
     u"{rosca:M10x1|M12x1,5|M14x1,5|M16x1,5|M22x1,5}",
     nullptr, Bill::None, 36, Any, Finish::Brass},
    {u"niple", u"Niples e reduções", u"NP",
     u"{forma:Niple duplo|Niple de redução|Luva de redução} "
     u"{rosca:M12x1,5|M14x1,5|M18x1,5|M22x1,5} x {saída:M10x1|M16x1,5|1/4 NPTF|3/8 NPTF}",
     nullptr, Bill::None, 24, Any, Finish::Brass},
    {u"mangueira-freio", u"Mangueiras de freio", u"MF",
     u"Mangueira de freio {comprimento:300..1200/50} mm, "
     u"{rosca:M10x1|M12x1,5|M16x1,5|M22x1,5}{variante:| c/ mola}",
     nullptr, Bill::None, 36, Any, Finish::Rubber},
    {u"mangueira-espiral", u"Mangueiras espirais", u"ME",
     u"Mangueira espiral {cor:vermelha|amarela|preta|azul} {comprimento:3|3,5|4|4,5|5|6} m, "
     u"{rosca:M16x1,5|M22x1,5}{variante:| c/ mola}",
     nullptr, Bill::None, 26, Any, Finish::Red},
    {u"cabo-espiral", u"Cabos elétricos espirais", u"EL",
     u"Cabo elétrico espiral {vias:5|7|15} vias, {comprimento:3|3,5|4|4,5} m, {tensão:12|24} "
     u"V{variante:| p/ ABS}",
     nullptr, Bill::None, 16, Any, Finish::Black},
    {u"tubo-poliamida", u"Tubos de poliamida", u"TP",
     u"Tubo de poliamida {diâmetro:4 x 1|6 x 1|8 x 1|10 x 1,25|12 x 1,5|15 x 1,5|16 x 2} mm, rolo "
     u"{comprimento:10|25|50|100} m{cor:|, preto|, azul|, vermelho}",
     nullptr, Bill::None, 20, Any, Finish::Plastic},
    {u"silenciador", u"Silenciadores", u"SL",
     u"Silenciador de descarga {rosca:M12x1,5|M16x1,5|M22x1,5|engate rápido}{variante:|, "
     u"plástico|, sinterizado|, reforçado}",
     nullptr, Bill::None, 12, Any, Finish::Plastic},
    {u"tomada-teste", u"Tomadas de teste", u"TT",
     u"Tomada de teste {rosca:M10x1|M12x1,5|M16x1,5|M22x1,5}{variante:| c/ tampa| c/ corrente|, "
     u"longa}",
     nullptr, Bill::None, 14, Any, Finish::Brass},
    {u"suporte", u"Suportes", u"SP",
     u"Suporte {posição:da câmara de freio|da válvula|do reservatório|do secador} "
     u"{comprimento:80|100|120|150|180} mm{material:|, zincado}",
     nullptr, Bill::None, 18, Any, Finish::Black},
    // Stands in the gallery, and nothing is sold under it yet.
    {u"ferramenta", u"Ferramentas especiais", u"FE", u"Ferramenta especial", nullptr, Bill::None, 0,
     Any, Finish::Zinc},
};

}  // namespace

std::span<const Family> LineFamilies() {
    return families;
}

}  // namespace demo
