#include "platform/forms/application.h"
#include "platform/forms/msgbox.h"
#include "platform/system/paths.h"
#include "session/global.h"
#include "session/modulo.h"

bool ArquivoExiste(const QString& caminho) {
    return sys::CanRead(caminho);
}

QString LerArquivo(const QString& caminho) {
    return sys::ReadText(caminho);
}

void MostrarErro(const QString& numero, const QString& descricao) {
    forms::SetMousePointer(0);
    forms::MsgBox(forms::ErrorText(numero, descricao), forms::vbCritical, TituloCatalogo);
}

void MostrarErro(int numero, const QString& descricao) {
    MostrarErro(QString::number(numero), descricao);
}
