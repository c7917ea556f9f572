#include "partviews/lista_pecas.h"
#include "partviews/resultado_pesquisa.h"
#include "platform/erro.h"
#include "search/pesquisa.h"
#include "session/banco.h"
#include "session/global.h"
#include "viewdata.h"
#include "watch.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

using bench::Measured;

const QStringList ResultPainted = {u"grdResultadoPesquisaPeca"_s, u"grdVeiculosPeca"_s,
                                   u"imgFotoPeca"_s};

template <typename Control>
Control& Find(forms::Form& screen, const QString& name) {
    auto* control = screen.findChild<Control*>(name);
    if (control == nullptr) {
        throw std::runtime_error("no control " + name.toStdString());
    }
    return *control;
}

void Mouse(QWidget& widget, QEvent::Type type) {
    const QPointF at(20, 6);
    QMouseEvent event(type, at, widget.mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&widget, &event);
}

void Click(QWidget& widget) {
    Mouse(widget, QEvent::MouseButtonPress);
    Mouse(widget, QEvent::MouseButtonRelease);
}

void Settle() {
    for (int i = 0; i < 5; ++i) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

template <typename Screen>
Screen& Loaded() {
    auto* screen = static_cast<Screen*>(forms::Form::Find(Screen::Nome));
    if (screen == nullptr) {
        throw std::runtime_error("not open: " + Screen::Nome.toStdString());
    }
    return *screen;
}

// The real screens over the catalogue of a folder, from the search screen on.
class Walk {
public:
    Walk(bench::WatchfulApplication& application, const QString& folder)
        : application_(application) {
        gCaminho = folder;
        if (!gCaminho.endsWith(u'\\')) {
            gCaminho += u'\\';
        }
        AbrirSessao();
        data_ = bench::PrepareViewData();
        gFrmPesquisa = new frmPesquisa;
        gFrmPesquisa->Show();
        Find<forms::Panel>(*gFrmPesquisa, u"pctTelaPesquisa(0)"_s).show();
        Settle();
    }

    ~Walk() {
        delete gFrmPesquisa;
        FecharBancoDados(gWS, gDB);
    }

    const bench::ViewData& Data() const { return data_; }

    Measured OpenResult(const QString& number) {
        Find<forms::TextBox>(*gFrmPesquisa, u"txtNumeroTarvo"_s).setText(number);
        Settle();
        QWidget* rows = Find<forms::BoundGrid>(*gFrmPesquisa, u"grdPesquisa1"_s).viewport();
        Click(*rows);
        return Timed(ResultPainted, [rows] { Mouse(*rows, QEvent::MouseButtonDblClick); });
    }

    Measured NextRow() {
        auto& grid = Find<forms::BoundGrid>(Loaded<frmResultadoPesquisa>(), ResultPainted.first());
        QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, {});
        return Timed(ResultPainted, [&] { QCoreApplication::sendEvent(&grid, &down); });
    }

    Measured OpenList() {
        auto& button =
            Find<forms::ClickZone>(Loaded<frmResultadoPesquisa>(), u"imgListaComponentesFundo"_s);
        return Timed({u"grdListaPecas"_s}, [&] { Click(button); });
    }

    // The list sorted by the box, and the box with this text.
    void Enter(const QString& box, const QString& text) {
        auto& target = Find<forms::TextBox>(Loaded<frmListaPecas>(), box);
        target.setFocus();
        Settle();
        target.setText(text);
        Settle();
    }

    Measured Seek(const QString& box, const QString& text) {
        auto& target = Find<forms::TextBox>(Loaded<frmListaPecas>(), box);
        return Timed({u"grdListaPecas"_s}, [&] { target.setText(text); });
    }

    void BackToResult() { Back<frmListaPecas>(u"imgResultadoPesquisaFundo"_s); }
    void BackToSearch() { Back<frmResultadoPesquisa>(u"imgPesquisaFundo"_s); }

private:
    Measured Timed(const QStringList& painted, const std::function<void()>& act) {
        Measured measured;
        measured.firstMs = application_.TimeToPaint(painted, act);
        const bench::Clock::time_point start = bench::Clock::now();
        Settle();
        measured.wholeMs = measured.firstMs + bench::MillisecondsSince(start);
        measured.stallMs = application_.LongestEventMs();
        return measured;
    }

    template <typename Screen>
    void Back(const QString& button) {
        Click(Find<forms::ClickZone>(Loaded<Screen>(), button));
        Settle();
    }

    bench::WatchfulApplication& application_;
    bench::ViewData data_;
};

void Register(const QString& name, const std::function<Measured()>& run) {
    const char* wanted = std::getenv("BENCH_REPETITIONS");
    bench::Register(name.toUtf8().constData(), wanted == nullptr ? 9 : std::atoi(wanted), run);
}

void RegisterPart(Walk& walk, const QString& items, const QString& number) {
    Register(u"double click to result, part of %1"_s.arg(items), [&walk, number] {
        const Measured measured = walk.OpenResult(number);
        walk.BackToSearch();
        return measured;
    });
    Register(u"list button to list, %1 items"_s.arg(items), [&walk, number] {
        walk.OpenResult(number);
        const Measured measured = walk.OpenList();
        walk.BackToResult();
        walk.BackToSearch();
        return measured;
    });
    // One key in a list that is sorted by the box.
    const auto seek = [&walk, number](const QString& box, const QString& before,
                                      const QString& after) {
        walk.OpenResult(number);
        walk.OpenList();
        walk.Enter(box, before);
        const Measured measured = walk.Seek(box, after);
        walk.BackToResult();
        walk.BackToSearch();
        return measured;
    };
    Register(u"key in the item box, %1 items"_s.arg(items),
             [seek] { return seek(u"txtItem"_s, u"1"_s, u"17"_s); });
    Register(u"key in the description box, %1 items"_s.arg(items),
             [seek] { return seek(u"txtDescricaoComponente"_s, u"A"_s, u"V"_s); });
}

void RegisterAll(Walk& walk) {
    RegisterPart(walk, u"20"_s, walk.Data().smallPart);
    RegisterPart(walk, u"1000"_s, walk.Data().largePart);
    Register(u"row to row with vehicles and photo in memory"_s, [&walk] {
        walk.OpenResult(walk.Data().sharedComponent);
        for (int i = 0; i < 9; ++i) {
            walk.NextRow();
        }
        const Measured measured = walk.NextRow();
        walk.BackToSearch();
        return measured;
    });
}

}  // namespace

// tarvo-bench-views <data folder> [options of the benchmark library]; adds parts of its own to the
// catalogue.
int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    bench::WatchfulApplication application(argc, argv, TituloCatalogo);
    if (argc != 2) {
        std::fputs("usage: tarvo-bench-views <data folder> [--benchmark_...]\n", stderr);
        return 2;
    }
    try {
        Walk walk(application, QString::fromLocal8Bit(argv[1]));
        RegisterAll(walk);
        benchmark::RunSpecifiedBenchmarks();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tarvo-bench-views: %s\n", error.what());
        return 1;
    }
    return 0;
}
