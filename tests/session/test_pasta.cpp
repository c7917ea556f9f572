#include "platform/forms/picturefile.h"
#include "session/erros.h"
#include "session/travas.h"
#include "support/catalogo.h"
#include "support/frailfolder.h"
#include "support/windows.h"

// A data folder that is slow, fails or goes away while the catalogue is open.
struct TestPasta : Fixture {
    std::unique_ptr<FrailFolder> pasta_;

    static int ErroAoLer() {
        return ErrorOf([] { Valor("SELECT Count(*) FROM PECA"); });
    }

    static void initTestCase() {
        if (!FrailFolder().IsThere()) {
            QSKIP("this system mounts no file system for this user");
        }
    }
    void init() override {
        pasta_ = std::make_unique<FrailFolder>();
        const QString nome = u"/Tarvo.mdb"_s;
        QVERIFY(QFile::copy(CatalogoDeTeste().Pasta() + nome, pasta_->Behind() + nome));
        gCaminho = pasta_->Seen() + u'\\';
        AbrirSessao();
    }
    void cleanup() override {
        FecharBancoDados(gWS, gDB);
        pasta_.reset();
    }
};

TEST(TestPasta, slowReadsOnlyTakeTheirTime) {
    Write(pasta_->Behind() + u"/lento"_s, "50");
    QCOMPARE(ErroAoLer(), 0);
}

// The box names the folder, and a picture in it is a missing one.
TEST(TestPasta, goesAway) {
    for (const auto& [files, word] : Each<QStringList, QString>{
             {"each read fails", List("morto"), "lida"},
             {"each read takes its time and fails", List("lento", "morto"), "lida"},
             {"unmounted", List(), "alcançada"},
         }) {
        WritePicture(pasta_->Behind() + u"/FotoPeca/a.png"_s, {20, 20});
        for (const QString& file : files) {
            Write(pasta_->Behind() + u'/' + file, "50");
        }
        if (files.isEmpty()) {
            pasta_->Unmount();
        }
        const int erro = ErroAoLer();
        QVERIFY(erro != 0);
        BoxAnswers caixas;
        MostrarErro(erro, u"Falhou."_s);
        MostrarErro(Erro::TypeMismatch, u"Outra coisa."_s);
        const QString texto = caixas.Texts().value(0);
        const QString dito = u"A pasta de dados não pode ser "_s + word + u":\n"_s +
                             QString(gCaminho).replace(u'/', u'\\') + u"\n\nSe ela fica na rede"_s;
        QVERIFY2(texto.contains(dito), qPrintable(texto));
        QCOMPARE(caixas.Texts().value(1).contains(u"A pasta de dados"_s), files.isEmpty());
        QVERIFY(ErrorOf([] {
                    forms::LoadPicture(gCaminho + u"FotoPeca\\a.png"_s, {10, 10}, 1);
                }) != 0);
    }
}

TEST(TestPasta, locksThatHoldNobody) {
    QCOMPARE(FaltaDeTravas(gCaminho), QString());
    QCOMPARE(FaltaDeTravas(gCaminho, {u"nfs4"_s, {u"rw"_s, u"nolock"_s}}),
             u"A pasta de dados está montada (nfs4) com a opção \"nolock\": as travas de arquivo "
             "não chegam aos outros computadores."_s);
    for (const auto& [option, words] :
         {std::pair(List("ignore-locks"), u"concede a mesma trava duas vezes."_s),
          {List("no-locks"), u"não concede travas; em NFS, falta o serviço de travas."_s}}) {
        const FrailFolder frail(option);
        Write(frail.Behind() + u"/Tarvo.mdb"_s);
        QCOMPARE(FaltaDeTravas(frail.Seen() + u'\\'),
                 u"O sistema de arquivos da pasta de dados (fuse.tarvo_frailfs) "_s + words);
    }
}
