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
    // What is held for another key does not end it: Alt+F4 closes the window. 0 is the mouse.
    const std::pair<int, int> casos[] = {{Qt::Key_A, 1},
                                         {Qt::Key_Escape, 1},
                                         {Qt::Key_Alt, 0},
                                         {Qt::Key_Shift, 0},
                                         {Qt::Key_Control, 0},
                                         {Qt::Key_Meta, 0},
                                         {0, 1}};
    for (const auto& [tecla, encerramentos] : casos) {
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
