#include "platform/system/paths.h"
#include "platform/system/proof.h"
#include "session/global.h"
#include "settings/arquivo.h"
#include "support/catalogo.h"
#include "support/servers.h"
#include "support/test.h"
#include "update/prova.h"

#include <QProcess>
#include <QRegularExpression>

namespace {

constexpr int Patience = 60000;  // milliseconds

}  // namespace

// The real program, against servers that answer well, badly, or not at all.
class TestVerifier : public QObject {
    Q_OBJECT

private:
    QTemporaryDir programs_;
    std::unique_ptr<CatalogoDeTeste> catalogue_;
    WrongServer server_;
    QString result_;

    QString Program() const { return programs_.filePath(u"VerifAtualizCatalogoTarvo.exe"_s); }

    void SetAddress(const AnyText& address) const {
        catalogue_->Executar({u"UPDATE UMREGISTRO SET UrlAtualizacao = '%1'"_s.arg(address)});
    }

    mutable int exitCode_ = 0;

    int Run(const AnyTexts& arguments) const {
        QProcess process;
        process.start(Program(), arguments);
        if (!process.waitForFinished(Patience)) {
            process.kill();
            qFatal("the verifier did not end");
        }
        return process.exitCode();
    }

    // The answer; null where there is none, or where it and the exit code tell different things.
    QString Ask(const AnyTexts& options = {}, const QString& flag = u"1"_s) const {
        QFile::remove(result_);
        exitCode_ = Run(options + List(flag + u'|' + result_));
        const QString answer = QFile::exists(result_) ? sys::ReadText(result_) : QString();
        return (exitCode_ == 0) == answer.startsWith(u'1') ? answer : QString();
    }

    QStringList FilesOfTheFolder() const {
        return QDir(catalogue_->Pasta()).entryList(QDir::Files);
    }

private Q_SLOTS:
    void initTestCase() {
        QVERIFY(QFile::copy(QStringLiteral(TARVO_VERIFIER), Program()));
        catalogue_ = std::make_unique<CatalogoDeTeste>();
        sys::WriteWhole(programs_.filePath(u"Caminho.txt"_s), catalogue_->Pasta().toUtf8());
        result_ = catalogue_->Pasta() + u"/resposta.tmp"_s;
        catalogue_->Executar({"UPDATE UMREGISTRO SET Versao = 7"});
    }

    void cleanup() {
        QFile::remove(result_);
        GravarConfiguracao(QString(), QString(), QString(), true);
        // Whatever happened, nothing of it stays behind.
        for (const QString& file : FilesOfTheFolder()) {
            QVERIFY2(file.startsWith("Tarvo."_L1), qPrintable(file));
        }
    }

    void Answers_data() {
        // The answer is a pattern.
        const Table<QByteArray, QString> row("file", "answer");
        const QString refused = u"0O servidor .* não informou uma versão, e sim \"%1\"\\."_s;
        row("newer", "12", "17\\|12");
        row("line end and blanks", " 7 \r\n", "17\\|7");
        row("oldest", "0", "17\\|0");
        row("largest", "32767", "17\\|32767");
        row("too large", "32768", refused.arg(u"32768"_s));
        row("negative", "-1", refused.arg(u"-1"_s));
        row("empty", {}, refused.arg(QString()));
        row("two numbers", "3 4", refused.arg(u"3 4"_s));
        row("a page", "<html>\n<b>Entre</b>", refused.arg(u"<html> <b>Entre</b>"_s));
        row("far too long", QByteArray(5000, '1'), "0.*\\(.*;14;.*\\)");
    }
    void Answers() {
        QFETCH(QByteArray, file);
        QFETCH(QString, answer);
        const ProxySetting proxy(server_.Port());
        SetAddress("http://atualiza.example/catalogo");
        server_.Put("catalogo/Versao.txt", file);
        const QString got = Ask();
        const QRegularExpression pattern(QRegularExpression::anchoredPattern(answer));
        QVERIFY2(pattern.match(got).hasMatch(), qPrintable(got));
    }

    // With the publisher's keys beside the program, a number counts only if he has signed it.
    void Signed_data() {
        const Table<QByteArray, QByteArray, QString> row("version", "signature", "answer");
        const auto signedBy = [](int release, const char* day, char key) {
            const QDate date = QDate::fromString(QString::fromLatin1(day), Qt::ISODate);
            const QByteArray head = QByteArray::number(release) + ';' + day + "\r\n";
            const QByteArray message = MensagemDaVersao(u"loja"_s, release, date);
            return head + sys::Sign(message, QByteArray(32, key)).toHex() + "\r\n";
        };
        const QString refused = u"0O número da versão mais nova não foi assinado por .*"_s;
        row("newer", "12", signedBy(12, "2026-11-20", 'p'), "17\\|12\\|2026-11-20");
        row("rollback", "5", signedBy(5, "2026-01-02", 'p'), "17\\|5\\|2026-01-02");
        row("fast-forward", "32767", signedBy(12, "2026-11-20", 'p'),
            "0.* informa a versão 32767, e a assinada é a 12\\.");
        row("a stranger", "12", signedBy(12, "2026-11-20", 's'), refused);
        row("number changed", "13", "13" + signedBy(12, "2026-11-20", 'p').mid(2), refused);
        row("date changed", "12",
            signedBy(12, "2026-11-20", 'p').replace("2026-11-20", "2026-11-21"), refused);
        row("no signature", "12", {}, refused);
        row("something else", "12", "<html>", refused);
    }
    void Signed() {
        QFETCH(QByteArray, version);
        QFETCH(QByteArray, signature);
        QFETCH(QString, answer);
        const QString keys = programs_.filePath(u"ChavesAtualizacao.txt"_s);
        Write(keys, "Site: loja\nChave: " + sys::OpenKeyOf(QByteArray(32, 'p')).toHex());
        const ProxySetting proxy(server_.Port());
        SetAddress("http://atualiza.example/assinado");
        server_.Clear();
        server_.Put("assinado/Versao.txt", version);
        if (!signature.isEmpty()) {
            server_.Put("assinado/Versao.sig", signature);
        }
        const QString got = Ask();
        Write(keys, "Site: loja");
        const QString broken = Ask();
        QFile::remove(keys);
        const QRegularExpression pattern(QRegularExpression::anchoredPattern(answer));
        QVERIFY2(pattern.match(got).hasMatch(), qPrintable(got));
        QVERIFY2(broken.startsWith(u"0O arquivo \"ChavesAtualizacao.txt\""_s), qPrintable(broken));
    }

    void BadServers_data() {
        // The answer must hold the words.
        const Table<QString, QString, int> row("folder", "words", "exitCode");
        row("404", "404", "não informa qual é a versão mais nova", 1);
        row("500", "500", "respondeu com o estado 500", 6);
        row("302", "302", "respondeu com o estado 302", 1);
        row("407", "password", "O proxy da rede pede usuário e senha", 7);
        row("reset", "reset", "foi interrompida", 6);
        row("close", "close", "interrompeu a resposta", 6);
        row("short", "short", "interrompeu a resposta", 6);
        row("garbage", "garbage", "enviou uma resposta inválida", 6);
        row("endless", "endless", ";14;", 1);
        row("endless head", "endless-head", "enviou uma resposta inválida", 6);
        row("silent", "silent", "demorou demais", 6);
        row("silent body", "silent-body", "demorou demais", 6);
    }
    void BadServers() {
        QFETCH(QString, folder);
        QFETCH(QString, words);
        const ProxySetting proxy(server_.Port());
        SetAddress(u"atualiza.example/"_s + folder);
        const bool silent = words == u"demorou demais"_s;
        const QString got = Ask(silent ? List("--limit", "2") : List());
        QVERIFY2(got.startsWith(u'0') && got.contains(words), qPrintable(got));
        QTEST(exitCode_, "exitCode");
    }

    void NobodyThere() {
        {
            const ProxySetting proxy(FreePort());
            SetAddress("atualiza.example");
            QVERIFY(Ask().startsWith(u"0Não foi possível conectar ao servidor"_s));
        }
        const ProxySetting none(0);
        SetAddress("http://nao-existe.invalid/x/");
        QVERIFY(Ask().startsWith(
            u"0O servidor de atualizações \"nao-existe.invalid\" não foi encontrado"_s));
        SetAddress(" ");
        QCOMPARE(Ask(), u"0O catálogo não tem o endereço do servidor de atualizações."_s);
    }

    // The behaviour "password" lets only this user in, and then tells no version.
    void OffersTheStoredCredentials() {
        const ProxySetting proxy(server_.Port());
        SetAddress("atualiza.example/password");
        GravarConfiguracao(QString(), u"maria"_s, u"s3nha"_s, true);
        QVERIFY(Ask().contains(u"e sim \"dentro\""_s));
        GravarConfiguracao(QString(), u"maria"_s, u"outra"_s, true);
        QVERIFY(Ask().contains(u"recusou os que estão nas Configurações"_s));
    }

    // A system that splits command lines at blanks hands the path over in pieces.
    void PathsWithBlanks() {
        const ProxySetting proxy(server_.Port());
        SetAddress("atualiza.example/catalogo");
        server_.Put("catalogo/Versao.txt", "8");
        const QString folder = catalogue_->Pasta() + u"/com  dois"_s;
        QDir().mkpath(folder);
        const QString path = folder + u"\\a b.tmp"_s;
        QCOMPARE(Run({u"0|"_s + path}), 0);
        QCOMPARE(sys::ReadText(path), u"17|8"_s);
        // Where a blank was lost, no such folder exists; answers belong into the data folder.
        const QString inPieces = u"0|"_s + folder + u"\\resposta.tmp"_s;
        QCOMPARE(Run(inPieces.split(u' ', Qt::SkipEmptyParts)), 0);
        QCOMPARE(sys::ReadText(result_), u"17|8"_s);
        QDir(folder).removeRecursively();
    }

    void WrongUse() {
        const QStringList before = FilesOfTheFolder();
        for (const QStringList& arguments : {List(), List("1"), List("2|x"), List("1|"),
                                             List("--limit", "0", u"1|"_s + result_)}) {
            QCOMPARE(Run(arguments), 2);
        }
        QCOMPARE(FilesOfTheFolder(), before);
    }

    // The answer goes where it was asked for all the same.
    void NoCatalogue() {
        const QTemporaryDir empty;
        sys::WriteWhole(programs_.filePath(u"Caminho.txt"_s), empty.path().toUtf8());
        const QString got = Ask();
        sys::WriteWhole(programs_.filePath(u"Caminho.txt"_s), catalogue_->Pasta().toUtf8());
        QVERIFY2(got.startsWith(u'0') && got.size() > 10, qPrintable(got));
    }

    // Killed in the middle, it leaves no answer rather than half of one.
    void Killed() {
        const ProxySetting proxy(server_.Port());
        SetAddress("atualiza.example/silent");
        server_.Clear();
        QProcess process;
        process.start(Program(), {u"1|"_s + result_});
        QTRY_VERIFY_WITH_TIMEOUT(!server_.Requests().isEmpty(), Patience);
        process.kill();
        QVERIFY(process.waitForFinished(Patience));
        QVERIFY(!QFile::exists(result_));
    }
};

TARVO_FULL_KEYS;
TARVO_TEST(TestVerifier);
#include "test_verifier.moc"
