#include "look/dialogo.h"

#include "platform/forms/application.h"

#include <utility>

TelaDeDialogo::TelaDeDialogo(const QString& nome, QSize tamanho, const QString& desenho)
    : Tela(nome, Kind::Dialog, tamanho, desenho) {
    connect(this, &Form::KeyDown, this, [this](int tecla) {
        if (tecla == Qt::Key_Return || tecla == Qt::Key_Enter) {
            Confirmar();
        } else if (tecla == Qt::Key_Escape) {
            Cancelar();
        }
    });
}

void TelaDeDialogo::Activate() {
    if (!std::exchange(ativada_, true)) {
        forms::SetMousePointer(forms::vbDefault);
        PrimeiraAtivacao();
    }
}
