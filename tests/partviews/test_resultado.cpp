#include "janela.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

namespace {

const QString Busca = u"frmPesquisa"_s;
const QString Resultado = u"frmResultadoPesquisa"_s;
const QString Lista = u"frmListaPecas"_s;

}  // namespace

class TestResultado : public QObject {
    Q_OBJECT

    std::unique_ptr<Janela> janela_;

    // Finds one row in the part search, by kind and number, and opens it.
    void AbrirDaBusca(const QString& tipo, const QString& numero) {
        auto* combo = Janela::Achar<forms::ComboList>(Busca, u"cboTipo"_s);
        combo->SetListIndex(combo->findText(tipo));
        Janela::Achar<QLineEdit>(Busca, u"txtNumeroTarvo"_s)->setText(numero);
        Janela::Clicar(Busca, u"imgPesquisa1"_s);
        Janela::Clicar(Busca, u"pctResultadoPesquisaFundo(0)"_s);
    }

    QStringList Pecas(const QString& campo = u"NumeroTarvoPeca"_s) {
        return Janela::Coluna(Resultado, u"dtcResultadoPesquisaPeca"_s, campo);
    }

private Q_SLOTS:
    void init() {
        janela_ = std::make_unique<Janela>();
        janela_->Abrir();
    }
    void cleanup() { janela_.reset(); }

    void everyKindLeadsToItsParts_data() {
        QTest::addColumn<QString>("tipo");
        QTest::addColumn<QString>("numero");
        QTest::addColumn<QString>("titulo");
        QTest::addColumn<QStringList>("pecas");
        const QString vao(15, u' ');
        QTest::newRow("part") << u"Peças"_s << u"12002"_s
                              << u"Peça: Válvula relé"_s + vao + u"Nº Tarvo: 12002"_s
                              << QStringList{u"12002"_s};
        QTest::newRow("component at two items of one part")
            << u"Componentes"_s << u"A340"_s
            << u"Componente: Anel de vedação"_s + vao + u"Nº Tarvo: A3400"_s
            << QStringList{u"12002"_s};
        QTest::newRow("component of two parts")
            << u"Componentes"_s << u"K560"_s
            << u"Componente: Corpo da válvula"_s + vao + u"Nº Tarvo: K5600"_s
            << QStringList{u"12002"_s, u"A3402"_s};
        QTest::newRow("kit") << u"Jogos de Reparo"_s << u"A340"_s
                             << u"Jogo de Reparo: Anel de vedação"_s + vao + u"Nº Tarvo: A3401"_s
                             << QStringList{u"12002"_s};
    }

    void everyKindLeadsToItsParts() {
        QFETCH(QString, tipo);
        QFETCH(QString, numero);
        AbrirDaBusca(tipo, numero);
        QVERIFY(!gFrmPesquisa->isVisible());
        QTEST(Janela::Achar<forms::Label>(Resultado, u"lblInf"_s)->Text(), "titulo");
        QTEST(Pecas(), "pecas");
        QCOMPARE(ParametroFormulario, QString());
        Janela::Clicar(Resultado, u"imgPesquisaFundo"_s);
        QVERIFY(gFrmPesquisa->isVisible());
        QVERIFY(!forms::Form::Find(Resultado));
        QCOMPARE(Janela::Achar<QLineEdit>(Busca, u"txtNumeroTarvo"_s)->text(), numero);
    }

    void vehiclesAndPicturesLeadToTheirParts() {
        Janela::Achar<QLineEdit>(Busca, u"txtVeiculo"_s)->setText(u"bravil"_s);
        Janela::Clicar(Busca, u"imgPesquisa2"_s);
        Janela::Clicar(Busca, u"pctResultadoPesquisaFundo(1)"_s);
        QCOMPARE(Pecas(), QStringList{u"12002"_s});
        QCOMPARE(Janela::Coluna(Resultado, u"dtcVeiculosPeca"_s, u"Veiculo"_s),
                 QStringList{u"Bravil 1620"_s});
        Janela::Clicar(Resultado, u"imgPesquisaFundo"_s);

        Janela::Clicar(Busca, u"imgPesquisa3"_s);
        Janela::Clicar(Busca, u"imgFigura(2)"_s);
        Janela::Clicar(Busca, u"pctResultadoPesquisaFundo(2)"_s);
        QCOMPARE(Pecas(), (QStringList{u"12002"_s, u"A3402"_s}));
        QCOMPARE(Janela::Achar<forms::Label>(Resultado, u"lblInf"_s)->Text(),
                 u"Figura: Válvulas"_s);
    }

    void rowsThatLeadNowhereStay_data() {
        QTest::addColumn<QString>("tipo");
        QTest::addColumn<QString>("numero");
        QTest::addColumn<QString>("caixa");
        QTest::newRow("unused kit") << u"Jogos de Reparo"_s << u"K560"_s
                                    << u"64 Nenhuma Peça faz referência ao item selecionado."_s;
        QTest::newRow("no row") << u"Peças"_s << u"ZZZ"_s << u"16 Nenhum item selecionado."_s;
    }

    void rowsThatLeadNowhereStay() {
        QFETCH(QString, tipo);
        QFETCH(QString, numero);
        QFETCH(QString, caixa);
        AbrirDaBusca(tipo, numero);
        QCOMPARE(janela_->Caixas(), QStringList{caixa});
        QVERIFY(gFrmPesquisa->isVisible());
        QVERIFY(!forms::Form::Find(Resultado));
    }

    void aRowDeletedMeanwhileOpensAnEmptyList() {
        Janela::Achar<QLineEdit>(Busca, u"txtNumeroTarvo"_s)->setText(u"12002"_s);
        janela_->catalogo.Executar({u"DELETE FROM PECA WHERE CodigoPeca = 1"_s});
        Janela::Clicar(Busca, u"imgPesquisa1"_s);
        Janela::Clicar(Busca, u"pctResultadoPesquisaFundo(0)"_s);
        QCOMPARE(Pecas(), QStringList());
        Janela::Clicar(Resultado, u"imgListaComponentesFundo"_s);
        Janela::Clicar(Resultado, u"imgFiguraDetalhadaFundo"_s);
        QCOMPARE(janela_->Caixas(),
                 (QStringList{u"16 Nenhuma Peça encontrada."_s, u"16 Nenhuma Peça encontrada."_s}));
    }

    void customerIsInForceHereAndGivenBack() {
        AbrirDaBusca(u"Peças"_s, u"12002"_s);
        auto* combo =
            Janela::Achar<forms::ComboList>(Resultado, u"cboNumeroClienteConcorrentePeca"_s);
        QCOMPARE(combo->SelectedItemData(), SemCliente);
        QCOMPARE(Pecas(u"NumeroClienteConcorrente"_s), QStringList{QString()});
        combo->SetListIndex(1);
        QCOMPARE(Pecas(u"NumeroClienteConcorrente"_s), (QStringList{u"A71"_s, u"A72"_s}));

        Janela::Clicar(Resultado, u"imgListaComponentesFundo"_s);
        QCOMPARE(Janela::Achar<forms::ComboList>(Lista, u"cboNumeroClienteConcorrenteComponente"_s)
                     ->SelectedItemData(),
                 7);
        QVERIFY(!forms::Form::Find(Resultado)->isVisible());
        Janela::Clicar(Lista, u"imgResultadoPesquisaFundo"_s);
        QVERIFY(forms::Form::Find(Resultado)->isVisible());
        QCOMPARE(Pecas(u"NumeroClienteConcorrente"_s).size(), 2);
    }

    void aSingleVisibleRowBringsTheOthersBack() {
        AbrirDaBusca(u"Componentes"_s, u"K560"_s);
        auto* grade = Janela::Achar<forms::BoundGrid>(Resultado, u"grdResultadoPesquisaPeca"_s);
        const auto veiculos = [] {
            return Janela::Coluna(Resultado, u"dtcVeiculosPeca"_s, u"Veiculo"_s);
        };
        const QStringList dosPrimeiros = veiculos();
        QVERIFY(!dosPrimeiros.isEmpty());
        const QSize inteira = grade->size();
        grade->resize(inteira.width(), 20);
        QCOMPARE(grade->VisibleRows(), 1);
        dao::Recordset* pecas = Janela::Linhas(Resultado, u"dtcResultadoPesquisaPeca"_s);
        pecas->MoveNext();
        QCOMPARE(veiculos(), dosPrimeiros);  // the row change ends with the rows in view
        QCOMPARE(grade->currentIndex().row(), 1);
        QCOMPARE(grade->rowAt(0), int(pecas->RecordCount()) - 1);
        grade->resize(inteira);
        pecas->SetAbsolutePosition(0);
        pecas->MoveNext();
        QVERIFY(veiculos() != dosPrimeiros);
    }

    void partsWithoutListOrFigureSaySo() {
        AbrirDaBusca(u"Peças"_s, u"K5602"_s);
        Janela::Clicar(Resultado, u"imgListaComponentesFundo"_s);
        Janela::Clicar(Resultado, u"imgFiguraDetalhadaFundo"_s);
        QCOMPARE(janela_->Caixas(), (QStringList{u"64 Essa Peça não possui Lista de Componentes."_s,
                                                 u"64 Essa Peça não possui Figura Detalhada."_s}));
        QCOMPARE(Janela::Coluna(Resultado, u"dtcVeiculosPeca"_s, u"Veiculo"_s), QStringList());
    }

    void photoStaysWhenTheNextOneIsMissing() {
        QDir(janela_->catalogo.Pasta()).mkdir(u"FotoPeca"_s);
        QImage foto(4000, 3000, QImage::Format_RGB32);
        foto.fill(Qt::darkCyan);
        QVERIFY(foto.save(janela_->catalogo.Pasta() + u"/FotoPeca/PECA1.PNG"_s, "PNG"));
        AbrirDaBusca(u"Componentes"_s, u"K560"_s);
        auto* figura = Janela::Achar<forms::Picture>(Resultado, u"imgFotoPeca"_s);
        const qint64 primeira = figura->Pixmap().cacheKey();
        QVERIFY(!figura->Pixmap().isNull());
        QVERIFY(figura->Pixmap().width() <= 250 * 4);
        Janela::Linhas(Resultado, u"dtcResultadoPesquisaPeca"_s)->MoveNext();
        QCOMPARE(figura->Pixmap().cacheKey(), primeira);
    }
};

TARVO_TEST(TestResultado);

#include "test_resultado.moc"
