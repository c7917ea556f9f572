#include "platform/system/paths.h"
#include "session/configuracao.h"
#include "session/global.h"
#include "support/catalogo.h"
#include "support/servers.h"
#include "support/testmain.h"

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using testing_support::FreePort;
using testing_support::ProxySetting;
using testing_support::WrongServer;

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

    void SetAddress(const QString& address) const {
        catalogue_->Executar({u"UPDATE UMREGISTRO SET UrlAtualizacao = '%1'"_s.arg(address)});
    }

    int Run(const QStringList& arguments) const {
        QProcess process;
        process.start(Program(), arguments);
        if (!process.waitForFinished(Patience)) {
            process.kill();
            qFatal("the verifier did not end");
        }
        return process.exitCode();
    }

    // The answer; null where there is none.
    QString Ask(const QStringList& options = {}, const QString& flag = u"1"_s) const {
        QFile::remove(result_);
        if (Run(options + QStringList{flag + u'|' + result_}) != 0 || !QFile::exists(result_)) {
            return {};
        }
        return sys::ReadText(result_);
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
        catalogue_->Executar({u"UPDATE UMREGISTRO SET Versao = 7"_s});
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
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("answer");  // a pattern
        const QString refused = u"0O servidor .* não informou uma versão, e sim \"%1\"\\."_s;
        QTest::newRow("newer") << QByteArray("12") << u"17\\|12"_s;
        QTest::newRow("line end and blanks") << QByteArray(" 7 \r\n") << u"17\\|7"_s;
        QTest::newRow("oldest") << QByteArray("0") << u"17\\|0"_s;
        QTest::newRow("largest") << QByteArray("32767") << u"17\\|32767"_s;
        QTest::newRow("too large") << QByteArray("32768") << refused.arg(u"32768"_s);
        QTest::newRow("negative") << QByteArray("-1") << refused.arg(u"-1"_s);
        QTest::newRow("empty") << QByteArray() << refused.arg(QString());
        QTest::newRow("two numbers") << QByteArray("3 4") << refused.arg(u"3 4"_s);
        QTest::newRow("a page") << QByteArray("<html>\n<b>Entre</b>")
                                << refused.arg(u"<html> <b>Entre</b>"_s);
        QTest::newRow("far too long") << QByteArray(5000, '1') << u"0.*\\(.*;14;.*\\)"_s;
    }

    void Answers() {
        QFETCH(QByteArray, file);
        QFETCH(QString, answer);
        const ProxySetting proxy(server_.Port());
        SetAddress(u"http://atualiza.example/catalogo"_s);
        server_.Put(u"catalogo/Versao.txt"_s, file);
        const QString got = Ask();
        const QRegularExpression pattern(QRegularExpression::anchoredPattern(answer));
        QVERIFY2(pattern.match(got).hasMatch(), qPrintable(got));
    }

    void BadServers_data() {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("words");  // that the answer must hold
        QTest::newRow("404") << u"404"_s << u"não informa qual é a versão mais nova"_s;
        QTest::newRow("500") << u"500"_s << u"respondeu com o estado 500"_s;
        QTest::newRow("302") << u"302"_s << u"respondeu com o estado 302"_s;
        QTest::newRow("407") << u"password"_s << u"O proxy da rede pede usuário e senha"_s;
        QTest::newRow("reset") << u"reset"_s << u"foi interrompida"_s;
        QTest::newRow("close") << u"close"_s << u"interrompeu a resposta"_s;
        QTest::newRow("short") << u"short"_s << u"interrompeu a resposta"_s;
        QTest::newRow("garbage") << u"garbage"_s << u"enviou uma resposta inválida"_s;
        QTest::newRow("endless") << u"endless"_s << u";14;"_s;
        QTest::newRow("endless head") << u"endless-head"_s << u"enviou uma resposta inválida"_s;
        QTest::newRow("silent") << u"silent"_s << u"demorou demais"_s;
        QTest::newRow("silent body") << u"silent-body"_s << u"demorou demais"_s;
    }

    void BadServers() {
        QFETCH(QString, folder);
        QFETCH(QString, words);
        const ProxySetting proxy(server_.Port());
        SetAddress(u"atualiza.example/"_s + folder);
        const QString got = Ask({u"--limit"_s, u"4"_s});
        QVERIFY2(got.startsWith(u'0') && got.contains(words), qPrintable(got));
    }

    void NobodyThere() {
        {
            const ProxySetting proxy(FreePort());
            SetAddress(u"atualiza.example"_s);
            QVERIFY(Ask().startsWith(u"0Não foi possível conectar ao servidor"_s));
        }
        const ProxySetting none(0);
        SetAddress(u"http://nao-existe.invalid/x/"_s);
        QVERIFY(Ask().startsWith(
            u"0O servidor de atualizações \"nao-existe.invalid\" não foi encontrado"_s));
        SetAddress(u" "_s);
        QCOMPARE(Ask(), u"0O catálogo não tem o endereço do servidor de atualizações."_s);
    }

    // The behaviour "password" lets only this user in, and then tells no version.
    void OffersTheStoredCredentials() {
        const ProxySetting proxy(server_.Port());
        SetAddress(u"atualiza.example/password"_s);
        GravarConfiguracao(QString(), u"maria"_s, u"s3nha"_s, true);
        QVERIFY(Ask().contains(u"e sim \"dentro\""_s));
        GravarConfiguracao(QString(), u"maria"_s, u"outra"_s, true);
        QVERIFY(Ask().contains(u"recusou os que estão nas Configurações"_s));
    }

    // A system that splits command lines at blanks hands the path over in pieces.
    void PathsWithBlanks() {
        const ProxySetting proxy(server_.Port());
        SetAddress(u"atualiza.example/catalogo"_s);
        server_.Put(u"catalogo/Versao.txt"_s, "8");
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
        for (const QStringList& arguments :
             {QStringList{}, QStringList{u"1"_s}, QStringList{u"2|x"_s}, QStringList{u"1|"_s},
              QStringList{u"--limit"_s, u"0"_s, u"1|"_s + result_}}) {
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
        SetAddress(u"atualiza.example/silent"_s);
        server_.Clear();
        QProcess process;
        process.start(Program(), {u"1|"_s + result_});
        QTRY_VERIFY_WITH_TIMEOUT(!server_.Requests().isEmpty(), Patience);
        process.kill();
        QVERIFY(process.waitForFinished(Patience));
        QVERIFY(!QFile::exists(result_));
    }
};

TARVO_TEST(TestVerifier);
#include "test_verifier.moc"
