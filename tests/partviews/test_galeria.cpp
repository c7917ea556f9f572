#include "janela.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

namespace {

const QString Busca = u"frmPesquisa"_s;

}  // namespace

class TestGaleria : public QObject {
    Q_OBJECT

    std::unique_ptr<Janela> janela_;

    // Opens the gallery with `total` pictures called "F 001" and on.
    void Abrir(int total) {
        QStringList comandos = {u"DELETE FROM FOTOPECAPESQUISA"_s};
        for (int i = 1; i <= total; ++i) {
            comandos +=
                u"INSERT INTO FOTOPECAPESQUISA (CodigoFotoPecaPesquisa, "
                "DescricaoFotoPecaPesquisa, ArquivoFotoPecaPesquisa) "
                "VALUES (%1, 'F %2', NULL)"_s.arg(i)
                    .arg(QString::number(i).rightJustified(total > 999 ? 4 : 3, u'0'));
        }
        janela_->catalogo.Executar(comandos);
        janela_->Abrir();
        Janela::Clicar(Busca, u"imgPesquisa3"_s);
    }

    QString Tag() { return Janela::Achar<forms::Panel>(Busca, u"imgFiguraSelecionada"_s)->Tag; }
    QString Legenda(int i) {
        return Janela::Achar<forms::Label>(Busca, u"lblDescricaoFigura(%1)"_s.arg(i))->Text();
    }
    forms::ScrollBar* Barra() {
        return Janela::Achar<forms::ScrollBar>(Busca, u"sclPesquisaFiguras"_s);
    }
    void Teclar(Qt::Key tecla, int vezes = 1) {
        for (int i = 0; i < vezes; ++i) {
            QTest::keyClick(Janela::Achar(Busca, u"pctPesquisaFiguras"_s), tecla);
        }
    }

private Q_SLOTS:
    void init() { janela_ = std::make_unique<Janela>(); }
    void cleanup() { janela_.reset(); }

    void keysWalkTheStrip() {
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
        Teclar(Qt::Key_Right, 5);
        QCOMPARE(Legenda(3), u"F 006"_s);
        Teclar(Qt::Key_Left, 4);
        QCOMPARE(Tag(), u"0"_s);
        QCOMPARE(Legenda(0), u"F 002"_s);
        QCOMPARE(Janela::Achar(Busca, u"imgFiguraSelecionada"_s)->x(), 0);
    }

    void aSelectionOffTheStripComesBackAtTheEndOfTheKey() {
        Abrir(20);
        Barra()->SetValue(10);
        QCOMPARE(Tag(), QString());
        QVERIFY(!Janela::Achar(Busca, u"imgFiguraSelecionada"_s)->isVisible());
        Teclar(Qt::Key_Left);
        QCOMPARE(Tag(), u"3"_s);
        Barra()->SetValue(1);
        Teclar(Qt::Key_Right);
        QCOMPARE(Tag(), u"0"_s);
    }

    void fewPictures_data() {
        QTest::addColumn<int>("total");
        QTest::newRow("none") << 0;
        QTest::newRow("one") << 1;
        QTest::newRow("three") << 3;
        QTest::newRow("four") << 4;
    }

    void fewPictures() {
        QFETCH(int, total);
        Abrir(total);
        QCOMPARE(Tag(), u"0"_s);
        QCOMPARE(Legenda(3), total == 4 ? u"F 004"_s : QString());
        Teclar(Qt::Key_Left, 2);
        QCOMPARE(Barra()->Value(), 1);
        QCOMPARE(Legenda(0), total > 0 ? u"F 001"_s : QString());
    }

    void theStripEndsWithTheLastPicture_data() {
        QTest::addColumn<int>("total");
        QTest::newRow("five") << 5;
        QTest::newRow("five thousand") << 5000;
    }

    void theStripEndsWithTheLastPicture() {
        QFETCH(int, total);
        Abrir(total);
        const int fim = total - 3;
        Barra()->SetValue(fim);
        QCOMPARE(Barra()->Value(), fim);
        QCOMPARE(Legenda(3), u"F %1"_s.arg(total, total > 999 ? 4 : 3, 10, QChar(u'0')));
        Teclar(Qt::Key_Right, 5);
        QCOMPARE(Tag(), u"3"_s);
        QCOMPARE(Barra()->Value(), fim);
    }

    void aPictureThatIsNoneEmptiesItsOwnThumbnail() {
        QDir(janela_->catalogo.Pasta()).mkdir(u"FotoPeca"_s);
        const QString pasta = janela_->catalogo.Pasta() + u"/FotoPeca/"_s;
        QImage foto(300, 200, QImage::Format_RGB32);
        foto.fill(Qt::gray);
        QVERIFY(foto.save(pasta + u"cilindros.png"_s));
        QFile texto(pasta + u"molas.png"_s);
        QVERIFY(texto.open(QIODevice::WriteOnly));
        texto.write("not a picture");
        texto.close();
        janela_->Abrir();
        const auto vazia = [](int i) {
            return Janela::Achar<forms::Picture>(Busca, u"imgFigura(%1)"_s.arg(i))
                ->Pixmap()
                .isNull();
        };
        QVERIFY(!vazia(0));
        QVERIFY(vazia(1));
        QVERIFY(vazia(2));
        QCOMPARE(Legenda(1), u"Molas"_s);
    }
};

TARVO_TEST(TestGaleria);

#include "test_galeria.moc"
