#include "figura.h"

#include <QTextDocument>

struct TestItens : NaFigura {};

TEST(TestItens, theMouseLightsANumberAndItsRelatives) {
    for (const auto& [indice, acesos, rotulos, marcador] : Each<int, QString, QString, QPointF>{
             {"alone", 1, "1:15", "Corpo da válvula|K5600|", QPointF(76, 122.5)},
             {"two places", 2, "2:12 2:15", "Válvula relé|12000|", QPointF(176, 172.5)},
             {"two kits", 4, "100:9 12a:15", "Anel de vedação|A3400|Válvula relé, Anel de vedação",
              QPointF(274.5, 222.5)},
             {"one kit", 5, "100:15 12a:9", "Anel de vedação|A3400|Anel de vedação",
              QPointF(473, 222.5)},
             {"no component", 6, "77:15", "NÃO APLICAVEL||", QPointF(124.5, 422.5)},
         }) {
        AbrirFigura();
        Passar(indice == 4 ? 5 : 4);  // straight from a number with kits to this one
        Passar(indice);
        QCOMPARE(Acesos(), acesos);
        QCOMPARE(Rotulos(), rotulos);
        QCOMPARE(Marcador()->Lugar().topLeft(), marcador);
        QVERIFY(Marcador()->isVisible());

        PassarSobre({729, 460});  // a button
        QCOMPARE(Rotulos(), rotulos);
        // Beside or on the drawing, on what of the marker the number does not cover.
        PassarSobre(indice > 2    ? QPoint(20, 300)
                    : indice == 2 ? QPoint(300, 400)
                                  : marcador.toPoint() + QPoint(11, 3));
        QCOMPARE(Acesos(), QString());
        QCOMPARE(Rotulos(), u"||"_s);
        QVERIFY(!Marcador()->isVisible());
    }
}

TEST(TestItens, theNumberStandsWhiteOnItsMarkerOnThePicture) {
    for (const auto& [item] : Each<QString>{"12a", "1000", "1000a"}) {
        Executar(
            {u"UPDATE FIGURADETALHADA SET ItemComponente = '%1' WHERE "
             "CodigoFiguraDetalhada = 4"_s.arg(item)});
        AbrirFigura();
        Passar(4);
        const QImage tela = TelaDaFigura().Picture()->grab().toImage();
        QCOMPARE(tela.pixelColor(67, 128), QColor(Qt::yellow));
        const QRect marca = Marcador()->Lugar().toAlignedRect();
        int brancos = 0;
        int fundo = 0;
        for (int x = marca.left() - 8; x <= marca.right() + 8; ++x) {
            for (int y = marca.top(); y <= marca.bottom(); ++y) {
                fundo += tela.pixelColor(x, y) == QColor(0, 0, 128);
                if (tela.pixelColor(x, y).lightness() > 200) {
                    ++brancos;
                    // None beside it: each has the marker around it.
                    QVERIFY(tela.pixelColor(x - 1, y) != QColor(Qt::yellow));
                    QVERIFY(tela.pixelColor(x + 1, y) != QColor(Qt::yellow));
                }
            }
        }
        QVERIFY(brancos > 8);
        QVERIFY(fundo > 120);
    }
}

// What the labels cut can be read on the number itself.
TEST(TestItens, theNumbersTipHoldsWhatIsCut) {
    Executar(
        {"UPDATE JOGOREPARO SET DescricaoJogoReparo = 'Jogo de <reparo> do diafragma ' & "
         "CodigoJogoReparo"});
    AbrirFigura();
    Passar(4);
    QTextDocument dica;
    dica.setHtml(Item(4)->toolTip());
    QCOMPARE(dica.toPlainText(),
             u"Jogo de <reparo> do diafragma 1, Jogo de <reparo> do "
             "diafragma 2"_s);
    Passar(5);
    QCOMPARE(Item(5)->toolTip(), QString());
}

// The list's button under the mouse that has just been on a number.
TEST(TestItens, whatTheMouseLitIsGoneAfterTheList) {
    AbrirFigura();
    Passar(5);
    Clicar(Figura, "imgListaComponentesFundo");
    IrNaLista(" 100");
    Clicar(Lista, "imgFiguraDetalhadaFundo");
    QVERIFY(!Marcador()->isVisible());
    QCOMPARE(Acesos(), u"0:0 100:0 12a:0"_s);
    PassarSobreFundo();
    QCOMPARE(Rotulos(), u"!Anel de vedação|A3400|Anel de vedação"_s);
}

// The filter lets go of a kit that does not have the item.
TEST(TestItens, aClickFindsItsItemBehindAKitFilter) {
    AbrirListaNoItem("  12a");
    Escolher(Lista, "cboMostraNaListaPecas", "Válvula relé");
    QCOMPARE(Linhas(Lista, "dtcListaPecas")->RecordCount(), 1);
    Clicar(Lista, "imgFiguraDetalhadaFundo");
    Passar(4);
    ClicarItem(4);  // one of the kit's own
    const auto* filtro = Achar<forms::ComboList>(Lista, "cboMostraNaListaPecas");
    QCOMPARE(filtro->ListIndex(), 1);
    Clicar(Lista, "imgFiguraDetalhadaFundo");
    Passar(1);
    ClicarItem(1);
    QCOMPARE(ItemAtualDaLista(), u"   1"_s);
    QCOMPARE(filtro->Text(), u"TODOS OS COMPONENTES"_s);
}

// Whatever was painted before it.
TEST(TestItens, aNumberIsPaintedAsItIs) {
    QWidget folha;
    ItemFigura usado(1, &folha);
    ItemFigura novo(2, &folha);
    const auto retrato = [](ItemFigura& item) {
        item.resize(33, 13);
        return item.grab().toImage();
    };
    for (const auto& [texto, negrito] :
         {std::pair("1", true), std::pair("100", true), std::pair("100", false),
          std::pair("  7", false), std::pair("1000", true)}) {
        usado.SetCaption(AnyText(texto));
        retrato(usado);
        usado.SetNegrito(negrito);
        novo.SetNegrito(!negrito);
        novo.SetNegrito(negrito);
        novo.SetCaption(AnyText(texto));
        QVERIFY2(retrato(usado) == retrato(novo), texto);
    }
    for (const auto& [texto, corpo] : {std::pair("888", 11), std::pair("8888", 10)}) {
        novo.SetCaption(AnyText(texto));
        QCOMPARE(novo.LarguraEmNegrito(),
                 QFontMetricsF(forms::Font(corpo, true)).horizontalAdvance(AnyText(texto)));
    }
    novo.SetCaption(u"<b>8"_s);  // text, not a bold 8
    const QColor fundo = folha.palette().window().color();
    const QRect tinta = QRegion(novo.grab().createMaskFromColor(fundo)).boundingRect();
    QVERIFY((tinta.center() - novo.rect().center()).manhattanLength() < 3);
    QVERIFY(tinta.width() > 20);
}

// Texts that are no item of the part.
TEST(TestItens, blanksMoveTheMarker) {
    for (const auto& [item, deslocado] : Each<QString, double>{
             {"behind", "12 ", 1.5},
             {"both", "  1  ", 6.0},
             {"an apostrophe is text", "1''", 0.0},
         }) {
        Executar({u"UPDATE FIGURADETALHADA SET ItemComponente = '"_s + item +
                  u"' WHERE CodigoFigura = 1 AND CodigoFiguraDetalhada = 1"_s});
        AbrirFigura();
        Passar(1);
        QCOMPARE(Marcador()->Lugar().center().x() - (66 + 16.5), deslocado);
        if (deslocado == 1.5) {  // on whole pixels: a line of one around it
            QCOMPARE(Shows(*Marcador(), Paleta::Atual().itemFundo), QRect(1, 2, 20, 19));
            QVERIFY(!Shows(*Marcador(), Paleta::Atual().itemBorda).isEmpty());
            QVERIFY(
                Shows(*Marcador(), Paleta::Atual().itemFundo, {0, 0, 4, 4}).isEmpty());  // round
        }
        QCOMPARE(Rotulos(), u"NÃO APLICAVEL||"_s);
    }
}

TEST(TestItens, aTagBeyondEightBitsIsAnError) {
    AbrirFigura();
    const QString jogos = u".12,"_s.repeated(64);
    Item(1)->Tag = jogos.left(252);
    Passar(1);
    QCOMPARE(Acesos(), u"1:15"_s);
    Item(2)->Tag = jogos;
    QCOMPARE(ErrorOf([] { Q_EMIT Item(2)->MouseMove(); }), 6);
}

TEST(TestItens, aClickOpensTheListAtTheItem) {
    AbrirFigura();
    Passar(5);
    ClicarItem(5);
    QVERIFY(Visivel(Lista));
    QVERIFY(!Visivel(Figura));
    QCOMPARE(ItemAtualDaLista(), u" 100"_s);

    Clicar(Lista, "imgFiguraDetalhadaFundo");
    ClicarItem(2);  // where the mouse rested all the while
    QCOMPARE(ItemAtualDaLista(), u"   2"_s);

    Clicar(Lista, "imgFiguraDetalhadaFundo");
    Passar(6);
    ClicarItem(6);
    QCOMPARE(janela_->Caixas(), List("64 Esse Item não se aplica a essa Peça."));
    QCOMPARE(Acesos(), u"77:15"_s);
    QVERIFY(Visivel(Figura));
}

// Nothing else is painted meanwhile, and the first touch ends it.
TEST(TestItens, blinks) {
    AbrirFiguraDoItem("   2");
    QCOMPARE(TelaDaFigura().findChild<QTimer*>(u"Timer1"_s)->interval(), 100);
    QCOMPARE(Acesos(), u"2:0 2:0"_s);
    QTRY_COMPARE(Acesos(), u"2:15 2:15"_s);
    QTRY_COMPARE(Acesos(), u"2:12 2:12"_s);
    QTRY_COMPARE(Acesos(), u"2:15 2:15"_s);
    Settle();
    Paints pisca;
    Paints resto;
    Item(2)->installEventFilter(&pisca);
    for (const QString& nome : {u"lblItem(1)"_s, u"lblItem(4)"_s, u"lblInf"_s}) {
        Achar(Figura, nome)->installEventFilter(&resto);
    }
    QTRY_VERIFY(pisca.count >= 4);
    QCOMPARE(resto.count, 0);

    PassarSobreFundo();
    QVERIFY(Piscando());
    QVERIFY(Rotulos().startsWith(u'!'));
    Passar(1);
    QVERIFY(!Piscando());
    QCOMPARE(Acesos(), u"1:15"_s);
    QVERIFY(!Rotulos().startsWith(u'!'));
}

// What waits is painted before the touched number takes the place of the blinking ones.
TEST(TestItens, theFirstTouchLetsEventsThrough) {
    AbrirFiguraDoItem("   2");
    PassarSobreFundo();
    QVERIFY(Piscando());
    bool entregue = false;
    QMetaObject::invokeMethod(
        qApp, [&] { entregue = true; }, Qt::QueuedConnection);
    Q_EMIT Item(1)->MouseMove();
    QVERIFY(entregue && !Piscando());
}
