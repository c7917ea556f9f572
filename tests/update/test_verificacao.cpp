#include "look/tooltip.h"
#include "platform/convert.h"
#include "platform/erro.h"
#include "platform/forms/controls.h"
#include "platform/forms/msgbox.h"
#include "platform/system/clock.h"
#include "platform/system/process.h"
#include "search/pesquisa.h"
#include "secrets/configuracoes.h"
#include "session/banco.h"
#include "session/global.h"
#include "support/catalogo.h"
#include "support/servers.h"
#include "support/testmain.h"
#include "support/windows.h"
#include "update/atualizando.h"

#include <QDialog>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <memory>

using namespace Qt::StringLiterals;
using testing_support::BoxAnswers;
using testing_support::Find;
using testing_support::ProxySetting;
using testing_support::Settle;
using testing_support::WrongServer;

namespace {

const QString Question = u"Existem Novas Atualizações. Deseja Instalar agora?"_s;
const QString Nothing = u"Não existem Novas Atualizações."_s;
const QString Failed = u"Erro ao tentar Verificar Atualizações\n\n"
                       "Observação: Requer acesso à Internet\n\n"_s;
constexpr int Yes = 6;

// Plays the verifying process: leaves these results, one for each start, and ends at once. A null
// result leaves no file.
class Verifier {
public:
    explicit Verifier(QStringList results) : results_(std::move(results)) {
        sys::SetStartHandler([this](const QString& commandLine, int) -> sys::ProcessId {
            started += commandLine;
            if (running) {
                return sys::OwnProcessId();
            }
            const QString result = results_.value(started.size() - 1);
            if (!result.isNull()) {
                QFile file(QString(commandLine.section(u'|', 1)).replace(u'\\', u'/'));
                if (!file.open(QIODevice::WriteOnly) || file.write(result.toUtf8()) < 0) {
                    qFatal("cannot write %s", qPrintable(file.fileName()));
                }
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

class TestVerificacao : public QObject {
    Q_OBJECT

    std::unique_ptr<CatalogoDeTeste> catalogo_;

    static QTimer& Timer(const char16_t* name) {
        return Find<QTimer>(*gFrmPesquisa, QString::fromUtf16(name));
    }
    static void SlowTick() {
        QMetaObject::invokeMethod(&Timer(u"tmrVerificarAtualizacoes"), "timeout");
    }
    static bool Watching() { return Timer(u"tmrVerificaProcessoVerificacao").isActive(); }
    static QString Value(const QString& column) {
        return convert::ToTextOrEmpty(
            gDB->OpenRecordset(u"SELECT %1 FROM UMREGISTRO"_s.arg(column))->Fields(0).Value());
    }
    static void ShowSearch() {
        gFrmPesquisa = new frmPesquisa;
        gFrmPesquisa->Show();
        Timer(u"tmrVerificaProcessoVerificacao").setInterval(5);
    }
    static void UnloadSearch() {
        gFrmPesquisa->Tag = frmPesquisa::Recarregando;
        gFrmPesquisa->Unload();
        Settle();
    }
    static QStringList Texts(const BoxAnswers& boxes) {
        QStringList texts;
        for (const auto& box : boxes.Boxes()) {
            texts += box.text;
        }
        return texts;
    }
    // Waits for the end of a check; the screen may be another one then.
    static bool CheckEnds() {
        return QTest::qWaitFor([] { return gFrmPesquisa && !Watching(); }, 20000);
    }
    QStringList Temporary() const {
        return QDir(catalogo_->Pasta()).entryList({u"*.tmp"_s});
    }

private Q_SLOTS:
    void init() {
        catalogo_ = std::make_unique<CatalogoDeTeste>();
        catalogo_->Executar(
            {u"UPDATE UMREGISTRO SET Versao = 1, FlagErroUltimaVerificacao = 7, "
             "DataUltimaVerificacao = Null"_s});
        ShowSearch();
    }
    void cleanup() {
        sys::SetClock({});
        sys::SetStartHandler({});
        UnloadSearch();
        catalogo_.reset();
    }

    void Answers_data() {
        QTest::addColumn<bool>("automatic");
        QTest::addColumn<QString>("result");
        QTest::addColumn<QStringList>("boxes");
        QTest::addColumn<QString>("flag");
        const QString none;
        const QStringList silence;
        const auto error = [](const QString& number, const QString& text) {
            return QStringList{u"Erro nº: "_s + number + u'\n' + Failed + text};
        };
        const QStringList subscript = error(u"9"_s, u"Subscrito fora do intervalo"_s);
        QTest::newRow("equal") << false << u"15|5"_s << QStringList{Nothing} << u"0"_s;
        QTest::newRow("older, more fields") << false << u"x5|-3|9"_s << QStringList{Nothing} << u"0"_s;
        QTest::newRow("equal, by itself") << true << u"15|5"_s << silence << u"0"_s;
        QTest::newRow("refused") << false << u"15|6"_s << QStringList{Question} << u"0"_s;
        QTest::newRow("refused, by itself") << true << u"15|6"_s << QStringList{Question} << u"0"_s;
        QTest::newRow("failed") << false << u"0Sem servidor"_s << error(u"-2"_s, u"Sem servidor"_s)
                                << u"1"_s;
        QTest::newRow("failed, by itself") << true << u"0Sem servidor"_s << silence << u"1"_s;
        QTest::newRow("no file") << false << none << subscript << u"1"_s;
        QTest::newRow("empty file") << false << u""_s << subscript << u"1"_s;
        QTest::newRow("no versions") << false << u"1"_s << subscript << u"1"_s;
        QTest::newRow("one version") << false << u"15"_s << subscript << u"1"_s;
        QTest::newRow("no number") << false << u"15|seis"_s << error(u"13"_s, u"Tipos incompatíveis"_s)
                                   << u"1"_s;
        QTest::newRow("too large") << false << u"15|32768"_s << error(u"6"_s, u"Estouro"_s) << u"1"_s;
    }
    void Answers() {
        QFETCH(bool, automatic);
        QFETCH(QString, result);
        const Verifier verifier({result});
        BoxAnswers boxes;
        gFrmPesquisa->IniciarVerificacao(automatic);
        QVERIFY(CheckEnds());
        QTEST(Texts(boxes), "boxes");
        QTEST(Value(u"FlagErroUltimaVerificacao"_s), "flag");
        QVERIFY(!Value(u"DataUltimaVerificacao"_s).isEmpty());
        QCOMPARE(Temporary(), QStringList());
        const QString command = verifier.started.value(0);
        QVERIFY2(command.startsWith(u'"'), qPrintable(command));
        QVERIFY(command.contains(u"VerifAtualizCatalogoTarvo.exe\" %1|"_s.arg(automatic ? 1 : 0) +
                                 gCaminho));
        if (!Texts(boxes).isEmpty() && Texts(boxes).first() == Question) {
            QCOMPARE(boxes.Boxes().first().flags, 292);
        }
    }

    // By itself too: the failure comes before anybody knows that it was automatic.
    void VerifierCannotBeStarted() {
        sys::SetStartHandler([](const QString&, int) -> sys::ProcessId {
            throw Erro(Erro::FileNotFound);
        });
        BoxAnswers boxes;
        gFrmPesquisa->IniciarVerificacao(true);
        QVERIFY(CheckEnds());
        QCOMPARE(Texts(boxes),
                 QStringList{u"Erro nº: -1\n"_s + Failed + u"53 Arquivo não encontrado"_s});
    }

    void OneCheckAtATime() {
        Verifier verifier({u"11|1"_s});
        verifier.running = true;
        testing_support::ClickAt(*gFrmPesquisa, {578, 17});
        testing_support::ClickAt(*gFrmPesquisa, {578, 17});
        SlowTick();
        QTest::qWait(50);
        QVERIFY(Watching());
        QCOMPARE(verifier.started.size(), 1);
    }

    void SlowTimer_data() {
        QTest::addColumn<bool>("automatic");
        QTest::addColumn<int>("secondsSince");  // the last check; -1: never
        QTest::addColumn<bool>("starts");
        QTest::newRow("never checked") << true << -1 << true;
        QTest::newRow("a moment too early") << true << 599 << false;
        QTest::newRow("ten minutes") << true << 600 << true;
        QTest::newRow("switched off") << false << -1 << false;
    }
    void SlowTimer() {
        QFETCH(bool, automatic);
        QFETCH(int, secondsSince);
        QCOMPARE(Timer(u"tmrVerificarAtualizacoes").interval(), 65535);
        QVERIFY(Timer(u"tmrVerificarAtualizacoes").isActive());
        if (secondsSince >= 0) {
            catalogo_->Executar(
                {u"UPDATE UMREGISTRO SET DataUltimaVerificacao = DateSerial(2026,3,5)+"
                 "TimeSerial(23,55,0)"_s});
        }
        gFrmPesquisa->CarregarDadosVerificacao(true);
        sys::SetClock([=] {
            return QDateTime(QDate(2026, 3, 5), QTime(23, 55, 0), Qt::UTC).addSecs(secondsSince);
        });
        VerificacaoAutomatica = automatic;
        Verifier verifier({u"11|1"_s});
        verifier.running = true;
        SlowTick();
        QTEST(verifier.started.size() == 1, "starts");
        if (!verifier.started.isEmpty()) {
            QVERIFY(verifier.started.first().contains("\" 1|"_L1));
        }
    }

    void StatusAgainOnEveryThirdTick() {
        VerificacaoAutomatica = false;
        catalogo_->Executar({u"UPDATE UMREGISTRO SET DataEmissao = DateSerial(2027,1,2)"_s});
        const auto& label = Find<forms::Label>(*gFrmPesquisa, u"lblEmissao"_s);
        SlowTick();
        SlowTick();
        QCOMPARE(label.Text(), u"05-MAR-2026 - teste"_s);
        SlowTick();
        QCOMPARE(label.Text(), u"02-JAN-2027 - teste"_s);
    }

    void AnswerWaitsForAnOpenBox() {
        const Verifier verifier({u"11|1"_s});
        BoxAnswers boxes;
        QDialog box;
        box.setModal(true);
        box.show();
        gFrmPesquisa->IniciarVerificacao(false);
        QTest::qWait(50);
        QVERIFY(Watching());
        QCOMPARE(Texts(boxes), QStringList());
        box.close();
        QVERIFY(CheckEnds());
        QCOMPARE(Texts(boxes), QStringList{Nothing});
    }

    // The end of a check lets events through, and the user may leave in one of them.
    void ScreenGoesWhileACheckEnds() {
        const Verifier verifier({u"11|1"_s});
        forms::SetMsgBoxHandler([](const QString&, int, const QString&) {
            const auto leave = [] {
                gFrmPesquisa->Tag = frmPesquisa::Recarregando;
                gFrmPesquisa->Unload();
            };
            QMetaObject::invokeMethod(gFrmPesquisa, leave, Qt::QueuedConnection);
            return forms::vbOK;
        });
        gFrmPesquisa->IniciarVerificacao(false);
        QTRY_VERIFY(!gFrmPesquisa);
        forms::SetMsgBoxHandler({});
        QCOMPARE(Value(u"FlagErroUltimaVerificacao"_s), u"0"_s);
        ShowSearch();
    }

    void LockOfAnotherComputer() {
        std::unique_ptr<dao::Workspace> other;
        std::unique_ptr<dao::Database> same;
        AbrirBancoDados(other, u"outro"_s, same, false);
        other->BeginTrans();
        same->Execute(u"UPDATE CONTROLETRAN SET a = a"_s);
        const Verifier verifier({u"11|2"_s});
        BoxAnswers boxes({Yes});
        gFrmPesquisa->IniciarVerificacao(true);
        QVERIFY(CheckEnds());
        QCOMPARE(Texts(boxes),
                 (QStringList{Question, u"Não foi possível Bloquear o Banco de Dados. (Outro "
                                        "Computador, de sua rede, já está Atualizando o "
                                        "Catálogo)."_s}));
        QCOMPARE(Value(u"FlagErroUltimaVerificacao"_s), u"0"_s);
        QCOMPARE(verifier.started.size(), 1);
    }

    void AnotherComputerWasFaster() {
        const Verifier verifier({u"11|2"_s, u"12|2"_s});
        BoxAnswers boxes({Yes});
        gFrmPesquisa->IniciarVerificacao(true);
        QVERIFY(QTest::qWaitFor([&] { return boxes.Boxes().size() == 2; }, 20000));
        QVERIFY(CheckEnds());
        QCOMPARE(Texts(boxes), (QStringList{Question, Nothing}));
        QVERIFY(verifier.started.value(1).contains("\" 0|"_L1));
        QCOMPARE(Temporary(), QStringList());
        QVERIFY(BloquearBancoDados(true));  // nobody holds it any more
        BloquearBancoDados(false);
    }

    void Installs() {
        WrongServer server;
        const ProxySetting proxy(server.Port());
        server.Put(u"ListVersao2.txt"_s, "SDB;dois.txt;1\r\n");
        server.Put(u"dois.txt"_s, "E:UPDATE UMREGISTRO SET ComplementoDataEmissao = ' (2)'");
        catalogo_->Executar({u"UPDATE UMREGISTRO SET UrlAtualizacao = 'atualiza.exemplo'"_s});
        (new frmConfiguracoes)->Show();
        const frmPesquisa* before = gFrmPesquisa;
        const Verifier verifier({u"11|2"_s, u"11|2"_s});
        BoxAnswers boxes({Yes});
        gFrmPesquisa->IniciarVerificacao(false);
        QVERIFY(QTest::qWaitFor([&] { return gFrmPesquisa != before; }, 20000));
        Settle();
        QCOMPARE(Texts(boxes), (QStringList{Question, u"Atualização concluída com sucesso."_s}));
        QCOMPARE(verifier.started.size(), 2);
        QCOMPARE(forms::Form::Loaded(), QList<forms::Form*>{gFrmPesquisa});
        QCOMPARE(Find<forms::Label>(*gFrmPesquisa, u"lblEmissao"_s).Text(), u"05-MAR-2026 (2)"_s);
        QCOMPARE(Value(u"Versao"_s), u"2"_s);
        QCOMPARE(Temporary(), QStringList());
        QVERIFY(BloquearBancoDados(true));
        BloquearBancoDados(false);
    }

    // A failed installation is shown by its own screen; the program goes on with what there is.
    void InstallationFails() {
        WrongServer server;
        const ProxySetting proxy(server.Port());
        catalogo_->Executar({u"UPDATE UMREGISTRO SET UrlAtualizacao = 'atualiza.exemplo'"_s});
        const frmPesquisa* before = gFrmPesquisa;
        const Verifier verifier({u"11|2"_s, u"11|2"_s});
        BoxAnswers boxes({Yes});
        gFrmPesquisa->IniciarVerificacao(false);
        QVERIFY(QTest::qWaitFor([&] { return gFrmPesquisa != before; }, 20000));
        QCOMPARE(Texts(boxes),
                 (QStringList{Question, u"Erro nº: -104\nHttpQueryInfo:0;-103;Status=404"_s}));
        QCOMPARE(Value(u"Versao"_s), u"1"_s);
    }

    void TipOncePerRefresh() {
        auto& button = Find<forms::ClickZone>(*gFrmPesquisa, u"pctVerificarAtualizacoes"_s);
        QCOMPARE(button.Tag, u" "_s);
        catalogo_->Executar(
            {u"UPDATE UMREGISTRO SET DataUltimaVerificacao = DateSerial(2026,3,5)+"
             "TimeSerial(7,8,9), FlagErroUltimaVerificacao = 1"_s});
        gFrmPesquisa->CarregarDadosVerificacao(false);
        QCOMPARE(button.Tag, u"ERRO na Última Verificação: 05-MAR-2026 07:08:09"_s);
        testing_support::MoveTo(*gFrmPesquisa, {578, 17});
        QCOMPARE(button.Tag, QString());
        QVERIFY(Find<forms::LitPicture>(*gFrmPesquisa, u"pctVerificarAtualizacoesSelecionada"_s)
                    .isVisible());
        const QWidgetList windows = QApplication::topLevelWidgets();
        const auto tip = std::find_if(windows.begin(), windows.end(), [](const QWidget* window) {
            return window->objectName() == "cToolTip"_L1;
        });
        QVERIFY(tip != windows.end());
        QCOMPARE((*tip)->accessibleName(), u"Verificar se existem Novas Atualizações"_s);
    }
};

TARVO_TEST(TestVerificacao);
#include "test_verificacao.moc"
