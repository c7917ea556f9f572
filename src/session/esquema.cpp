#include "session/esquema.h"

#include "platform/dao/dao.h"
#include "platform/secret.h"
#include "platform/system/clock.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

// Texts of the engine, not of the dialect: collation, views and triggers have no words there.
//
// The three kinds of row (PECA, COMPONENTE, JOGOREPARO) are read in the order of number or
// description, so both indexes hold what the search shows: it never has to look up the row.
// Codes are positive: -5 stands for none, wherever one is asked for.
// Unique keys are also what makes an update's script that runs twice fail where it already ran.
constexpr char Tabelas[] = R"(
CREATE TABLE PECA (
    CodigoPeca INTEGER PRIMARY KEY,
    NumeroTarvoPeca TEXT COLLATE TARVO,
    DescricaoPeca TEXT COLLATE TARVO,
    ArquivoFotoPeca TEXT COLLATE TARVO,
    CodigoFotoPecaPesquisa INTEGER,
    CodigoFigura INTEGER,
    CHECK (CodigoPeca > 0 AND CodigoFotoPecaPesquisa > 0 AND CodigoFigura > 0));
CREATE INDEX PECA_NUMERO ON PECA (NumeroTarvoPeca, DescricaoPeca);
CREATE INDEX PECA_DESCRICAO ON PECA (DescricaoPeca, NumeroTarvoPeca);
CREATE INDEX PECA_FOTO ON PECA (CodigoFotoPecaPesquisa);
CREATE INDEX PECA_FIGURA ON PECA (CodigoFigura);

CREATE TABLE COMPONENTE (
    CodigoComponente INTEGER PRIMARY KEY,
    NumeroTarvoComponente TEXT COLLATE TARVO,
    DescricaoComponente TEXT COLLATE TARVO,
    CHECK (CodigoComponente > 0));
CREATE INDEX COMPONENTE_NUMERO ON COMPONENTE (NumeroTarvoComponente, DescricaoComponente);
CREATE INDEX COMPONENTE_DESCRICAO ON COMPONENTE (DescricaoComponente, NumeroTarvoComponente);

CREATE TABLE JOGOREPARO (
    CodigoJogoReparo INTEGER PRIMARY KEY,
    NumeroTarvoJogoReparo TEXT COLLATE TARVO,
    DescricaoJogoReparo TEXT COLLATE TARVO,
    CHECK (CodigoJogoReparo > 0));
CREATE INDEX JOGOREPARO_NUMERO ON JOGOREPARO (NumeroTarvoJogoReparo, DescricaoJogoReparo);
CREATE INDEX JOGOREPARO_DESCRICAO ON JOGOREPARO (DescricaoJogoReparo, NumeroTarvoJogoReparo);

CREATE TABLE PECA_COMPONENTE (
    CodigoPeca INTEGER NOT NULL,
    ItemComponente TEXT NOT NULL COLLATE TARVO,
    CodigoComponente INTEGER NOT NULL,
    QuantidadeComponente NUMERIC,
    CHECK (CodigoPeca > 0 AND CodigoComponente > 0));
CREATE UNIQUE INDEX PECA_COMPONENTE_ITEM ON PECA_COMPONENTE (CodigoPeca, ItemComponente);
CREATE INDEX PECA_COMPONENTE_COMPONENTE ON PECA_COMPONENTE (CodigoComponente, CodigoPeca);

CREATE TABLE PECA_COMPONENTE_JOGOREPARO (
    CodigoPeca INTEGER NOT NULL,
    ItemComponente TEXT NOT NULL COLLATE TARVO,
    CodigoJogoReparo INTEGER NOT NULL,
    CHECK (CodigoPeca > 0 AND CodigoJogoReparo > 0));
CREATE UNIQUE INDEX PECA_COMPONENTE_JOGOREPARO_ITEM
    ON PECA_COMPONENTE_JOGOREPARO (CodigoPeca, ItemComponente, CodigoJogoReparo);
CREATE INDEX PECA_COMPONENTE_JOGOREPARO_JOGO
    ON PECA_COMPONENTE_JOGOREPARO (CodigoJogoReparo, CodigoPeca);

CREATE TABLE CLIENTECONCORRENTE (
    CodigoClienteConcorrente INTEGER PRIMARY KEY,
    DescricaoClienteConcorrente TEXT COLLATE TARVO,
    TipoClienteConcorrente TEXT COLLATE TARVO,
    CHECK (CodigoClienteConcorrente BETWEEN 1 AND 147483647));
CREATE INDEX CLIENTECONCORRENTE_DESCRICAO ON CLIENTECONCORRENTE (DescricaoClienteConcorrente);

CREATE TABLE VEICULO (
    CodigoVeiculo INTEGER PRIMARY KEY,
    DescricaoVeiculo TEXT COLLATE TARVO,
    CodigoClienteConcorrente INTEGER,
    CHECK (CodigoVeiculo > 0 AND CodigoClienteConcorrente > 0));
CREATE INDEX VEICULO_DESCRICAO ON VEICULO (DescricaoVeiculo, CodigoClienteConcorrente);
CREATE INDEX VEICULO_FABRICANTE ON VEICULO (CodigoClienteConcorrente, DescricaoVeiculo);

CREATE TABLE VEICULO_PECA (
    CodigoVeiculo INTEGER NOT NULL,
    CodigoPeca INTEGER NOT NULL,
    CHECK (CodigoVeiculo > 0 AND CodigoPeca > 0));
CREATE UNIQUE INDEX VEICULO_PECA_VEICULO ON VEICULO_PECA (CodigoVeiculo, CodigoPeca);
CREATE INDEX VEICULO_PECA_PECA ON VEICULO_PECA (CodigoPeca, CodigoVeiculo);

CREATE TABLE FOTOPECAPESQUISA (
    CodigoFotoPecaPesquisa INTEGER PRIMARY KEY,
    DescricaoFotoPecaPesquisa TEXT COLLATE TARVO,
    ArquivoFotoPecaPesquisa TEXT COLLATE TARVO,
    CHECK (CodigoFotoPecaPesquisa > 0));
CREATE INDEX FOTOPECAPESQUISA_DESCRICAO ON FOTOPECAPESQUISA (DescricaoFotoPecaPesquisa);
)";

// The cross references of all customers and competitors, and those of the one in force. The
// selection is a scalar subquery, so that a left join to the view stays one index search a row.
constexpr char Referencias[] = R"(
CREATE TABLE CODIGOCLIENTECONCORRENTE (CodigoClienteConcorrente INTEGER NOT NULL);
INSERT INTO CODIGOCLIENTECONCORRENTE VALUES (-5);

CREATE TABLE REFERENCIACRUZADA (
    CodigoClienteConcorrente INTEGER NOT NULL,
    NumeroTarvo TEXT NOT NULL COLLATE TARVO,
    NumeroClienteConcorrente TEXT COLLATE TARVO,
    CHECK (CodigoClienteConcorrente > 0));
CREATE UNIQUE INDEX REFERENCIACRUZADA_TARVO
    ON REFERENCIACRUZADA (CodigoClienteConcorrente, NumeroTarvo, NumeroClienteConcorrente);
CREATE INDEX REFERENCIACRUZADA_CLIENTE
    ON REFERENCIACRUZADA (CodigoClienteConcorrente, NumeroClienteConcorrente, NumeroTarvo);
CREATE VIEW REFERENCIACRUZADA1 AS
    SELECT NumeroTarvo, NumeroClienteConcorrente FROM REFERENCIACRUZADA
    WHERE CodigoClienteConcorrente =
        (SELECT CodigoClienteConcorrente FROM CODIGOCLIENTECONCORRENTE);
)";

// A marker belongs to a figure, and parts share figures. Its code counts within the figure, which
// keeps it in the 16 bits that the figure screen has for it, however large the catalogue grows.
constexpr char Figuras[] = R"(
CREATE TABLE FIGURA (
    CodigoFigura INTEGER PRIMARY KEY,
    ArquivoFigura TEXT COLLATE TARVO,
    CHECK (CodigoFigura > 0));
CREATE TABLE FIGURADETALHADA (
    CodigoFigura INTEGER NOT NULL,
    CodigoFiguraDetalhada INTEGER NOT NULL,
    ItemComponente TEXT COLLATE TARVO,
    LLeft NUMERIC,
    TTop NUMERIC,
    CHECK (CodigoFigura > 0 AND CodigoFiguraDetalhada > 0));
CREATE UNIQUE INDEX FIGURADETALHADA_CODIGO
    ON FIGURADETALHADA (CodigoFigura, CodigoFiguraDetalhada);
CREATE VIEW FIGURADETALHADA1 AS
    SELECT FIGURADETALHADA.CodigoFiguraDetalhada, PECA.CodigoPeca, FIGURADETALHADA.ItemComponente,
        FIGURA.ArquivoFigura, FIGURADETALHADA.LLeft, FIGURADETALHADA.TTop
    FROM PECA
    INNER JOIN FIGURADETALHADA ON FIGURADETALHADA.CodigoFigura = PECA.CodigoFigura
    INNER JOIN FIGURA ON FIGURA.CodigoFigura = FIGURADETALHADA.CodigoFigura;
)";

// A constant as a unique key lets a table have one row at the most. The selection's row comes back
// when it is deleted: without it no selection would ever take effect again. The settings' row does
// not, so that a script may replace it by a DELETE and an INSERT.
constexpr char Guardas[] = R"(
CREATE UNIQUE INDEX CODIGOCLIENTECONCORRENTE_UMA ON CODIGOCLIENTECONCORRENTE ((1));
CREATE TRIGGER CODIGOCLIENTECONCORRENTE_FICA AFTER DELETE ON CODIGOCLIENTECONCORRENTE
BEGIN
    INSERT INTO CODIGOCLIENTECONCORRENTE VALUES (-5);
END;
CREATE UNIQUE INDEX UMREGISTRO_UMA ON UMREGISTRO ((1));
)";

constexpr char Registro[] = R"(
CREATE TABLE UMREGISTRO (
    DataEmissao DATETIME NOT NULL,
    ComplementoDataEmissao TEXT COLLATE TARVO,
    DataUltimaVerificacao DATETIME,
    FlagErroUltimaVerificacao SMALLINT NOT NULL DEFAULT 0,
    UrlAtualizacao TEXT COLLATE TARVO,
    Versao SMALLINT NOT NULL,
    VersaoAnterior SMALLINT NOT NULL);
INSERT INTO UMREGISTRO VALUES (%1, NULL, NULL, 0, '', 1, 0);
)";

}  // namespace

void CriarCatalogo(const QString& caminho, const QString& senha) {
    const QByteArray hoje = QByteArray::number(qint64(std::floor(sys::Now())));
    const QByteArray definicao = QByteArray(Tabelas) + Referencias + Figuras +
                                 QByteArray(Registro).replace("%1", hoje) + Guardas;
    QString conexao = ";pwd="_L1 + senha;
    const secret::WipeAtEnd semConexao(conexao);
    dao::DBEngine::Instance().CreateDatabase(caminho, conexao, definicao);
}
