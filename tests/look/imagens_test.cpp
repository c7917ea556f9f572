#include "look/imagens.h"

#include "support/test.h"

namespace {

// Writes down the order in which pictures go on and off.
class Imagem : public QWidget {
public:
    Imagem(const QString& palavra, QStringList& diario) : palavra_(palavra), diario_(diario) {
        hide();
    }
    void setVisible(bool visible) override {
        QWidget::setVisible(visible);
        diario_ += (visible ? u'+' : u'-') + palavra_;
    }

private:
    QString palavra_;
    QStringList& diario_;
};

class Tela : public ImagensSelecionadas {
public:
    QStringList diario;
    mutable QStringList perguntas;
    Imagem ok{u"OK"_s, diario};
    Imagem sair{u"SAIR"_s, diario};

protected:
    QWidget* ImagemSelecionada(const QString& palavra) const override {
        perguntas += palavra;
        return const_cast<Imagem*>(palavra == "OK"_L1 ? &ok : &sair);
    }
};

}  // namespace

struct TestImagens : Fixture {};

TEST(TestImagens, TheNewPictureComesBeforeTheOldOneGoes) {
    Tela tela;
    tela.diario.clear();
    for (const char* palavra : {"FORM", "OK", "OK", "SAIR", "FORM", "FORM", "ok"}) {
        tela.diario += QLatin1String(palavra);
        tela.MostrarSelecionada(QLatin1String(palavra));
        QCOMPARE(tela.ImagemAtual(), QLatin1String(palavra));
    }
    QCOMPARE(tela.diario.join(u' '), "FORM OK +OK OK SAIR +SAIR -OK FORM -SAIR FORM ok +SAIR"_L1);
    QVERIFY(!tela.perguntas.contains("FORM"_L1));
}
