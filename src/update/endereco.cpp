#include "update/endereco.h"

EnderecoServidor LerEndereco(const QString& endereco) {
    const QLatin1String esquema("http://");
    QString texto = endereco.endsWith(u'/') ? endereco : endereco + u'/';
    if (texto.startsWith(esquema, Qt::CaseInsensitive)) {
        texto.remove(0, esquema.size());
    }
    const qsizetype barra = texto.indexOf(u'/');
    return {texto.left(barra), texto.mid(barra + 1)};
}
