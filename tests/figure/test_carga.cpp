#include "figura.h"
#include "look/paleta.h"
#include "support/database.h"
#include "support/testmain.h"

#include <QAccessible>
#include <QFile>

using namespace Qt::StringLiterals;
using figura::Mao;
using figura::Tela;

class TestCarga : public QObject {
    Q_OBJECT

    std::unique_ptr<Mao> mao_;

private Q_SLOTS:
    void init() { mao_ = std::make_unique<Mao>(); }
    void cleanup() { mao_.reset(); }

    void numbersStandWhereTheRowsSay() {
        mao_->AbrirFigura();
        QStringList itens;
        for (const ItemFigura* item : Mao::Itens()) {
            itens +=
                u"%1 %2,%3 %4"_s.arg(item->Caption()).arg(item->x()).arg(item->y()).arg(item->Tag);
            QCOMPARE(item->size(), QSize(33, 13));
        }
        QCOMPARE(itens, (QStringList{u"   1 66,127 "_s, u"   2 166,177 "_s, u"   2 366,187 "_s,
                                     u"  12a 266,227 .1,.2,"_s, u" 100 466,227 .2,"_s,
                                     u"  77 116,427 "_s}));
        QCOMPARE(Mao::Achar<forms::Label>(Tela, u"lblInf"_s)->Text(),
                 u"Peça: Válvula relé"_s + QString(15, u' ') + u"Nº Tarvo: 12002"_s);
        QCOMPARE(Mao::Achar(Tela, u"imgFigura(1)"_s)->geometry(), QRect(66, 127, 500, 340));
        QVERIFY(!Mao::Achar(Tela, u"imgFigura(0)"_s)->isVisible());
        QVERIFY(!Mao::Marcador()->isVisible());
    }

    void laterRowsDoNotChangeThePicture() {
        // A table in the view's place: there a part's rows may differ in their file.
        mao_->catalogo.Executar(
            {u"DROP VIEW FIGURADETALHADA1"_s,
             u"CREATE TABLE FIGURADETALHADA1 (CodigoFiguraDetalhada LONG, "
             "CodigoPeca LONG, ItemComponente TEXT(5), ArquivoFigura TEXT(50), "
             "LLeft LONG, TTop LONG)"_s,
             u"INSERT INTO FIGURADETALHADA1 VALUES (8, 1, '5', 'no.png', 9, 9)"_s,
             u"INSERT INTO FIGURADETALHADA1 VALUES (3, 1, '4', 'fig1.png', 1, 1)"_s});
        mao_->AbrirFigura();
        QCOMPARE(Mao::Itens().size(), 2);
        QCOMPARE(Mao::Achar(Tela, u"imgFigura(1)"_s)->size(), QSize(500, 340));
    }

    void rowsThatDoNotFitAreErrors_data() {
        QTest::addColumn<QString>("mudanca");
        QTest::addColumn<int>("erro");
        QTest::newRow("last code") << u"CodigoFiguraDetalhada = 32767"_s << 0;
        QTest::newRow("code beyond 16 bits") << u"CodigoFiguraDetalhada = 32768"_s << 6;
        QTest::newRow("no left") << u"LLeft = NULL"_s << 94;
        QTest::newRow("no top") << u"TTop = NULL"_s << 94;
        QTest::newRow("no item") << u"ItemComponente = NULL"_s << 94;
        QTest::newRow("far left") << u"LLeft = 2147483647"_s << 6;
    }

    void rowsThatDoNotFitAreErrors() {
        QFETCH(QString, mudanca);
        mao_->catalogo.Executar({u"UPDATE FIGURADETALHADA SET "_s + mudanca +
                                 u" WHERE CodigoFigura = 1 AND CodigoFiguraDetalhada = 9"_s});
        gCodigoPeca = 1;
        QTEST(testing_support::ErrorOf([] { UnicaInstancia<frmFiguraDetalhada>().Show(); }),
              "erro");
    }

    void picturesOfAnyKind_data() {
        QTest::addColumn<QString>("nome");
        QTest::addColumn<QSize>("tamanho");  // of the file; invalid: no picture
        QTest::addColumn<QSize>("visto");
        QTest::newRow("none") << QString() << QSize() << QSize(0, 0);
        QTest::newRow("missing") << u"nada.png"_s << QSize() << QSize(0, 0);
        QTest::newRow("folder") << u"..\\Figuras"_s << QSize() << QSize(0, 0);
        QTest::newRow("no picture") << u"texto.png"_s << QSize() << QSize(0, 0);
        QTest::newRow("bitmap") << u"figura.bmp"_s << QSize(582, 343) << QSize(582, 343);
        QTest::newRow("beyond the frame") << u"maior.png"_s << QSize(640, 400) << QSize(640, 400);
        QTest::newRow("beyond the window") << u"jan.png"_s << QSize(900, 700) << QSize(734, 473);
        QTest::newRow("very wide") << u"larga.png"_s << QSize(20000, 300) << QSize(734, 300);
        QTest::newRow("other case") << u"FIGURA.JPG"_s << QSize(90, 70) << QSize(90, 70);
    }

    void picturesOfAnyKind() {
        QFETCH(QString, nome);
        QFETCH(QSize, tamanho);
        if (tamanho.isValid()) {
            mao_->GravarFigura(nome.toLower(), tamanho);
        } else if (nome == u"texto.png") {
            QFile arquivo(mao_->Arquivo(nome));
            QVERIFY(arquivo.open(QIODevice::WriteOnly) && arquivo.write("Era uma vez") > 0);
        }
        mao_->catalogo.Executar({u"UPDATE FIGURA SET ArquivoFigura = '"_s + nome + u'\''});
        mao_->AbrirFigura();
        QCOMPARE(mao_->Caixas(), QStringList());
        QTEST(Mao::Achar(Tela, u"imgFigura(1)"_s)->size(), "visto");
        Mao::Passar(1);
        QCOMPARE(Mao::Acesos(), u"1:15"_s);
    }

    void noPictureHidesAButton() {
        mao_->GravarFigura(u"fig1.png"_s, {900, 700});
        mao_->AbrirFigura();
        forms::Form* tela = forms::Form::Find(Tela);
        const QImage imagem = tela->grab().toImage();
        const QPoint canto = tela->Picture()->mapTo(tela, QPoint());
        QCOMPARE(imagem.pixelColor(canto + QPoint(660, 580)), QColor(Qt::yellow));
        for (const QPoint botao : {QPoint(240, 548), QPoint(348, 560), QPoint(493, 560)}) {
            QCOMPARE(imagem.pixelColor(canto + botao), Paleta::Atual().petroleoVivo);
        }
    }

    void aFigureWithoutRowsIsEmpty() {
        mao_->catalogo.Executar({u"DELETE FROM FIGURADETALHADA"_s});
        mao_->AbrirFigura();
        QCOMPARE(Mao::Itens().size(), 0);
        QCOMPARE(mao_->Caixas(), QStringList());
    }

    void numbersHaveNamesAndCanBePressed() {
        mao_->AbrirFigura();
        const auto nome = [](int indice) {
            return QAccessible::queryAccessibleInterface(Mao::Item(indice))
                ->text(QAccessible::Name);
        };
        QCOMPARE(nome(4), u"Item 12a, Anel de vedação"_s);
        QCOMPARE(nome(6), u"Item 77, não se aplica a essa peça"_s);
        auto* botao = QAccessible::queryAccessibleInterface(Mao::Item(4))->actionInterface();
        botao->doAction(QAccessibleActionInterface::pressAction());
        QVERIFY(testing_support::WaitForForm(figura::Lista));
        QCOMPARE(Mao::ItemDaLista(), u"  12a"_s);
    }
};

TARVO_TEST(TestCarga);

#include "test_carga.moc"
