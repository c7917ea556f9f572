#include "platform/dao/connection.h"
#include "support/catalogo.h"
#include "support/servers.h"
#include "verificar/check.h"
#include "verificar/network.h"
#include "verificar/report.h"

using verificar::Finding;
using verificar::Weight;

struct TestVerificar : Fixture {
    std::unique_ptr<CatalogoDeTeste> catalogo_;

    // The engine's own statements: what they do is what a careless maker of catalogues may do.
    static void Estragar(const AnyText& comandos) {
        OutroComputador().banco->GetConnection()->Run("PRAGMA ignore_check_constraints = ON;" +
                                                      comandos.toUtf8());
    }

    // "2 ITEM: an example | another example"
    QStringList Achados(Weight peso) const {
        QStringList textos;
        for (const Finding& achado : verificar::Check({catalogo_->Pasta(), 2, true})) {
            if (achado.weight == peso) {
                textos += QString::number(achado.count) + u' ' + achado.what + u": "_s +
                          achado.examples.join(u" | "_s);
            }
        }
        return textos;
    }

    void init() override {
        catalogo_ = std::make_unique<CatalogoDeTeste>();
        // A figure of 200 by 100 with a number of each kind of item.
        catalogo_->Executar(
            LinhasDePesquisa() + LinhasDePecas() + Inserir("FIGURA", {"7, 'valvula.png'"}) +
            List("UPDATE PECA SET CodigoFigura = 7 WHERE CodigoPeca = 1") +
            Inserir("FIGURADETALHADA", {"7, 1, '   1', -16, -6", "7, 2, '  12a', 183, 93"}));
        const QDir pasta(catalogo_->Pasta());
        for (const QString& nome :
             {u"PECA1.PNG"_s, u"valvulas.png"_s, u"cilindros.png"_s, u"molas.png"_s}) {
            WritePicture(pasta.filePath(u"FotoPeca/"_s + nome), {4, 4});
        }
        WritePicture(pasta.filePath(u"Figuras/valvula.png"_s), {200, 100});
        for (int i = 1; i <= 5; ++i) {
            WritePicture(pasta.filePath(u"Figuras/ck0%1.bmp"_s.arg(i)), {8, 8});
        }
    }
    void cleanup() override { catalogo_.reset(); }
};

TEST(TestVerificar, ASoundFolderHasNoFaults) {
    Estragar("UPDATE PECA SET NumeroTarvoPeca = '12002' WHERE CodigoPeca = 2");
    QCOMPARE(Achados(Weight::Fault), QStringList());
    QCOMPARE(
        Achados(Weight::Hint).join(u'\n'),
        u"1 UMREGISTRO.UrlAtualizacao vazia: o catálogo não se atualiza: \"\"\n"
        "1 PECA_COMPONENTE.QuantidadeComponente vazia ou não positiva: CodigoPeca 1, item  100\n"
        "1 PECA.NumeroTarvoPeca repetido: 12002 (2 linhas)\n"
        "1 JOGOREPARO que nenhuma peça usa: CodigoJogoReparo 3\n"
        "1 VEICULO que nenhuma peça usa: CodigoVeiculo 2\n"
        "2 FOTOPECAPESQUISA que nenhuma peça usa: CodigoFotoPecaPesquisa 2 | "
        "CodigoFotoPecaPesquisa 3\n"
        "1 Falta a ajuda: Ajuda_Catalogo_TARVO-LINDEN.hlp"_s);
}

TEST(TestVerificar, OneFault) {
    for (const auto& [comandos, achados] : Each<QString, QStringList>{
             {"numbers",
              "UPDATE PECA SET NumeroTarvoPeca = '0' || NumeroTarvoPeca WHERE CodigoPeca = 3;"
              "UPDATE COMPONENTE SET NumeroTarvoComponente = '1' || NumeroTarvoComponente WHERE "
              "CodigoComponente = 3; UPDATE REFERENCIACRUZADA SET NumeroClienteConcorrente = "
              "'b-9' "
              "WHERE NumeroClienteConcorrente = 'B9'",
              List("1 PECA.NumeroTarvoPeca fora*: CodigoPeca 3: \"0K5602\"",
                   "1 COMPONENTE.NumeroTarvoComponente fora da forma gravada (letras maiúsculas e "
                   "algarismos, sem zero à esquerda nem algarismo antes da primeira letra): "
                   "CodigoComponente 3: \"1K5600\"",
                   "1 REFERENCIACRUZADA.NumeroClienteConcorrente fora da forma gravada (letras "
                   "maiúsculas e algarismos, sem zero à esquerda): cliente 7, Nº Tarvo A3400: "
                   "\"b-9\"")},
             {"descriptions",
              "UPDATE PECA SET DescricaoPeca = 'Mola d''água'; UPDATE VEICULO SET "
              "DescricaoVeiculo = ' Cavalo' WHERE CodigoVeiculo = 2",
              List("3 PECA.DescricaoPeca que a pesquisa*: CodigoPeca 1: \"Mola d'água\" | "
                   "CodigoPeca "
                   "2: \"Mola d'água\"",
                   "1 VEICULO.DescricaoVeiculo que a pesquisa não acha (vazia, com espaço na "
                   "frente ou com apóstrofo em lugar de \"´\"): CodigoVeiculo 2: \" Cavalo\"")},
             {"items",
              "INSERT INTO PECA_COMPONENTE VALUES (2, '3', 1, 1), (2, '  12A', 1, 1), "
              "(2, '   a', 1, 1), (2, '  07', 1, 1), (2, '9999z', 1, 1)",
              List("4 PECA_COMPONENTE.ItemComponente mal alinhado (número em quatro posições à "
                   "direita, letra minúscula na quinta): CodigoPeca 2: \"   a\" | CodigoPeca 2: "
                   "\"  07\"")},
             {"codes",
              "UPDATE PECA SET CodigoPeca = 1000000 WHERE CodigoPeca = 3; "
              "INSERT INTO FIGURADETALHADA VALUES (7, 32768, '   2', 0, 0); "
              "INSERT INTO CLIENTECONCORRENTE VALUES (32768, 'Norral', 'I'), (147483648, 'Z', "
              "'C')",
              List("1 PECA.CodigoPeca fora da faixa de 1 a 999999: 1000000",
                   "1 FIGURADETALHADA.CodigoFiguraDetalhada fora da faixa de 1 a 32767: 32768",
                   "1 CLIENTECONCORRENTE.CodigoClienteConcorrente fora da faixa de 1 a 147483647: "
                   "147483648",
                   "1 CLIENTECONCORRENTE.CodigoClienteConcorrente fora da faixa de 1 a 32767 dos "
                   "fabricantes de veículos: 32768")},
             {"links",
              "DELETE FROM COMPONENTE WHERE CodigoComponente = 3; UPDATE PECA SET CodigoFigura "
              "= "
              "8 WHERE CodigoPeca = 2; INSERT INTO PECA_COMPONENTE_JOGOREPARO VALUES (1, '   "
              "7', "
              "1); UPDATE VEICULO SET CodigoClienteConcorrente = 9 WHERE CodigoVeiculo = 2; "
              "INSERT INTO REFERENCIACRUZADA VALUES (7, 'XYZ', '1')",
              List(
                  "1 PECA.CodigoFigura sem linha em FIGURA: CodigoPeca 2 → 8",
                  "2 PECA_COMPONENTE.CodigoComponente sem linha em COMPONENTE: CodigoPeca 1, item  "
                  "  1 "
                  "→ 3 | CodigoPeca 2, item    1 → 3",
                  "1 PECA_COMPONENTE_JOGOREPARO sem a linha do item em PECA_COMPONENTE: CodigoPeca "
                  "1, item    7",
                  "1 VEICULO.CodigoClienteConcorrente de quem não é fabricante (tipo \"I\"): "
                  "CodigoVeiculo 2 → 9",
                  "1 REFERENCIACRUZADA.NumeroTarvo que nenhuma peça, componente ou jogo tem: "
                  "cliente 7: XYZ")},
             {"single rows",
              "DROP INDEX UMREGISTRO_UMA; INSERT INTO UMREGISTRO VALUES ('ontem', NULL, NULL, "
              "0, "
              "'u', 40000, 0); UPDATE main.CODIGOCLIENTECONCORRENTE SET "
              "CodigoClienteConcorrente = 3",
              List("1 Falta o índice (as pesquisas ficam lentas, ou linhas iguais são aceitas): "
                   "UMREGISTRO único (constante)",
                   "1 UMREGISTRO precisa ter exatamente uma linha: 2 linhas",
                   "1 CODIGOCLIENTECONCORRENTE que não é -5 nem um cliente: 3",
                   "1 UMREGISTRO.DataEmissao não é uma data: \"ontem\"",
                   "1 UMREGISTRO.Versao não cabe em 16 bits: \"40000\"")},
             {"structure",
              "DROP VIEW FIGURADETALHADA1; ALTER TABLE PECA DROP COLUMN ArquivoFotoPeca; "
              "DROP INDEX VEICULO_PECA_VEICULO; INSERT INTO VEICULO_PECA VALUES (1, 1)",
              List("1 Falta a tabela: FIGURADETALHADA1", "1 Falta a coluna: PECA ArquivoFotoPeca",
                   "1 Falta o índice*: VEICULO_PECA único (CodigoVeiculo, CodigoPeca)",
                   "1 VEICULO_PECA: linhas iguais em CodigoVeiculo, CodigoPeca: 1, 1")},
             {"a collation of somebody else's",
              "DROP INDEX VEICULO_DESCRICAO; CREATE INDEX VEICULO_DESCRICAO ON VEICULO "
              "(DescricaoVeiculo COLLATE NOCASE, CodigoClienteConcorrente)",
              List(
                  "1 Falta o índice*: VEICULO (DescricaoVeiculo TARVO, CodigoClienteConcorrente)")},
             {"an index out of order",
              "PRAGMA writable_schema = ON; UPDATE sqlite_schema SET sql = replace(sql, "
              "'(DescricaoVeiculo', '(DescricaoVeiculo DESC') WHERE name = 'VEICULO_DESCRICAO'",
              {"1 Tabela ou índice fora de ordem*"}},
             {"nothing there",
              "UPDATE CLIENTECONCORRENTE SET DescricaoClienteConcorrente = ' '; UPDATE UMREGISTRO "
              "SET VersaoAnterior = 'x'; UPDATE FOTOPECAPESQUISA SET DescricaoFotoPecaPesquisa = "
              "'' "
              "WHERE CodigoFotoPecaPesquisa = 1",
              {"1 UMREGISTRO.VersaoAnterior não cabe em 16 bits: \"x\"",
               "2 CLIENTECONCORRENTE.DescricaoClienteConcorrente vazia: CodigoClienteConcorrente 7 "
               "| "
               "CodigoClienteConcorrente 9",
               "1 FOTOPECAPESQUISA.DescricaoFotoPecaPesquisa vazia: CodigoFotoPecaPesquisa 1"}},
             {"figure",
              "INSERT INTO FIGURADETALHADA VALUES (7, 3, '   2', -17, 10), (7, 5, '   2', 10, -7), "
              "(7, 4, ' 100', NULL, "
              "10)",
              List("1 FIGURADETALHADA.LLeft ou TTop não é um número: CodigoFigura 7, marca 4",
                   "2 FIGURADETALHADA: número fora da figura: CodigoFigura 7, marca 3: -17, 10 "
                   "(figura de 200 por 100) | CodigoFigura 7, marca 5: 10, -7 (figura de 200 por "
                   "100)")},
         }) {
        Estragar(comandos);
        QStringList textos = Achados(Weight::Fault);
        for (qsizetype i = 0; i < qMin(textos.size(), achados.size()); ++i) {
            textos[i] = Like(textos.at(i), achados.at(i));
        }
        QCOMPARE(textos.join(u'\n'), achados.join(u'\n'));
    }
}

TEST(TestVerificar, Pictures) {
    const QDir pasta(catalogo_->Pasta());
    QVERIFY(QFile::remove(pasta.filePath(u"FotoPeca/molas.png"_s)));
    Write(pasta.filePath(u"Figuras/valvula.png"_s), "no picture");
    QVERIFY(QFile::remove(pasta.filePath(u"Figuras/ck03.bmp"_s)));
    QVERIFY(QFile::remove(pasta.filePath(u"FotoPeca/PECA1.PNG"_s)));
    QCOMPARE(Achados(Weight::Fault),
             List("1 PECA.ArquivoFotoPeca: o arquivo não existe: peca1.png",
                  "1 FOTOPECAPESQUISA.ArquivoFotoPecaPesquisa: o arquivo não existe: molas.png",
                  "1 FIGURA.ArquivoFigura: o arquivo não é uma imagem: valvula.png"));
    Write(pasta.filePath(u"FotoPeca/012345678901ABCDEF0112-recebido.tmp"_s));
    Write(pasta.filePath(u"meu.tmp"_s));
    Write(pasta.filePath(u"Ajuda_Catalogo_TARVO-LINDEN.hlp"_s));
    QCOMPARE(Achados(Weight::Hint).mid(5).join(u'\n'),
             List("1 Falta uma página do Conheça a Tarvo (800 por 573): Figuras/CK03.bmp",
                  "1 Arquivo temporário de uma atualização interrompida (a próxima o apaga): "
                  "FotoPeca/012345678901ABCDEF0112-recebido.tmp")
                 .join(u'\n'));
}

TEST(TestVerificar, DamagedPages) {
    const QString caminho = catalogo_->Pasta() + u"/Tarvo.mdb"_s;
    gDB.reset();
    gWS.reset();
    QFile arquivo(caminho);
    QVERIFY(arquivo.open(QIODevice::ReadWrite) && arquivo.seek(arquivo.size() - 2000));
    QVERIFY(arquivo.write("damaged") > 0);
    arquivo.close();
    const QString damage =
        u"1 Página danificada no arquivo do catálogo: HMAC verification failed for page *\n"
        "2 Não foi possível conferir tudo: O catálogo está danificado e não pode ser lido. | *"_s;
    QCOMPARE(Like(Achados(Weight::Fault).join(u'\n'), damage), damage);
    QVERIFY(arquivo.remove());
    QCOMPARE(ErrorOf([&] { Achados(Weight::Fault); }), int(Erro::FileNotFound));
}

TEST(TestVerificar, TheLocksRow) {
    gDB->Execute(u"UPDATE CONTROLETRAN SET a = a"_s);  // makes the companion file
    QCOMPARE(Achados(Weight::Fault), QStringList());
    gDB->GetConnection()->Run(
        "DROP TABLE companion.CONTROLETRAN; CREATE TABLE companion.CONTROLETRAN (a)");
    QCOMPARE(Achados(Weight::Fault),
             List("1 CONTROLETRAN, em Tarvo.ldb, precisa ter exatamente uma linha: 0 linhas"));
    FecharBancoDados(gWS, gDB);
    Write(catalogo_->Pasta() + u"/Tarvo.ldb"_s, QByteArray(5000, 'x'));
    QCOMPARE(Achados(Weight::Fault),
             List("1 CONTROLETRAN, em Tarvo.ldb, precisa ter exatamente uma linha: O catálogo está "
                  "danificado e não pode ser lido."));
}

TEST(TestVerificar, TheReportCounts) {
    QCOMPARE(verificar::Report(u"/d"_s, {{Weight::Hint, u"B"_s, 1, {u"x"_s}},
                                         {Weight::Fault, u"A"_s, 1500, {u"y"_s, u"z"_s}}}),
             u"Pasta dos dados: /d\n\nErros\n  A: 1.500\n      y\n      z\n"
             "      … e mais 1.498\n\nAvisos\n  B: 1\n      x\n\n1.500 erros, 1 aviso.\n"_s);
    QCOMPARE(verificar::Report(u"/d"_s, QList<Finding>()),
             u"Pasta dos dados: /d\n\nNenhum erro, nenhum aviso.\n"_s);
    QCOMPARE(verificar::Report(u"/d"_s, {u"nfs"_s, {u"A"_s}, {u"B"_s}, 12.25, 1234, 1, 5, 0}),
             u"/d (nfs)\n\nERRO   A\nAviso  B\n\nAbrir o catálogo:   12,3 ms, 1.234 páginas lidas\n"
             "Primeira pesquisa:  1,0 ms, 5 páginas lidas\n"_s);
    QVERIFY(
        verificar::Report({}, {{}, {}, {}, 0, 0, 0, 0, 0.0494})
            .contains(u"\nAviso  Gravar com descarga leva só 0,049 ms: o que é dado por gravado "
                      "pode ainda estar na memória do servidor, e uma queda de energia o "
                      "perde.\n"_s));
    QCOMPARE(
        verificar::Report(u"/d"_s, {{}, {}, {}, 0, 0, 0, 0, 0.5}),
        u"/d (sistema de arquivos desconhecido)\n\nAs travas de arquivo valem nesta pasta, até "
        "onde se vê deste computador.\nGravar no disco:    0,5 ms\n"_s);
}
