#include "platform/dao/connection.h"
#include "support/cases.h"
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

TEST(TestVerificar, Faults) {
    for (auto [one] : Cases(TARVO_CASES "/faults.data")) {
        const QStringList achados = one.Take(u'>');
        const QStringList avisos = one.Take(u'?');
        Estragar(one.lines.join(u';'));
        QStringList textos = Achados(Weight::Fault);
        for (qsizetype i = 0; i < qMin(textos.size(), achados.size()); ++i) {
            textos[i] = Like(textos.at(i), achados.at(i));
        }
        QCOMPARE(textos.join(u'\n'), achados.join(u'\n'));
        if (!avisos.isEmpty()) {
            QCOMPARE(Achados(Weight::Hint), avisos);
        }
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
    QCOMPARE(Achados(Weight::Hint).mid(5),
             List("1 Falta uma página do Conheça a Tarvo (800 por 573): Figuras/CK03.bmp",
                  "1 Arquivo temporário de uma atualização interrompida (a próxima o apaga): "
                  "FotoPeca/012345678901ABCDEF0112-recebido.tmp"));
}

TEST(TestVerificar, DamagedPages) {
    const QString caminho = catalogo_->Pasta() + u"/Tarvo.mdb"_s;
    gDB.reset();
    gWS.reset();
    QByteArray bytes = sys::ReadBytes(caminho);
    Write(caminho, bytes.replace(bytes.size() - 2000, 7, "damaged"));
    const QString damage =
        u"1 Página danificada no arquivo do catálogo: HMAC verification failed for page *\n"
        "2 Não foi possível conferir tudo: O catálogo está danificado e não pode ser lido. | *"_s;
    QCOMPARE(Like(Achados(Weight::Fault).join(u'\n'), damage), damage);
    QVERIFY(QFile::remove(caminho));
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
    QCOMPARE(verificar::Report(u"/d"_s, {u"nfs"_s, {u"A"_s}, {u"B"_s}, 12.25, 1234, 1, 5, 0.0494}),
             u"/d (nfs)\n\nERRO   A\nAviso  B\nAviso  Gravar com descarga leva só 0,049 ms: o que "
             "é dado por gravado pode ainda estar na memória do servidor, e uma queda de energia o "
             "perde.\n\nAbrir o catálogo:   12,3 ms, 1.234 páginas lidas\n"
             "Primeira pesquisa:  1,0 ms, 5 páginas lidas\nGravar no disco:    0,0 ms\n"_s);
    QCOMPARE(
        verificar::Report(u"/d"_s, {{}, {}, {}, 0, 0, 0, 0, 0.5}),
        u"/d (sistema de arquivos desconhecido)\n\nAs travas de arquivo valem nesta pasta, até "
        "onde se vê deste computador.\nGravar no disco:    0,5 ms\n"_s);
    QVERIFY(!verificar::Report({}, verificar::Network()).contains(u"Gravar"_s));
}
