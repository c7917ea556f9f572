#pragma once

#include "look/imagens.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"

#include <QList>
#include <QRect>

#include <functional>
#include <span>

// A control's place: design pixels from the corner of its parent.
struct Lugar {
    const char16_t* nome;
    QRect retangulo;
};

// A screen whose buttons are painted: what all of them share beyond the form. Click zones, lit
// pictures and the words that join them are made here; each screen brings its tables.
class Tela : public forms::Form, public ImagensSelecionadas {
    Q_OBJECT

protected:
    // The word, the click zone (its lit picture has the name with "Selecionada" in place of
    // "Fundo", or behind it) and the name that assistive technology reads.
    struct Botao {
        QString palavra;
        QString zona;
        QString descricao;
    };

    using Form::Form;

    // Makes zone and lit picture, cut out of `desenho`, as children of `pai`. Moves over the zone
    // pass its word.
    forms::ClickZone* CriarBotao(const Botao& botao, QWidget* pai,
                                 const std::shared_ptr<forms::Artwork>& desenho);
    // The buttons that the screen's own drawing has, and the one that minimises the window.
    void CriarBotoes(std::span<const Botao> botoes);

    // Moves over this control put the light out.
    template <typename Controle>
    void ApagarSobre(Controle* controle) {
        connect(controle, &Controle::MouseMove, this,
                [this] { MostrarSelecionada(QStringLiteral("FORM")); });
    }

    // The lit picture that CriarBotao made for this zone.
    static forms::LitPicture& AcesaDe(const forms::ClickZone& zona);

    void AoClicar(const QString& zona, std::function<void()> acao);

    // The order in which the Tab key goes through these controls, found by their names. Without it
    // it is the order of making them.
    void OrdenarTabulacao(std::initializer_list<const char16_t*> nomes);

    // For a screen that comes into view: the keyboard goes to this control, unless it stands in one
    // that the user has chosen for his typing.
    void DarTeclado(QWidget& controle);

    // Places every control of the table, found by its name.
    void Posicionar(std::span<const Lugar> lugares);

    QWidget* ImagemSelecionada(const QString& palavra) const override;

private:
    void CriarBotaoMinimizar();

    QList<std::pair<QString, QWidget*>> acesas_;
};

// The one loaded instance of a screen, or a new one that is not loaded yet.
template <typename Screen>
Screen& UnicaInstancia() {
    if (forms::Form* carregada = forms::Form::Find(Screen::Nome)) {
        return static_cast<Screen&>(*carregada);
    }
    return *new Screen;
}

// Unloads the loaded instance of a screen, if there is one.
template <typename Screen>
void Descarregar() {
    if (forms::Form* carregada = forms::Form::Find(Screen::Nome)) {
        carregada->Unload();
    }
}
