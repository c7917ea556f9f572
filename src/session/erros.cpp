#include "session/erros.h"

#include "platform/forms/application.h"
#include "platform/forms/msgbox.h"
#include "session/global.h"

void MostrarErro(const QString& numero, const QString& descricao) {
    forms::SetMousePointer(0);
    forms::MsgBox(forms::ErrorText(numero, descricao), forms::vbCritical, TituloCatalogo);
}

void MostrarErro(int numero, const QString& descricao) {
    MostrarErro(QString::number(numero), descricao);
}
