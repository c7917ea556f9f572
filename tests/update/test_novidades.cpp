#include "busca.h"
#include "platform/system/clock.h"
#include "settings/configuracoes.h"
#include "support/janela.h"
#include "support/servers.h"
#include "update/atualizando.h"
#include "update/conversa.h"

namespace {

const QString Question = u"292 Existem Novas Atualizações. Deseja Instalar agora?"_s;
const QString Nothing = u"64 Não existem Novas Atualizações."_s;
const QString Installed = u"64 Atualização concluída com sucesso."_s;
const QString Checked = u"Última Verificação: 22-NOV-2026 09:00:00"_s;
constexpr QPoint Button{578, 17};

// Plays the verifying process: leaves these results, one for each start, and ends at once. A null
// result leaves no file, "!" is a process that cannot be started, "..." one that does not end.
class Verifier {
public:
    explicit Verifier(const AnyTexts& results) : results_(results) {
        sys::SetStartHandler([this](const QString& commandLine, int) -> sys::ProcessId {
            started += commandLine;
            const QString result = results_.value(started.size() - 1);
            conversation = Conversa::Atender();
            if (conversation) {  // it had to ask, and nobody shall be asked again
                conversation->GuardarAcesso(u"maria"_s, u"s3nha"_s);
            }
            if (result == u'!') {
                throw Erro(Erro::FileNotFound);
            }
            if (!result.isNull()) {
                Write(QString(commandLine.section(u'|', 1)).replace(u'\\', u'/'), result.toUtf8());
            }
            return result == u"..."_s ? sys::OwnProcessId() : 0;
        });
    }

    QStringList started;
    std::unique_ptr<Conversa> conversation;

private:
    QStringList results_;
};

}  // namespace

struct TestNovidades : NaJanela<> {
    WrongServer server_;

    static Novidades& Check() { return Find<Novidades>(*gFrmPesquisa, "Novidades"); }
    static QTimer& Timer(const AnyText& name) { return Find<QTimer>(*gFrmPesquisa, name); }
    static void Tick(const AnyText& name) { QMetaObject::invokeMethod(&Timer(name), "timeout"); }
    static void SlowTick() { Tick("tmrVerificarAtualizacoes"); }
    static bool Watching() { return Timer("tmrVerificaProcessoVerificacao").isActive(); }
    static QString Emission() { return Find<forms::Label>(*gFrmPesquisa, "lblEmissao").Text(); }
    static QString& Tip() {
        return Find<forms::ClickZone>(*gFrmPesquisa, "pctVerificarAtualizacoes").Tag;
    }
    static bool IsFree() {
        const OutroComputador other;
        return ErrorOf([&] { other.banco->Execute(u"UPDATE CONTROLETRAN SET a = a"_s); }) == 0;
    }
    static void Leave() {
        gFrmPesquisa->Tag = Recarregando;
        gFrmPesquisa->Unload();
    }
    // Waits for the end of a check; the screen may be another one then.
    static bool CheckEnds() {
        return QTest::qWaitFor([] { return gFrmPesquisa && !Watching(); }, 60000);
    }

    void init() override {
        NaJanela::init();
        Executar(
            {"UPDATE UMREGISTRO SET Versao = 1, FlagErroUltimaVerificacao = 7, "
             "DataUltimaVerificacao = Null, UrlAtualizacao = 'atualiza.exemplo/guarded'"});
        Janela::Abrir();
        Timer("tmrVerificaProcessoVerificacao").setInterval(5);
        sys::SetClock([] { return QDateTime(QDate(2026, 11, 22), QTime(9, 0), Qt::UTC); });
    }
    void cleanup() override {
        sys::SetClock({});
        sys::SetStartHandler({});
        NaJanela::cleanup();
    }
};

TEST(TestNovidades, Checks) {
    Each<bool, QStringList, QStringList, QString> row;
    const auto told = [&](const QByteArray& name, const AnyText& result, const AnyText& box,
                          const AnyText& tip = Checked) {
        row(name, false, {result}, {box}, tip);
        // By itself a check says nothing, but it asks.
        row(name + ", by itself", true, {result}, box == Question ? List(box) : List(), tip);
    };
    const auto error = [](const AnyText& number, const AnyText& text) {
        return u"16 Erro nº: %1\nErro ao tentar Verificar Atualizações\n\n"
               "Observação: Requer acesso à Internet\n\n%2"_s.arg(number, text);
    };
    const QString failed = u"ERRO na "_s + Checked;
    told("equal", "15|5", Nothing);
    told("older, more fields", "x5|-3|9", Nothing);
    told("refused", "15|6", Question);
    told("failed", "0Sem servidor", error("-2", "Sem servidor"), failed);
    for (const QString& result : {QString(), QString(u""_s), u"1"_s, u"15"_s}) {
        told(result.isNull() ? "no file" : "result " + result.toUtf8(), result,
             error("9", "Subscrito fora do intervalo"), failed);
    }
    told("no number", "15|seis", error("13", "Tipos incompatíveis"), failed);
    told("too large", "15|32768", error("6", "Estouro"), failed);
    // By itself too: the failure comes before anybody knows that it was automatic.
    row("no verifier", true, {"!"}, {error("-1", "53 Arquivo não encontrado")}, failed);
    // Whoever keeps newer versions from coming can only serve old signatures.
    told("signed sixty days ago", "11|1|2026-09-23", Nothing);
    told("signed before", "11|1|2026-09-22", Nothing,
         Checked + u"\nHá 61 dias o servidor não confirma qual é a versão mais nova"_s);

    row("another computer's lock", true, {"11|2"},
        {Question,
         "64 Não foi possível Bloquear o Banco de Dados. (Outro Computador, de sua rede, já está "
         "Atualizando o Catálogo)."},
        Checked);
    row("another computer was faster", true, {"11|2", "12|2"}, {Question, Nothing}, Checked);
    row("installs", false, {"11|2", "11|2"}, {Question, Installed}, Checked);
    row("fails to install", false, {"12|3", "12|3"},
        {Question, "16 Erro nº: -104\nHttpQueryInfo:0;-103;Status=404 (ListVersao3.txt)"}, Checked);
    for (const auto& [automatic, results, boxes, tip] : row) {
        const ProxySetting proxy(server_.Port());
        const Logins nobody(AnyTexts{});
        server_.Put("guarded/ListVersao2.txt", "SDB;dois.txt;1\r\n");
        server_.Put("guarded/dois.txt", "E:UPDATE UMREGISTRO SET ComplementoDataEmissao = ' (2)'");
        const OutroComputador other;
        const bool locked = boxes.size() == 2 && results.size() == 1;
        other.sessao->BeginTrans();
        if (locked) {
            other.banco->Execute(u"UPDATE CONTROLETRAN SET a = a"_s);
        }
        (new frmConfiguracoes)->Show();
        const frmPesquisa* before = gFrmPesquisa;
        const Verifier verifier(results);
        BoxAnswers shown({boxes.size() == 2 ? forms::vbYes : forms::vbNo});
        bool back = false;
        QTimer watch;
        connect(&watch, &QTimer::timeout, this, [&back] {
            back |= forms::Form::Find(frmAtualizando::Nome) && !gFrmPesquisa->isMinimized();
        });
        watch.start(1);
        gFrmPesquisa->Minimize();
        Check().IniciarVerificacao(automatic);
        QVERIFY(CheckEnds());
        Settle();
        QCOMPARE(shown.FlagsAndTexts(), boxes);
        QCOMPARE(Tip(), tip);
        const bool installed = boxes.contains(Installed);
        QCOMPARE(Valor("SELECT Versao FROM UMREGISTRO"), installed ? u"2"_s : u"1"_s);
        QCOMPARE(Emission(), installed ? u"05-MAR-2026 (2)"_s : u"05-MAR-2026 - teste"_s);
        QCOMPARE(janela_->catalogo.Temporarios(), QStringList());
        // Installing, or failing to, ends every other screen.
        const bool again = boxes.size() == 2 && boxes.last() != Nothing && !locked;
        QCOMPARE(gFrmPesquisa != before, again);
        QCOMPARE(back, again);
        QCOMPARE(forms::Form::Loaded().size(), again ? 1 : 2);
        QVERIFY(!AcessoLembrado());
        QCOMPARE(verifier.started.size(), results.size());
        for (qsizetype i = 0; i < results.size(); ++i) {
            const QString command = u"\"*VerifAtualizCatalogoTarvo.exe\" %1|%2*"_s.arg(
                QString::number(i == 0 && automatic), gCaminho);
            QCOMPARE(Like(verifier.started.at(i), command), command);
        }
        other.sessao->Rollback();
        QVERIFY(IsFree());
    }
}

TEST(TestNovidades, OneCheckAtATime) {
    const Verifier verifier({"11|2", "..."});
    const BoxAnswers boxes({forms::vbYes});
    ClickAt(*gFrmPesquisa, Button);
    QTRY_COMPARE(verifier.started.size(), 2);  // the second time under the lock
    VerificacaoAutomatica = true;
    SlowTick();
    QVERIFY(verifier.conversation && !verifier.conversation->FoiChamada());
    ClickAt(*gFrmPesquisa, Button);  // it may be asking for a password behind another window
    QVERIFY(verifier.conversation->FoiChamada());
    Tick("tmrVerificaProcessoVerificacao");
    QVERIFY(Watching());
    QCOMPARE(verifier.started.size(), 2);
    QVERIFY(!verifier.conversation->Desistiu());
    QCOMPARE(janela_->catalogo.Temporarios().size(), 1);
    Clicar(Busca, "imgSair");
    QVERIFY(verifier.conversation->Desistiu() && IsFree());
    QCOMPARE(janela_->catalogo.Temporarios(), QStringList());
}

TEST(TestNovidades, SlowTimer) {
    // Since the last check; -1 for never.
    for (const auto& [automatic, secondsSince, starts] : Each<bool, int, bool>{
             {"never checked", true, -1, true},
             {"a moment too early", true, 599, false},
             {"ten minutes", true, 600, true},
             {"switched off", false, -1, false},
             // A clock that was wrong once, and one that goes a little ahead of another
             // computer's.
             {"checked in two days", true, -2 * 24 * 3600, true},
             {"checked in an hour", true, -3600, false},
         }) {
        QCOMPARE(Timer("tmrVerificarAtualizacoes").interval(), 65535);
        QVERIFY(Timer("tmrVerificarAtualizacoes").isActive());
        if (secondsSince != -1) {
            Executar(
                {"UPDATE UMREGISTRO SET DataUltimaVerificacao = "
                 "DateSerial(2026,3,5)+TimeSerial(23,55,0)"});
        }
        RecarregarFormularios(QString());
        sys::SetClock([=] {
            return QDateTime(QDate(2026, 3, 5), QTime(23, 55, 0), Qt::UTC).addSecs(secondsSince);
        });
        VerificacaoAutomatica = automatic;
        const Verifier verifier({"..."});
        SlowTick();
        QCOMPARE(verifier.started.size() == 1, starts);
        QCOMPARE(verifier.started.filter(u"\" 1|"_s), verifier.started);
    }
}

TEST(TestNovidades, StatusAgainOnEveryThirdTick) {
    VerificacaoAutomatica = false;
    QString before = u"05-MAR-2026 - teste"_s;
    for (const int year : {2027, 2028}) {
        Executar({u"UPDATE UMREGISTRO SET DataEmissao = DateSerial(%1,1,2)"_s.arg(year)});
        SlowTick();
        SlowTick();
        QCOMPARE(Emission(), before);
        SlowTick();
        before = u"02-JAN-%1 - teste"_s.arg(year);
        QCOMPARE(Emission(), before);
    }
}

TEST(TestNovidades, AnswerWaitsForAnOpenBox) {
    const Verifier verifier({"11|1", "11|1"});
    QDialog box;
    box.setModal(true);
    box.show();
    Check().IniciarVerificacao(false);
    Tick("tmrVerificaProcessoVerificacao");
    QVERIFY(Watching());
    QCOMPARE(janela_->Caixas(), QStringList());
    box.close();
    QVERIFY(CheckEnds());
    QCOMPARE(janela_->Caixas(), List(Nothing));
    // It has been a moment ago, which counts for the clock alone.
    VerificacaoAutomatica = true;
    SlowTick();
    QCOMPARE(verifier.started.size(), 1);
    Check().IniciarVerificacao(false);
    QVERIFY(CheckEnds());
    QCOMPARE(janela_->Caixas(), List(Nothing, Nothing));
}

// The end of a check lets events through, and the user may leave in one of them.
TEST(TestNovidades, ScreenGoesWhileACheckEnds) {
    const Verifier verifier({"11|1"});
    forms::SetMsgBoxHandler([](const QString&, int, const QString&) {
        QMetaObject::invokeMethod(gFrmPesquisa, &TestNovidades::Leave, Qt::QueuedConnection);
        return forms::vbOK;
    });
    Check().IniciarVerificacao(false);
    QTRY_VERIFY(!gFrmPesquisa);
    forms::SetMsgBoxHandler({});
    QCOMPARE(Valor("SELECT FlagErroUltimaVerificacao FROM UMREGISTRO"), u"0"_s);
}

TEST(TestNovidades, UpdatesNothingWhereLocksHoldNobody) {
    const Verifier verifier({"15|6"});
    gFaltaDeTravas = u"As travas não valem."_s;
    Check().IniciarVerificacao(true);
    QCOMPARE(janela_->Caixas(), QStringList());
    Check().IniciarVerificacao(false);
    gFaltaDeTravas.clear();
    QCOMPARE(janela_->Caixas(),
             List("64 As travas não valem.\n\nO catálogo não se atualiza assim."));
    QVERIFY(verifier.started.isEmpty());
}

// Also when a script of an older program was cut short, or wrote what is no date.
TEST(TestNovidades, EmissionAndTip) {
    for (const auto& [statements, emission, tip] : Each<QStringList, QString, QString>{
             {"as it is", List(), "05-MAR-2026 - teste", " "},
             {"a failed check",
              List("UPDATE UMREGISTRO SET DataUltimaVerificacao = "
                   "DateSerial(2026,3,5)+TimeSerial(7,8,9), FlagErroUltimaVerificacao = 1"),
              "05-MAR-2026 - teste", "ERRO na Última Verificação: 05-MAR-2026 07:08:09"},
             {"no row", List("DELETE FROM UMREGISTRO"), "",
              "O catálogo está sem o registro da versão: uma atualização foi interrompida. As "
              "pesquisas funcionam, mas é preciso instalar uma nova cópia do catálogo"},
             {"no date",
              List("ALTER TABLE UMREGISTRO ALTER COLUMN DataEmissao DATETIME NULL",
                   "UPDATE UMREGISTRO SET DataEmissao = Null"),
              " - teste", " "},
         }) {
        Executar(statements);
        Check().CarregarDadosVerificacao(false);
        QCOMPARE(Emission(), emission);
        QCOMPARE(Like(Tip(), tip), tip);
        MoveTo(*gFrmPesquisa, {400, 400});
        MoveTo(*gFrmPesquisa, Button);
        QCOMPARE(Tip(), QString());  // once for each refresh
        QVERIFY(Find<forms::LitPicture>(*gFrmPesquisa, "pctVerificarAtualizacoesSelecionada")
                    .isVisible());
        QVERIFY(std::ranges::any_of(QApplication::topLevelWidgets(), [](const QWidget* window) {
            return window->objectName() == "cToolTip"_L1 &&
                   window->accessibleName() == u"Verificar se existem Novas Atualizações"_s;
        }));
    }
}
