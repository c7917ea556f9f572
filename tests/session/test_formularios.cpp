#include "session/erros.h"
#include "session/formularios.h"
#include "support/windows.h"

struct TestFormularios : Fixture {
    struct Tela : forms::Form {
        explicit Tela(const QString& nome) : Form(nome, Kind::Dialog, QSize(200, 100), {}) {}
    };
};

TEST(TestFormularios, IndiceItemData) {
    forms::ComboList combo(u"cboCliente"_s, u"Cliente"_s, nullptr);
    // 65543 is 7 in its lower sixteen bits only.
    for (const qint32 codigo : {-5, 65543, 7, 7, 0}) {
        combo.AddItem(QString::number(codigo), codigo);
    }
    QCOMPARE(::IndiceItemData(combo, -5), qint16(0));
    QCOMPARE(::IndiceItemData(combo, 7), qint16(2));
    QCOMPARE(::IndiceItemData(combo, 8), qint16(-1));
}

TEST(TestFormularios, MostradaEPiscando) {
    QCOMPARE(JanelaModalAtiva(), nullptr);
    PiscarJanelaAtiva();

    auto* fundo = new Tela(u"frmFundo"_s);
    auto* escondida = new Tela(u"frmEscondida"_s);
    auto* frente = new Tela(u"frmFrente"_s);
    escondida->Show();
    escondida->SetVisible(false);
    MostrarFormulario(*fundo);
    QVERIFY(FormularioCarregado(u"frmFundo"_s) && !FormularioCarregado(u"frmFrente"_s));
    fundo->SetVisible(false);
    MostrarFormulario(*fundo);
    QVERIFY(fundo->isVisible());
    QCOMPARE(JanelaModalAtiva(), fundo);
    forms::Form* durante = nullptr;
    QTimer::singleShot(0, this, [&] {
        durante = JanelaModalAtiva();
        PiscarJanelaAtiva();
        frente->Unload();
    });
    frente->ShowModal();
    QCOMPARE(durante, fundo);
    QCOMPARE(JanelaModalAtiva(), fundo);
    fundo->Unload();
    escondida->Unload();
}

TEST(TestFormularios, CaixaDeErro) {
    const BoxAnswers caixas;
    forms::SetMousePointer(11);
    MostrarErro(-3, u"Cem %1 por cento"_s);
    QCOMPARE(caixas.FlagsAndTexts(), List("16 Erro nº: -3\nCem %1 por cento"));
    QCOMPARE(caixas.Boxes().first().title, u"Catálogo TARVO-LINDEN"_s);
    QCOMPARE(forms::MousePointer(), 0);
}
