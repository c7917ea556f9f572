#include "update/endereco.h"

#include "platform/convert.h"
#include "platform/dao/dao.h"
#include "session/global.h"

using namespace Qt::StringLiterals;

EnderecoServidor LerEndereco(const QString& endereco) {
    const QLatin1String esquema("http://");
    QString texto = endereco.endsWith(u'/') ? endereco : endereco + u'/';
    if (texto.startsWith(esquema, Qt::CaseInsensitive)) {
        texto.remove(0, esquema.size());
    }
    const qsizetype barra = texto.indexOf(u'/');
    return {texto.left(barra), texto.mid(barra + 1)};
}

EnderecoServidor EnderecoDoCatalogo() {
    const auto registro =
        gDB->OpenRecordset(u"SELECT UrlAtualizacao FROM UMREGISTRO"_s, dao::dbOpenForwardOnly);
    return LerEndereco(convert::ToTextOrEmpty(registro->Fields(0).Value()));
}
