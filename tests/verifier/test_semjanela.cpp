#include "platform/system/paths.h"
#include "platform/system/proof.h"
#include "publicar/signing.h"
#include "session/global.h"
#include "settings/arquivo.h"
#include "support/catalogo.h"
#include "support/frailfolder.h"
#include "support/servers.h"
#include "support/test.h"

#include <QProcess>

namespace {

constexpr int Patience = 60000;  // milliseconds
const QString Updated = u"O catálogo foi atualizado da versão 1 para a 2."_s;

}  // namespace

// The shipped programs as a scheduler calls them: without a display, and for one line.
class TestSemJanela : public QObject {
    Q_OBJECT

    QTemporaryDir programs_;
    WrongServer server_;
    std::unique_ptr<CatalogoDeTeste> catalogue_;
    std::unique_ptr<ProxySetting> proxy_;

    struct End {
        int code = -1;
        QString printed;
    };

    End Run(const AnyTexts& arguments = {"--atualizar"}) const {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* display : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
            environment.remove(QLatin1String(display));
        }
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(programs_.filePath(u"Tarvo.exe"_s), arguments);
        if (!process.waitForFinished(Patience)) {
            process.kill();
            qFatal("the update did not end");
        }
        return {process.exitCode(), QString::fromLocal8Bit(process.readAll())};
    }

    void Point(const QString& folder) const {
        sys::WriteWhole(programs_.filePath(u"Caminho.txt"_s), folder.toUtf8());
    }

    // A version 2 of a picture, and of a script with these lines.
    void Publish(const AnyText& folder, const AnyTexts& lines) const {
        server_.Put(folder + u"/Versao.txt"_s, "2");
        server_.Put(folder + u"/ListVersao2.txt"_s, "FOTO;FotoPeca\\a.png;4\r\nSDB;dois.txt;1\r\n");
        server_.Put(folder + u"/FotoPeca/a.png"_s, "nova");
        server_.Put(folder + u"/dois.txt"_s, lines.join(u"\r\n"_s).toUtf8());
    }

    QString Version() const {
        return Valor(
            "SELECT Versao & '/' & Count(*) FROM UMREGISTRO "
            "GROUP BY Versao");
    }

private Q_SLOTS:
    void initTestCase() {
        for (const char* program :
             {"CatalogoTarvo", "Tarvo.exe", "VerifAtualizCatalogoTarvo.exe"}) {
            const QString name = QLatin1String(program);
            QVERIFY(
                QFile::copy(QStringLiteral(TARVO_PROGRAMS "/") + name, programs_.filePath(name)));
        }
    }
    void init() {
        server_.Clear();
        proxy_ = std::make_unique<ProxySetting>(server_.Port());
        catalogue_ = std::make_unique<CatalogoDeTeste>();
        catalogue_->Executar(
            {"UPDATE UMREGISTRO SET Versao = 1, FlagErroUltimaVerificacao = 7, "
             "UrlAtualizacao = 'atualiza.exemplo/base'"});
        Point(catalogue_->Pasta());
        Publish("base", {"E:INSERT INTO CLIENTECONCORRENTE VALUES (20, 'Bravil', 'C')"});
    }
    void cleanup() {
        catalogue_.reset();
        proxy_.reset();
        QFile::remove(programs_.filePath(u"ChavesAtualizacao.txt"_s));
        GravarConfiguracao(QString(), QString(), QString(), true);
    }

    void Installs() {
        const End first = Run();
        QCOMPARE(first.printed, Updated + u'\n');
        QCOMPARE(first.code, 3);
        QCOMPARE(Valor("SELECT DescricaoClienteConcorrente FROM CLIENTECONCORRENTE"), u"Bravil"_s);
        QCOMPARE(Valor("SELECT Versao & '/' & VersaoAnterior & '/' & FlagErroUltimaVerificacao "
                       "FROM UMREGISTRO"),
                 u"2/1/0"_s);
        QCOMPARE(sys::ReadBytes(catalogue_->Pasta() + u"/FotoPeca/a.png"_s), QByteArray("nova"));
        const End second = Run();
        QCOMPARE(second.printed, u"Nada de novo: o catálogo está na versão 2.\n"_s);
        QCOMPARE(second.code, 0);
        QCOMPARE(catalogue_->Temporarios(), QStringList());
    }

    // What stands in its way is told by the code and in one line, and nothing is half done.
    void Fails_data() {
        const Table<QStringList, int, QString, QString> row("statements", "code", "words", "flag");
        const auto address = [](const AnyText& text) {
            return List(
                u"UPDATE UMREGISTRO SET UrlAtualizacao = 'atualiza.exemplo/%1'"_s.arg(text));
        };
        row("a server in trouble", address("500"), 6, "respondeu com o estado 500", "1");
        row("a site without versions", address("nada"), 1, "qual é a versão mais nova", "1");
        row("a proxy that asks", address("guarded"), 7, "O proxy da rede pede usuário e senha",
            "1");
        row("a list that is missing", address("semlista"), 1,
            "O servidor de atualizações \"atualiza.exemplo\" não tem um dos arquivos. "
            "(HttpQueryInfo:0;-103;Status=404 (ListVersao2.txt))",
            "1");
        row("a file that breaks off", address("curto"), 6, "interrompeu a resposta", "1");
        row("no address", {"UPDATE UMREGISTRO SET UrlAtualizacao = Null"}, 1,
            "não tem o endereço do servidor", "1");
        row("no record", {"DELETE FROM UMREGISTRO"}, 1, "sem o registro da versão", "");
    }
    void Fails() {
        QFETCH(QStringList, statements);
        QFETCH(QString, words);
        server_.Put("semlista/Versao.txt", "2");
        server_.Put("curto/Versao.txt", "2");
        server_.Put("curto/ListVersao2.txt", "FOTO;FotoPeca\\a.png;4\r\nFOTO;short;100\r\n");
        server_.Put("curto/FotoPeca/a.png", "nova");
        catalogue_->Executar(statements);
        const End end = Run();
        QTEST(end.code, "code");
        QVERIFY2(end.printed.contains(words), qPrintable(end.printed));
        QCOMPARE(end.printed.count(u'\n'), 1);
        QTEST(Valor("SELECT Min(FlagErroUltimaVerificacao) FROM UMREGISTRO"), "flag");
        QCOMPARE(Valor("SELECT Count(*) FROM UMREGISTRO WHERE Versao <> 1"), u"0"_s);
        QVERIFY(!QFile::exists(catalogue_->Pasta() + u"/FotoPeca/a.png"_s));
    }

    void NobodyAtTheServer() {
        const ProxySetting nobody(FreePort());
        const End end = Run();
        QCOMPARE(end.code, 6);
        QVERIFY2(end.printed.startsWith(u"Não foi possível conectar"_s), qPrintable(end.printed));
    }

    // It is not waited for any longer than was said.
    void AnotherComputerIsThere_data() {
        const Table<QString, QString, QString> row("statement", "words", "flag");
        row("updates", "UPDATE CONTROLETRAN SET a = a", "Outro computador", "0");
        row("writes", "UPDATE UMREGISTRO SET VersaoAnterior = 5",
            "A atualização esperou demais por test_verifier (", "7");
    }
    void AnotherComputerIsThere() {
        QFETCH(QString, statement);
        QFETCH(QString, words);
        const OutroComputador other;
        other.sessao->BeginTrans();
        other.banco->Execute(statement);
        const End end = Run({"--atualizar", "--espera", "0"});
        QCOMPARE(end.code, 4);
        QVERIFY2(end.printed.startsWith(words), qPrintable(end.printed));
        QCOMPARE(Version(), u"1/1"_s);
        QTEST(Valor("SELECT FlagErroUltimaVerificacao FROM UMREGISTRO"), "flag");
    }

    void UsesTheStoredCredentials() {
        Publish("guarded", {});
        catalogue_->Executar({"UPDATE UMREGISTRO SET UrlAtualizacao = 'atualiza.exemplo/guarded'"});
        GravarConfiguracao(QString(), u"maria"_s, u"s3nha"_s, true);
        QCOMPARE(Run().code, 3);
    }

    void SignedSites_data() {
        const Table<char, int, QString> row("key", "code", "words");
        row("the publisher's", 'p', 3, Updated);
        row("a stranger's", 's', 1, "não foi assinado");
    }
    void SignedSites() {
        QFETCH(char, key);
        QFETCH(QString, words);
        publicar::SignAgain(server_.Folder() + u"/base"_s, {{u"loja"_s, QByteArray(32, key)}});
        Write(programs_.filePath(u"ChavesAtualizacao.txt"_s),
              "Site: loja\nChave: " + sys::OpenKeyOf(QByteArray(32, 'p')).toHex());
        const End end = Run();
        QTEST(end.code, "code");
        QVERIFY2(end.printed.contains(words), qPrintable(end.printed));
    }

    void LocksThatHoldNobody() {
        const FrailFolder frail({"ignore-locks"});
        if (!frail.IsThere()) {
            QSKIP("this system mounts no file system for this user");
        }
        QVERIFY(
            QFile::copy(catalogue_->Pasta() + u"/Tarvo.mdb"_s, frail.Behind() + u"/Tarvo.mdb"_s));
        Point(frail.Seen());
        const End end = Run();
        QCOMPARE(end.code, 5);
        QVERIFY2(end.printed.contains(u"concede a mesma trava duas vezes"_s),
                 qPrintable(end.printed));
        QVERIFY(server_.Requests().isEmpty());
    }

    void NothingToUpdate() {
        const QTemporaryDir empty;
        Point(empty.path());
        const End end = Run();
        QCOMPARE(end.code, 1);
        QCOMPARE(end.printed.count(u'\n'), 1);
        for (const QStringList& wrong : {List("agora"), List("--espera"), List("--espera", "muito"),
                                         List("--atraso", "1"), List("--espera", "1", "2")}) {
            QCOMPARE(Run(List("--atualizar") + wrong).code, 2);
        }
    }
};

TARVO_TEST(TestSemJanela);
#include "test_semjanela.moc"
