#include "programas.h"
#include "publicar/signing.h"
#include "session/global.h"
#include "settings/arquivo.h"
#include "support/frailfolder.h"
#include "support/test.h"

// The shipped programs as a scheduler calls them: without a display, and for one line.
struct TestSemJanela : Fixture {
    Programs programs_{{"CatalogoTarvo", "Tarvo.exe", "VerifAtualizCatalogoTarvo.exe"}};
    WrongServer server_;
    std::unique_ptr<CatalogoDeTeste> catalogue_;

    // The line, and the exit code behind it; as the pattern, where it is like that.
    QString Run(const QString& pattern) const {
        const Programs::End end = programs_.Run("Tarvo.exe", {"--atualizar", "--espera", "0"});
        const QString said = end.printed.trimmed() + u" ="_s + QString::number(end.code);
        return end.printed.count(u'\n') == 1 ? Like(said, pattern) : end.printed;
    }

    void init() override {
        server_.Clear();
        catalogue_ = std::make_unique<CatalogoDeTeste>();
        catalogue_->Executar(
            {"UPDATE UMREGISTRO SET Versao = 1, VersaoAnterior = 0, "
             "FlagErroUltimaVerificacao = 7, UrlAtualizacao = "
             "'atualiza.exemplo/base'"});
        programs_.Point(catalogue_->Pasta());
        for (const QString& site : List("base", "guarded")) {
            server_.Put(site + u"/Versao.txt"_s, "2");
            server_.Put(site + u"/FotoPeca/a.png"_s, "nova");
            server_.Put(site + u"/dois.txt"_s,
                        "E:INSERT INTO CLIENTECONCORRENTE VALUES (20, 'Bravil', 'C')");
            server_.Put(site + u"/ListVersao2.txt"_s,
                        "FOTO;FotoPeca\\a.png;4\r\nSDB;dois.txt;1\r\n");
        }
    }
    void cleanup() override {
        catalogue_.reset();
        programs_.PutKeys(0);
        GravarConfiguracao(QString(), QString(), QString(), true);
    }
};

// What stands in its way is told by the code and in one line, and nothing is half done.
TEST(TestSemJanela, Ends) {
    // Version, the one before and the flag of the last check are in the state, and the picture.
    Each<QString, QString, QString> row;
    const auto site = [&row](const QByteArray& name, const AnyText& address, const AnyText& line,
                             const AnyText& state = "1/0/1 old") {
        row(name, u"UPDATE UMREGISTRO SET UrlAtualizacao = '%1'"_s.arg(address), line, state);
    };
    const QString updated = u"O catálogo foi atualizado da versão 1 para a 2. =3"_s;
    site("installs", "atualiza.exemplo/base", updated, "2/1/0 nova");
    site("signed by the publisher", "p/base", updated, "2/1/0 nova");
    site("signed by a stranger", "s/base", "*não foi assinado* =1");
    site("with the stored password", "atualiza.exemplo/guarded/", updated, "2/1/0 nova");
    site("a proxy that asks", "atualiza.exemplo/guarded",
         "O proxy da rede pede usuário e senha* =7");
    site("a server in trouble", "atualiza.exemplo/500", "*respondeu com o estado 500* =6");
    row("no record", "DELETE FROM UMREGISTRO", "O catálogo está sem o registro da versão* =1",
        "gone old");
    row("nothing new", "UPDATE UMREGISTRO SET Versao = 2",
        "Nada de novo: o catálogo está na versão 2. =0", "2/0/0 old");
    // Another computer is not waited for any longer than was said.
    row("another one writes", "other: UPDATE UMREGISTRO SET VersaoAnterior = 5",
        "A atualização esperou demais por test_verifier (* =4", "1/0/7 nova");
    for (const auto& [statement, line, left] : row) {
        const ProxySetting proxy(server_.Port());
        const OutroComputador other;
        if (statement.startsWith("other: "_L1)) {
            other.sessao->BeginTrans();
            other.banco->Execute(statement.mid(7));
        } else {
            catalogue_->Executar({statement});
        }
        if (const QChar signer = statement.section(u'\'', 1).append(u' ').front();
            statement.contains("/base'"_L1)) {
            publicar::SignAgain(server_.Folder() + u"/base"_s,
                                {{u"loja"_s, QByteArray(32, signer.toLatin1())}});
            programs_.PutKeys(signer == u'a' ? 0 : 'p');
        }
        if (statement.contains("guarded/"_L1)) {
            GravarConfiguracao(QString(), u"maria"_s, u"s3nha"_s, true);
        }
        QCOMPARE(Run(line), line);
        const QString picture = catalogue_->Pasta() + u"/FotoPeca/a.png"_s;
        const bool gone = Valor("SELECT Count(*) FROM UMREGISTRO") == "0"_L1;
        const QString record =
            gone ? u"gone"_s
                 : Valor(
                       "SELECT Versao & '/' & VersaoAnterior & '/' & FlagErroUltimaVerificacao "
                       "FROM UMREGISTRO");
        const QString state =
            record + (QFile::exists(picture) ? u" "_s + sys::ReadText(picture) : u" old"_s);
        QCOMPARE(state, left);
        QCOMPARE(Valor("SELECT Count(*) FROM CLIENTECONCORRENTE"),
                 QString::number(state.startsWith(u'2') && state.endsWith("nova"_L1)));
    }
}

TEST(TestSemJanela, LocksThatHoldNobody) {
    const FrailFolder frail({"ignore-locks"});
    if (!frail.IsThere()) {
        QSKIP("this system mounts no file system for this user");
    }
    QVERIFY(QFile::copy(catalogue_->Pasta() + u"/Tarvo.mdb"_s, frail.Behind() + u"/Tarvo.mdb"_s));
    programs_.Point(frail.Seen());
    const QString line = u"*concede a mesma trava duas vezes* =5"_s;
    QCOMPARE(Run(line), line);
    QVERIFY(server_.Requests().isEmpty());
    const QTemporaryDir empty;
    programs_.Point(empty.path());
    QCOMPARE(Run(u"* =1"_s), u"* =1"_s);
    for (const QStringList& wrong : {List("agora"), List("--espera"), List("--espera", "muito"),
                                     List("--atraso", "1"), List("--espera", "1", "2")}) {
        QCOMPARE(programs_.Run("Tarvo.exe", List("--atualizar") + wrong).code, 2);
    }
}
