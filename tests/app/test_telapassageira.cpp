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
    const QList<int> seguradas = {Qt::Key_Alt, Qt::Key_Shift, Qt::Key_Control, Qt::Key_Meta};
    for (const int tecla : QList<int>{0, Qt::Key_A, Qt::Key_Escape} + seguradas) {
        auto* tela = new Passageira;
        tela->Show();
        for (int vez = 0; vez < 2; ++vez) {
            if (tecla == 0) {
                ClickAt(*tela, {400, 300});
            } else {
                QTest::keyClick(tela, Qt::Key(tecla));
            }
        }
        QCOMPARE(tela->encerramentos, seguradas.contains(tecla) ? 0 : 1);
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
