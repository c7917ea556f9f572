#pragma once

#include "platform/forms/controls.h"

#include <QList>

#include <array>

// The picture gallery: a strip of four thumbnails over a table held in memory, a bar that scrolls
// it, and a frame around the chosen picture, which may have been scrolled off the strip.
class Galeria final : public QObject {
    Q_OBJECT

public:
    // A row of the table.
    struct Figura {
        QString codigo;
        QString descricao;
        QString arquivo;
    };

    // Makes its controls on the panel; the screen places them.
    explicit Galeria(forms::Panel* painel);

    // Reads the table anew. Rows are counted from 1.
    void CarregarFiguras();
    void ExibirFiguras(qint32 primeira);
    void SelecionarFigura(qint32 linha);

    const Figura& Selecionada() const;  // Erro 9 where the table has no such row
    // Takes the keys of the strip.
    QWidget* Teclado() const { return pctPesquisaFiguras; }

Q_SIGNALS:
    void DblClick();  // on a thumbnail or its caption, which the first click has chosen
    void MouseMove();

private:
    void CriarMiniatura(int indice);
    const Figura& Linha(qint32 linha) const;
    void AoRolar();
    void AoTeclar(int tecla);

    forms::Panel* pctPesquisaFiguras;
    forms::ScrollBar* sclPesquisaFiguras;
    forms::Panel* imgFiguraSelecionada;  // its Tag: "0" to "3", empty off the strip
    std::array<forms::Picture*, 4> imgFigura{};
    std::array<forms::Label*, 4> lblDescricaoFigura{};

    QList<Figura> mFiguras;
    qint32 mPrimeiraFigura = 1;
    qint32 mFiguraSelecionada = 1;
    qint32 mTotalFiguras = 0;
};
