#include "figura.h"
#include "platform/forms/application.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;
using figura::Busca;
using figura::Lista;
using figura::Mao;
using figura::Resultado;
using figura::Tela;

namespace {

bool Visivel(const QString& tela) {
    const forms::Form* form = forms::Form::Find(tela);
    return form && form->isVisible();
}

}  // namespace

class TestPassagens : public QObject {
    Q_OBJECT

    std::unique_ptr<Mao> mao_;

private Q_SLOTS:
    void init() { mao_ = std::make_unique<Mao>(); }
    void cleanup() { mao_.reset(); }

    void whatWasSearchedForBlinks_data() {
        QTest::addColumn<QString>("tipo");
        QTest::addColumn<QString>("numero");
        QTest::addColumn<QString>("acesos");
        QTest::addColumn<QString>("apagados");
        QTest::addColumn<QString>("rotulos");
        // The template counts for " 100," too: its "0," is in it.
        QTest::newRow("component at two items")
            << u"Componentes"_s << u"A340"_s << u"0:12 100:12 12a:12"_s << u"0:15 100:15 12a:15"_s
            << u"Anel de vedação|A3400|Anel de vedação"_s;
        QTest::newRow("kit") << u"Jogos de Reparo"_s << u"A340"_s << u"100:9 12a:9"_s
                             << u"100:15 12a:15"_s << u"||"_s;
        QTest::newRow("part") << u"Peças"_s << u"12002"_s << QString() << QString() << u"||"_s;
    }

    void whatWasSearchedForBlinks() {
        QFETCH(QString, tipo);
        QFETCH(QString, numero);
        QFETCH(QString, acesos);
        QFETCH(QString, apagados);
        mao_->AbrirResultado(tipo, numero);
        Mao::Clicar(Resultado, u"imgFiguraDetalhadaFundo"_s);
        QVERIFY(Visivel(Tela) && !Visivel(Resultado));
        QCOMPARE(ParametroFormulario, QString());
        QTRY_COMPARE(Mao::Acesos(), apagados);
        QTRY_COMPARE(Mao::Acesos(), acesos);
        QCOMPARE(Mao::Relogio()->isActive(), !acesos.isEmpty());
        QTEST(Mao::Rotulos(), "rotulos");
        QCOMPARE(mao_->Caixas(), QStringList());
    }

    void whatTheListShowsBlinks_data() {
        QTest::addColumn<QString>("peca");
        QTest::addColumn<QString>("item");
        QTest::addColumn<int>("jogo");  // row of the kit panel
        QTest::addColumn<QString>("acesos");
        QTest::addColumn<QString>("rotulos");
        QTest::newRow("item") << u"12002"_s << u"   1"_s << 0 << u"1:12"_s
                              << u"Corpo da válvula|K5600|"_s;
        QTest::newRow("item and kit") << u"12002"_s << u"  12a"_s << 0 << u"100:9 12a:12"_s
                                      << u"Anel de vedação|A3400|Válvula relé, Anel de vedação"_s;
        QTest::newRow("item and its other kit")
            << u"12002"_s << u"  12a"_s << 1 << u"12a:12"_s
            << u"Anel de vedação|A3400|Válvula relé, Anel de vedação"_s;
        QTest::newRow("one caption within another")
            << u"A3402"_s << u"11"_s << 0 << u"11:12 1:12"_s << u"Anel de vedação|A3400|"_s;
        QTest::newRow("seen by the template alone")
            << u"A3402"_s << u"10"_s << 0 << u"0:12"_s << u"||"_s;
    }

    void whatTheListShowsBlinks() {
        QFETCH(QString, peca);
        QFETCH(QString, item);
        QFETCH(int, jogo);
        QFETCH(QString, acesos);
        mao_->AbrirListaNoItem(peca, item);
        for (int i = 0; i < jogo; ++i) {
            Janela::Linhas(Lista, u"dtcJogosReparoComponente"_s)->MoveNext();
        }
        Janela::Clicar(Lista, u"imgFiguraDetalhadaFundo"_s);
        QVERIFY(Visivel(Tela) && !Visivel(Lista));
        QTRY_COMPARE(Mao::Acesos(), acesos);
        QTEST(Mao::Rotulos(), "rotulos");
        QCOMPARE(mao_->Caixas(), QStringList());
    }

    void whatHasNoNumberIsSaid_data() {
        QTest::addColumn<QString>("tipo");  // empty: by way of the list
        QTest::addColumn<QString>("numero");
        QTest::addColumn<QString>("caixa");
        const QString nao = u" não representado graficamente."_s;
        QTest::newRow("item") << QString() << u"12002"_s << u"64 Item"_s + nao;
        QTest::newRow("component") << u"Componentes"_s << u"K560"_s << u"64 Componente"_s + nao;
        QTest::newRow("kit") << u"Jogos de Reparo"_s << u"1200"_s << u"64 Jogo de Reparo"_s + nao;
    }

    void whatHasNoNumberIsSaid() {
        QFETCH(QString, tipo);
        QFETCH(QString, numero);
        QFETCH(QString, caixa);
        mao_->catalogo.Executar({u"DELETE FROM FIGURADETALHADA WHERE CodigoFiguraDetalhada = 1"_s,
                                 u"DELETE FROM FIGURADETALHADA WHERE CodigoFiguraDetalhada = 4"_s});
        if (tipo.isEmpty()) {
            mao_->AbrirFiguraDoItem(numero, u"   1"_s);
        } else {
            mao_->AbrirResultado(tipo, numero);
            Mao::Clicar(Resultado, u"imgFiguraDetalhadaFundo"_s);
        }
        QCOMPARE(mao_->Caixas(), QStringList{caixa});
        QCOMPARE(Mao::Acesos(), QString());
        QVERIFY(!Mao::Relogio()->isActive());
        QCOMPARE(forms::MousePointer(), forms::vbDefault);
    }

    void anEmptyListMarksNothing() {
        mao_->AbrirListaNoItem(u"12002"_s, u"   1"_s);
        mao_->catalogo.Executar({u"DELETE FROM PECA_COMPONENTE_JOGOREPARO"_s});
        Janela::Achar<forms::ComboList>(Lista, u"cboMostraNaListaPecas"_s)->SetListIndex(0);
        Janela::Clicar(Lista, u"imgFiguraDetalhadaFundo"_s);
        QVERIFY(Visivel(Tela));
        QCOMPARE(Mao::Acesos(), QString());
        QCOMPARE(mao_->Caixas(), QStringList());
    }

    void listAndFigureTakeTurns() {
        mao_->AbrirFiguraDoItem(u"12002"_s, u"   1"_s);
        QTRY_COMPARE(Mao::Acesos(), u"1:15"_s);
        const forms::Form* lista = forms::Form::Find(Lista);
        const forms::Form* figura = forms::Form::Find(Tela);
        Mao::Clicar(Tela, u"imgListaComponentesFundo"_s);
        QVERIFY(lista->isVisible() && !figura->isVisible());
        QVERIFY(!Mao::Relogio()->isActive());
        QCOMPARE(Mao::Acesos(), QString());
        QCOMPARE(Mao::ItemDaLista(), u"   1"_s);

        Mao::IrNaLista(u" 100"_s);
        Janela::Clicar(Lista, u"imgFiguraDetalhadaFundo"_s);
        QVERIFY(!lista->isVisible() && figura->isVisible());
        QTRY_COMPARE(Mao::Acesos(), u"0:12 100:12 12a:9"_s);
    }

    void aPartWithoutListKeepsBlinking() {
        mao_->catalogo.Executar(
            {u"UPDATE PECA SET CodigoFigura = 1 WHERE CodigoPeca = 3"_s,
             u"INSERT INTO PECA_COMPONENTE_JOGOREPARO (CodigoPeca, ItemComponente, "
             "CodigoJogoReparo) VALUES (3, '   1', 3)"_s});
        mao_->AbrirResultado(u"Jogos de Reparo"_s, u"K560"_s);
        Mao::Clicar(Resultado, u"imgFiguraDetalhadaFundo"_s);
        Mao::Clicar(Tela, u"imgListaComponentesFundo"_s);
        QCOMPARE(mao_->Caixas(), QStringList{u"64 Essa Peça não possui Lista de Componentes."_s});
        QVERIFY(Visivel(Tela));
        QTRY_COMPARE(Mao::Acesos(), u"1:9"_s);
        QVERIFY(Mao::Relogio()->isActive());
    }

    void printingLeavesTheBlinkAlone() {
        mao_->AbrirFiguraDoItem(u"12002"_s, u"   1"_s);
        QString figura;
        QString lista;
        QTimer::singleShot(0, this, [&] {
            const QString dialogo = u"frmImpressao"_s;
            figura = Janela::Achar<forms::ClickZone>(dialogo, u"imgFiguraDetalhada"_s)->Tag;
            lista = Janela::Achar<forms::ClickZone>(dialogo, u"imgListaComponentes"_s)->Tag;
            Janela::Clicar(dialogo, u"imgCancelar"_s);
        });
        Mao::Clicar(Tela, u"imgImprimir"_s);
        QCOMPARE(figura + lista, u"10"_s);
        QCOMPARE(forms::MousePointer(), forms::vbDefault);
        QTRY_COMPARE(Mao::Acesos(), u"1:15"_s);
        QTRY_COMPARE(Mao::Acesos(), u"1:12"_s);

        Mao::Clicar(Tela, u"imgListaComponentesFundo"_s);
        Mao::IrNaLista(u"   2"_s);
        Mao::Clicar(Lista, u"imgFiguraDetalhadaFundo"_s);
        QTRY_COMPARE(Mao::Acesos(), u"2:12 2:12"_s);
    }

    void theWaysBack_data() {
        QTest::addColumn<bool>("pelaLista");
        QTest::addColumn<QString>("tela");
        QTest::addColumn<QString>("botao");  // empty: the window is closed
        QTest::addColumn<QStringList>("restam");
        for (const bool pelaLista : {false, true}) {
            const char* por = pelaLista ? "list" : "result";
            QTest::addRow("%s, figure to parts", por)
                << pelaLista << Tela << u"imgResultadoPesquisaFundo"_s
                << QStringList{Busca, Resultado};
            QTest::addRow("%s, figure closed", por)
                << pelaLista << Tela << QString() << QStringList{Busca, Resultado};
            QTest::addRow("%s, figure to search", por)
                << pelaLista << Tela << u"imgPesquisaFundo"_s << QStringList{Busca};
        }
        QTest::newRow("list to parts")
            << true << Lista << u"imgResultadoPesquisaFundo"_s << QStringList{Busca, Resultado};
        QTest::newRow("list to search")
            << true << Lista << u"imgPesquisaFundo"_s << QStringList{Busca};
    }

    void theWaysBack() {
        QFETCH(bool, pelaLista);
        QFETCH(QString, tela);
        QFETCH(QString, botao);
        QFETCH(QStringList, restam);
        if (pelaLista) {
            mao_->AbrirFiguraDoItem(u"12002"_s, u"   1"_s);
        } else {
            mao_->AbrirFigura();
        }
        if (tela == Lista) {
            Mao::Clicar(Tela, u"imgListaComponentesFundo"_s);
        }
        if (botao.isEmpty()) {
            forms::Form::Find(tela)->close();
        } else {
            Mao::Clicar(tela, botao);
        }
        QStringList carregadas;
        for (const forms::Form* form : forms::Form::Loaded()) {
            carregadas += form->Name();
        }
        QCOMPARE(carregadas, restam);
        QVERIFY(Visivel(restam.last()));
    }
};

TARVO_TEST(TestPassagens);

#include "test_passagens.moc"
