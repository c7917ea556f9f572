#include "platform/forms/application.h"
#include "platform/printer/paperprinter.h"
#include "platform/printer/printdialog.h"
#include "platform/system/paths.h"
#include "printing/impressao.h"
#include "report.h"
#include "session/banco.h"
#include "session/esquema.h"
#include "session/global.h"

#include <QDir>
#include <QImage>
#include <QPainter>
#include <QPrinter>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

using bench::Measured;

constexpr int Items = 2000;
constexpr int Kits = 40;
constexpr int Numbers = 60;
constexpr QSize PictureSize(582, 343);

// A part with a long list, of which every third item is in a kit, and a figure.
void FillCatalogue() {
    const auto insert = [](const QString& table, const QString& values) {
        gDB->Execute(u"INSERT INTO %1 VALUES (%2)"_s.arg(table, values));
    };
    gWS->BeginTrans();
    insert(u"PECA"_s, u"1, '12345', 'Válvula de bancada', NULL, NULL, 1"_s);
    insert(u"FIGURA"_s, u"1, 'bancada.png'"_s);
    for (int kit = 1; kit <= Kits; ++kit) {
        insert(u"JOGOREPARO"_s, u"%1, 'JR%1', 'Jogo de reparo %1'"_s.arg(kit));
    }
    for (int item = 1; item <= Items; ++item) {
        insert(u"COMPONENTE"_s, u"%1, 'A%1', 'Anel de vedação %1 x 3,5'"_s.arg(item));
        insert(u"PECA_COMPONENTE"_s, u"1, '%1', %2, 2"_s.arg(item, 4).arg(item));
        if (item % 3 == 0) {
            insert(u"PECA_COMPONENTE_JOGOREPARO"_s,
                   u"1, '%1', %2"_s.arg(item, 4).arg(item % Kits + 1));
        }
    }
    for (int number = 1; number <= Numbers; ++number) {
        insert(u"FIGURADETALHADA"_s, u"1, %1, '%2', %3, %4"_s.arg(number)
                                         .arg(number, 4)
                                         .arg(number % 10 * 54)
                                         .arg(number / 10 * 50));
    }
    gWS->CommitTrans();
}

// Lines all over it, as a drawing has them.
void MakePicture(const QString& folder) {
    QImage picture(PictureSize, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int radius = 4; radius < PictureSize.width(); radius += 6) {
        painter.drawEllipse(QPoint(200, 170), radius, radius / 2);
    }
    QDir(folder).mkpath(u"Figuras"_s);
    picture.save(folder + u"/Figuras/bancada.png"_s);
}

// From the press on OK, with the printer chosen, to the whole document in its file.
Measured Print(const QString& ticks, const QString& file) {
    printer::SetPrintDialogHandler([file](int) {
        auto paper = std::make_unique<QPrinter>(QPrinter::HighResolution);
        paper->setOutputFileName(file);
        paper->setResolution(600);
        return std::make_unique<printer::PaperPrinter>(std::move(paper));
    });
    ParametroFormulario = ticks;
    auto* dialog = new frmImpressao;
    dialog->Show();
    forms::DoEvents();

    Measured measured;
    bench::Clock::time_point last = bench::Clock::now();
    QTimer pulse;
    QObject::connect(&pulse, &QTimer::timeout, &pulse, [&] {
        measured.stallMs = std::max(measured.stallMs, bench::MillisecondsSince(last));
        last = bench::Clock::now();
    });
    pulse.start(0);
    const bench::Clock::time_point start = bench::Clock::now();
    Q_EMIT dialog->findChild<forms::ClickZone*>(u"imgOk"_s)->Click();
    measured.firstMs = bench::MillisecondsSince(start);
    measured.stallMs = std::max(measured.stallMs, bench::MillisecondsSince(last));
    if (dialog->IsLoaded()) {
        throw std::runtime_error("not printed");
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return measured;
}

}  // namespace

// tarvo-bench-printing [options of the benchmark library]
int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    forms::Application application(argc, argv, TituloCatalogo);
    try {
        const QTemporaryDir folder;
        gCaminho = folder.path() + u'\\';
        CriarCatalogo(gCaminho + u"Tarvo.mdb"_s, SenhaBancoDados());
        AbrirSessao();
        FillCatalogue();
        MakePicture(folder.path());
        gCodigoPeca = 1;

        const char* wanted = std::getenv("BENCH_REPETITIONS");
        const int repetitions = wanted == nullptr ? 9 : std::atoi(wanted);
        const QString file = folder.filePath(u"saida.pdf"_s);
        bench::Register("list of 2,000 items and 40 kits", repetitions,
                        [&] { return Print(u"FD:0LC:1"_s, file); });
        bench::Register("figure of 60 numbers", repetitions,
                        [&] { return Print(u"FD:1LC:0"_s, file); });
        benchmark::RunSpecifiedBenchmarks();
        FecharBancoDados(gWS, gDB);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tarvo-bench-printing: %s\n", error.what());
        return 1;
    }
    return 0;
}
