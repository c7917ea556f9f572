#pragma once

#include <QString>
#include <QWidget>

// The hover mechanism of all screens: one word says which button is lit, and every mouse move on
// the screen passes a word. "FORM" is the word of no button.
class ImagensSelecionadas {
public:
    virtual ~ImagensSelecionadas() = default;

    // Lights the button of `palavra` and then puts out the one that was lit, so that between
    // neighbouring buttons never neither shows. The same word again costs one comparison.
    void MostrarSelecionada(const QString& palavra);
    const QString& ImagemAtual() const { return mImagemAtual; }

protected:
    // The lit picture of a word; null for a word that the screen does not know. Never asked "FORM".
    virtual QWidget* ImagemSelecionada(const QString& palavra) const = 0;

private:
    QString mImagemAtual = QStringLiteral("FORM");
};
