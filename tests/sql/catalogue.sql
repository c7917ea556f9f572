-- A small catalogue for the statements of the tests, in the engine's own words.
CREATE TABLE PECA (CodigoPeca INTEGER PRIMARY KEY, NumeroTarvoPeca TEXT COLLATE TARVO,
    DescricaoPeca TEXT COLLATE TARVO, ArquivoFotoPeca TEXT COLLATE TARVO,
    CodigoFotoPecaPesquisa INTEGER, CodigoFigura INTEGER);
CREATE INDEX PECA_NUMERO ON PECA (NumeroTarvoPeca, DescricaoPeca);
CREATE INDEX PECA_DESCRICAO ON PECA (DescricaoPeca, NumeroTarvoPeca);
INSERT INTO PECA VALUES (1,'1001','Árvore de comando','a.bmp',1,1), (2,'1002','ARVORE LISA','b.bmp',1,NULL),
    (3,'K24','Êmbolo','c.bmp',2,2), (4,'12A','embolo 1/2"','d.bmp',2,NULL), (5,'99','Pino d´água',NULL,NULL,NULL);
CREATE TABLE COMPONENTE (CodigoComponente INTEGER PRIMARY KEY,
    NumeroTarvoComponente TEXT COLLATE TARVO, DescricaoComponente TEXT COLLATE TARVO);
CREATE INDEX COMPONENTE_NUMERO ON COMPONENTE (NumeroTarvoComponente, DescricaoComponente);
CREATE INDEX COMPONENTE_DESCRICAO ON COMPONENTE (DescricaoComponente, NumeroTarvoComponente);
INSERT INTO COMPONENTE VALUES (11,'2001','Anel'), (12,'2002','Mola'), (13,'2003','Ônibus, trava'), (14,'1003','Zíper');
CREATE TABLE JOGOREPARO (CodigoJogoReparo INTEGER PRIMARY KEY,
    NumeroTarvoJogoReparo TEXT COLLATE TARVO, DescricaoJogoReparo TEXT COLLATE TARVO);
CREATE INDEX JOGOREPARO_NUMERO ON JOGOREPARO (NumeroTarvoJogoReparo, DescricaoJogoReparo);
CREATE INDEX JOGOREPARO_DESCRICAO ON JOGOREPARO (DescricaoJogoReparo, NumeroTarvoJogoReparo);
INSERT INTO JOGOREPARO VALUES (21,'3001','Jogo de anéis'), (22,'3002','Jogo completo');
CREATE TABLE PECA_COMPONENTE (CodigoPeca INTEGER, ItemComponente TEXT COLLATE TARVO,
    CodigoComponente INTEGER, QuantidadeComponente NUMERIC);
INSERT INTO PECA_COMPONENTE VALUES (1,'  12',11,2), (1,'   7',12,1), (1,'  12a',13,1.5),
    (1,' 100',11,4), (3,'   1',14,1);
CREATE TABLE PECA_COMPONENTE_JOGOREPARO (CodigoPeca INTEGER, ItemComponente TEXT COLLATE TARVO,
    CodigoJogoReparo INTEGER);
INSERT INTO PECA_COMPONENTE_JOGOREPARO VALUES (1,'  12',21), (1,'  12',22), (1,'   7',22);
CREATE TABLE CLIENTECONCORRENTE (CodigoClienteConcorrente INTEGER PRIMARY KEY,
    DescricaoClienteConcorrente TEXT COLLATE TARVO, TipoClienteConcorrente TEXT COLLATE TARVO);
INSERT INTO CLIENTECONCORRENTE VALUES (1,'Órion','I'), (2,'Andorinha','i'), (3,'Vega','C');
CREATE TABLE VEICULO (CodigoVeiculo INTEGER PRIMARY KEY, DescricaoVeiculo TEXT COLLATE TARVO,
    CodigoClienteConcorrente INTEGER);
INSERT INTO VEICULO VALUES (31,'Trator T1',1), (32,'Trator T1',2), (33,'Caminhão',1);
CREATE TABLE VEICULO_PECA (CodigoVeiculo INTEGER, CodigoPeca INTEGER);
INSERT INTO VEICULO_PECA VALUES (31,1), (32,1), (33,3);
CREATE TABLE FOTOPECAPESQUISA (CodigoFotoPecaPesquisa INTEGER PRIMARY KEY,
    DescricaoFotoPecaPesquisa TEXT COLLATE TARVO, ArquivoFotoPecaPesquisa TEXT COLLATE TARVO);
INSERT INTO FOTOPECAPESQUISA VALUES (1,'Eixos','e.bmp'), (2,'Êmbolos','m.bmp');
CREATE TABLE CODIGOCLIENTECONCORRENTE (CodigoClienteConcorrente INTEGER);
INSERT INTO CODIGOCLIENTECONCORRENTE VALUES (1);
CREATE TABLE REFERENCIACRUZADA (CodigoClienteConcorrente INTEGER, NumeroTarvo TEXT COLLATE TARVO,
    NumeroClienteConcorrente TEXT COLLATE TARVO);
CREATE UNIQUE INDEX REFERENCIACRUZADA_TARVO
    ON REFERENCIACRUZADA (CodigoClienteConcorrente, NumeroTarvo, NumeroClienteConcorrente);
CREATE INDEX REFERENCIACRUZADA_CLIENTE
    ON REFERENCIACRUZADA (CodigoClienteConcorrente, NumeroClienteConcorrente, NumeroTarvo);
INSERT INTO REFERENCIACRUZADA VALUES (1,'1001','A70'), (1,'1001','B1'), (1,'2001','A71'), (1,'3001','C3'),
    (3,'1002','A7');
CREATE VIEW REFERENCIACRUZADA1 AS SELECT NumeroTarvo, NumeroClienteConcorrente
    FROM REFERENCIACRUZADA WHERE CodigoClienteConcorrente =
        (SELECT CodigoClienteConcorrente FROM CODIGOCLIENTECONCORRENTE);
CREATE TABLE FIGURADETALHADA1 (CodigoFiguraDetalhada INTEGER, CodigoPeca INTEGER,
    ItemComponente TEXT COLLATE TARVO, ArquivoFigura TEXT COLLATE TARVO, LLeft NUMERIC, TTop NUMERIC);
INSERT INTO FIGURADETALHADA1 VALUES (2,1,'  12','f.bmp',10,20), (1,1,'   7','f.bmp',30,40);
CREATE TABLE UMREGISTRO (DataEmissao REAL, ComplementoDataEmissao TEXT COLLATE TARVO,
    DataUltimaVerificacao REAL, FlagErroUltimaVerificacao INTEGER, UrlAtualizacao TEXT COLLATE TARVO,
    Versao INTEGER, VersaoAnterior INTEGER);
INSERT INTO UMREGISTRO VALUES (45000, NULL, NULL, 0, 'http://exemplo/', 5, 4);
CREATE TABLE CONTROLETRAN (a INTEGER);
INSERT INTO CONTROLETRAN VALUES (0);
