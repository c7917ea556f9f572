// Paints a drawing into a PNG file as the program paints it on the screen, or writes it as an SVG
// that needs no style sheet.
#include "platform/erro.h"
#include "platform/forms/artwork.h"

#include <QCommandLineParser>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <cstdio>

using namespace Qt::StringLiterals;
using forms::Artwork;

namespace {

void View(const QString& name, Artwork::State state, double scale, const QString& file) {
    const auto artwork = Artwork::Load(name);
    QImage image((QSizeF(artwork->Size()) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    const QRectF all(QPointF(), QSizeF(artwork->Size()));
    artwork->Paint(painter, QRectF(image.rect()), all, state);
    painter.end();
    if (!image.save(file)) {
        throw Erro(Erro::PathFileAccess);
    }
}

void Write(const QString& name, Artwork::State state, const QString& path) {
    QFile file(path);
    const QByteArray svg = Artwork::Resolved(name, state);
    if (!file.open(QIODevice::WriteOnly) || file.write(svg) != svg.size() || !file.flush()) {
        throw Erro(Erro::PathFileAccess);
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    const QCommandLineOption lit(u"lit"_s, u"every button lit"_s);
    const QCommandLineOption scale(u"scale"_s, u"enlargement"_s, u"factor"_s, u"1"_s);
    const QCommandLineOption folder(
        u"dir"_s, u"read drawings and sheets here, not from the program"_s, u"folder"_s);
    parser.addOptions({lit, scale, folder});
    parser.addPositionalArgument(u"name"_s, u"the drawing, without ending"_s);
    parser.addPositionalArgument(u"file"_s, u"the PNG or SVG file to write"_s);
    parser.addHelpOption();
    parser.process(application);
    const QStringList arguments = parser.positionalArguments();
    if (arguments.size() != 2 || parser.value(scale).toDouble() <= 0) {
        parser.showHelp(2);
    }
    if (parser.isSet(folder)) {
        Artwork::SetFolder(parser.value(folder));
    }
    try {
        const auto state = parser.isSet(lit) ? Artwork::State::Lit : Artwork::State::Rest;
        if (arguments.at(1).endsWith(".svg"_L1)) {
            Write(arguments.at(0), state, arguments.at(1));
        } else {
            View(arguments.at(0), state, parser.value(scale).toDouble(), arguments.at(1));
        }
    } catch (const Erro& erro) {
        std::fprintf(stderr, "%d: %s\n", erro.Number(), erro.what());
        return 1;
    }
    return 0;
}
