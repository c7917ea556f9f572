#include "app/telapassageira.h"
#include "support/test.h"
#include "support/windows.h"

#include <QElapsedTimer>

namespace {

class Passageira : public TelaDePassagem {
public:
    Passageira() : TelaDePassagem(u"frmPassageira"_s, u"creditos"_s) {}

    using TelaDePassagem::LigarRelogio;
    int encerramentos = 0;

protected:
    void Encerrar() override { ++encerramentos; }
};

}  // namespace

class TestTelaPassageira : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aKeyOrAClickEndsItOnce_data() {
        const Table<int, int> row("tecla", "encerramentos");
        row("a letter", Qt::Key_A, 1);
        row("escape", Qt::Key_Escape, 1);
        // Held for another key: Alt+F4 closes the window.
        row("alt", Qt::Key_Alt, 0);
        row("shift", Qt::Key_Shift, 0);
        row("control", Qt::Key_Control, 0);
        row("the system's key", Qt::Key_Meta, 0);
        row("the mouse", 0, 1);
    }
    void aKeyOrAClickEndsItOnce() {
        QFETCH(const int, tecla);
        auto* tela = new Passageira;
        tela->Show();
        for (int vez = 0; vez < 2; ++vez) {
            if (tecla == 0) {
                ClickAt(*tela, {400, 300});
            } else {
                QTest::keyClick(tela, Qt::Key(tecla));
            }
        }
        QTEST(tela->encerramentos, "encerramentos");
        tela->Unload();
    }

    // Never early, however busy the machine is.
    void itStandsForTwoAndAHalfSeconds() {
        auto* tela = new Passageira;
        tela->Show();
        QElapsedTimer desde;
        desde.start();
        tela->LigarRelogio();
        QTRY_COMPARE_WITH_TIMEOUT(tela->encerramentos, 1, 20000);
        QVERIFY2(desde.elapsed() >= 2495, qPrintable(QString::number(desde.elapsed())));
        tela->Unload();
    }
};

TARVO_TEST(TestTelaPassageira);
#include "test_telapassageira.moc"
