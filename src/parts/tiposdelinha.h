#pragma once

// A kind of row that the part search finds.
struct TipoDeLinha {
    const char16_t* escolha;  // in the selector, upper-case
    const char16_t* tabela;
    const char16_t* nome;    // in the row's column, and in front of the part views' title
    const char16_t* codigo;  // for the part views
};

// In the order of the union.
inline constexpr TipoDeLinha TiposDeLinha[] = {
    {u"COMPONENTES", u"COMPONENTE", u"Componente", u"COM"},
    {u"JOGOS DE REPARO", u"JOGOREPARO", u"Jogo de Reparo", u"JRE"},
    {u"PEÇAS", u"PECA", u"Peça", u"PCA"},
};
