#include "look/conheca_tarvo.h"

#include "support/janela.h"

namespace {

constexpr int TotalPaginas = 5;

// Each page in a shade of its own.
QColor Tom(int pagina) {
    return QColor(40 * pagina, 10, 250 - 40 * pagina);
}

}  // namespace

struct ConhecaTarvoTest : Fixture {
    QTemporaryDir pasta_;
    frmConhecaTarvo* tela_ = nullptr;

    QString Pagina(int numero) const { return pasta_.filePath(u"Figuras/CK0%1.bmp"_s.arg(numero)); }

    void Abrir() {
        tela_ = new frmConhecaTarvo;
        tela_->Show();
        QVERIFY(QTest::qWaitForWindowExposed(tela_));
    }

    // Of the shown ones: letter and place, such as "A81,518 F15,518".
    QString Botoes() const {
        QStringList botoes;
        for (const auto& nome : {u"imgAvancar"_s, u"imgFechar"_s, u"imgVoltar"_s}) {
            const auto& zona = Find<forms::ClickZone>(*tela_, nome);
            if (zona.isVisible()) {
                botoes += nome.sliced(3, 1) + u"%1,%2"_s.arg(zona.x()).arg(zona.y());
            }
        }
        return botoes.join(u' ');
    }

    QPoint Meio(const QString& nome) const {
        return Find<QWidget>(*tela_, nome).geometry().center();
    }

    QColor Fundo() const { return tela_->grab().toImage().pixelColor(400, 100); }

    void init() override {
        gCaminho = pasta_.path() + u'\\';
        for (int i = 1; i <= TotalPaginas; ++i) {
            WritePicture(Pagina(i), {800, 573}, Tom(i));
        }
    }
    void cleanup() override {
        if (forms::Form::Find(frmConhecaTarvo::Nome)) {
            tela_->Unload();
        }
        Settle();
    }
};

TEST(ConhecaTarvoTest, ForwardAndBack) {
    const QStringList lugares = {
        u"A81,518 F15,518"_s,           u"A714,525 F428,525 V667,525"_s,
        u"A272,529 F15,529 V225,529"_s, u"A512,516 F15,516 V465,516"_s,
        u"F15,524 V522,524"_s,
    };
    Abrir();
    const auto conferir = [&](int pagina) {
        QCOMPARE(Botoes(), lugares.at(pagina - 1));
        QCOMPARE(Fundo(), Tom(pagina));
    };
    // By turns with the keys and with the mouse; the keys lead past neither end.
    for (int i = 1; i <= TotalPaginas; ++i) {
        conferir(i);
        i % 2 == 0 ? ClickAt(*tela_, Meio(u"imgAvancar"_s)) : QTest::keyClick(tela_, Qt::Key_Right);
    }
    for (int i = TotalPaginas; i >= 1; --i) {
        conferir(i);
        i % 2 == 0 ? ClickAt(*tela_, Meio(u"imgVoltar"_s)) : QTest::keyClick(tela_, Qt::Key_Left);
    }
    conferir(1);
}

// A lit picture belongs to its button wherever that stands, and lies over it.
TEST(ConhecaTarvoTest, LightTravelsWithTheButtons) {
    Abrir();
    auto& avancar = Find<QWidget>(*tela_, "imgAvancarSelecionada");
    MoveTo(*tela_, Meio(u"imgAvancar"_s));
    const QImage acesa = avancar.grab().toImage();
    ClickAt(*tela_, Meio(u"imgAvancar"_s));
    QVERIFY(!avancar.isVisible());  // the button has gone from under the mouse
    QCOMPARE(Luzes(frmConhecaTarvo::Nome, {400, 100}, {"imgAvancar", "imgVoltar", "imgFechar"}),
             u"AVANCAR VOLTAR FECHAR"_s);
    for (const auto& [nome, desvio] : {std::pair(u"imgAvancar"_s, QPoint(0, -1)),
                                       {u"imgVoltar"_s, {-7, -1}},
                                       {u"imgFechar"_s, {-4, -1}}}) {
        QCOMPARE(Find<QWidget>(*tela_, nome + u"Selecionada"_s).pos(),
                 Find<QWidget>(*tela_, nome).pos() + desvio);
    }
    QCOMPARE(avancar.grab().toImage(), acesa);

    QCOMPARE(Volta(frmConhecaTarvo::Nome, "imgFechar"), u"Fechar, Avançar, Voltar"_s);
    QTest::keyClick(tela_->focusWidget(), Qt::Key_Space);
    QVERIFY(!forms::Form::Find(frmConhecaTarvo::Nome));
}

TEST(ConhecaTarvoTest, APageThatCannotBeShownIsWhite) {
    QVERIFY(QFile::remove(Pagina(2)));
    Write(Pagina(3), "BM nothing");
    Abrir();
    for (int i = 2; i <= 3; ++i) {
        ClickAt(*tela_, Meio(u"imgAvancar"_s));
        QCOMPARE(Fundo(), QColor(Qt::white));
    }
    ClickAt(*tela_, Meio(u"imgAvancar"_s));
    QCOMPARE(Fundo(), Tom(4));

    // Left at page 4, it begins at the first again.
    ClickAt(*tela_, Meio(u"imgFechar"_s));
    QVERIFY(!forms::Form::Find(frmConhecaTarvo::Nome));
    forms::SetMousePointer(forms::vbHourglass);  // as the search screen leaves it
    Abrir();
    QCOMPARE(forms::MousePointer(), forms::vbDefault);
    QCOMPARE(Fundo(), Tom(1));
    QTest::keyClick(tela_, Qt::Key_Escape);
    QVERIFY(!forms::Form::Find(frmConhecaTarvo::Nome));
}
