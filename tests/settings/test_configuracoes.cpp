#include "session/formularios.h"
#include "settings/arquivo.h"
#include "settings/configuracoes.h"
#include "support/janela.h"
#include "usuario.h"

namespace {

constexpr QPoint Ok(287, 195);
constexpr QPoint Cancelar(376, 195);
constexpr QPoint Linha(200, 78);
constexpr QPoint Caixa(41, 77);

const QString Comprido = u"usuario.do.proxy.wmw"_s;  // twenty characters, wider than the box

}  // namespace

struct TestConfiguracoes : Fixture {
    std::unique_ptr<PastaDoUsuario> pasta_;

    struct Guardado {
        bool ligada;
        QString usuario;
        QString senha;
        bool operator==(const Guardado&) const = default;
    };

    static Guardado Ler() {
        Guardado guardado;
        const bool antes = VerificacaoAutomatica;
        LerConfiguracao(u"VERIFICACAOAUTOMATICA"_s, guardado.usuario, guardado.senha);
        guardado.ligada = std::exchange(VerificacaoAutomatica, antes);
        LerConfiguracao(u"USUARIO_SENHA"_s, guardado.usuario, guardado.senha);
        return guardado;
    }

    static frmConfiguracoes& Mostrar() {
        auto* tela = new frmConfiguracoes;
        tela->Show();
        if (!QTest::qWaitForWindowActive(tela)) {
            qFatal("the dialog did not become active");
        }
        return *tela;
    }

    void init() override {
        pasta_ = std::make_unique<PastaDoUsuario>();
        VerificacaoAutomatica = true;
        GravarConfiguracao(u"1"_s, Comprido, u" chave"_s, true);
    }
    void cleanup() override {
        Settle();
        pasta_.reset();
    }
};

TEST(TestConfiguracoes, MostraOQueEstaGuardado) {
    for (const bool ligada : {true, false}) {
        VerificacaoAutomatica = ligada;
        forms::SetMousePointer(forms::vbHourglass);
        frmConfiguracoes& tela = Mostrar();
        QCOMPARE(forms::MousePointer(), forms::vbDefault);
        QCOMPARE(Find<QWidget>(tela, "imgXVerificarAuto").isVisible(), ligada);
        QCOMPARE(Find<QWidget>(tela, "img_VerificarAuto").isVisible(), !ligada);
        const auto& usuario = Find<forms::TextBox>(tela, "txtUsuario");
        QCOMPARE(usuario.text(), Comprido);
        QCOMPARE(usuario.cursorPosition(), 0);  // what does not fit into the box is its end
        QCOMPARE(Find<forms::TextBox>(tela, "txtSenha").text(), u" chave"_s);
        QCOMPARE(Find<forms::TextBox>(tela, "txtSenha").displayText(), u"******"_s);
        tela.Unload();
    }
}

TEST(TestConfiguracoes, OkGuardaNaHora) {
    frmConfiguracoes& tela = Mostrar();
    auto& usuario = Find<forms::TextBox>(tela, "txtUsuario");
    auto& senha = Find<forms::TextBox>(tela, "txtSenha");
    ClickAt(tela, Caixa);
    usuario.setFocus();
    usuario.selectAll();
    QTest::keyClicks(&usuario, u"  um usuario muito comprido "_s);
    QCOMPARE(usuario.text(), u"  um usuario muito c"_s);  // twenty characters
    senha.setFocus();
    QCOMPARE(usuario.text(), u"um usuario muito c"_s);
    senha.setText(u"  senha "_s);
    usuario.setText(u" eva "_s);  // trimmed without ever having been left
    ClickAt(tela, Ok);
    QVERIFY(!FormularioCarregado(frmConfiguracoes::Nome));
    QVERIFY(!VerificacaoAutomatica);
    QCOMPARE(Ler(), (Guardado{false, u"eva"_s, u"  senha "_s}));
    QCOMPARE(forms::MousePointer(), forms::vbDefault);
}

TEST(TestConfiguracoes, CancelarNaoGuardaNada) {
    const QString arquivo = pasta_->Configuracao();
    const QByteArray antes = sys::ReadBytes(arquivo);
    for (int saida = 0; saida < 3; ++saida) {
        frmConfiguracoes& tela = Mostrar();
        ClickAt(tela, Linha);
        Find<forms::TextBox>(tela, "txtUsuario").setText(u"eva"_s);
        if (saida == 0) {
            ClickAt(tela, Cancelar);
        } else if (saida == 1) {
            QTest::keyClick(&Find<forms::TextBox>(tela, "txtUsuario"), Qt::Key_Escape);
        } else {
            tela.close();
        }
        QVERIFY(!FormularioCarregado(frmConfiguracoes::Nome));
        QVERIFY(VerificacaoAutomatica);
        QCOMPARE(sys::ReadBytes(arquivo), antes);
    }
}

// Going down is what ticks, and a fast second press is one more.
TEST(TestConfiguracoes, MarcaAoApertar) {
    frmConfiguracoes& tela = Mostrar();
    auto& linha = Find<forms::ClickZone>(tela, "imgVerificarAuto");
    QTest::mousePress(&linha, Qt::LeftButton);
    QCOMPARE(linha.Tag, u"0"_s);
    QTest::mouseRelease(&linha, Qt::LeftButton);
    QCOMPARE(linha.Tag, u"0"_s);
    QTest::mouseDClick(&linha, Qt::LeftButton);
    QTest::mouseRelease(&linha, Qt::LeftButton);  // is not in it
    QCOMPARE(linha.Tag, u"1"_s);
    QVERIFY(Find<QWidget>(tela, "imgXVerificarAuto").isVisible());
    tela.Unload();
}

TEST(TestConfiguracoes, LuzETab) {
    frmConfiguracoes& tela = Mostrar();
    for (const QPoint lugar : {Linha, QPoint(200, 20)}) {
        QCOMPARE(Luzes(frmConfiguracoes::Nome, lugar, {"imgOk", "imgCancelar"}), u"OK CANCELAR"_s);
    }
    QStringList volta;
    for (int i = 0; i < 6; ++i) {
        QTest::keyClick(tela.focusWidget(), Qt::Key_Tab);
        volta += tela.focusWidget()->accessibleName();
    }
    QCOMPARE(volta,
             List("Verificar atualizações automaticamente", "Usuário do proxy", "Senha do proxy",
                  "OK", "Cancelar", "Verificar atualizações automaticamente"));
    tela.Unload();
}

TEST(TestConfiguracoes, SemArquivoNadaAbre) {
    QDir(pasta_->Caminho(u"Ordavia"_s)).removeRecursively();
    sys::WriteWhole(pasta_->Caminho(u"Ordavia"_s), "x");
    const BoxAnswers caixas;
    frmConfiguracoes::Abrir();
    QCOMPARE(caixas.Boxes().size(), 1);
    QCOMPARE(caixas.Boxes().first().text.section(u'\n', 0, 0), u"Erro nº: 53"_s);
    QVERIFY(caixas.Boxes().first().text.endsWith(u"CatalogoTarvoConfig.txt"_s));
    QVERIFY(!FormularioCarregado(frmConfiguracoes::Nome));
    QCOMPARE(forms::MousePointer(), forms::vbDefault);
}
