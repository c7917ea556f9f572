#include "render/components.h"
#include "render/exploded.h"
#include "render/models.h"
#include "render/photo.h"
#include "vocabulary.h"

#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QPainter>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize PhotoSize(450, 351);
constexpr QSize FigureSize(582, 343);

render::Assembly Alone(demo::ComponentKind kind) {
    render::Assembly assembly;
    assembly.Add(render::Component(kind, 60 * render::UsualShare(kind)));
    return assembly;
}

// With every item that parts of such a bill can have.
render::Assembly Items(const QString& slug, const render::Parameters& parameters) {
    std::vector<render::Item> items;
    for (const auto table : {demo::ValveFamilies(), demo::ActuatorFamilies(),
                             demo::SupplyFamilies(), demo::LineFamilies()}) {
        for (const demo::Family& family : table) {
            if (slug != QStringView(family.slug)) {
                continue;
            }
            for (const demo::BillLine& line : demo::LinesOf(family.bill)) {
                for (int i = 0; i < line.most; ++i) {
                    items.push_back({line.kind, QString::number(items.size() + 1)});
                }
            }
        }
    }
    return render::ItemsOf(slug, parameters, items);
}

// As the figure screen shows it.
QImage Numbered(const render::ExplodedDrawing& drawing, bool dense) {
    QImage page = (dense ? drawing.dense : drawing.image).convertToFormat(QImage::Format_RGB32);
    QPainter painter(&page);
    const double density = static_cast<double>(page.width()) / drawing.image.width();
    painter.scale(density, density);
    QFont font(u"Liberation Sans"_s);
    font.setPixelSize(11);
    painter.setFont(font);
    for (size_t i = 0; i < drawing.callouts.size(); ++i) {
        const render::Callout& callout = drawing.callouts[i];
        painter.drawText(callout.box, Qt::AlignCenter, QString::number(callout.element + 1));
    }
    QTextStream(stdout) << drawing.callouts.size() << " numbers, " << drawing.faults << " faults, "
                        << static_cast<double>(drawing.scale) << " pixels per mm\n";
    return page;
}

QImage ContactSheet(const std::vector<std::pair<QString, render::Assembly>>& parts, QSize tile) {
    constexpr int Columns = 5;
    constexpr int Caption = 14;
    const int rows = (static_cast<int>(parts.size()) + Columns - 1) / Columns;
    QImage sheet(Columns * tile.width(), rows * (tile.height() + Caption), QImage::Format_RGB32);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    for (size_t i = 0; i < parts.size(); ++i) {
        const int x = static_cast<int>(i) % Columns * tile.width();
        const int y = static_cast<int>(i) / Columns * (tile.height() + Caption);
        painter.drawImage(x, y, render::Photo(parts[i].second, tile));
        painter.drawText(QRect(x, y + tile.height(), tile.width(), Caption), Qt::AlignCenter,
                         parts[i].first);
    }
    return sheet;
}

}  // namespace

int main(int argc, char** argv) {
    // Text on the contact sheet needs an application, but no screen.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Draws a part of the demonstration.\n"
        u"tarvo-render <family> [name=value ...] out.png"_s);
    parser.addHelpOption();
    const QCommandLineOption sheet(u"sheet"_s,
                                   u"A contact sheet of all families, or of those named."_s);
    const QCommandLineOption components(u"components"_s, u"A contact sheet of all components."_s);
    const QCommandLineOption repeat(u"repeat"_s, u"Draw it this often and tell the mean time."_s,
                                    u"times"_s, u"1"_s);
    const QCommandLineOption dense(u"dense"_s, u"That drawing for dense screens."_s);
    const QCommandLineOption exploded(u"exploded"_s, u"The drawing of its items instead."_s);
    parser.addOptions({sheet, components, repeat, exploded, dense});
    parser.process(application);
    QStringList arguments = parser.positionalArguments();
    if (arguments.isEmpty()) {
        parser.showHelp(1);
    }
    const QString file = arguments.takeLast();

    if (parser.isSet(sheet) || parser.isSet(components)) {
        std::vector<std::pair<QString, render::Assembly>> parts;
        if (parser.isSet(components)) {
            for (int i = 0; i < static_cast<int>(demo::ComponentKind::Count); ++i) {
                parts.emplace_back(QString::number(i), Alone(static_cast<demo::ComponentKind>(i)));
            }
        }
        for (const render::FamilyModel& model : render::AllModels()) {
            const QString slug = QString::fromUtf16(model.slug);
            if (parser.isSet(sheet) && (arguments.isEmpty() || arguments.contains(slug))) {
                parts.emplace_back(slug, render::AssemblyFor(slug, {}));
            }
        }
        return ContactSheet(parts, {300, 234}).save(file) ? 0 : 1;
    }

    if (arguments.isEmpty()) {
        parser.showHelp(1);
    }
    render::Parameters parameters;
    for (const QString& argument : arguments.sliced(1)) {
        parameters.Set(argument.section(u'=', 0, 0), argument.section(u'=', 1));
    }
    const auto draw = [&] {
        return parser.isSet(exploded)
                   ? Numbered(render::Explode(Items(arguments.first(), parameters), FigureSize),
                              parser.isSet(dense))
                   : render::Photo(render::AssemblyFor(arguments.first(), parameters), PhotoSize);
    };
    QImage photo = draw();
    const int times = parser.value(repeat).toInt();
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < times; ++i) {
        photo = draw();
    }
    QTextStream(stdout) << static_cast<double>(timer.nsecsElapsed()) / 1e6 / times << " ms\n";
    return photo.save(file) ? 0 : 1;
}
