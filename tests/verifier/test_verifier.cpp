#include "look/paleta.h"
#include "programas.h"
#include "settings/arquivo.h"
#include "support/cases.h"
#include "update/acesso.h"
#include "update/conversa.h"
#include "verifier/programa.h"

#include <QWindow>

#include <thread>

namespace {

constexpr char Name[] = "VerifAtualizCatalogoTarvo.exe";

// The whole program; who sits in front of it knows the proxy's password, once he sees the question.
// It lies behind another window until the catalogue, which is told by what is typed, calls it.
int Verifier(int argc, char** argv) {
    SetPedidoDeAcesso([](AcessoAoProxy& access) {
        QWidget question;
        question.showMinimized();
        QWindow other;
        other.show();
        other.requestActivate();
        QTest::qWait(450);
        const bool hidden = question.isMinimized() && !question.isActiveWindow();
        Conversa::Atender()->GuardarAcesso(u"?"_s, {});
        const bool seen = QTest::qWaitFor(
            [&] { return !question.isMinimized() && question.isActiveWindow(); }, 30000);
        const bool themed = question.palette().color(QPalette::Window) == Paleta::Atual().papel;
        access.usuario = u"maria"_s;
        access.senha = u"s3nha"_s;
        return hidden && seen && themed;
    });
    return ExecutarVerificador(argc, argv);
}

}  // namespace

// A process of its own, against servers that answer well, badly, or not at all.
struct TestVerifier : Fixture {
    Programs programs_;
    CatalogoDeTeste catalogue_;
    WrongServer server_;
    const ProxySetting proxy_{server_.Port()};
    const QString result_ = catalogue_.Pasta() + u"/resposta.tmp"_s;

    QString Keys() const { return programs_.Path("ChavesAtualizacao.txt"); }
    void SetAddress(const AnyText& address) const {
        Executar({u"UPDATE UMREGISTRO SET UrlAtualizacao = '%1'"_s.arg(address)});
    }

    QString Run(const AnyTexts& arguments) const { return programs_.Run(Name, arguments); }

    // The answer, and the exit code behind it.
    QString Ask(const AnyTexts& options = {}, bool byHand = false) const {
        QFile::remove(result_);
        const QString order = (byHand ? u"0|"_s : u"1|"_s) + result_;
        const QString code = programs_.Run(Name, options + List(order), true).section(u' ', -1);
        return (QFile::exists(result_) ? sys::ReadText(result_) : QString()) + u' ' + code;
    }

    QStringList Files() const { return QDir(catalogue_.Pasta()).entryList(QDir::Files); }

    TestVerifier() {
        // The program that is played, under the name that it has registered.
        QVERIFY(QFile::copy(QCoreApplication::applicationFilePath(), programs_.Path(Name)));
        programs_.Point(catalogue_.Pasta());
        Executar({"UPDATE UMREGISTRO SET Versao = 7"});
    }
    void cleanup() override {
        QFile::remove(result_);
        QFile::remove(Keys());
        GravarConfiguracao(QString(), QString(), QString(), true);
        // Whatever happened, nothing of it stays behind.
        QCOMPARE(Files().filter(u"Tarvo."_s), Files());
    }
};

TEST(TestVerifier, Answers) {
    Cases row(TARVO_CASES "/answers.data");
    row("too long", Case{List(u"Versao.txt="_s + QString(4097, u'1'), "> 0*(*;14;*) =1")});
    for (auto [one] : row) {
        const QString answer = one.Take(u'>').first();
        server_.Clear();
        SetAddress("http://atualiza.example/catalogo");
        const auto catalogue = Conversa::Abrir();
        const Conversa::Convite invitation(catalogue.get());
        std::jthread calls;
        for (const QString& change : std::as_const(one.lines)) {
            const QStringList words = change.split(u' ');
            if (words.first() == "at"_L1) {
                SetAddress(words.value(1));
            } else if (words.first() == "password"_L1) {
                GravarConfiguracao(QString(), u"maria"_s, words.last(), true);
            } else if (words.first() == "typed"_L1) {
                catalogue->GuardarAcesso(u"maria"_s, words.last());
            } else if (words.first() == "keys"_L1) {
                Write(Keys(),
                      "Site: loja\n"
                      "Chave: 19204c8c3ba85ba059cd18ac9017bd02a18da5d10c68fb779a34be43ef067791");
            } else if (words.first() == "asks"_L1) {
                calls = std::jthread([&catalogue](const std::stop_token& stop) {
                    QString user, password;
                    while (!stop.stop_requested() && !catalogue->LerAcesso(user, password)) {
                        std::this_thread::sleep_for(std::chrono::milliseconds(20));
                    }
                    catalogue->Chamar();
                });
            } else {
                server_.Put(u"catalogo/"_s + change.section(u'=', 0, 0),
                            change.section(u'=', 1).replace(u'\n', u"\r\n"_s).toUtf8());
            }
        }
        const bool silent = answer.contains("demorou"_L1);
        QString said = Ask(silent ? List("--limit", "2") : List(), one.lines.contains(u"asks"_s));
        if (QString user, password; catalogue->LerAcesso(user, password)) {
            said += u' ' + user + u' ' + password;
        }
        QCOMPARE(Like(said, answer), answer);
        QCOMPARE(Files().filter(u".tmp"_s), List("resposta.tmp"));
    }
}

TEST(TestVerifier, NobodyThere) {
    SetAddress("http://nao-existe.invalid/x/");
    const auto says = [this](const AnyText& pattern) { QCOMPARE(Like(Ask(), pattern), pattern); };
    const ProxySetting nobody(FreePort());
    says("0Não foi possível conectar ao servidor* =6");
    const ProxySetting none(0);
    says("0O servidor de atualizações \"nao-existe.invalid\" não foi encontrado* =6");
    // Half a key file lets nobody in.
    Write(Keys(), "Site: loja");
    says("0O arquivo \"ChavesAtualizacao.txt\"* =1");
    Executar({"DELETE FROM UMREGISTRO"});
    says(
        u"0O catálogo está sem o registro da versão: uma atualização foi interrompida. É preciso "
        "instalar uma nova cópia do catálogo. =1"_s);
    // Without a catalogue the answer goes where it was asked for all the same.
    const QTemporaryDir empty;
    programs_.Point(empty.path());
    says("0* =1");
    programs_.Point(catalogue_.Pasta());
}

// A system that splits command lines at blanks hands the path over in pieces.
TEST(TestVerifier, PathsWithBlanks) {
    SetAddress("atualiza.example/catalogo");
    server_.Put("catalogo/Versao.txt", "8");
    const QString folder = catalogue_.Pasta() + u"/com  dois"_s;
    QDir().mkpath(folder);
    const QString path = folder + u"\\a b.tmp"_s;
    QCOMPARE(Run({u"0|"_s + path}), u" =0"_s);
    QCOMPARE(sys::ReadText(path), u"17|8"_s);
    // Where a blank was lost, no such folder exists; answers belong into the data folder.
    const QString inPieces = u"0|"_s + folder + u"\\resposta.tmp"_s;
    QCOMPARE(Run(inPieces.split(u' ', Qt::SkipEmptyParts)), u" =0"_s);
    QCOMPARE(sys::ReadText(result_), u"17|8"_s);
    for (const QStringList& wrong :
         {List(), List("1"), List("2|x"), List("1|"), List("--limit", "0", u"1|"_s + result_),
          List("-h"), List("--help", "--help"), List("--version", "--version")}) {
        const QString said = Run(wrong);
        QVERIFY2(said.startsWith(u"Uso: "_s) && said.endsWith(u" =2"_s), qPrintable(said));
    }
    const QString help = u"Uso: *tempo máximo*\n =0"_s;
    QCOMPARE(Like(Run({"--help"}), help), help);
    QCOMPARE(Run({"--ajuda"}), Run({"--help"}));
    const QString version = u"VerifAtualizCatalogoTarvo.exe " TARVO_VERSION "*\n =0"_s;
    QCOMPARE(Like(Run({"--version"}), version), version);
    QCOMPARE(Run({"--versao"}), Run({"--version"}));
    // Nowhere to put the answer.
    const QString nowhere = u"VerifAtualizCatalogoTarvo.exe: *\n =0"_s;
    QVERIFY(QFile::remove(result_) && QDir().mkpath(result_));
    QCOMPARE(Like(Run({u"1|"_s + result_}), nowhere), nowhere);
    QVERIFY(QDir().rmdir(result_));
}

// Killed in the middle, or with a catalogue that waits no longer, it leaves no answer rather than
// half of one.
TEST(TestVerifier, BreaksOff) {
    for (const bool killed : {false, true}) {
        SetAddress(killed ? "atualiza.example/silent" : "atualiza.example/silent-body");
        server_.Clear();
        Write(result_, "1");
        const auto catalogue = Conversa::Abrir();
        const Conversa::Convite invitation(catalogue.get());
        QProcess process;
        process.start(programs_.Path(Name), {u"1|"_s + result_});
        QTRY_VERIFY_WITH_TIMEOUT(!server_.Requests().isEmpty(), 60000);
        // While it waits for the network, nobody has to wait for it.
        const QDir opened(u"/proc/%1/fd"_s.arg(process.processId()));
        for (const QFileInfo& file : opened.entryInfoList(QDir::AllEntries | QDir::System)) {
            QVERIFY(!file.symLinkTarget().endsWith("Tarvo.mdb"_L1));
        }
        killed ? process.kill() : catalogue->Desistir();
        QVERIFY(process.waitForFinished(60000));
        QCOMPARE(process.exitCode() == 0, !killed);
        QCOMPARE(Files().filter(u".tmp"_s), killed ? List("resposta.tmp") : List());
    }
}

TARVO_PROGRAM(Name, Verifier);
TARVO_FULL_KEYS;
