#include "busca.h"
#include "platform/system/clock.h"
#include "respostas.h"
#include "settings/configuracoes.h"
#include "support/cases.h"
#include "support/janela.h"
#include "support/servers.h"
#include "update/atualizando.h"

namespace {

const QString Nothing = u"64 Não existem Novas Atualizações."_s;
constexpr QPoint Button{578, 17};

}  // namespace

struct TestNovidades : NaJanela<> {
    WrongServer server_;
    const ProxySetting proxy_{server_.Port()};

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
        QCOMPARE(Timer("tmrVerificaProcessoVerificacao").interval(), 500);
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
    for (auto [one] : Cases(TARVO_CASES "/checks.data")) {
        const QStringList results = one.Take(u'<');
        const QString tip = one.Take(u'=').first();
        const QStringList always = one.Take(u'>');
        const QStringList asked = one.Take(u'?') + always;
        const bool locked = asked.size() > results.size();
        const bool installed = asked.last().contains("com sucesso"_L1);
        // Installing, or failing to, ends every other screen.
        const bool again = results.size() == 2 && asked.last() != Nothing;
        for (const bool automatic : {false, true}) {
            if (automatic) {
                StartAnew();
            }
            const Logins nobody(AnyTexts{});
            server_.Put("guarded/ListVersao2.txt", "SDB;dois.txt;1\r\n");
            server_.Put("guarded/dois.txt",
                        "E:UPDATE UMREGISTRO SET ComplementoDataEmissao = ' (2)'");
            const OutroComputador other;
            other.sessao->BeginTrans();
            if (locked) {
                other.banco->Execute(u"UPDATE CONTROLETRAN SET a = a"_s);
            }
            (new frmConfiguracoes)->Show();
            const frmPesquisa* before = gFrmPesquisa;
            const Verifier verifier(results);
            const BoxAnswers shown({asked.size() == 2 ? forms::vbYes : forms::vbNo});
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
            const QString boxes = (automatic ? always : asked).join(u" / "_s);
            QCOMPARE(Like(shown.FlagsAndTexts().join(u" / "_s).replace(u'\n', u' '), boxes), boxes);
            QCOMPARE(Tip(), tip);
            QCOMPARE(Valor("SELECT Versao FROM UMREGISTRO"), installed ? u"2"_s : u"1"_s);
            QCOMPARE(Emission(), installed ? u"05-MAR-2026 (2)"_s : u"05-MAR-2026 - teste"_s);
            QCOMPARE(janela_->catalogo.Temporarios(), QStringList());
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
    const Verifier verifier({"11|1", "11|2"});
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
    // No check before this one asked him, so this one does.
    QCOMPARE(janela_->Caixas(),
             List(Nothing, "292 Existem Novas Atualizações. Deseja Instalar agora?"));
}

// A check lets events through as it begins and as it ends, and the user may leave in one of them.
TEST(TestNovidades, ScreenGoesDuringACheck) {
    const Verifier verifier({"11|1"});
    QMetaObject::invokeMethod(gFrmPesquisa, &TestNovidades::Leave, Qt::QueuedConnection);
    Check().IniciarVerificacao(false);
    QCOMPARE(verifier.started, QStringList());
    QTRY_VERIFY(!gFrmPesquisa);
    Janela::Abrir();
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
