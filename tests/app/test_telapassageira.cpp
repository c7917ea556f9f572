#include "app/telapassageira.h"
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

struct TestTelaPassageira : Fixture {};

TEST(TestTelaPassageira, aKeyOrAClickEndsItOnce) {
    for (const auto& [tecla, encerramentos] : Each<int, int>{
             {"a letter", Qt::Key_A, 1},
             {"escape", Qt::Key_Escape, 1},
             // Held for another key: Alt+F4 closes the window.
             {"alt", Qt::Key_Alt, 0},
             {"shift", Qt::Key_Shift, 0},
             {"control", Qt::Key_Control, 0},
             {"the system's key", Qt::Key_Meta, 0},
             {"the mouse", 0, 1},
         }) {
        auto* tela = new Passageira;
        tela->Show();
        for (int vez = 0; vez < 2; ++vez) {
            if (tecla == 0) {
                ClickAt(*tela, {400, 300});
            } else {
                QTest::keyClick(tela, Qt::Key(tecla));
            }
        }
        QCOMPARE(tela->encerramentos, encerramentos);
        tela->Unload();
    }
}

// Never early, however busy the machine is.
TEST(TestTelaPassageira, itStandsForTwoAndAHalfSeconds) {
    auto* tela = new Passageira;
    tela->Show();
    QElapsedTimer desde;
    desde.start();
    tela->LigarRelogio();
    QTRY_COMPARE_WITH_TIMEOUT(tela->encerramentos, 1, 20000);
    QVERIFY2(desde.elapsed() >= 2495, qPrintable(QString::number(desde.elapsed())));
    tela->Unload();
}
