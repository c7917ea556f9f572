#include "look/dialogo.h"
#include "support/janela.h"

namespace {

struct Amostra : TelaDeDialogo {
    Amostra() : TelaDeDialogo(u"frmAmostra"_s, {400, 300}, u"configuracoes"_s) {
        const Botao botoes[] = {{u"UM"_s, u"imgFundoUm"_s, u"Um"_s},
                                {u"DOIS"_s, u"imgDois"_s, u"Dois"_s}};
        CriarBotoes(botoes);
        const Lugar lugares[] = {{u"imgFundoUm", {20, 20, 40, 20}},
                                 {u"imgDois", {80, 20, 40, 20}},
                                 {u"imgMinimizar", {140, 20, 40, 20}},
                                 {u"txtUm", {20, 80, 80, 20}},
                                 {u"txtDois", {120, 80, 80, 20}}};
        Posicionar(lugares);
        OrdenarTabulacao({u"imgMinimizar", u"imgDois", u"imgFundoUm"});
    }

    QStringList feito;
    forms::TextBox um{u"txtUm"_s, u"Primeira"_s, Picture()};
    forms::TextBox dois{u"txtDois"_s, u"Segunda"_s, Picture()};
    using TelaDeDialogo::Activate;
    using TelaDeDialogo::DarTeclado;

protected:
    void Confirmar() override { feito += u"sim"_s; }
    void Cancelar() override { feito += u"não"_s; }
    void PrimeiraAtivacao() override { feito += u"veio"_s; }
};

}  // namespace

struct TelaTest : Fixture {};

// What every painted screen gets from its tables, and every dialog beyond that.
TEST(TelaTest, BotoesTecladoEPrimeiraAtivacao) {
    auto& tela = *new Amostra;
    tela.Show();
    QVERIFY(QTest::qWaitForWindowActive(&tela));
    tela.Activate();
    for (const Qt::Key tecla : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape, Qt::Key_F1}) {
        QTest::keyClick(&tela, tecla);
    }
    QCOMPARE(tela.feito, List("veio", "sim", "sim", "não"));
    MoveTo(tela, {30, 30});
    QVERIFY(Find<forms::LitPicture>(tela, "imgSelecionadaUm").isVisible());
    MoveTo(tela, {90, 30});
    QVERIFY(Find<forms::LitPicture>(tela, "imgDoisSelecionada").isVisible());

    tela.DarTeclado(tela.um);
    QVERIFY(tela.um.hasFocus());
    tela.DarTeclado(tela.dois);  // he has chosen the other one
    QVERIFY(tela.um.hasFocus());
    QCOMPARE(Volta(tela.Name(), "imgMinimizar"),
             u"Minimizar a janela, Dois, Um, Primeira, Segunda"_s);
    tela.DarTeclado(tela.dois);
    QVERIFY(tela.dois.hasFocus());
    ClickAt(tela, {150, 30});
    QVERIFY(tela.isMinimized());
    tela.Unload();
}
