#pragma once

#include "platform/forms/form.h"

#include <QTimer>

// A picture that stands for five ticks of half a second, or until a click or a key.
class TelaDePassagem : public forms::Form {
    Q_OBJECT

protected:
    TelaDePassagem(const QString& nome, const QString& desenho);

    void LigarRelogio();
    void DesligarRelogio() { Timer1.stop(); }

    // What follows the fifth tick, the click or the key. Comes once.
    virtual void Encerrar() = 0;

private:
    void Tique();
    void EncerrarUmaVez();

    QTimer Timer1;
    quint8 contador_ = 0;
    bool encerrada_ = false;
};
