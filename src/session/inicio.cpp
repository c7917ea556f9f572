#include "platform/forms/application.h"
#include "platform/forms/msgbox.h"
#include "platform/system/paths.h"
#include "session/global.h"
#include "session/modulo.h"

using namespace Qt::StringLiterals;

QString LocalizarDados() {
    const QString programa = CaminhoPrograma(true);
    const QString desvio = programa + u"Caminho.txt"_s;
    if (!ArquivoExiste(desvio)) {
        return programa;
    }
    // Not trimmed: the file holds the path and nothing else.
    QString caminho = LerArquivo(desvio);
    if (!caminho.endsWith(u'\\')) {
        caminho += u'\\';
    }
    return caminho;
}

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
