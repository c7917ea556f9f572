#include "platform/printer/printer.h"

#include "platform/convert.h"

#include <utility>

namespace printer {

void Printer::SetScaleMode(int mode) {
    if (mode != vbPixels) {
        throw Erro(Erro::InvalidArgument);
    }
}

void Printer::BeginOnce() {
    if (!begun_) {
        Begin();
        begun_ = true;
    }
}

void Printer::Print(const QVariant& value) {
    BeginOnce();
    const QString text = convert::ToShownText(value);
    if (!text.isEmpty()) {
        DrawText({x_, y_}, text);
        SetCurrentX(x_ + TextWidth(text));
    }
}

void Printer::PrintLine(const QVariant& value) {
    Print(value);
    SetCurrentX(0);
    SetCurrentY(y_ + LineHeight());
}

void Printer::NewPage() {
    BeginOnce();
    NextPage();
    ++page_;
    x_ = y_ = 0;
}

void Printer::PaintPicture(const QPixmap& picture, double x, double y, double width,
                           double height) {
    BeginOnce();
    DrawPicture({x, y, width, height}, picture);
}

void Printer::PrintDocument(QTextDocument& document) {
    BeginOnce();
    DrawDocument(document);
}

void Printer::EndDoc() {
    if (std::exchange(begun_, false)) {
        End();
    }
    page_ = 1;
    x_ = y_ = 0;
}

}  // namespace printer
