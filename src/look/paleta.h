#pragma once

#include <QColor>
#include <QString>

// Colours and type sizes of the painted screens, for what the program paints itself. The values
// stand in artwork/estilo.css, where the drawings have them from too.
struct Paleta {
    QColor papel;          // ground of a screen
    QColor branco;         // ground of boxes and grids
    QColor gaveta;         // ground of a panel
    QColor cabecaGrade;    // strip over a grid's columns
    QColor petroleo;       // head of a screen
    QColor petroleoFundo;  // foot of a screen and what lies around the picture
    QColor petroleoVivo;   // button at rest
    QColor tinta;          // text on light grounds
    QColor tintaSuave;     // text that stands back
    QColor gelo;           // text on petrol
    QColor nevoa;          // text on petrol that stands back
    QColor linha;          // between rows
    QColor contorno;       // around boxes
    QColor acento;         // lit, chosen, under way
    QColor acentoPalido;   // ground of a chosen row
    QColor acentoTraco;    // the accent as a line on a light ground
    QColor alerta;         // sign of an error

    // numbers on a figure
    QColor itemFundo;  // disc behind the one under the mouse
    QColor itemBorda;
    QColor itemMesmo;  // the same item elsewhere
    QColor itemJogo;   // in the same repair kit

    QString letra;  // the family
    // Design pixels.
    int corpoTexto;
    int corpoRotulo;

    // Read once. Throws Erro when the style sheet lacks a value.
    static const Paleta& Atual();
};
