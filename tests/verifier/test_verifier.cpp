#include "programas.h"
#include "session/global.h"
#include "settings/arquivo.h"
#include "support/test.h"
#include "update/prova.h"

// The real program, against servers that answer well, badly, or not at all.
class TestVerifier : public QObject {
    Q_OBJECT

    Programs programs_{{"VerifAtualizCatalogoTarvo.exe"}};
    std::unique_ptr<CatalogoDeTeste> catalogue_;
    WrongServer server_;
    QString result_;

    void SetAddress(const AnyText& address) const {
        catalogue_->Executar({u"UPDATE UMREGISTRO SET UrlAtualizacao = '%1'"_s.arg(address)});
    }

    int Run(const AnyTexts& arguments) const {
        return programs_.Run("VerifAtualizCatalogoTarvo.exe", arguments).code;
    }

    // The answer, and the exit code behind it.
    QString Ask(const AnyTexts& options = {}) const {
        QFile::remove(result_);
        const int code = Run(options + List(u"1|"_s + result_));
        return (QFile::exists(result_) ? sys::ReadText(result_) : QString()) + u" ="_s +
               QString::number(code);
    }

    QStringList Files() const { return QDir(catalogue_->Pasta()).entryList(QDir::Files); }

private Q_SLOTS:
    void initTestCase() {
        catalogue_ = std::make_unique<CatalogoDeTeste>();
        programs_.Point(catalogue_->Pasta());
        result_ = catalogue_->Pasta() + u"/resposta.tmp"_s;
        catalogue_->Executar({"UPDATE UMREGISTRO SET Versao = 7"});
    }
    void cleanup() {
        QFile::remove(result_);
        programs_.PutKeys(0);
        GravarConfiguracao(QString(), QString(), QString(), true);
        // Whatever happened, nothing of it stays behind.
        QCOMPARE(Files().filter(u"Tarvo."_s), Files());
    }

    void Answers_data() {
        // Without a signature the publisher's keys are not there; a password is the stored one of
        // "maria". The answer is a pattern.
        const Table<QString, QByteArray, QByteArray, QString, QString> row(
            "address", "version", "signature", "password", "answer");
        const auto answer = [&row](const QByteArray& name, const QByteArray& version,
                                   const AnyText& pattern, const QByteArray& signature = {}) {
            row(name, "http://atualiza.example/catalogo", version, signature, {}, pattern);
        };
        const QString refused = u"0O servidor * não informou uma versão, e sim \"%1\". =1"_s;
        answer("newer", "12", "17|12 =0");
        answer("line end and blanks", " 7 \r\n", "17|7 =0");
        answer("oldest", "0", "17|0 =0");
        answer("largest", "32767", "17|32767 =0");
        answer("far too long", QByteArray(5000, '1'), "0*(*;14;*) =1");
        for (const char* text : {"32768", "-1", "", "3 4", "<html> <b>Entre</b>"}) {
            answer(QByteArray("no version: ") + text, QByteArray(text).replace(' ', "\n "),
                   refused.arg(QLatin1String(text)));
        }

        // With the publisher's keys beside the program, a number counts only if he has signed it.
        const auto signedBy = [](char key, int release, const char* day) {
            const QDate date = QDate::fromString(QLatin1String(day), Qt::ISODate);
            const QByteArray message = MensagemDaVersao(u"loja"_s, release, date);
            return QByteArray::number(release) + ';' + day + "\r\n" +
                   sys::Sign(message, QByteArray(32, key)).toHex() + "\r\n";
        };
        const QByteArray twelve = signedBy('p', 12, "2026-11-20");
        const QString unsigned_ = u"0O número da versão mais nova não foi assinado por * =1"_s;
        answer("signed", "12", "17|12|2026-11-20 =0", twelve);
        answer("rollback", "5", "17|5|2026-01-02 =0", signedBy('p', 5, "2026-01-02"));
        answer("fast-forward", "32767", "0* informa a versão 32767, e a assinada é a 12. =1",
               twelve);
        answer("a stranger", "12", unsigned_, signedBy('s', 12, "2026-11-20"));
        answer("number changed", "13", unsigned_, "13" + twelve.mid(2));
        answer("date changed", "12", unsigned_, QByteArray(twelve).replace("-20", "-21"));
        answer("no signature", "12", unsigned_, "none");
        answer("something else", "12", unsigned_, "<html>");

        const auto behaves = [&row](const char* folder, const AnyText& pattern) {
            row(folder, u"atualiza.example/"_s + QLatin1String(folder), {}, {}, {}, pattern);
        };
        behaves("404", "0*não informa qual é a versão mais nova* =1");
        behaves("500", "0*respondeu com o estado 500* =6");
        behaves("302", "0*respondeu com o estado 302* =1");
        behaves("password", "0O proxy da rede pede usuário e senha* =7");
        behaves("reset", "0*foi interrompida* =6");
        behaves("close", "0*interrompeu a resposta* =6");
        behaves("garbage", "0*enviou uma resposta inválida* =6");
        behaves("endless", "0*;14;* =1");
        behaves("silent", "0*demorou demais* =6");
        behaves("silent-body", "0*demorou demais* =6");
        row("the stored password", "atualiza.example/password", {}, {}, "s3nha",
            "0*e sim \"dentro\"* =1");
        row("another one", "atualiza.example/password", {}, {}, "outra",
            "0*recusou os que estão nas Configurações* =7");
        row("no address", " ", {}, {}, {},
            "0O catálogo não tem o endereço do servidor de atualizações. =1");
    }
    void Answers() {
        QFETCH(QString, address);
        QFETCH(QByteArray, version);
        QFETCH(QByteArray, signature);
        QFETCH(QString, password);
        QFETCH(QString, answer);
        const ProxySetting proxy(server_.Port());
        SetAddress(address);
        server_.Clear();
        server_.Put("catalogo/Versao.txt", version);
        if (!signature.isEmpty()) {
            programs_.PutKeys('p');
        }
        if (signature.size() > 4) {
            server_.Put("catalogo/Versao.sig", signature);
        }
        if (!password.isEmpty()) {
            GravarConfiguracao(QString(), u"maria"_s, password, true);
        }
        const bool silent = answer.contains("demorou"_L1);
        QCOMPARE(Like(Ask(silent ? List("--limit", "2") : List()), answer), answer);
    }

    void NobodyThere() {
        SetAddress("http://nao-existe.invalid/x/");
        const auto says = [this](const AnyText& pattern) {
            QCOMPARE(Like(Ask(), pattern), pattern);
        };
        {
            const ProxySetting proxy(FreePort());
            says("0Não foi possível conectar ao servidor* =6");
        }
        const ProxySetting none(0);
        says("0O servidor de atualizações \"nao-existe.invalid\" não foi encontrado* =6");
        // Half a key file lets nobody in.
        programs_.PutKeys('p', "Site: loja");
        says("0O arquivo \"ChavesAtualizacao.txt\"* =1");
        // Without a catalogue the answer goes where it was asked for all the same.
        const QTemporaryDir empty;
        programs_.Point(empty.path());
        says("0* =1");
        programs_.Point(catalogue_->Pasta());
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
        for (const QStringList& wrong : {List(), List("1"), List("2|x"), List("1|"),
                                         List("--limit", "0", u"1|"_s + result_)}) {
            QCOMPARE(Run(wrong), 2);
        }
    }

    // Killed in the middle, it leaves no answer rather than half of one.
    void Killed() {
        const ProxySetting proxy(server_.Port());
        SetAddress("atualiza.example/silent");
        server_.Clear();
        QProcess process;
        process.start(programs_.Path("VerifAtualizCatalogoTarvo.exe"), {u"1|"_s + result_});
        QTRY_VERIFY_WITH_TIMEOUT(!server_.Requests().isEmpty(), 60000);
        process.kill();
        QVERIFY(process.waitForFinished(60000));
        QVERIFY(!QFile::exists(result_));
    }
};

TARVO_FULL_KEYS;
TARVO_TEST(TestVerifier);
#include "test_verifier.moc"
