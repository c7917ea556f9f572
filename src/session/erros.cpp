#include "session/erros.h"

#include "platform/forms/application.h"
#include "platform/forms/msgbox.h"
#include "session/arquivos.h"
#include "session/global.h"

using namespace Qt::StringLiterals;

QString DescreverErro(const QString& descricao) {
    if (!gDB || ArquivoExiste(gCaminho + u"Tarvo.mdb"_s)) {
        return descricao;
    }
    return descricao +
           u"\n\nA pasta de dados não pode ser alcançada:\n%1\n\n"
           "Se ela fica na rede, verifique a conexão e abra o catálogo de novo."_s.arg(
               QString(gCaminho).replace(u'/', u'\\'));
}

void MostrarErro(const QString& numero, const QString& descricao) {
    forms::SetMousePointer(0);
    forms::MsgBox(forms::ErrorText(numero, DescreverErro(descricao)), forms::vbCritical,
                  TituloCatalogo);
}

void MostrarErro(int numero, const QString& descricao) {
    MostrarErro(QString::number(numero), descricao);
}
