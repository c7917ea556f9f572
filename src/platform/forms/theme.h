#pragma once

#include <QColor>
#include <QString>

namespace forms {

// Colours and sizes (design pixels) of everything that is not painted in a drawing: boxes, lists,
// grids, message boxes, the help window. One place, so that the controls fit the painted screens.
struct Theme {
    QColor surround{0x1d, 0x27, 0x33};  // around the picture, where the screen is bigger
    QColor window{0xf2, 0xf4, 0xf7};    // dialogs without a drawing
    QColor text{0x1b, 0x22, 0x2b};
    QColor disabledText{0x8a, 0x94, 0xa0};
    QColor base{0xff, 0xff, 0xff};  // ground of boxes, lists and grids
    QColor border{0xa9, 0xb4, 0xc1};
    QColor focus{0xd9, 0x6b, 0x12};  // the line under the box that has the keyboard
    QColor selection{0x1f, 0x5f, 0x99};
    QColor selectionText{0xff, 0xff, 0xff};
    QColor rowLine{0xdd, 0xe2, 0xe8};
    QColor button{0xe4, 0xe9, 0xef};
    QColor scrollHandle{0xb4, 0xbf, 0xcb};
    QColor primary{0x1f, 0x5f, 0x99};  // button of a box with the keyboard, signs of boxes
    QColor primaryText{0xff, 0xff, 0xff};
    QColor lit{0xf2, 0xb2, 0x66};    // button of a box under the mouse, sign of a warning
    QColor alert{0xc6, 0x28, 0x28};  // sign of an error
    QColor tip{0xff, 0xfb, 0xe6};

    int textPixels = 12;
    int boxPixels = 21;           // height of a text box or a closed list
    int rowPixels = 18;           // height of a grid's row
    int scrollPixels = 14;        // breadth of a scroll bar
    int scrollButtonPixels = 17;  // length of the arrows at the ends of one that has them
};

const Theme& CurrentTheme();

// Takes effect at once, on what is open too.
void SetTheme(const Theme& theme);

}  // namespace forms
