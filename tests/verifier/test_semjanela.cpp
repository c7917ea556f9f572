#include "programas.h"
#include "settings/arquivo.h"
#include "support/frailfolder.h"

// The shipped programs as a scheduler calls them: without a display, and for one line.
struct TestSemJanela : Fixture {
    Programs programs_{{"CatalogoTarvo", "Tarvo.exe", "VerifAtualizCatalogoTarvo.exe"}};
    WrongServer server_;
    CatalogoDeTeste catalogue_;

    // The line, and the exit code behind it; as the pattern, where it is like that.
    QString Run(const AnyText& pattern) const {
        const QString all = programs_.Run("Tarvo.exe", {"--atualizar", "--espera", "0"});
        return all.count(u'\n') == 1 ? Like(all, pattern) : all;
    }
    void init() override { programs_.Point(catalogue_.Pasta()); }
    void cleanup() override { GravarConfiguracao(QString(), QString(), QString(), true); }
};

// What stands in its way is told by the code and in one line, and nothing is half done.
TEST(TestSemJanela, Ends) {
    const ProxySetting proxy(server_.Port());
    Executar({"UPDATE UMREGISTRO SET Versao = 1, UrlAtualizacao = 'atualiza.exemplo/guarded'"});
    GravarConfiguracao(QString(), u"maria"_s, u"s3nha"_s, true);
    server_.Put("guarded/Versao.txt", "2");
    server_.Put("guarded/ListVersao2.txt", "");
    const QString updated = u"O catálogo foi atualizado da versão 1 para a 2.\n =3"_s;
    QCOMPARE(Run(updated), updated);
    QCOMPARE(Valor("SELECT Versao FROM UMREGISTRO"), u"2"_s);
    Executar({"DELETE FROM UMREGISTRO"});
    const QString lost = u"O catálogo está sem o registro da versão* =1"_s;
    QCOMPARE(Run(lost), lost);
}

TEST(TestSemJanela, LocksThatHoldNobody) {
    const FrailFolder frail({"ignore-locks"});
    if (!frail.IsThere()) {
        QSKIP("this system mounts no file system for this user");
    }
    QVERIFY(QFile::copy(catalogue_.Pasta() + u"/Tarvo.mdb"_s, frail.Behind() + u"/Tarvo.mdb"_s));
    programs_.Point(frail.Seen());
    const QString line = u"*concede a mesma trava duas vezes* =5"_s;
    QCOMPARE(Run(line), line);
    QVERIFY(server_.Requests().isEmpty());
    const QTemporaryDir empty;
    programs_.Point(empty.path());
    QCOMPARE(Run("* =1"), u"* =1"_s);
    for (const QStringList& wrong : {List("agora"), List("--espera"), List("--espera", "muito"),
                                     List("--atraso", "1"), List("--espera", "1", "2")}) {
        QVERIFY(programs_.Run("Tarvo.exe", List("--atualizar") + wrong).endsWith(u" =2"_s));
    }
}
