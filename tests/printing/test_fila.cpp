#include "dialogo.h"
#include "printsystem.h"

#include <QPrintDialog>
#include <QSpinBox>

// From the button to the queue of a real print system, through the real printer dialog.
struct TestFila : NoDialogo {
    static inline std::unique_ptr<PrintSystem> sistema_;
    // It takes everything and prints into the void.
    static inline const QString NovaFila = u"lpadmin -p balcao -E -v file:///dev/null -m raw"_s;

    // Presses OK and uses the printer dialog: sets it by `usar`, and accepts.
    void Imprimir(const QString& parametro, const std::function<void(QPrintDialog&)>& usar) {
        Abrir(parametro);
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] {
            auto* dialogo = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget());
            if (!dialogo) {
                return;
            }
            timer.stop();
            usar(*dialogo);
            dialogo->accept();
        });
        timer.start(10);
        Clicar("imgOk");
    }

    static void EscolherFila(QPrintDialog& dialogo, const QString& impressora) {
        auto* lista = dialogo.findChild<QComboBox*>(u"printers"_s);
        QVERIFY(lista);
        const int linha = impressora.isEmpty() ? lista->count() - 1 : lista->findText(impressora);
        QVERIFY(linha >= 0);
        lista->setCurrentIndex(linha);
        Q_EMIT lista->activated(linha);
    }

    // The picture of a figure in a printed file, "pixels at pixels an inch".
    static QString FiguraEm(const QString& arquivo) {
        const QStringList linhas = OutputOf("pdfimages", {"-list", arquivo}).split(u'\n');
        const QStringList colunas = linhas.value(2).simplified().split(u' ');
        // page num type width height color comp bpc enc interp object ID x-ppi y-ppi
        return colunas.value(3) + u'x' + colunas.value(4) + u" at "_s + colunas.value(12);
    }

    static void initTestCase() {
        sistema_ = std::make_unique<PrintSystem>();
        QVERIFY(sistema_->Start() && sistema_->Run(NovaFila));
    }
    static void cleanupTestCase() { sistema_.reset(); }
    void init() override {
        NoDialogo::init();
        printer::SetPrintDialogHandler({});
    }
};

// Pages are made at 600 dots per inch, where a figure's pixel is 7 dots wide, and of the
// picture for dense screens: its pixels are 7/3 dots wide.
TEST(TestFila, printed) {
    for (const auto& [impressora] : Each<QString>{"balcao", ""}) {
        DarFigura({{u"   1"_s, {5, 5}}});
        WritePicture(ArquivoDaFigura("f@3x.png"), {3 * 582, 3 * 343});
        QString arquivo = catalogo_->Pasta() + u"/saída.pdf"_s;
        QStringList oferecidos;
        Imprimir(u"FD:1LC:1"_s, [&](QPrintDialog& dialogo) {
            EscolherFila(dialogo, impressora);
            if (impressora.isEmpty()) {
                dialogo.findChild<QLineEdit*>(u"filename"_s)->setText(arquivo);
            } else {
                dialogo.findChild<QSpinBox*>(u"copies"_s)->setValue(2);
            }
            // Which pages come out is not for the user to choose: what a queue would leave out, a
            // file would not.
            const auto* ficha = dialogo.findChild<QWidget*>(u"copiesTab"_s);
            for (const AnyText nome :
                 {"printRange", "pagesRadioButton", "pageSetCombo", "copies"}) {
                const auto* widget = dialogo.findChild<QWidget*>(nome);
                oferecidos += widget && widget->isVisibleTo(ficha) ? List(nome) : List();
            }
        });
        QCOMPARE(oferecidos, List("copies"));
        QCOMPARE(Caixas(), QStringList());
        QVERIFY(!Aberto());
        if (!impressora.isEmpty()) {
            arquivo = sistema_->Newest(u"d*"_s);
            // The print system writes the attributes anew beside the old ones, and renames them.
            QVERIFY(QTest::qWaitFor(
                [] {
                    QFile atributos(sistema_->Newest(u"c*"_s));
                    const QByteArray dito =
                        atributos.open(QIODevice::ReadOnly) ? atributos.readAll() : "";
                    return dito.contains(QByteArrayView("copies\0\4\0\0\0\2", 12)) &&
                           dito.contains("one-sided");
                },
                60000));
        }
        QCOMPARE(FiguraEm(arquivo), u"1746x1029 at 257"_s);
        QVERIFY(OutputOf("pdftotext", {arquivo, "-"}).contains(u"Lista de Componentes"_s));
    }
}

// What the print system does not take is told, and the dialog stays for another try.
TEST(TestFila, refused) {
    for (const auto& [antes, depois, razao] : Each<QString, QString, QString>{
             {"not accepting", "cupsreject balcao", "cupsaccept balcao",
              "A impressora \"balcao\" não está aceitando trabalhos."},
             {"stopped", "cupsdisable balcao", "cupsenable balcao",
              "A impressora \"balcao\" está parada."},
             {"deleted", "lpadmin -x balcao", NovaFila, "A impressora \"balcao\" não existe mais."},
             {"server gone", "", "", "O sistema de impressão não responde."},
         }) {
        const auto escolher = [](QPrintDialog& dialogo) { EscolherFila(dialogo, u"balcao"_s); };
        Imprimir(u"FD:0LC:1"_s, [&, &comando = antes](QPrintDialog& dialogo) {
            escolher(dialogo);
            QVERIFY(comando.isEmpty() ? sistema_->Stop() : sistema_->Run(comando));  // meanwhile
        });
        QCOMPARE(Caixas(), List(u"16 Erro nº: 482\nErro de impressora\n"_s + razao));
        QVERIFY(Aberto());
        QCOMPARE(forms::MousePointer(), forms::vbDefault);
        QVERIFY(depois.isEmpty() ? sistema_->Start() : sistema_->Run(depois));
        const QString anterior = sistema_->Newest(u"d*"_s);
        Imprimir(u"FD:0LC:1"_s, escolher);
        QCOMPARE(Caixas().size(), 1);
        QVERIFY(!Aberto());
        QVERIFY(sistema_->Newest(u"d*"_s) != anterior);
    }
}
