#include "figura.h"

#include <QAccessible>

struct TestCarga : NaFigura {};

TEST(TestCarga, numbersStandWhereTheRowsSay) {
    AbrirFigura();
    QStringList itens;
    for (const ItemFigura* item : Itens()) {
        itens += u"%1 %2,%3 %4"_s.arg(item->Caption()).arg(item->x()).arg(item->y()).arg(item->Tag);
        QCOMPARE(item->size(), QSize(33, 13));
    }
    QCOMPARE(itens, List("   1 66,127 ", "   2 166,177 ", "   2 366,187 ", "  12a 266,227 .1,.2,",
                         " 100 466,227 .2,", "  77 116,427 "));
    QCOMPARE(Rotulo(Figura, "lblInf"),
             u"Peça: Válvula relé"_s + QString(15, u' ') + u"Nº Tarvo: 12002"_s);
    QCOMPARE(Achar(Figura, "imgFigura(1)")->geometry(), QRect(66, 127, 500, 340));
    QCOMPARE(Achar(Figura, "imgFigura(1)")->accessibleName(), u"Figura detalhada da peça"_s);
    QVERIFY(!Achar(Figura, "imgFigura(0)")->isVisible());
    QCOMPARE(Luzes(Figura, {20, 580},
                   {"imgPesquisaFundo", "imgResultadoPesquisaFundo", "imgListaComponentesFundo",
                    "imgImprimir"}),
             u"PESQUISA RESULTADOPESQUISA LISTACOMPONENTES IMPRIMIR"_s);
    QCOMPARE(Volta(Figura, "imgPesquisaFundo"),
             u"Voltar à pesquisa, Voltar às peças, Lista de componentes, Imprimir, Minimizar a "
             "janela"_s);
    QVERIFY(!Marcador()->isVisible());
}

// The first row names the picture; without rows there is none.
TEST(TestCarga, laterRowsDoNotChangeThePicture) {
    // A table in the view's place: there a part's rows may differ in their file.
    Executar({"DROP VIEW FIGURADETALHADA1",
              "CREATE TABLE FIGURADETALHADA1 (CodigoFiguraDetalhada LONG, CodigoPeca LONG, "
              "ItemComponente TEXT(5), ArquivoFigura TEXT(50), LLeft LONG, TTop LONG)",
              "INSERT INTO FIGURADETALHADA1 VALUES (8, 1, '5', 'no.png', 9, 9)",
              "INSERT INTO FIGURADETALHADA1 VALUES (3, 1, '4', 'fig1.png', 1, 1)"});
    AbrirFigura();
    QCOMPARE(Itens().size(), 2);
    QCOMPARE(Achar(Figura, "imgFigura(1)")->size(), QSize(500, 340));
    Executar({"DELETE FROM FIGURADETALHADA1"});
    TelaDaFigura().Unload();
    UnicaInstancia<frmFiguraDetalhada>().Show();
    QCOMPARE(Itens().size(), 0);
    QCOMPARE(janela_->Caixas(), QStringList());
}

TEST(TestCarga, rowsThatDoNotFitAreErrors) {
    for (const auto& [mudanca, erro] : Each<QString, int>{
             {"last code", "CodigoFiguraDetalhada = 32767", 0},
             {"code beyond 16 bits", "CodigoFiguraDetalhada = 32768", 6},
             {"no left", "LLeft = NULL", 94},
             {"no top", "TTop = NULL", 94},
             {"no item", "ItemComponente = NULL", 94},
             {"far left", "LLeft = 2147483647", 6},
         }) {
        Executar({u"UPDATE FIGURADETALHADA SET "_s + mudanca +
                  u" WHERE CodigoFigura = 1 AND CodigoFiguraDetalhada = 9"_s});
        gCodigoPeca = 1;
        QCOMPARE(ErrorOf([] { UnicaInstancia<frmFiguraDetalhada>().Show(); }), erro);
    }
}

TEST(TestCarga, picturesOfAnyKind) {
    // Without a size in the file there is no picture.
    for (const auto& [nome, tamanho, visto] : Each<QString, QSize, QSize>{
             {"none", "", QSize(), QSize(0, 0)},
             {"missing", "nada.png", QSize(), QSize(0, 0)},
             {"bitmap", "figura.bmp", QSize(582, 343), QSize(582, 343)},
             {"beyond the window", "jan.png", QSize(900, 700), QSize(734, 473)},
             {"transparent", "vidro.png", QSize(90, 70), QSize(90, 70)},
         }) {
        const bool vidro = nome == u"vidro.png";
        QImage imagem(tamanho, vidro ? QImage::Format_ARGB32 : QImage::Format_RGB32);
        imagem.fill(Qt::transparent);
        QCOMPARE(imagem.save(janela_->Arquivo(nome)), tamanho.isValid());
        Executar({u"UPDATE FIGURA SET ArquivoFigura = '"_s + nome + u'\''});
        AbrirFigura();
        QCOMPARE(janela_->Caixas(), QStringList());
        const QWidget* figura = Achar(Figura, "imgFigura(1)");
        QCOMPARE(figura->size(), visto);
        // What shows through it must be painted first.
        QCOMPARE(figura->testAttribute(Qt::WA_OpaquePaintEvent), !vidro);
        Passar(1);
        QCOMPARE(Acesos(), u"1:15"_s);
    }
}

TEST(TestCarga, noPictureHidesAButton) {
    janela_->GravarFigura("fig1.png", {900, 700});
    AbrirFigura();
    const QImage imagem = TelaDaFigura().Picture()->grab().toImage();
    QCOMPARE(imagem.pixelColor(660, 580), QColor(Qt::yellow));
    for (const QPoint botao : {QPoint(240, 548), QPoint(348, 560), QPoint(493, 560)}) {
        QCOMPARE(imagem.pixelColor(botao), Paleta::Atual().petroleoVivo);
    }
}

TEST(TestCarga, numbersHaveNamesAndCanBePressed) {
    AbrirFigura();
    const auto nome = [](int indice) {
        return QAccessible::queryAccessibleInterface(Item(indice))->text(QAccessible::Name);
    };
    QCOMPARE(nome(4), u"Item 12a, Anel de vedação"_s);
    QCOMPARE(nome(6), u"Item 77, não se aplica a essa peça"_s);
    auto* botao = QAccessible::queryAccessibleInterface(Item(4))->actionInterface();
    botao->doAction(QAccessibleActionInterface::pressAction());
    QVERIFY(WaitForForm(Lista));
    QCOMPARE(ItemAtualDaLista(), u"  12a"_s);
}
