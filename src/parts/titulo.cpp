#include "parts/titulo.h"

#include "platform/convert.h"
#include "session/global.h"

using namespace Qt::StringLiterals;

QString TituloDaPeca(qsizetype brancos) {
    const auto peca = gDB->OpenRecordset(
        u"SELECT "
        "DescricaoPeca, "
        "NumeroTarvoPeca "
        "FROM "
        "PECA "
        "WHERE "
        "CodigoPeca = "_s +
            QString::number(gCodigoPeca),
        dao::dbOpenForwardOnly);
    if (peca->Eof()) {
        return QString();
    }
    return u"Peça: "_s + convert::ToTextOrEmpty(peca->Fields(0).Value()) + QString(brancos, u' ') +
           u"Nº Tarvo: "_s + convert::ToTextOrEmpty(peca->Fields(1).Value());
}
