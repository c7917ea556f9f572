#include "platform/forms/form.h"
#include "platform/forms/scale.h"
#include "support/test.h"
#include "support/windows.h"

#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>

using forms::Form;

class TestScale : public QObject {
    Q_OBJECT

    // The whole picture is in view, as large as the screen holds it.
    static void Fills(const Form& screen, QSize size) {
        const double wanted = std::min(size.width() / 800.0, size.height() / 600.0);
        const double scale = screen.devicePixelRatioF();
        QVERIFY2(scale <= wanted + 1e-6 && scale > wanted - 0.01,
                 qPrintable(QString::number(scale)));
        QCOMPARE(screen.geometry(), screen.screen()->geometry());
        QCOMPARE(screen.Picture()->visibleRegion().boundingRect(), QRect(0, 0, 800, 600));
        const auto* area = screen.findChild<QScrollArea*>();
        QVERIFY(!area->verticalScrollBar()->isVisible() &&
                !area->horizontalScrollBar()->isVisible());
    }

private Q_SLOTS:
    void cleanup() {
        for (Form* form : Form::Loaded()) {
            form->Unload();
        }
        qunsetenv("QT_SCALE_FACTOR");
        SetScreen({800, 800}, 100);
    }

    void ScaleFillsTheScreenEvenly() {
        const struct {
            QSize screen;
            double scale;
        } cases[] = {
            {{800, 600}, 1},      {{1366, 768}, 1.28}, {{1920, 1080}, 1.8}, {{3840, 2160}, 3.6},
            {{1024, 740}, 1.233}, {{640, 480}, 1},     {{600, 800}, 1},     {{0, 0}, 1},
        };
        for (const auto& [screen, scale] : cases) {
            QCOMPARE(forms::ScaleFor(screen), scale);
        }
        for (int width = 800; width < 4000; width += 7) {
            const double scale = forms::ScaleFor({width, width});
            QVERIFY(qRound(width / scale) >= forms::PictureSize.width());
        }
    }

    // One screen stays open while another one, hidden, waits behind it, and a dialog stands before.
    void TheScreenChangesWhileItIsOpen() {
        auto* hidden = new Form(u"hidden"_s, Form::Kind::Screen, {800, 600}, {});
        hidden->Show();
        auto* open = new Form(u"open"_s, Form::Kind::Screen, {800, 600}, {});
        open->Show();
        hidden->SetVisible(false);
        auto* dialog = new Form(u"dialog"_s, Form::Kind::Dialog, {400, 200}, {});
        dialog->Show();
        for (const QSize size :
             {QSize(1366, 768), QSize(1920, 1080), QSize(2560, 1440), QSize(3840, 2160)}) {
            for (const int percent : {100, 125, 150, 175, 200, 250}) {
                SetScreen(size, percent);
                Fills(*open, size);
                QCOMPARE(dialog->size(), QSize(400, 200));
                QVERIFY(open->geometry().contains(dialog->geometry()));
            }
        }
        hidden->SetVisible(true);
        Fills(*hidden, {3840, 2160});
    }

    void TheUsersOwnFactorHoldsAsFarAsThePictureFits_data() {
        const Table<QByteArray, double> row("factor", "scale");
        row("smaller", "1.5", 1.5);
        row("too large", "2", 1.8);
        row("no number", "dois", 1.8);
    }
    void TheUsersOwnFactorHoldsAsFarAsThePictureFits() {
        QFETCH(const QByteArray, factor);
        QFETCH(const double, scale);
        // The toolkit has read its own copy long ago: its part of the product is not in this one.
        qputenv("QT_SCALE_FACTOR", factor);
        SetScreen({1920, 1080}, 100);
        const double users = factor.toDouble() > 0 ? factor.toDouble() : 1;
        QCOMPARE(QGuiApplication::primaryScreen()->devicePixelRatio() * users, scale);
    }
};

TARVO_TEST(TestScale);
#include "test_scale.moc"
