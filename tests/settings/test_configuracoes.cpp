#include "session/formularios.h"
#include "settings/configuracoes.h"
#include "support/janela.h"
#include "usuario.h"

namespace {

const QString& Nome = frmConfiguracoes::Nome;

constexpr QPoint Linha(200, 78);
constexpr QPoint Caixa(41, 77);

const QString Comprido = u"usuario.do.proxy.wmw"_s;  // twenty characters, wider than the box

}  // namespace

struct TestConfiguracoes : ComUsuario {
    static frmConfiguracoes& Mostrar() {
        auto* tela = new frmConfiguracoes;
        tela->Show();
        if (!QTest::qWaitForWindowActive(tela)) {
            qFatal("the dialog did not become active");
        }
        return *tela;
    }

    void init() override {
        VerificacaoAutomatica = true;
        GravarConfiguracao(u"1"_s, Comprido, u" chave"_s, true);
    }
    void cleanup() override {
        if (forms::Form* tela = forms::Form::Find(Nome)) {
            tela->Unload();
        }
        Settle();
    }
};

TEST(TestConfiguracoes, MostraOQueEstaGuardado) {
    for (const bool ligada : {true, false}) {
        VerificacaoAutomatica = ligada;
        forms::SetMousePointer(forms::vbHourglass);
        frmConfiguracoes& tela = Mostrar();
        QCOMPARE(forms::MousePointer(), forms::vbDefault);
        QCOMPARE(Achar(Nome, "imgXVerificarAuto")->isVisible(), ligada);
        QCOMPARE(Achar(Nome, "img_VerificarAuto")->isVisible(), !ligada);
        const auto* usuario = Achar<forms::TextBox>(Nome, "txtUsuario");
        QCOMPARE(usuario->text(), Comprido);
        QCOMPARE(usuario->cursorPosition(), 0);  // what does not fit into the box is its end
        QCOMPARE(Achar<forms::TextBox>(Nome, "txtSenha")->text(), u" chave"_s);
        QCOMPARE(Achar<forms::TextBox>(Nome, "txtSenha")->displayText(), u"******"_s);
        QTest::keyClick(&tela, ligada ? Qt::Key_Return : Qt::Key_Enter);
        QVERIFY(!FormularioCarregado(Nome));
    }
}

TEST(TestConfiguracoes, OkGuardaNaHora) {
    frmConfiguracoes& tela = Mostrar();
    auto* usuario = Achar<forms::TextBox>(Nome, "txtUsuario");
    ClickAt(tela, Caixa);
    usuario->setFocus();
    usuario->selectAll();
    QTest::keyClicks(usuario, u"  um usuario muito comprido "_s);
    QCOMPARE(usuario->text(), u"  um usuario muito c"_s);  // twenty characters
    Achar(Nome, "txtSenha")->setFocus();
    QCOMPARE(usuario->text(), u"um usuario muito c"_s);
    Digitar(Nome, "txtSenha", "  senha ");
    usuario->setText(u" eva "_s);  // trimmed without ever having been left
    Clicar(Nome, "imgOk");
    QVERIFY(!FormularioCarregado(Nome));
    QVERIFY(!VerificacaoAutomatica);
    QCOMPARE(Lido(), u"0|eva|  senha "_s);
    QCOMPARE(forms::MousePointer(), forms::vbDefault);
}

TEST(TestConfiguracoes, CancelarNaoGuardaNada) {
    const QString antes = Guardado();
    const std::function<void(frmConfiguracoes&)> saidas[] = {
        [](auto&) { Clicar(Nome, "imgCancelar"); },
        [](auto&) { QTest::keyClick(Achar(Nome, "txtUsuario"), Qt::Key_Escape); },
        [](auto& tela) { tela.close(); },
    };
    for (const auto& sair : saidas) {
        frmConfiguracoes& tela = Mostrar();
        ClickAt(tela, Linha);
        Digitar(Nome, "txtUsuario", "eva");
        sair(tela);
        QVERIFY(!FormularioCarregado(Nome));
        QVERIFY(VerificacaoAutomatica);
        QCOMPARE(Guardado(), antes);
    }
}

// Going down is what ticks, and a fast second press is one more.
TEST(TestConfiguracoes, MarcaAoApertar) {
    Mostrar();
    auto* linha = Achar<forms::ClickZone>(Nome, "imgVerificarAuto");
    QTest::mousePress(linha, Qt::LeftButton);
    QCOMPARE(linha->Tag, u"0"_s);
    QTest::mouseRelease(linha, Qt::LeftButton);
    QTest::mouseDClick(linha, Qt::LeftButton);
    QTest::mouseRelease(linha, Qt::LeftButton);  // is not in it
    QCOMPARE(linha->Tag, u"1"_s);
}

TEST(TestConfiguracoes, LuzETab) {
    frmConfiguracoes& tela = Mostrar();
    QTest::keyClick(tela.focusWidget(), Qt::Key_Tab);
    QCOMPARE(tela.focusWidget(), Achar(Nome, "imgVerificarAuto"));
    QCOMPARE(Volta(Nome, "imgVerificarAuto"),
             u"Verificar atualizações automaticamente, Usuário do proxy, Senha do proxy, OK, "
             "Cancelar"_s);
    for (const QPoint lugar : {Linha, QPoint(200, 20)}) {
        QCOMPARE(Luzes(Nome, lugar, {"imgOk", "imgCancelar"}), u"OK CANCELAR"_s);
    }
}

TEST(TestConfiguracoes, SemArquivoNadaAbre) {
    QDir(Ordavia()).removeRecursively();
    Write(Ordavia());
    const BoxAnswers caixas;
    frmConfiguracoes::Abrir();
    const QString texto = caixas.Texts().join(u'|');
    QVERIFY2(texto.startsWith(u"Erro nº: 53\n"_s) && texto.endsWith(u"CatalogoTarvoConfig.txt"_s),
             qPrintable(texto));
    QVERIFY(!FormularioCarregado(Nome));
    QCOMPARE(forms::MousePointer(), forms::vbDefault);
}
