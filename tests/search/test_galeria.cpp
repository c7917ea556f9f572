#include "support/janela.h"

struct TestGaleria : NaJanela<> {
    // Opens the gallery with `total` pictures called "F 001" and on.
    void Abrir(int total) {
        QStringList linhas;
        for (int i = 1; i <= total; ++i) {
            linhas += QString::asprintf("%d, 'F %03d', NULL", i, i);
        }
        Executar(List("DELETE FROM FOTOPECAPESQUISA") + Inserir("FOTOPECAPESQUISA", linhas));
        janela_->Abrir();
        Clicar(Busca, "imgPesquisa3");
    }

    QString Tag() { return Achar<forms::Panel>(Busca, "imgFiguraSelecionada")->Tag; }
    QString Legenda(int i) { return Rotulo(Busca, u"lblDescricaoFigura(%1)"_s.arg(i)); }
    forms::ScrollBar* Barra() { return Achar<forms::ScrollBar>(Busca, "sclPesquisaFiguras"); }
    void Teclar(Qt::Key tecla, int vezes = 1) {
        for (int i = 0; i < vezes; ++i) {
            QTest::keyClick(Achar(Busca, "pctPesquisaFiguras"), tecla);
        }
    }
};

TEST(TestGaleria, keysWalkTheStrip) {
    Abrir(6);
    QCOMPARE(Tag(), u"0"_s);
    Teclar(Qt::Key_Left);
    QCOMPARE(Tag(), u"0"_s);
    Teclar(Qt::Key_Right, 3);
    QCOMPARE(Tag(), u"3"_s);
    QCOMPARE(Barra()->Value(), 1);
    Teclar(Qt::Key_Right);
    QCOMPARE(Tag(), u"3"_s);
    QCOMPARE(Barra()->Value(), 2);
    QCOMPARE(Legenda(3), u"F 005"_s);
    Teclar(Qt::Key_Right);
    Teclar(Qt::Key_Left, 4);
    QCOMPARE(Tag(), u"0"_s);
    QCOMPARE(Legenda(0), u"F 002"_s);
    QCOMPARE(Achar(Busca, "imgFiguraSelecionada")->x(), 0);
}

TEST(TestGaleria, aSelectionOffTheStripComesBackAtTheEndOfTheKey) {
    Abrir(20);
    Barra()->SetValue(10);
    QCOMPARE(Tag(), QString());
    QVERIFY(!Achar(Busca, "imgFiguraSelecionada")->isVisible());
    Teclar(Qt::Key_Left);
    QCOMPARE(Tag(), u"3"_s);
    Barra()->SetValue(1);
    Teclar(Qt::Key_Right);
    QCOMPARE(Tag(), u"0"_s);
}

// Arrow by one, track by three, wheel; the chosen picture goes out of view and comes back.
TEST(TestGaleria, theBarLeavesTheSelection) {
    Abrir(20);
    const auto clicar = [this](int x) {
        QTest::mouseClick(Barra(), Qt::LeftButton, {}, QPoint(x, 8));
    };
    clicar(552);
    QCOMPARE(Legenda(0), u"F 002"_s);
    QCOMPARE(Tag(), QString());
    clicar(530);
    QCOMPARE(Legenda(0), u"F 005"_s);
    QVERIFY(Achar(Busca, "pctPesquisaFiguras")->hasFocus());
    clicar(8);
    Wheel(*Barra(), 1);
    QCOMPARE(Legenda(0), u"F 001"_s);
    QCOMPARE(Tag(), u"0"_s);
}

// On a thumbnail or its caption.
TEST(TestGaleria, aDoubleClickOpensThePicture) {
    for (const auto& [nome] : Each<QString>{"imgFigura(2)", "lblDescricaoFigura(2)"}) {
        janela_->Abrir();
        Clicar(Busca, "imgPesquisa3");
        Barra()->setFocus();
        Clicar(Busca, nome);
        QVERIFY(Achar(Busca, "pctPesquisaFiguras")->hasFocus());
        DuploCliqueEm(Busca, nome);
        QCOMPARE(Rotulo(Resultado, "lblInf"), u"Figura: Válvulas"_s);
    }
}

// Nothing of the longest caption lies on the frame.
TEST(TestGaleria, theFrameIsClearOfTheCaption) {
    Executar(
        {"UPDATE FOTOPECAPESQUISA SET DescricaoFotoPecaPesquisa = 'Aggjpqy aggjpqy aggjpqy "
         "aggjpqy aggjpqy aggjpqy aggjpqy aggjpqy'"});
    janela_->Abrir();
    Clicar(Busca, "imgPesquisa3");
    auto* moldura = Achar(Busca, "imgFiguraSelecionada");
    auto* legenda = Achar(Busca, "lblDescricaoFigura(0)");
    const auto retrato = [&](bool comLegenda) {
        legenda->setVisible(comLegenda);
        return Achar(Busca, "pctPesquisaFiguras")->grab(moldura->geometry()).toImage();
    };
    const QImage com = retrato(true);
    const QImage sem = retrato(false);
    moldura->hide();
    const QRect texto = Mudado(com, sem);
    QVERIFY(texto.height() > 20);  // both lines of it
    QCOMPARE(Mudado(sem.copy(texto), retrato(false).copy(texto)), QRect());
}

TEST(TestGaleria, theStripEndsWithTheLastPicture) {
    for (const auto& [total, ultima] : Each<int, QString>{
             {"none", 0, ""},
             {"a whole strip", 4, "F 004"},
             {"one more", 5, "F 005"},
         }) {
        Abrir(total);
        QCOMPARE(Tag(), u"0"_s);
        Teclar(Qt::Key_Left, 2);
        const int fim = qMax(1, total - 3);
        Barra()->SetValue(fim);
        QCOMPARE(Barra()->Value(), fim);
        QCOMPARE(Legenda(3), ultima);
        Teclar(Qt::Key_Right, 5);
        QCOMPARE(Barra()->Value(), fim);
        QCOMPARE(Tag(), u"3"_s);
    }
}

TEST(TestGaleria, aPictureThatIsNoneEmptiesItsOwnThumbnail) {
    const QString pasta = janela_->catalogo.Pasta() + u"/FotoPeca/"_s;
    WritePicture(pasta + u"cilindros.png"_s, {300, 200});
    Write(pasta + u"molas.png"_s, "not a picture");
    Executar(Inserir("FOTOPECAPESQUISA", {"4, 'X', NULL", "5, 'Y', NULL"}));
    janela_->Abrir();
    const auto vazia = [](int i) {
        return Achar<forms::Picture>(Busca, u"imgFigura(%1)"_s.arg(i))->Pixmap().isNull();
    };
    QVERIFY(!vazia(0) && vazia(1) && vazia(2));
    QCOMPARE(Legenda(1), u"Molas"_s);
    Teclar(Qt::Key_Right, 4);  // all of them one place to the left
    QVERIFY(vazia(0));
    QCOMPARE(Legenda(0), u"Molas"_s);
}
