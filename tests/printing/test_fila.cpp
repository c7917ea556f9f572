#include "dialogo.h"
#include "printsystem.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPrintDialog>
#include <QSpinBox>

// From the button to the queue of a real print system, through the real printer dialog.
struct TestFila : NoDialogo {
    static inline std::unique_ptr<PrintSystem> sistema_;

    // Presses OK and uses the printer dialog: sets it by `usar`, and accepts.
    void Imprimir(const QString& parametro, const std::function<void(QPrintDialog&)>& usar) {
        dialogo_->Abrir(parametro);
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
        dialogo_->Clicar("imgOk");
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

    void DarFigura() {
        dialogo_->DarFigura("f.png", {{u"   1"_s, {5, 5}}});
        WritePicture(dialogo_->ArquivoDaFigura("f.png"), {582, 343});
        WritePicture(dialogo_->ArquivoDaFigura("f@3x.png"), {3 * 582, 3 * 343});
    }

    static void initTestCase() {
        sistema_ = std::make_unique<PrintSystem>();
        if (!sistema_->Missing().isEmpty()) {
            QSKIP(qPrintable(u"No print system here: "_s + sistema_->Missing()));
        }
        QVERIFY(sistema_->MakeQueue(u"balcao"_s));
    }
    static void cleanupTestCase() { sistema_.reset(); }
    void init() override {
        NoDialogo::init();
        printer::SetPrintDialogHandler({});
    }
    std::unique_ptr<printer::Printer> Escolher() override { return nullptr; }
};

// Pages are made at 600 dots per inch, where a figure's pixel is 7 dots wide, and of the
// picture for dense screens: its pixels are 7/3 dots wide.
TEST(TestFila, printed) {
    for (const auto& [impressora] : Each<QString>{"balcao", ""}) {
        DarFigura();
        QString arquivo = dialogo_->catalogo.Pasta() + u"/saída.pdf"_s;
        Imprimir(u"FD:1LC:1"_s, [&](QPrintDialog& dialogo) {
            EscolherFila(dialogo, impressora);
            if (impressora.isEmpty()) {
                dialogo.findChild<QLineEdit*>(u"filename"_s)->setText(arquivo);
            } else {
                dialogo.findChild<QSpinBox*>(u"copies"_s)->setValue(2);
            }
        });
        QCOMPARE(dialogo_->Caixas(), QStringList());
        QVERIFY(!dialogo_->Aberto());
        if (!impressora.isEmpty()) {
            arquivo = sistema_->NewestDocument();
            QTRY_VERIFY(sistema_->NewestAttributes().contains(
                QByteArray::fromRawData("copies\0\4\0\0\0\2", 12)));
            QVERIFY(sistema_->NewestAttributes().contains("one-sided"));
        }
        QCOMPARE(FiguraEm(arquivo), u"1746x1029 at 257"_s);
        QVERIFY(OutputOf("pdftotext", {arquivo, "-"}).contains(u"Lista de Componentes"_s));
    }
}

// Which pages come out is not for the user to choose: what a queue would leave out, a file
// would not.
TEST(TestFila, noPageRanges) {
    QStringList oferecidos;
    Imprimir(u"FD:0LC:1"_s, [&](QPrintDialog& dialogo) {
        EscolherFila(dialogo, u"balcao"_s);
        for (const char* nome : {"printRange", "pagesRadioButton", "pageSetCombo", "copies"}) {
            const auto* widget = dialogo.findChild<QWidget*>(QLatin1StringView(nome));
            const auto* ficha = dialogo.findChild<QWidget*>(u"copiesTab"_s);
            if (widget && ficha && widget->isVisibleTo(ficha)) {
                oferecidos += QLatin1StringView(nome);
            }
        }
    });
    QCOMPARE(oferecidos, List("copies"));
}

// What the print system does not take is told, and the dialog stays for another try.
TEST(TestFila, refused) {
    Each<std::function<void()>, std::function<void()>, QString> row;
    using F = std::function<void()>;
    const auto comando = [this](const QString& nome) {
        return F([this, nome] { QVERIFY(sistema_->Run(nome, {u"balcao"_s})); });
    };
    const F refazer = [this] { QVERIFY(sistema_->MakeQueue(u"balcao"_s)); };
    row("not accepting", comando(u"cupsreject"_s), comando(u"cupsaccept"_s),
        "A impressora \"balcao\" não está aceitando trabalhos.");
    row("stopped", comando(u"cupsdisable"_s), comando(u"cupsenable"_s),
        "A impressora \"balcao\" está parada.");
    row("deleted", F([this] {
            QVERIFY(sistema_->Run(u"lpadmin"_s, {u"-x"_s, u"balcao"_s}));
        }),
        refazer, "A impressora \"balcao\" não existe mais.");
    row("server gone", F([this] { sistema_->Stop(); }), F([this] { QVERIFY(sistema_->Start()); }),
        "O sistema de impressão não responde.");
    for (const auto& [antes, depois, razao] : row) {
        const auto escolher = [](QPrintDialog& dialogo) { EscolherFila(dialogo, u"balcao"_s); };
        Imprimir(u"FD:0LC:1"_s, [&](QPrintDialog& dialogo) {
            escolher(dialogo);
            antes();  // meanwhile
        });
        QCOMPARE(dialogo_->Caixas(), List(u"16 Erro nº: 482\nErro de impressora\n"_s + razao));
        QVERIFY(dialogo_->Aberto());
        QCOMPARE(forms::MousePointer(), forms::vbDefault);
        depois();
        const QString anterior = sistema_->NewestDocument();
        Imprimir(u"FD:0LC:1"_s, escolher);
        QCOMPARE(dialogo_->Caixas().size(), 1);
        QVERIFY(!dialogo_->Aberto());
        QVERIFY(sistema_->NewestDocument() != anterior);
    }
}
