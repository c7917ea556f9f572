#include "parts/clientes.h"

#include "platform/convert.h"
#include "platform/forms/controls.h"
#include "session/formularios.h"
#include "session/global.h"

using namespace Qt::StringLiterals;

void PreencherClientes(forms::ComboList& combo) {
    combo.AddItem(QString(), SemCliente);
    const auto clientes = gDB->OpenRecordset(
        u"SELECT "
        "CodigoClienteConcorrente, "
        "DescricaoClienteConcorrente "
        "FROM "
        "CLIENTECONCORRENTE "
        "WHERE "
        "TipoClienteConcorrente = 'I' "
        "ORDER BY "
        "DescricaoClienteConcorrente"_s,
        dao::dbOpenForwardOnly);
    for (; !clientes->Eof(); clientes->MoveNext()) {
        combo.AddItem(u"Nº "_s + convert::ToTextOrEmpty(clientes->Fields(1).Value()),
                      convert::ToInt32(clientes->Fields(0).Value()));
    }
    const qint16 linha = IndiceItemData(combo, convert::Narrow<qint16>(gCodigoClienteConcorrente));
    combo.SetListIndex(linha < 0 ? 0 : linha);
}
