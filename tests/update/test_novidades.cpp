#include "look/tooltip.h"
#include "platform/forms/controls.h"
#include "platform/forms/msgbox.h"
#include "platform/system/clock.h"
#include "platform/system/process.h"
#include "search/pesquisa.h"
#include "session/banco.h"
#include "session/global.h"
#include "session/passagens.h"
#include "settings/configuracoes.h"
#include "support/catalogo.h"
#include "support/servers.h"
#include "support/test.h"
#include "support/windows.h"
#include "update/atualizando.h"
#include "update/novidades.h"

#include <QDialog>
#include <QTimer>

namespace {

const QString Question = u"Existem Novas Atualizações. Deseja Instalar agora?"_s;
const QString Nothing = u"Não existem Novas Atualizações."_s;
const QString Failed =
    u"Erro ao tentar Verificar Atualizações\n\n"
    "Observação: Requer acesso à Internet\n\n"_s;
constexpr int Yes = 6;

// Plays the verifying process: leaves these results, one for each start, and ends at once. A null
// result leaves no file.
class Verifier {
public:
    explicit Verifier(const AnyTexts& results) : results_(results) {
        sys::SetStartHandler([this](const QString& commandLine, int) -> sys::ProcessId {
            started += commandLine;
            if (running) {
                return sys::OwnProcessId();
            }
            const QString result = results_.value(started.size() - 1);
            if (!result.isNull()) {
                Write(QString(commandLine.section(u'|', 1)).replace(u'\\', u'/'), result.toUtf8());
            }
            return 0;
        });
    }
    ~Verifier() { sys::SetStartHandler({}); }

    QStringList started;
    bool running = false;

private:
    QStringList results_;
};

}  // namespace

class TestNovidades : public QObject {
    Q_OBJECT

    std::unique_ptr<CatalogoDeTeste> catalogo_;

    static Novidades& Check() { return Find<Novidades>(*gFrmPesquisa, "Novidades"); }
    static QTimer& Timer(const AnyText& name) { return Find<QTimer>(*gFrmPesquisa, name); }
    static void SlowTick() {
        QMetaObject::invokeMethod(&Timer("tmrVerificarAtualizacoes"), "timeout");
    }
    static bool Watching() { return Timer("tmrVerificaProcessoVerificacao").isActive(); }
    static QString Setting(const AnyText& column) {
        return Valor(u"SELECT %1 FROM UMREGISTRO"_s.arg(column));
    }
    // Waits for the end of a check; the screen may be another one then.
    static bool CheckEnds() {
        return QTest::qWaitFor([] { return gFrmPesquisa && !Watching(); }, 20000);
    }

private Q_SLOTS:
    void init() {
        catalogo_ = std::make_unique<CatalogoDeTeste>();
        catalogo_->Executar(
            {"UPDATE UMREGISTRO SET Versao = 1, FlagErroUltimaVerificacao = 7, "
             "DataUltimaVerificacao = Null"});
        gFrmPesquisa = new frmPesquisa;
        gFrmPesquisa->Show();
        Timer("tmrVerificaProcessoVerificacao").setInterval(5);
    }
    void cleanup() {
        sys::SetClock({});
        sys::SetStartHandler({});
        if (gFrmPesquisa) {
            gFrmPesquisa->Tag = Recarregando;
            gFrmPesquisa->Unload();
        }
        Settle();
        catalogo_.reset();
    }

    void Answers_data() {
        const Table<bool, QString, QStringList, QString> row("automatic", "result", "boxes",
                                                             "flag");
        const auto error = [](const QString& number, const QString& text) {
            return List(u"Erro nº: "_s + number + u'\n' + Failed + text);
        };
        const QStringList subscript = error(u"9"_s, u"Subscrito fora do intervalo"_s);
        row("equal", false, "15|5", {Nothing}, "0");
        row("older, more fields", false, "x5|-3|9", {Nothing}, "0");
        row("equal, by itself", true, "15|5", {}, "0");
        row("refused", false, "15|6", {Question}, "0");
        row("refused, by itself", true, "15|6", {Question}, "0");
        row("failed", false, "0Sem servidor", error(u"-2"_s, u"Sem servidor"_s), "1");
        row("failed, by itself", true, "0Sem servidor", {}, "1");
        row("no file", false, {}, subscript, "1");
        row("empty file", false, "", subscript, "1");
        row("no versions", false, "1", subscript, "1");
        row("one version", false, "15", subscript, "1");
        row("no number", false, "15|seis", error(u"13"_s, u"Tipos incompatíveis"_s), "1");
        row("too large", false, "15|32768", error(u"6"_s, u"Estouro"_s), "1");
    }
    void Answers() {
        QFETCH(bool, automatic);
        QFETCH(QString, result);
        const Verifier verifier({result});
        BoxAnswers boxes;
        Check().IniciarVerificacao(automatic);
        QVERIFY(CheckEnds());
        QTEST(boxes.Texts(), "boxes");
        QTEST(Setting("FlagErroUltimaVerificacao"), "flag");
        QVERIFY(!Setting("DataUltimaVerificacao").isEmpty());
        QCOMPARE(catalogo_->Temporarios(), QStringList());
        const QString command = verifier.started.value(0);
        QVERIFY2(command.startsWith(u'"'), qPrintable(command));
        QVERIFY(command.contains(u"VerifAtualizCatalogoTarvo.exe\" %1|"_s.arg(automatic ? 1 : 0) +
                                 gCaminho));
        if (!boxes.Texts().isEmpty() && boxes.Texts().first() == Question) {
            QCOMPARE(boxes.Boxes().first().flags, 292);
        }
    }

    // By itself too: the failure comes before anybody knows that it was automatic.
    void VerifierCannotBeStarted() {
        sys::SetStartHandler(
            [](const QString&, int) -> sys::ProcessId { throw Erro(Erro::FileNotFound); });
        BoxAnswers boxes;
        Check().IniciarVerificacao(true);
        QVERIFY(CheckEnds());
        QCOMPARE(boxes.Texts(), List(u"Erro nº: -1\n"_s + Failed + u"53 Arquivo não encontrado"_s));
    }

    void OneCheckAtATime() {
        Verifier verifier({"11|1"});
        verifier.running = true;
        ClickAt(*gFrmPesquisa, {578, 17});
        ClickAt(*gFrmPesquisa, {578, 17});
        SlowTick();
        QTest::qWait(50);
        QVERIFY(Watching());
        QCOMPARE(verifier.started.size(), 1);
    }

    void SlowTimer_data() {
        // Since the last check; -1 for never.
        const Table<bool, int, bool> row("automatic", "secondsSince", "starts");
        row("never checked", true, -1, true);
        row("a moment too early", true, 599, false);
        row("ten minutes", true, 600, true);
        row("switched off", false, -1, false);
        // A clock that was wrong once, and one that goes a little ahead of another computer's.
        row("checked in two days", true, -2 * 24 * 3600, true);
        row("checked in an hour", true, -3600, false);
    }
    void SlowTimer() {
        QFETCH(bool, automatic);
        QFETCH(int, secondsSince);
        QCOMPARE(Timer("tmrVerificarAtualizacoes").interval(), 65535);
        QVERIFY(Timer("tmrVerificarAtualizacoes").isActive());
        if (secondsSince != -1) {
            catalogo_->Executar(
                {"UPDATE UMREGISTRO SET DataUltimaVerificacao = "
                 "DateSerial(2026,3,5)+TimeSerial(23,55,0)"});
        }
        Check().CarregarDadosVerificacao(true);
        sys::SetClock([=] {
            return QDateTime(QDate(2026, 3, 5), QTime(23, 55, 0), Qt::UTC).addSecs(secondsSince);
        });
        VerificacaoAutomatica = automatic;
        Verifier verifier({"11|1"});
        verifier.running = true;
        SlowTick();
        QTEST(verifier.started.size() == 1, "starts");
        if (!verifier.started.isEmpty()) {
            QVERIFY(verifier.started.first().contains("\" 1|"_L1));
        }
    }

    void StatusAgainOnEveryThirdTick() {
        VerificacaoAutomatica = false;
        catalogo_->Executar({"UPDATE UMREGISTRO SET DataEmissao = DateSerial(2027,1,2)"});
        const auto& label = Find<forms::Label>(*gFrmPesquisa, "lblEmissao");
        SlowTick();
        SlowTick();
        QCOMPARE(label.Text(), u"05-MAR-2026 - teste"_s);
        SlowTick();
        QCOMPARE(label.Text(), u"02-JAN-2027 - teste"_s);
    }

    void AnswerWaitsForAnOpenBox() {
        const Verifier verifier({"11|1"});
        BoxAnswers boxes;
        QDialog box;
        box.setModal(true);
        box.show();
        Check().IniciarVerificacao(false);
        QTest::qWait(50);
        QVERIFY(Watching());
        QCOMPARE(boxes.Texts(), QStringList());
        box.close();
        QVERIFY(CheckEnds());
        QCOMPARE(boxes.Texts(), List(Nothing));
    }

    // The end of a check lets events through, and the user may leave in one of them.
    void ScreenGoesWhileACheckEnds() {
        const Verifier verifier({"11|1"});
        forms::SetMsgBoxHandler([](const QString&, int, const QString&) {
            const auto leave = [] {
                gFrmPesquisa->Tag = Recarregando;
                gFrmPesquisa->Unload();
            };
            QMetaObject::invokeMethod(gFrmPesquisa, leave, Qt::QueuedConnection);
            return forms::vbOK;
        });
        Check().IniciarVerificacao(false);
        QTRY_VERIFY(!gFrmPesquisa);
        forms::SetMsgBoxHandler({});
        QCOMPARE(Setting("FlagErroUltimaVerificacao"), u"0"_s);
    }

    void LockOfAnotherComputer() {
        const OutroComputador other;
        other.sessao->BeginTrans();
        other.banco->Execute(u"UPDATE CONTROLETRAN SET a = a"_s);
        const Verifier verifier({"11|2"});
        BoxAnswers boxes({Yes});
        Check().IniciarVerificacao(true);
        QVERIFY(CheckEnds());
        QCOMPARE(boxes.Texts(), List(Question,
                                     "Não foi possível Bloquear o Banco de Dados. (Outro "
                                     "Computador, de sua rede, já está Atualizando o Catálogo)."));
        QCOMPARE(Setting("FlagErroUltimaVerificacao"), u"0"_s);
        QCOMPARE(verifier.started.size(), 1);
    }

    void AnotherComputerWasFaster() {
        const Verifier verifier({"11|2", "12|2"});
        BoxAnswers boxes({Yes});
        Check().IniciarVerificacao(true);
        QVERIFY(QTest::qWaitFor([&] { return boxes.Boxes().size() == 2; }, 20000));
        QVERIFY(CheckEnds());
        QCOMPARE(boxes.Texts(), List(Question, Nothing));
        QVERIFY(verifier.started.value(1).contains("\" 0|"_L1));
        QCOMPARE(catalogo_->Temporarios(), QStringList());
        QVERIFY(BloquearBancoDados(true));  // nobody holds it any more
        BloquearBancoDados(false);
    }

    void Installs() {
        WrongServer server;
        const ProxySetting proxy(server.Port());
        server.Put("ListVersao2.txt", "SDB;dois.txt;1\r\n");
        server.Put("dois.txt", "E:UPDATE UMREGISTRO SET ComplementoDataEmissao = ' (2)'");
        catalogo_->Executar({"UPDATE UMREGISTRO SET UrlAtualizacao = 'atualiza.exemplo'"});
        (new frmConfiguracoes)->Show();
        const frmPesquisa* before = gFrmPesquisa;
        const Verifier verifier({"11|2", "11|2"});
        BoxAnswers boxes({Yes});
        Check().IniciarVerificacao(false);
        QVERIFY(QTest::qWaitFor([&] { return gFrmPesquisa != before; }, 20000));
        Settle();
        QCOMPARE(boxes.Texts(), List(Question, "Atualização concluída com sucesso."));
        QCOMPARE(verifier.started.size(), 2);
        QCOMPARE(forms::Form::Loaded(), QList<forms::Form*>{gFrmPesquisa});
        QCOMPARE(Find<forms::Label>(*gFrmPesquisa, "lblEmissao").Text(), u"05-MAR-2026 (2)"_s);
        QCOMPARE(Setting("Versao"), u"2"_s);
        QCOMPARE(catalogo_->Temporarios(), QStringList());
        QVERIFY(BloquearBancoDados(true));
        BloquearBancoDados(false);
    }

    // Whoever keeps newer versions from coming can only serve old signatures.
    void FreezeIsTold_data() {
        const Table<QString, bool> row("day", "told");
        row("sixty days", "2026-09-23", false);
        row("sixty-one days", "2026-09-22", true);
        row("unsigned", {}, false);
    }
    void FreezeIsTold() {
        QFETCH(QString, day);
        QFETCH(bool, told);
        sys::SetClock([] { return QDateTime(QDate(2026, 11, 22), QTime(9, 0), Qt::UTC); });
        const Verifier verifier({u"11|1"_s + (day.isEmpty() ? day : u'|' + day)});
        BoxAnswers boxes;
        Check().IniciarVerificacao(true);
        QVERIFY(CheckEnds());
        const QString tip = Find<forms::ClickZone>(*gFrmPesquisa, "pctVerificarAtualizacoes").Tag;
        QVERIFY(tip.startsWith(u"Última Verificação: "_s));
        QCOMPARE(tip.contains(u"\nHá 61 dias o servidor não confirma"_s), told);
    }

    // A script of an older program was cut short, or wrote what is no date.
    void UpdatesNothingWhereLocksHoldNobody() {
        const Verifier verifier({"15|6"});
        BoxAnswers boxes;
        gFaltaDeTravas = u"As travas não valem."_s;
        Check().IniciarVerificacao(true);
        QVERIFY(boxes.Boxes().isEmpty());
        Check().IniciarVerificacao(false);
        gFaltaDeTravas.clear();
        QCOMPARE(boxes.Texts(), List("As travas não valem.\n\nO catálogo não se atualiza assim."));
        QVERIFY(verifier.started.isEmpty());
    }

    void OpensWithoutItsRecord_data() {
        const Table<QStringList, QString, QString> row("statements", "emission", "tip");
        row("no row", {"DELETE FROM UMREGISTRO"}, "",
            "O catálogo está sem o registro da versão: uma atualização foi interrompida.");
        row("no date",
            {"ALTER TABLE UMREGISTRO ALTER COLUMN DataEmissao DATETIME NULL",
             "UPDATE UMREGISTRO SET DataEmissao = Null"},
            " - teste", " ");
    }
    void OpensWithoutItsRecord() {
        QFETCH(QStringList, statements);
        QFETCH(QString, tip);
        catalogo_->Executar(statements);
        Check().CarregarDadosVerificacao(true);
        QTEST(Find<forms::Label>(*gFrmPesquisa, "lblEmissao").Text(), "emission");
        QVERIFY(
            Find<forms::ClickZone>(*gFrmPesquisa, "pctVerificarAtualizacoes").Tag.startsWith(tip));
    }

    // A failed installation is shown by its own screen; the program goes on with what there is.
    void InstallationFails() {
        WrongServer server;
        const ProxySetting proxy(server.Port());
        catalogo_->Executar({"UPDATE UMREGISTRO SET UrlAtualizacao = 'atualiza.exemplo'"});
        const frmPesquisa* before = gFrmPesquisa;
        const Verifier verifier({"11|2", "11|2"});
        BoxAnswers boxes({Yes});
        Check().IniciarVerificacao(false);
        QVERIFY(QTest::qWaitFor([&] { return gFrmPesquisa != before; }, 20000));
        QCOMPARE(
            boxes.Texts(),
            List(Question, "Erro nº: -104\nHttpQueryInfo:0;-103;Status=404 (ListVersao2.txt)"));
        QCOMPARE(Setting("Versao"), u"1"_s);
    }

    void TipOncePerRefresh() {
        auto& button = Find<forms::ClickZone>(*gFrmPesquisa, "pctVerificarAtualizacoes");
        QCOMPARE(button.Tag, u" "_s);
        catalogo_->Executar(
            {"UPDATE UMREGISTRO SET DataUltimaVerificacao = "
             "DateSerial(2026,3,5)+TimeSerial(7,8,9), FlagErroUltimaVerificacao = 1"});
        Check().CarregarDadosVerificacao(false);
        QCOMPARE(button.Tag, u"ERRO na Última Verificação: 05-MAR-2026 07:08:09"_s);
        MoveTo(*gFrmPesquisa, {578, 17});
        QCOMPARE(button.Tag, QString());
        QVERIFY(Find<forms::LitPicture>(*gFrmPesquisa, "pctVerificarAtualizacoesSelecionada")
                    .isVisible());
        const QWidgetList windows = QApplication::topLevelWidgets();
        const auto tip = std::find_if(windows.begin(), windows.end(), [](const QWidget* window) {
            return window->objectName() == "cToolTip"_L1;
        });
        QVERIFY(tip != windows.end());
        QCOMPARE((*tip)->accessibleName(), u"Verificar se existem Novas Atualizações"_s);
    }
};

TARVO_TEST(TestNovidades);
#include "test_novidades.moc"
