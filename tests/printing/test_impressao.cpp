#include "dialogo.h"
#include "gravador.h"
#include "platform/erro.h"
#include "support/testmain.h"

#include <QTimer>

using namespace Qt::StringLiterals;

// The dialog and the job, on a device that records.
class TestImpressao : public QObject {
    Q_OBJECT

    Folha folha_;
    std::function<void(Gravador&)> preparar_;
    bool cancelar_ = false;
    std::unique_ptr<Dialogo> dialogo_;

private Q_SLOTS:
    void init() {
        folha_ = {};
        cancelar_ = false;
        preparar_ = [](Gravador&) {};
        dialogo_ = std::make_unique<Dialogo>([this]() -> std::unique_ptr<printer::Printer> {
            if (cancelar_) {
                return nullptr;
            }
            auto gravador = std::make_unique<Gravador>(folha_);
            preparar_(*gravador);
            return gravador;
        });
    }
    void cleanup() { dialogo_.reset(); }

    void firstTicks_data() {
        QTest::addColumn<QString>("parametro");
        QTest::addColumn<QString>("marcas");
        QTest::newRow("figure") << u"FD:1LC:0"_s << u"10"_s;
        QTest::newRow("list") << u"FD:0LC:1"_s << u"01"_s;
        QTest::newRow("markers count, not places") << u"LC:1 FD:0"_s << u"01"_s;
        QTest::newRow("nothing") << QString() << u"00"_s;
    }
    void firstTicks() {
        QFETCH(QString, parametro);
        dialogo_->Abrir(parametro);
        QTEST(dialogo_->Marcas(), "marcas");
        QCOMPARE(ParametroFormulario, QString());
        QCOMPARE(forms::MousePointer(), forms::vbDefault);
    }

    // The mouse going down asks the data each time a box is to be ticked.
    void ticks() {
        dialogo_->Abrir(u"FD:0LC:1"_s);
        auto& lista = testing_support::Find<QWidget>(*dialogo_->form, u"imgListaComponentes"_s);
        QTest::mousePress(&lista, Qt::LeftButton);
        QCOMPARE(dialogo_->Marcas(), u"00"_s);
        QTest::mouseRelease(&lista, Qt::LeftButton);
        QCOMPARE(dialogo_->Marcas(), u"00"_s);
        dialogo_->Clicar(u"imgListaComponentes"_s);
        dialogo_->Clicar(u"imgFiguraDetalhada"_s);
        QCOMPARE(dialogo_->Marcas(), u"01"_s);
        dialogo_->catalogo.Executar({u"UPDATE PECA SET CodigoFigura = 1 WHERE CodigoPeca = 1"_s,
                                     u"DELETE FROM PECA_COMPONENTE"_s});
        dialogo_->Clicar(u"imgFiguraDetalhada"_s);
        dialogo_->Clicar(u"imgListaComponentes"_s);
        dialogo_->Clicar(u"imgListaComponentes"_s);
        QCOMPARE(dialogo_->Marcas(), u"10"_s);
        QCOMPARE(dialogo_->Caixas(),
                 (QStringList{u"64 Essa Peça não possui Figura Detalhada."_s,
                              u"64 Essa Peça não possui Lista de Componentes."_s}));
    }

    void job() {
        dialogo_->Imprimir(u"FD:0LC:1"_s);
        QCOMPARE(dialogo_->flags, 0x14000C);
        QCOMPARE(folha_.passos,
                 (QStringList{u"paisagem"_s, dialogo_->form->font().family(), u"fim"_s}));
        QVERIFY(!dialogo_->Aberto());
        QCOMPARE(forms::MousePointer(), forms::vbDefault);
        QCOMPARE(dialogo_->Caixas(), QStringList());
    }

    void failures_data() {
        QTest::addColumn<QString>("parametro");
        QTest::addColumn<QString>("onde");
        QTest::addColumn<QStringList>("caixas");
        QTest::addColumn<bool>("aberto");
        const QString impressora = u"16 Erro nº: 482\nErro de impressora"_s;
        QTest::newRow("nothing ticked")
            << u"FD:0LC:0"_s << QString()
            << QStringList{u"16 Nenhuma opção de impressão selecionada."_s} << true;
        QTest::newRow("cancelled") << u"FD:1LC:1"_s << u"dialogo"_s << QStringList() << true;
        QTest::newRow("font refused") << u"FD:0LC:1"_s << u"letra"_s << QStringList() << false;
        QTest::newRow("no printer: each section, and the job goes on")
            << u"FD:1LC:1"_s << u"comeco"_s << QStringList{impressora, impressora} << false;
        QTest::newRow("not taken at the end")
            << u"FD:0LC:1"_s << u"fim"_s << QStringList{impressora} << true;
    }
    void failures() {
        QFETCH(QString, parametro);
        QFETCH(QString, onde);
        const auto falhar = [] { throw Erro(Erro::PrinterError); };
        cancelar_ = onde == u"dialogo";
        preparar_ = [&](Gravador& gravador) {
            if (onde == u"letra") {
                gravador.aoEscolherLetra = [&](const QString&) { falhar(); };
            } else if (onde == u"comeco") {
                gravador.aoComecar = falhar;
            } else if (onde == u"fim") {
                gravador.aoTerminar = falhar;
            }
        };
        dialogo_->DarFigura(u"f.png"_s, {{u"   1"_s, {1, 1}}});
        dialogo_->Imprimir(parametro);
        QTEST(dialogo_->Caixas(), "caixas");
        QTEST(dialogo_->Aberto(), "aberto");
        QCOMPARE(forms::MousePointer(), forms::vbDefault);
        if (onde == u"fim") {  // a second press starts over
            preparar_ = [](Gravador&) {};
            folha_ = {};
            dialogo_->Clicar(u"imgOk"_s);
            QCOMPARE(folha_.textos.value(3).texto, u"Página: 1"_s);
        }
        QCOMPARE(folha_.passos.contains(u"fim"_s),
                 onde != u"comeco" && onde != u"dialogo" && !parametro.contains(u"FD:0LC:0"_s));
    }

    // A job lets events through; none of them may start another or take the dialog away.
    void eventsDuringAJob() {
        preparar_ = [this](Gravador& gravador) {
            gravador.aoComecar = [this] {
                QTimer::singleShot(0, dialogo_->form, [this] {
                    dialogo_->Clicar(u"imgOk"_s);
                    dialogo_->Clicar(u"imgCancelar"_s);
                    dialogo_->Clicar(u"imgListaComponentes"_s);
                    dialogo_->form->close();
                    QCOMPARE(dialogo_->Aberto(), true);
                    QCOMPARE(dialogo_->Marcas(), u"01"_s);
                    folha_.passos += u"eventos"_s;
                });
            };
            gravador.alturas[10] = 2000;  // every row takes a page
        };
        dialogo_->Imprimir(u"FD:0LC:1"_s);
        QVERIFY(folha_.passos.contains(u"eventos"_s));
        QCOMPARE(folha_.passos.count(u"fim"_s), 1);
        QVERIFY(!dialogo_->Aberto());
    }

    void leaving_data() {
        QTest::addColumn<std::function<void()>>("sair");
        QTest::newRow("button") << std::function<void()>(
            [this] { dialogo_->Clicar(u"imgCancelar"_s); });
        QTest::newRow("key") << std::function<void()>(
            [this] { QTest::keyClick(dialogo_->form, Qt::Key_Escape); });
        QTest::newRow("window") << std::function<void()>([this] { dialogo_->form->close(); });
    }
    void leaving() {
        QFETCH(std::function<void()>, sair);
        dialogo_->Abrir(u"FD:0LC:1"_s);
        sair();
        QVERIFY(!dialogo_->Aberto());
        QVERIFY(folha_.passos.isEmpty());
    }
};

TARVO_TEST(TestImpressao);

#include "test_impressao.moc"
