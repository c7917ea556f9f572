#pragma once

#include "look/tela.h"

// A dialog over a screen: Return and Escape do what its buttons do, and its first activation puts
// back the pointer that the screen which opened it has left busy.
class TelaDeDialogo : public Tela {
    Q_OBJECT

protected:
    TelaDeDialogo(const QString& nome, QSize tamanho, const QString& desenho);

    virtual void Confirmar() {}
    virtual void Cancelar() {}
    virtual void PrimeiraAtivacao() {}

    void Activate() final;

private:
    bool ativada_ = false;
};
