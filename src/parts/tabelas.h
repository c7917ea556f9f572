#pragma once

#include <QString>

// Joined tables that several queries on a part read from, for behind "FROM ".
namespace tabelas {

// A row for each item and kit; an item without a kit has one, with Null.
inline const QString ItensComJogos = QStringLiteral(
    "(PECA_COMPONENTE "
    "LEFT JOIN PECA_COMPONENTE_JOGOREPARO "
    "ON PECA_COMPONENTE.CodigoPeca = PECA_COMPONENTE_JOGOREPARO.CodigoPeca "
    "AND PECA_COMPONENTE.ItemComponente = PECA_COMPONENTE_JOGOREPARO.ItemComponente) "
    "INNER JOIN COMPONENTE "
    "ON PECA_COMPONENTE.CodigoComponente = COMPONENTE.CodigoComponente");

// A row for each kit and item that it is for.
inline const QString JogosDaPeca = QStringLiteral(
    "PECA_COMPONENTE_JOGOREPARO "
    "INNER JOIN JOGOREPARO "
    "ON PECA_COMPONENTE_JOGOREPARO.CodigoJogoReparo = JOGOREPARO.CodigoJogoReparo");

}  // namespace tabelas
