#include "session/erros.h"

#include "platform/dao/errors.h"
#include "platform/forms/application.h"
#include "platform/forms/msgbox.h"
#include "platform/system/paths.h"
#include "session/global.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

QString DescreverErro(const QString& numero, const QString& descricao) {
    // Not opened: its closing would let go the locks that the engine holds of it.
    const bool haArquivo = QFileInfo(sys::ToNative(gCaminho + u"Tarvo.mdb"_s)).isFile();
    const bool haLeitura = numero != QString::number(int(dao::Failure::InOut));
    if (!gDB || (haArquivo && haLeitura)) {
        return descricao;
    }
    return descricao +
           u"\n\nA pasta de dados não pode ser %1:\n%2\n\n"
           "Se ela fica na rede, verifique a conexão e abra o catálogo de novo."_s.arg(
               haArquivo ? u"lida"_s : u"alcançada"_s, QString(gCaminho).replace(u'/', u'\\'));
}

void MostrarErro(const QString& numero, const QString& descricao) {
    forms::SetMousePointer(0);
    forms::MsgBox(forms::ErrorText(numero, DescreverErro(numero, descricao)), forms::vbCritical,
                  TituloCatalogo);
}

void MostrarErro(int numero, const QString& descricao) {
    MostrarErro(QString::number(numero), descricao);
}
