#include "support/catalogo.h"

#include "platform/convert.h"
#include "session/esquema.h"

namespace {

// Made once: deriving the key and flushing each definition to the disk takes far longer than a
// copy.
void PorCatalogoVazio() {
    static QByteArray modelo;
    const QString caminho = gCaminho + u"Tarvo.mdb"_s;
    if (modelo.isEmpty()) {
        CriarCatalogo(caminho, SenhaBancoDados());
        modelo = sys::ReadBytes(caminho);
        return;
    }
    Write(sys::ToNative(caminho), modelo);
}

}  // namespace

CatalogoDeTeste::CatalogoDeTeste() {
    gCaminho = pasta_.path() + u'\\';
    PorCatalogoVazio();
    AbrirSessao();
    Executar(
        {"UPDATE UMREGISTRO SET DataEmissao = DateSerial(2026,3,5), ComplementoDataEmissao = ' - "
         "teste'"});
}

CatalogoDeTeste::~CatalogoDeTeste() {
    FecharBancoDados(gWS, gDB);
}

void Executar(const AnyTexts& comandos) {
    gWS->BeginTrans();  // one flush to the disk instead of one for each row
    for (const QString& comando : comandos) {
        gDB->Execute(comando, dao::dbFailOnError);
    }
    gWS->CommitTrans();
}

OutroComputador::OutroComputador() {
    AbrirBancoDados(sessao, u"outro"_s, banco, false);
}

QString Valor(const AnyText& sql) {
    return convert::ToTextOrEmpty(gDB->OpenRecordset(sql)->Fields(0).Value());
}

QStringList Inserir(const AnyText& tabela, const AnyTexts& linhas) {
    QStringList comandos;
    for (const QString& valores : linhas) {
        comandos += u"INSERT INTO "_s + tabela + u" VALUES ("_s + valores + u')';
    }
    return comandos;
}

QStringList Comandos(const AnyText& arquivo) {
    return sys::ReadText(arquivo).split(u'\n', Qt::SkipEmptyParts);
}

QStringList LinhasDePesquisa() {
    return Comandos(TARVO_ROWS "/pesquisa.data");
}

QStringList LinhasDePecas() {
    return Comandos(TARVO_ROWS "/pecas.data");
}
