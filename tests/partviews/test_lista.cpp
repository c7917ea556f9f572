#include "janela.h"
#include "support/testmain.h"

#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

const QString Lista = u"frmListaPecas"_s;

}  // namespace

class TestLista : public QObject {
    Q_OBJECT

    std::unique_ptr<Janela> janela_;

    void AbrirLista(const QString& peca) {
        auto* tipo = Janela::Achar<forms::ComboList>(u"frmPesquisa"_s, u"cboTipo"_s);
        tipo->SetListIndex(2);
        Janela::Achar<QLineEdit>(u"frmPesquisa"_s, u"txtNumeroTarvo"_s)->setText(peca);
        Janela::Clicar(u"frmPesquisa"_s, u"imgPesquisa1"_s);
        Janela::Clicar(u"frmPesquisa"_s, u"pctResultadoPesquisaFundo(0)"_s);
        Janela::Clicar(u"frmResultadoPesquisa"_s, u"imgListaComponentesFundo"_s);
        QVERIFY(QTest::qWaitForWindowActive(forms::Form::Find(Lista)));
    }

    QStringList Coluna(const QString& campo) {
        return Janela::Coluna(Lista, u"dtcListaPecas"_s, campo);
    }
    QString ItemAtual() {
        return Janela::Linhas(Lista, u"dtcListaPecas"_s)
            ->Fields(u"ItemComponente"_s)
            .Value()
            .toString();
    }
    bool PainelVisivel() { return Janela::Achar(Lista, u"pctJogosReparo"_s)->isVisible(); }

private Q_SLOTS:
    void init() {
        janela_ = std::make_unique<Janela>();
        janela_->Abrir();
        AbrirLista(u"12002"_s);
    }
    void cleanup() { janela_.reset(); }

    void oneRowPerItem() {
        QCOMPARE(Janela::Achar<forms::Label>(Lista, u"lblInf"_s)->Text(),
                 u"Peça: Válvula relé        Nº Tarvo: 12002"_s);
        QCOMPARE(Coluna(u"DescricaoComponente"_s),
                 (QStringList{u"Anel de vedação"_s, u"Anel de vedação"_s, u"Corpo da válvula"_s,
                              u"Válvula relé"_s}));
        Janela::Achar(Lista, u"txtItem"_s)->setFocus();
        QCOMPARE(Coluna(u"ItemComponente"_s),
                 (QStringList{u"   1"_s, u"   2"_s, u"  12a"_s, u" 100"_s}));
        QCOMPARE(Coluna(u"FazParteJogoReparo"_s), (QStringList{u"N"_s, u"N"_s, u"S"_s, u"S"_s}));
    }

    void seeks_data() {
        QTest::addColumn<QString>("caixa");
        QTest::addColumn<QString>("texto");
        QTest::addColumn<QString>("item");
        QTest::newRow("item") << u"txtItem"_s << u"12A"_s << u"  12a"_s;
        QTest::newRow("item not there") << u"txtItem"_s << u"13"_s << u" 100"_s;
        QTest::newRow("behind the last") << u"txtItem"_s << u"999"_s << u" 100"_s;
        QTest::newRow("description") << u"txtDescricaoComponente"_s << u"c"_s << u"   1"_s;
        QTest::newRow("quote") << u"txtDescricaoComponente"_s << u"v'"_s << u"   2"_s;
        QTest::newRow("number") << u"txtNumeroTarvo"_s << u"0-1K"_s << u"   1"_s;
    }

    void seeks() {
        QFETCH(QString, caixa);
        QFETCH(QString, texto);
        auto* campo = Janela::Achar<QLineEdit>(Lista, caixa);
        campo->setFocus();
        QTRY_VERIFY(campo->hasFocus());
        QTest::keyClicks(campo, texto);
        QTEST(ItemAtual(), "item");
        QCOMPARE(campo->text(), texto);
        QVERIFY(campo->hasFocus());
    }

    void theCursorStaysOnItsItemAcrossANewOrder() {
        Janela::Linhas(Lista, u"dtcListaPecas"_s)->FindFirst(u"ItemComponente = ' 100'"_s);
        Janela::Achar(Lista, u"txtNumeroTarvo"_s)->setFocus();
        QTRY_COMPARE(ItemAtual(), u" 100"_s);
        QVERIFY(PainelVisivel());
    }

    void thePanelFollowsTheCursor() {
        dao::Recordset* lista = Janela::Linhas(Lista, u"dtcListaPecas"_s);
        lista->FindFirst(u"ItemComponente = '   1'"_s);
        QVERIFY(!PainelVisivel());
        lista->FindFirst(u"ItemComponente = '  12a'"_s);
        QVERIFY(PainelVisivel());
        QCOMPARE(Janela::Coluna(Lista, u"dtcJogosReparoComponente"_s, u"CodigoJogoReparo"_s),
                 (QStringList{u"2"_s, u"1"_s}));
    }

    void aKitFiltersTheList() {
        auto* filtro = Janela::Achar<forms::ComboList>(Lista, u"cboMostraNaListaPecas"_s);
        QCOMPARE(filtro->ListCount(), 3);
        filtro->SetListIndex(1);  // the kit that one item alone has
        QCOMPARE(Coluna(u"ItemComponente"_s), QStringList{u"  12a"_s});
        QCOMPARE(Janela::Coluna(Lista, u"dtcJogosReparoComponente"_s, u"CodigoJogoReparo"_s).size(),
                 2);
        janela_->catalogo.Executar({u"DELETE FROM PECA_COMPONENTE_JOGOREPARO"_s});
        filtro->SetListIndex(0);
        QCOMPARE(Coluna(u"ItemComponente"_s), QStringList());
        QVERIFY(!PainelVisivel());
        Janela::Achar(Lista, u"txtItem"_s)->setFocus();
        QCOMPARE(Janela::Achar<forms::BoundGrid>(Lista, u"grdListaPecas"_s)->Tag, u"3"_s);
    }

    void numbersOfTheChosenCustomer() {
        auto* combo =
            Janela::Achar<forms::ComboList>(Lista, u"cboNumeroClienteConcorrenteComponente"_s);
        Janela::Linhas(Lista, u"dtcListaPecas"_s)->FindFirst(u"ItemComponente = ' 100'"_s);
        combo->SetListIndex(1);
        QCOMPARE(ItemAtual(), u" 100"_s);
        QCOMPARE(Coluna(u"NumeroClienteConcorrente"_s),
                 (QStringList{u"B2"_s, u"B2"_s, QString(), QString()}));
        QCOMPARE(Janela::Achar<forms::Label>(Lista, u"lblNumeroClienteConcorrente"_s)->Text(),
                 u"Nº Bravil"_s);
    }

    void thePrintButtonOpensTheDialogOnTheList() {
        QString marca;
        QTimer::singleShot(0, this, [&marca] {
            const QString impressao = u"frmImpressao"_s;
            marca = Janela::Achar<forms::ClickZone>(impressao, u"imgListaComponentes"_s)->Tag;
            forms::Form::Find(impressao)->close();
        });
        Janela::Clicar(Lista, u"imgImprimir"_s);  // comes back when the dialog is gone
        QCOMPARE(marca, u"1"_s);
        QCOMPARE(forms::Form::Active(), forms::Form::Find(Lista));
    }

    void closingTheWindowGoesBackAStep() {
        forms::Form::Find(Lista)->close();
        QVERIFY(!forms::Form::Find(Lista));
        QVERIFY(forms::Form::Find(u"frmResultadoPesquisa"_s)->isVisible());
        forms::Form::Find(u"frmResultadoPesquisa"_s)->close();
        QVERIFY(gFrmPesquisa->isVisible());
    }

    void backToTheSearchTakesAllWithIt() {
        Janela::Clicar(Lista, u"imgPesquisaFundo"_s);
        QVERIFY(gFrmPesquisa->isVisible());
        QCOMPARE(forms::Form::Loaded(), QList<forms::Form*>{gFrmPesquisa});
    }
};

TARVO_TEST(TestLista);

#include "test_lista.moc"
