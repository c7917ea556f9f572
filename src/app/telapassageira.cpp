#include "app/telapassageira.h"

#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr auto Intervalo = 500ms;
constexpr quint8 UltimoTique = 5;

}  // namespace

TelaDePassagem::TelaDePassagem(const QString& nome, const QString& desenho)
    : Form(nome, Kind::Splash, QSize(800, 600), desenho) {
    Timer1.setInterval(Intervalo);
    connect(&Timer1, &QTimer::timeout, this, &TelaDePassagem::Tique);
    connect(this, &Form::Click, this, &TelaDePassagem::EncerrarUmaVez);
    connect(this, &Form::KeyDown, this, &TelaDePassagem::EncerrarUmaVez);
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
