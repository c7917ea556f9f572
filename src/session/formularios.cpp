#include "session/formularios.h"

#include "platform/convert.h"

#include <QApplication>

qint16 IndiceItemData(const forms::ComboList& combo, qint16 codigo) {
    for (int indice = 0; indice < combo.ListCount(); ++indice) {
        if (combo.ItemData(indice) == codigo) {
            return convert::Narrow<qint16>(indice);
        }
    }
    return -1;
}

bool FormularioCarregado(const QString& nome) {
    return forms::Form::Find(nome) != nullptr;
}

void MostrarFormulario(forms::Form& formulario) {
    if (FormularioCarregado(formulario.Name())) {
        formulario.SetVisible(true);
    } else {
        formulario.Show();
    }
}

// The screen behind a dialog rather than the dialog: it is the one with a button in the task bar.
forms::Form* JanelaModalAtiva() {
    forms::Form* ativa = forms::Form::Active();
    for (forms::Form* formulario : forms::Form::Loaded()) {
        if (formulario != ativa && formulario->isVisible() && forms::IsBlocked(*formulario)) {
            return formulario;
        }
    }
    return ativa;
}

void PiscarJanelaAtiva() {
    constexpr int Vezes = 5;
    if (forms::Form* formulario = JanelaModalAtiva()) {
        QApplication::alert(formulario, Vezes * QApplication::cursorFlashTime());
    }
}
