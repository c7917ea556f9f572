#pragma once

#include "platform/forms/controls.h"
#include "platform/forms/form.h"

#include <QString>

// The row with this ItemData, -1 without one. Erro 6 for a row beyond 16 bits.
qint16 IndiceItemData(const forms::ComboList& combo, qint16 codigo);
bool FormularioCarregado(const QString& nome);
// Brings a form to the front, loading it if need be.
void MostrarFormulario(forms::Form& formulario);
// The form that lies disabled behind a modal dialog or box; without one the active form, or null.
forms::Form* JanelaModalAtiva();
// Lets that form's button in the task bar flash five times.
void PiscarJanelaAtiva();
