#include "janela.h"
#include "platform/dao/sqlite.h"
#include "session/banco.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

namespace {

const QString Busca = u"frmPesquisa"_s;
const QString Resultado = u"frmResultadoPesquisa"_s;
const QString Lista = u"frmListaPecas"_s;

}  // namespace

// What the data and other computers can do to the part views.
class TestEntradas : public QObject {
    Q_OBJECT

    std::unique_ptr<Janela> janela_;

    void Abrir(const QString& tipo, const QString& numero) {
        auto* combo = Janela::Achar<forms::ComboList>(Busca, u"cboTipo"_s);
        combo->SetListIndex(combo->findText(tipo));
        Janela::Achar<QLineEdit>(Busca, u"txtNumeroTarvo"_s)->setText(numero);
        Janela::Clicar(Busca, u"imgPesquisa1"_s);
        Janela::Clicar(Busca, u"pctResultadoPesquisaFundo(0)"_s);
    }

    QStringList Pecas() {
        return Janela::Coluna(Resultado, u"dtcResultadoPesquisaPeca"_s, u"NumeroTarvoPeca"_s);
    }
    QStringList Itens() { return Janela::Coluna(Lista, u"dtcListaPecas"_s, u"ItemComponente"_s); }

    // The chosen customer as another computer sees and sets it.
    std::shared_ptr<dao::Connection> OutroComputador() {
        return std::make_shared<dao::Connection>(janela_->catalogo.Pasta() + u"/Tarvo.mdb"_s,
                                                 SenhaBancoDados().toUtf8(),
                                                 dao::Connection::Mode::ReadWrite);
    }

private Q_SLOTS:
    void init() { janela_ = std::make_unique<Janela>(); }
    void cleanup() { janela_.reset(); }

    void aPartOfAThousandItems() {
        constexpr int Total = 1000;
        QStringList comandos{u"DELETE FROM PECA_COMPONENTE"_s};
        for (int i = 1; i <= Total; ++i) {
            comandos +=
                u"INSERT INTO PECA_COMPONENTE (CodigoPeca, ItemComponente, CodigoComponente, "
                "QuantidadeComponente) VALUES (1, '%1', %2, %3)"_s.arg(i, 4)
                    .arg(i % 3 + 1)
                    .arg(i);
        }
        janela_->catalogo.Executar(comandos);
        janela_->Abrir();
        Abrir(u"Peças"_s, u"12002"_s);
        Janela::Clicar(Resultado, u"imgListaComponentesFundo"_s);
        auto* caixa = Janela::Achar<QLineEdit>(Lista, u"txtItem"_s);
        caixa->setFocus();
        QTest::keyClicks(caixa, u"1000"_s);
        QCOMPARE(caixa->text(), u"1000"_s);
        QCOMPARE(Itens().size(), Total);
        QCOMPARE(Janela::Linhas(Lista, u"dtcListaPecas"_s)->AbsolutePosition(), Total - 1);
        QCOMPARE(Itens().last(), u"1000"_s);
    }

    // Every column that may be Null is Null, in every row that a screen can show.
    void nullsEverywhere() {
        janela_->catalogo.Executar(
            {u"UPDATE PECA SET DescricaoPeca = NULL, ArquivoFotoPeca = NULL"_s,
             u"UPDATE COMPONENTE SET NumeroTarvoComponente = NULL, DescricaoComponente = NULL"_s,
             u"UPDATE JOGOREPARO SET NumeroTarvoJogoReparo = NULL, DescricaoJogoReparo = NULL"_s,
             u"UPDATE PECA_COMPONENTE SET QuantidadeComponente = NULL"_s,
             u"UPDATE VEICULO SET DescricaoVeiculo = NULL"_s,
             u"UPDATE CLIENTECONCORRENTE SET DescricaoClienteConcorrente = NULL"_s,
             u"UPDATE REFERENCIACRUZADA SET NumeroClienteConcorrente = NULL "
             "WHERE NumeroTarvo = '12002' AND NumeroClienteConcorrente = 'A71'"_s,
             u"UPDATE FOTOPECAPESQUISA SET DescricaoFotoPecaPesquisa = NULL, "
             "ArquivoFotoPecaPesquisa = NULL"_s});
        janela_->Abrir();
        Abrir(u"Peças"_s, u"12002"_s);
        QCOMPARE(Pecas(), QStringList{u"12002"_s});
        QCOMPARE(Janela::Coluna(Resultado, u"dtcVeiculosPeca"_s, u"Veiculo"_s),
                 QStringList{QString()});
        Janela::Achar<forms::ComboList>(Resultado, u"cboNumeroClienteConcorrentePeca"_s)
            ->SetListIndex(1);
        QCOMPARE(Pecas().size(), 2);
        Janela::Clicar(Resultado, u"imgListaComponentesFundo"_s);
        QCOMPARE(Itens().size(), 4);
        for (const QString& caixa : {u"txtDescricaoComponente"_s, u"txtNumeroTarvo"_s,
                                     u"txtNumeroClienteConcorrente"_s, u"txtItem"_s}) {
            auto* texto = Janela::Achar<QLineEdit>(Lista, caixa);
            texto->setFocus();
            QTest::keyClicks(texto, u"1"_s);
            QCOMPARE(Itens().size(), 4);
        }
        auto* jogos = Janela::Achar<forms::ComboList>(Lista, u"cboMostraNaListaPecas"_s);
        jogos->SetListIndex(1);
        QVERIFY(Itens().size() < 4);
        Janela::Clicar(Lista, u"imgPesquisaFundo"_s);
        Janela::Clicar(Busca, u"imgPesquisa3"_s);
        Janela::Clicar(Busca, u"imgFigura(0)"_s);
        QCOMPARE(janela_->Caixas(), QStringList());
    }

    // The search hands six digits over: a longer code is cut to another one.
    void aCodeOfSevenDigitsIsCut_data() {
        QTest::addColumn<QString>("outra");
        QTest::addColumn<QStringList>("pecas");
        QTest::newRow("to nobody's") << u"654321"_s << QStringList();
        QTest::newRow("to another part's") << u"123456"_s << QStringList{u"B9"_s};
    }
    void aCodeOfSevenDigitsIsCut() {
        QFETCH(QString, outra);
        QFETCH(QStringList, pecas);
        const QString linha =
            u"INSERT INTO PECA (CodigoPeca, NumeroTarvoPeca, DescricaoPeca) "
            "VALUES (%1, '%2', 'Bujão')"_s;
        janela_->catalogo.Executar({linha.arg(u"1234567"_s, u"B8"_s), linha.arg(outra, u"B9"_s)});
        janela_->Abrir();
        Abrir(u"Peças"_s, u"B8"_s);
        QCOMPARE(Pecas(), pecas);
    }

    // The row of the chosen customer belongs to all who share the file. Whoever comes back to a
    // screen of his own finds his choice in force again.
    void anotherComputerChoosesAnotherCustomer() {
        janela_->Abrir();
        Abrir(u"Peças"_s, u"12002"_s);
        Janela::Achar<forms::ComboList>(Resultado, u"cboNumeroClienteConcorrentePeca"_s)
            ->SetListIndex(1);
        QCOMPARE(Pecas().size(), 2);
        Janela::Clicar(Resultado, u"imgListaComponentesFundo"_s);

        const auto outro = OutroComputador();
        outro->Run("UPDATE CODIGOCLIENTECONCORRENTE SET CodigoClienteConcorrente = 9");
        QCOMPARE(Itens().size(), 4);
        Janela::Clicar(Lista, u"imgResultadoPesquisaFundo"_s);
        QVERIFY(QTest::qWaitForWindowActive(forms::Form::Find(Resultado)));
        const QByteArray atual = "SELECT CodigoClienteConcorrente FROM CODIGOCLIENTECONCORRENTE";
        QTRY_COMPARE(outro->Value(atual).toInt(), 7);
        QCOMPARE(Pecas().size(), 2);
    }

    void aPhotoOfThirtyMegapixelsIsKeptSmall() {
        QDir(janela_->catalogo.Pasta()).mkdir(u"FotoPeca"_s);
        QImage foto(6400, 4800, QImage::Format_RGB32);
        foto.fill(Qt::darkCyan);
        QVERIFY(foto.save(janela_->catalogo.Pasta() + u"/FotoPeca/peca1.png"_s, "JPG"));
        janela_->Abrir();
        Abrir(u"Peças"_s, u"12002"_s);
        const QPixmap vista = Janela::Achar<forms::Picture>(Resultado, u"imgFotoPeca"_s)->Pixmap();
        const QSizeF lugar = vista.deviceIndependentSize();
        QVERIFY(lugar.width() <= 250 && lugar.height() <= 195);
        QVERIFY(lugar.width() > 240);
    }
};

TARVO_TEST(TestEntradas);

#include "test_entradas.moc"
