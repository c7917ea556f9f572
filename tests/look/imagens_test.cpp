#include "look/imagens.h"

#include "support/testmain.h"

#include <QTest>

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
    Imagem ok{QStringLiteral("OK"), diario};
    Imagem sair{QStringLiteral("SAIR"), diario};

protected:
    QWidget* ImagemSelecionada(const QString& palavra) const override {
        perguntas += palavra;
        return const_cast<Imagem*>(palavra == QLatin1String("OK") ? &ok : &sair);
    }
};

}  // namespace

class TestImagens : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void TheNewPictureComesBeforeTheOldOneGoes() {
        Tela tela;
        tela.diario.clear();
        for (const char* palavra : {"FORM", "OK", "OK", "SAIR", "FORM", "FORM", "ok"}) {
            tela.diario += QLatin1String(palavra);
            tela.MostrarSelecionada(QLatin1String(palavra));
            QCOMPARE(tela.ImagemAtual(), QLatin1String(palavra));
        }
        QCOMPARE(tela.diario.join(u' '),
                 QLatin1String("FORM OK +OK OK SAIR +SAIR -OK FORM -SAIR FORM ok +SAIR"));
        QVERIFY(!tela.perguntas.contains(QLatin1String("FORM")));
    }
};

TARVO_TEST(TestImagens);
#include "imagens_test.moc"
