#include "app/telapassageira.h"

#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr auto Intervalo = 500ms;
constexpr quint8 UltimoTique = 5;

// Held for the key that follows, Alt+F4 for one.
bool EhModificadora(int tecla) {
    switch (tecla) {
        case Qt::Key_Shift:
        case Qt::Key_Control:
        case Qt::Key_Alt:
        case Qt::Key_AltGr:
        case Qt::Key_Meta:
            return true;
        default:
            return false;
    }
}

}  // namespace

TelaDePassagem::TelaDePassagem(const QString& nome, const QString& desenho)
    : Form(nome, Kind::Splash, QSize(800, 600), desenho) {
    Timer1.setInterval(Intervalo);
    Timer1.setTimerType(Qt::PreciseTimer);  // five coarse ones come a tenth of a second early
    connect(&Timer1, &QTimer::timeout, this, &TelaDePassagem::Tique);
    connect(this, &Form::Click, this, &TelaDePassagem::EncerrarUmaVez);
    connect(this, &Form::KeyDown, this, [this](int tecla) {
        if (!EhModificadora(tecla)) {
            EncerrarUmaVez();
        }
    });
}

void TelaDePassagem::LigarRelogio() {
    contador_ = 0;
    Timer1.start();
}

void TelaDePassagem::Tique() {
    if (++contador_ == UltimoTique) {
        EncerrarUmaVez();
    }
}

void TelaDePassagem::EncerrarUmaVez() {
    if (encerrada_) {
        return;
    }
    encerrada_ = true;
    Encerrar();
}
