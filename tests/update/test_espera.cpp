#include "instalacoes.h"
#include "platform/dao/connection.h"
#include "respostas.h"
#include "support/peer.h"
#include "update/semjanela.h"

// Updates that somebody ends, that wait for somebody, and that nobody watches.
struct TestEspera : Instalacoes {
    void init() override {
        Instalacoes::init();
        gDB->GetConnection()->Run(
            "WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 2000) "
            "INSERT INTO VEICULO SELECT i, 'Caminhão ' || i, 1 FROM n");
    }
};

// Closing the window gives up while the catalogue is untouched, ends a statement that does not
// end by itself, and is no way out otherwise.
TEST(TestEspera, Closed) {
    Each<QStringList, int, QStringList, QString> row;
    const QStringList cancelled = List("Deseja cancelar a atualização?",
                                       "Atualização cancelada. O catálogo continua como estava.");
    const QString before = u"1/0 0 velha none 0"_s;
    row("in a download, at the second thought", {"ListVersao3.txt=FOTO;silent;4"}, 2,
        cancelled.first(1) + cancelled, before);
    row("in the last one", {"ListVersao3.txt=FOTO;late;5", "dois.txt="}, 2, cancelled, before);
    row("while a program of the script runs",
        {Script({Insert(20, "a"), "S:programa"}), "ListVersao3.txt="}, 4, {Done},
        "3/1 1 nova none 0");
    const QString endless =
        u"E:UPDATE CLIENTECONCORRENTE SET DescricaoClienteConcorrente = (SELECT Count(*) FROM "
        "VEICULO AS A, VEICULO AS B, VEICULO AS C, VEICULO AS D)"_s;
    row("in an endless statement", {Script({Insert(20, "Bravil"), endless})}, 4,
        {"Um comando da atualização está demorando. Deseja interromper a atualização?", Stopped},
        "1/0 * nova outra 0");  // the last group goes with it
    for (const auto& [changes, step, boxes, state] : row) {
        Apply(changes);
        sys::SetStartHandler([](const QString&, int) {
            Screen()->close();
            return sys::ProcessId(0);
        });
        const auto hand = FromRequest(step == 2 ? 5 : 4, [step] {
            if (Find<forms::Panel>(*Screen(), u"imgPassoAtualAtualizacao(%1)"_s.arg(step))
                    .isVisible()) {
                Screen()->close();
            }
        });
        const int first = boxes.size() > 2 ? forms::vbNo : forms::vbYes;
        QCOMPARE(Update(1, 3, {first, forms::vbYes}), boxes);
        QCOMPARE(Like(State(), state), state);
        if (boxes.last() == Stopped) {
            Instalacao unattended(false);
            unattended.LimitarComandos(50ms);
            QCOMPARE(ErrorOf([&] { unattended.Atualizar(1, 3); }), 3059);
        }
    }
}

// Somebody else's lock is no failure of a statement. It is waited for, the window says for
// whom, others go on searching, and the user may give up.
TEST(TestEspera, WaitsForOthers) {
    Each<bool, bool, QString> row;
    const QString somebody = u"outro computador ou outro programa, que usa o catálogo"_s;
#ifdef Q_OS_WIN  // which tells that there is a lock, not whose
    const QString reader = somebody;
#else
    const QString reader = u"test_update (%1), que lê o catálogo neste computador"_s.arg(
        QFileInfo(u"/proc/self"_s).owner());
#endif
    row("a reader asleep", true, false, reader);
    row("a reader asleep, and no patience", true, true, reader);
    row("a writer", false, false, somebody);
    for (const auto& [reads, gaveUp, whom] : row) {
        Peer awake(catalogo_->Pasta());
        Peer asleep(catalogo_->Pasta());
        const OutroComputador writer;
        if (reads) {
            QCOMPARE(asleep.Ask("hold SELECT * FROM VEICULO"), u"0"_s);
            asleep.Stop();
        } else {
            writer.sessao->BeginTrans();
            writer.banco->Execute(u"UPDATE UMREGISTRO SET VersaoAnterior = 5"_s);
        }
        Apply({Script({Insert(20, "Bravil"), "S:true", "S:true"})});
        QString seen;
        bool waits = true;
        sys::SetStartHandler([&](const QString&, int) {
            waits = Find<forms::Label>(*Screen(), "lblEspera").isVisible();
            return sys::ProcessId(0);
        });
        const auto watch = FromRequest(0, [&] {
            const auto& label = Find<forms::Label>(*Screen(), "lblEspera");
            if (!label.isVisible() || !seen.isEmpty()) {
                return;
            }
            seen = label.Text();
            const QRect whole = Screen()->Picture()->rect();
            QVERIFY(whole.contains(label.geometry()) && label.width() > whole.width() - 40);
            QCOMPARE(awake.Ask("value SELECT Count(*) FROM VEICULO"), u"2000"_s);
            if (gaveUp) {
                Screen()->close();
            } else {
                asleep.Kill();
                reads ? void() : writer.sessao->Rollback();
            }
        });
        const QStringList boxes = Update(1, 3, {forms::vbYes});
        QCOMPARE(seen, u"À espera de "_s + whom);
        QCOMPARE(waits, gaveUp);
        QCOMPARE(boxes, gaveUp ? List(seen + u".\n\nDeseja interromper a atualização?"_s, Stopped)
                               : List(Done));
        QCOMPARE(State(), gaveUp ? u"1/0 0 nova outra 0"_s : u"3/1 1 nova outra 0"_s);
    }
}

// What a scheduler is told. The verifier's answers are played; the real one is met elsewhere.
TEST(TestEspera, WithoutAWindow) {
    for (auto [one] : Cases(TARVO_CASES "/withoutwindow.data")) {
        const QStringList answers = one.Take(u'<');
        const QString line = one.Take(u'>').first();
        const QString state = one.Take(u'=').first();
        const bool helper = one.lines.value(0).startsWith("apoio"_L1);
        const OutroComputador other;
        other.sessao->BeginTrans();
        for (const QString& statement : one.Take(u'!')) {
            other.banco->Execute(statement);
        }
        Apply(one.lines);
        const Verifier verifier(answers);
        const FimSemJanela end = AtualizarAberto(0min);
        QCOMPARE(Like(QString::number(int(end.desfecho)) + u' ' + end.linha, line), line);
        QCOMPARE(verifier.started.filter(u"\" 1|"_s).size(), answers.size());  // without questions
        QCOMPARE(verifier.started.size(), answers.size() + helper);
        other.sessao->Rollback();
        QCOMPARE(State() + u" flag "_s + Valor("SELECT FlagErroUltimaVerificacao FROM UMREGISTRO"),
                 state);
        other.banco->Execute(u"UPDATE CONTROLETRAN SET a = a"_s);  // nobody holds it any more
    }
}
