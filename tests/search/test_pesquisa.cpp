#include "platform/forms/msgbox.h"
#include "search/pesquisa.h"
#include "session/banco.h"
#include "session/global.h"
#include "session/modulo.h"
#include "support/catalogo.h"
#include "support/testmain.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QString Apagado() {
    return u"FORM"_s;
}

}  // namespace

class TestPesquisa : public QObject {
    Q_OBJECT

    std::unique_ptr<CatalogoDeTeste> catalogo_;
    frmPesquisa* tela_ = nullptr;

    template <typename Controle>
    Controle* Achar(const char16_t* nome) {
        auto* controle = tela_->findChild<Controle*>(QString::fromUtf16(nome));
        Q_ASSERT(controle);
        return controle;
    }

    void Clicar(const char16_t* nome) { QTest::mouseClick(Achar<QWidget>(nome), Qt::LeftButton); }

    QStringList Coluna(const char16_t* fonte, const QString& campo) {
        dao::Recordset* linhas = Achar<forms::DataSource>(fonte)->GetRecordset();
        linhas->ReadUpTo(std::numeric_limits<qint64>::max());
        QStringList valores;
        for (qint64 i = 0; i < linhas->RecordCount(); ++i) {
            valores += linhas->Text(i, linhas->FieldIndex(campo));
        }
        return valores;
    }

    qint64 ClienteEmVigor() {
        return gDB
            ->OpenRecordset(u"SELECT CodigoClienteConcorrente FROM CODIGOCLIENTECONCORRENTE"_s)
            ->Fields(0)
            .Value()
            .toLongLong();
    }

private Q_SLOTS:
    void init() {
        catalogo_ = std::make_unique<CatalogoDeTeste>();
        catalogo_->Executar(LinhasDePesquisa());
        gFrmPesquisa = tela_ = new frmPesquisa;
        tela_->Show();
        QVERIFY(QTest::qWaitForWindowExposed(tela_));
    }

    void cleanup() {
        tela_->Tag = frmPesquisa::Recarregando;
        tela_->Unload();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        catalogo_.reset();
    }

    void opensWithNothingButTheButtons() {
        for (const char16_t* painel :
             {u"pctTelaPesquisa(0)", u"pctTelaPesquisa(1)", u"pctTelaPesquisa(2)"}) {
            QVERIFY(!Achar<QWidget>(painel)->isVisible());
        }
        QCOMPARE(Achar<forms::ComboList>(u"cboTipo")->Text(), u"TODOS OS TIPOS"_s);
        QCOMPARE(Achar<forms::ComboList>(u"cboFabricante")->Text(), u"TODOS OS FABRICANTES"_s);
        QCOMPARE(Achar<forms::ComboList>(u"cboNumeroClienteConcorrente")->SelectedItemData(), -5);
        QCOMPARE(Achar<forms::Label>(u"lblEmissao")->Text(), u"05-MAR-2026 - teste"_s);
        QVERIFY(Achar<forms::DataSource>(u"dtcPesquisa1")
                    ->RecordSource()
                    .endsWith(u"CodigoPeca = -5"_s));
        QCOMPARE(Coluna(u"dtcPesquisa1", u"Tipo"_s), QStringList());
        QCOMPARE(ClienteEmVigor(), -5);
    }

    // Inputs of the panel, the control that is touched last, and what must come of it.
    void buildsThePartSearch_data() {
        QTest::addColumn<QString>("cliente");
        QTest::addColumn<QString>("tipo");
        QTest::addColumn<QString>("numeroCliente");
        QTest::addColumn<QString>("descricao");
        QTest::addColumn<QString>("numero");
        QTest::addColumn<QString>("texto");
        QTest::addColumn<QStringList>("linhas");

        QTest::newRow("vehicle maker, prefix of its number, number last")
            << u"Nº Bravil"_s << u"Peças"_s << u"0A-7"_s << QString() << u"1"_s
            << u"SELECT PECA.NumeroTarvoPECA As NumeroTarvo,PECA.DescricaoPECA AS Descricao,"
               "REFERENCIACRUZADA1.NumeroClienteConcorrente,'Peça' AS Tipo,CodigoPECA AS Codigo "
               "FROM PECA LEFT JOIN REFERENCIACRUZADA1 ON PECA.NumeroTarvoPECA = "
               "REFERENCIACRUZADA1.NumeroTarvo WHERE REFERENCIACRUZADA1.NumeroClienteConcorrente "
               "LIKE 'A7*' AND PECA.NumeroTarvoPECA LIKE '1*' ORDER BY 1"_s
            << QStringList{u"12002"_s, u"12002"_s};
        QTest::newRow("competitor, exact number")
            << u"Nº Zenpar"_s << u"Componentes"_s << u"055"_s << QString() << QString()
            << u"SELECT COMPONENTE.NumeroTarvoCOMPONENTE As NumeroTarvo,"
               "COMPONENTE.DescricaoCOMPONENTE AS Descricao,"
               "REFERENCIACRUZADA1.NumeroClienteConcorrente,'Componente' AS Tipo,"
               "CodigoCOMPONENTE AS Codigo FROM COMPONENTE LEFT JOIN REFERENCIACRUZADA1 ON "
               "COMPONENTE.NumeroTarvoCOMPONENTE = REFERENCIACRUZADA1.NumeroTarvo WHERE "
               "REFERENCIACRUZADA1.NumeroClienteConcorrente = '55' ORDER BY 3"_s
            << QStringList{u"A3400"_s};
        QTest::newRow("competitor without a number keeps the join and an empty column")
            << u"Nº Zenpar"_s << u"Peças"_s << QString() << QString() << u"a340"_s
            << u"SELECT PECA.NumeroTarvoPECA As NumeroTarvo,PECA.DescricaoPECA AS Descricao,"
               "'' AS NumeroClienteConcorrente,'Peça' AS Tipo,CodigoPECA AS Codigo FROM PECA "
               "LEFT JOIN REFERENCIACRUZADA1 ON PECA.NumeroTarvoPECA = "
               "REFERENCIACRUZADA1.NumeroTarvo WHERE PECA.NumeroTarvoPECA LIKE 'A340*' ORDER BY 1"_s
            << QStringList{u"A3402"_s};
        QTest::newRow("apostrophe")
            << QString() << u"Peças"_s << QString() << u" d'água "_s << QString()
            << u"SELECT PECA.NumeroTarvoPECA As NumeroTarvo,PECA.DescricaoPECA AS Descricao,"
               "'' AS NumeroClienteConcorrente,'Peça' AS Tipo,CodigoPECA AS Codigo FROM PECA "
               "WHERE PECA.DescricaoPECA LIKE 'd´água*' ORDER BY 2"_s
            << QStringList();
        QTest::newRow("a digit in front of a letter")
            << QString() << u"Jogos de Reparo"_s << QString() << QString() << u"1k-560"_s
            << u"SELECT JOGOREPARO.NumeroTarvoJOGOREPARO As NumeroTarvo,"
               "JOGOREPARO.DescricaoJOGOREPARO AS Descricao,'' AS NumeroClienteConcorrente,"
               "'Jogo de Reparo' AS Tipo,CodigoJOGOREPARO AS Codigo FROM JOGOREPARO WHERE "
               "JOGOREPARO.NumeroTarvoJOGOREPARO LIKE 'K560*' ORDER BY 1"_s
            << QStringList{u"K5601"_s};
    }

    void buildsThePartSearch() {
        QFETCH(QString, cliente);
        QFETCH(QString, tipo);
        QFETCH(QString, numeroCliente);
        QFETCH(QString, descricao);
        QFETCH(QString, numero);
        QFETCH(QStringList, linhas);

        auto* combo = Achar<forms::ComboList>(u"cboNumeroClienteConcorrente");
        combo->SetListIndex(combo->findText(cliente));
        auto* tipos = Achar<forms::ComboList>(u"cboTipo");
        tipos->SetListIndex(tipos->findText(tipo));
        for (const auto& [caixa, valor] :
             {std::pair(u"txtNumeroClienteConcorrente", numeroCliente),
              std::pair(u"txtDescricao", descricao), std::pair(u"txtNumeroTarvo", numero)}) {
            if (!valor.isEmpty()) {
                Achar<QLineEdit>(caixa)->setText(valor);
            }
        }
        QTEST(Achar<forms::DataSource>(u"dtcPesquisa1")->RecordSource(), "texto");
        QCOMPARE(Coluna(u"dtcPesquisa1", u"NumeroTarvo"_s), linhas);
    }

    void everyKindComesInTheOrderOfTheControlThatWasTouched() {
        auto* descricao = Achar<QLineEdit>(u"txtDescricao");
        descricao->setText(u"*VÁLVULA"_s);
        QCOMPARE(Coluna(u"dtcPesquisa1", u"Descricao"_s),
                 (QStringList{u"Corpo da válvula"_s, u"Corpo da válvula"_s, u"Corpo da válvula"_s,
                              u"Válvula relé"_s, u"Válvula relé"_s, u"Válvula relé"_s}));
        descricao->clear();
        QCOMPARE(Coluna(u"dtcPesquisa1", u"NumeroTarvo"_s).size(), 9);

        auto* tipo = Achar<forms::ComboList>(u"cboTipo");
        tipo->SetListIndex(0);
        tipo->SetListIndex(3);
        QCOMPARE(Coluna(u"dtcPesquisa1", u"Tipo"_s).first(), u"Componente"_s);
        QCOMPARE(Coluna(u"dtcPesquisa1", u"NumeroTarvo"_s),
                 (QStringList{u"12000"_s, u"A3400"_s, u"K5600"_s, u"12001"_s, u"A3401"_s,
                              u"K5601"_s, u"12002"_s, u"A3402"_s, u"K5602"_s}));
    }

    void choosingAMakerPutsItInForceBeforeTheSearch() {
        auto* combo = Achar<forms::ComboList>(u"cboNumeroClienteConcorrente");
        combo->SetListIndex(combo->findText(u"Nº Bravil"_s));
        QCOMPARE(ClienteEmVigor(), 7);
        const QStringList numeros = Coluna(u"dtcPesquisa1", u"NumeroClienteConcorrente"_s);
        QCOMPARE(numeros.size(), 10);  // one part has two of the maker's numbers
        QCOMPARE(numeros.last(), u"A72"_s);
        combo->SetListIndex(0);
        QCOMPARE(ClienteEmVigor(), -5);
    }

    void searchesVehicles() {
        auto* veiculo = Achar<QLineEdit>(u"txtVeiculo");
        veiculo->setText(u"c"_s);
        QCOMPARE(Coluna(u"dtcPesquisa2", u"Veiculo"_s), QStringList{u"Cavalo 2040"_s});
        auto* fabricante = Achar<forms::ComboList>(u"cboFabricante");
        fabricante->SetListIndex(0);
        QVERIFY(Achar<forms::DataSource>(u"dtcPesquisa2")
                    ->RecordSource()
                    .contains(u"WHERE VEICULO.DescricaoVeiculo LIKE 'c*' AND "
                              "VEICULO.CodigoClienteConcorrente = 7 ORDER BY 1,2"_s));
        veiculo->clear();
        QCOMPARE(Coluna(u"dtcPesquisa2", u"Fabricante"_s).size(), 2);
    }

    void onePanelAtATime() {
        Clicar(u"imgPesquisa1");
        QVERIFY(Achar<QWidget>(u"pctTelaPesquisa(0)")->isVisible());
        QTRY_VERIFY(Achar<QWidget>(u"txtNumeroTarvo")->hasFocus());
        Achar<QLineEdit>(u"txtNumeroTarvo")->setText(u"12"_s);

        Clicar(u"imgPesquisa3");
        QVERIFY(!Achar<QWidget>(u"pctTelaPesquisa(0)")->isVisible());
        QTRY_VERIFY(Achar<QWidget>(u"pctPesquisaFiguras")->hasFocus());

        QTest::mouseClick(tela_->Picture(), Qt::LeftButton, {}, QPoint(300, 300));
        QVERIFY(!Achar<QWidget>(u"pctTelaPesquisa(2)")->isVisible());
        Clicar(u"imgPesquisa1");
        QCOMPARE(Achar<QLineEdit>(u"txtNumeroTarvo")->text(), u"12"_s);
        Clicar(u"pctBarraAtualizacao");
        QVERIFY(!Achar<QWidget>(u"pctTelaPesquisa(0)")->isVisible());
    }

    void tabGoesThroughThePanel() {
        Clicar(u"imgPesquisa1");
        QTRY_VERIFY(Achar<QWidget>(u"txtNumeroTarvo")->hasFocus());
        for (const char16_t* nome : {u"txtDescricao", u"txtNumeroClienteConcorrente",
                                     u"cboNumeroClienteConcorrente", u"cboTipo"}) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QVERIFY(Achar<QWidget>(nome)->hasFocus());
        }
    }

    void lightFollowsTheMouse() {
        Clicar(u"imgPesquisa2");
        const std::pair<const char16_t*, const char16_t*> botoes[] = {
            {u"imgPesquisa1", u"imgPesquisa1Selecionada"},
            {u"imgAjuda", u"imgAjudaSelecionada"},
            {u"pctResultadoPesquisaFundo(1)", u"pctResultadoPesquisaSelecionada(1)"},
            {u"imgConfiguracoes", u"imgConfiguracoesSelecionada"},
        };
        for (const auto& [zona, acesa] : botoes) {
            QTest::mouseMove(Achar<QWidget>(zona));
            QTRY_VERIFY(Achar<QWidget>(acesa)->isVisible());
        }
        QVERIFY(!Achar<QWidget>(u"imgAjudaSelecionada")->isVisible());
        QTest::mouseMove(Achar<forms::BoundGrid>(u"grdPesquisa2")->viewport());
        QTRY_COMPARE(tela_->ImagemAtual(), Apagado());
        QVERIFY(!Achar<QWidget>(u"imgConfiguracoesSelecionada")->isVisible());
    }

    void missingHelpGivesTheBox() {
        QStringList caixas;
        forms::SetMsgBoxHandler([&](const QString& texto, int flags, const QString&) {
            caixas += QString::number(flags) + u' ' + texto;
            return forms::vbOK;
        });
        Clicar(u"imgAjuda");
        forms::SetMsgBoxHandler({});
        QCOMPARE(caixas.size(), 1);
        QVERIFY(caixas.first().startsWith(u"16 Erro nº: 53"_s));
    }

    void anyTextIsSearchedWithoutHarm_data() {
        QTest::addColumn<QString>("texto");
        QTest::newRow("long") << QString(10000, u'x');
        QTest::newRow("apostrophe") << u"'"_s;
        QTest::newRow("wildcards") << u"?#*[a-c][!x]"_s;
        QTest::newRow("emoji") << u"\U0001F527\U0001F680"_s;
        QTest::newRow("right to left") << u"שלום مرحبا"_s;
        QTest::newRow("control characters") << u"a\tb\u0001c\u2028d"_s;
        QTest::newRow("half a surrogate pair") << QString(QChar(0xD83D));
        QTest::newRow("five question marks") << u"?????"_s;
        QTest::newRow("comment and quote") << u"\" -- /* ; DROP TABLE PECA"_s;
    }

    void anyTextIsSearchedWithoutHarm() {
        QFETCH(QString, texto);
        for (const char16_t* caixa :
             {u"txtNumeroTarvo", u"txtDescricao", u"txtNumeroClienteConcorrente", u"txtVeiculo"}) {
            auto* campo = Achar<QLineEdit>(caixa);
            campo->setText(texto);
            campo->clear();
        }
        QCOMPARE(Coluna(u"dtcPesquisa1", u"NumeroTarvo"_s).size(), 9);
    }

    void aReloadReplacesTheScreen() {
        Achar<QLineEdit>(u"txtNumeroTarvo")->setText(u"12"_s);
        RecarregarFormularios(QString());
        QVERIFY(gFrmPesquisa != tela_);
        QCOMPARE(forms::Form::Loaded(), QList<forms::Form*>{gFrmPesquisa});
        tela_ = gFrmPesquisa;
        QCOMPARE(Achar<QLineEdit>(u"txtNumeroTarvo")->text(), QString());
        QVERIFY(gDB);
        QVERIFY(gDB->OpenRecordset(u"SELECT * FROM PECA"_s)->RecordCount() > 0);
    }
};

TARVO_TEST(TestPesquisa);

#include "test_pesquisa.moc"
