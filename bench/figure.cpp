#include "figure/figura_detalhada.h"
#include "session/banco.h"
#include "session/esquema.h"
#include "session/global.h"
#include "watch.h"

#include <QDir>
#include <QEventLoop>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>
#include <ctime>
#include <exception>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

using bench::Measured;

// As many numbers as the busiest page has, each in three of thirty kits.
constexpr int Numbers = 300;
constexpr int Kits = 30;
constexpr int KitsOfAnItem = 3;
constexpr QSize Figure(582, 343);
constexpr int Columns = 17;

QString Stored(int item) {
    return QString::number(item).rightJustified(4);
}

void MakePicture(const QString& file) {
    QImage picture(Figure, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int i = 0; i < 200; ++i) {
        painter.drawEllipse(QPointF(i * 37 % Figure.width(), i * 53 % Figure.height()), 40, 15);
    }
    painter.end();
    if (!picture.save(file)) {
        throw std::runtime_error("no picture");
    }
}

void MakeRows() {
    gWS->BeginTrans();
    gDB->Execute(
        u"INSERT INTO PECA (CodigoPeca, NumeroTarvoPeca, DescricaoPeca, CodigoFigura) "
        "VALUES (1, '1', 'Peça', 1)"_s);
    gDB->Execute(u"INSERT INTO FIGURA VALUES (1, 'figura.png')"_s);
    for (int kit = 1; kit <= Kits; ++kit) {
        gDB->Execute(u"INSERT INTO JOGOREPARO VALUES (%1, 'J%1', 'Jogo de reparo %1')"_s.arg(kit));
    }
    for (int item = 1; item <= Numbers; ++item) {
        const QString code = QString::number(item);
        gDB->Execute(
            u"INSERT INTO COMPONENTE VALUES (%1, 'C%1', 'Anel de vedação %1')"_s.arg(code));
        gDB->Execute(
            u"INSERT INTO PECA_COMPONENTE VALUES (1, '%1', %2, 1)"_s.arg(Stored(item), code));
        for (int kit = 0; kit < KitsOfAnItem; ++kit) {
            gDB->Execute(u"INSERT INTO PECA_COMPONENTE_JOGOREPARO VALUES (1, '%1', %2)"_s.arg(
                Stored(item), QString::number(1 + (item + kit * 7) % Kits)));
        }
        gDB->Execute(u"INSERT INTO FIGURADETALHADA VALUES (1, %1, '%2', %3, %4)"_s.arg(
            code, Stored(item), QString::number(item % Columns * 34),
            QString::number(item / Columns * 19)));
    }
    gWS->CommitTrans();
}

// A catalogue with one figure, and the screen that shows it.
class Stage {
public:
    explicit Stage(bench::WatchfulApplication& application) : application_(application) {
        gCaminho = folder_.path() + u'\\';
        gCodigoPeca = 1;
        CriarCatalogo(gCaminho + u"Tarvo.mdb"_s, SenhaBancoDados());
        AbrirSessao();
        MakeRows();
        QDir(folder_.path()).mkdir(u"Figuras"_s);
        MakePicture(folder_.filePath(u"Figuras/figura.png"_s));
    }

    ~Stage() {
        Close();
        FecharBancoDados(gWS, gDB);
    }

    Measured Open(const QString& selection = {}) {
        Close();
        ParametroFormulario = selection;
        return Painted({u"lblItem(1)"_s, u"imgFigura(1)"_s}, [] {
            auto& screen = UnicaInstancia<frmFiguraDetalhada>();
            screen.Show();
            // The display without a display is smaller than an enlarged window.
            screen.setWindowState(Qt::WindowNoState);
            screen.resize(screen.Picture()->size());
        });
    }

    // From a number to one that shares no kit with it: everything that was lit goes out.
    Measured Cross() {
        if (!Screen()) {
            Open();
        }
        number_ = 1 + (number_ + 101) % Numbers;
        return Painted({u"lblItem(%1)"_s.arg(number_)}, [this] { MoveOver(number_); });
    }

    // Milliseconds of processor time in a second.
    Measured BusyMilliseconds() {
        constexpr std::chrono::seconds Time(3);
        QEventLoop loop;
        QTimer::singleShot(Time, &loop, &QEventLoop::quit);
        const std::clock_t before = std::clock();
        loop.exec();
        Measured measured;
        measured.firstMs = double(std::clock() - before) / CLOCKS_PER_SEC * 1000 / Time.count();
        return measured;
    }

    void MoveOver(int number) {
        auto* item = Screen()->findChild<ItemFigura*>(u"lblItem(%1)"_s.arg(number));
        const QPointF at = item->rect().center();
        QMouseEvent event(QEvent::MouseMove, at, item->mapToGlobal(at), Qt::NoButton, {}, {});
        QCoreApplication::sendEvent(item, &event);
    }

private:
    static forms::Form* Screen() { return forms::Form::Find(frmFiguraDetalhada::Nome); }

    static void Settle() {
        for (int i = 0; i < 3; ++i) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }

    void Close() {
        if (Screen()) {
            Screen()->Unload();
            Settle();
        }
    }

    Measured Painted(const QStringList& controls, const std::function<void()>& act) {
        Measured measured;
        measured.firstMs = application_.TimeToPaint(controls, act);
        Settle();
        measured.stallMs = application_.LongestEventMs();
        return measured;
    }

    bench::WatchfulApplication& application_;
    QTemporaryDir folder_;
    int number_ = 1;
};

void RegisterAll(Stage& stage) {
    const auto add = [](const QString& name, int repetitions, std::function<Measured()> run) {
        bench::Register(name.toUtf8().constData(), repetitions, std::move(run));
    };
    const auto blinking = [&stage](const QString& selection) {
        stage.Open(selection);
        return stage.BusyMilliseconds();
    };
    add(u"open, 300 numbers"_s, 9, [&stage] { return stage.Open(); });
    add(u"number to number, 60 light and go out"_s, 300, [&stage] { return stage.Cross(); });
    add(u"second of standing still"_s, 3, [blinking] { return blinking({}); });
    add(u"second of one number blinking"_s, 3, [blinking] { return blinking(u"I: 150:I"_s); });
    add(u"second of 30 numbers blinking"_s, 3, [blinking] { return blinking(u"J:5:J"_s); });
}

}  // namespace

// tarvo-bench-figure [options of the benchmark library]; makes its own catalogue.
int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    bench::WatchfulApplication application(argc, argv, TituloCatalogo);
    try {
        Stage stage(application);
        RegisterAll(stage);
        benchmark::RunSpecifiedBenchmarks();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tarvo-bench-figure: %s\n", error.what());
        return 1;
    }
    return 0;
}
