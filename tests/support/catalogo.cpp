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

QStringList LinhasDePesquisa() {
    return Inserir("COMPONENTE", {"1, '12000', 'Válvula relé'", "2, 'A3400', 'Anel de vedação'",
                                  "3, 'K5600', 'Corpo da válvula'"}) +
           Inserir("JOGOREPARO", {"1, '12001', 'Válvula relé'", "2, 'A3401', 'Anel de vedação'",
                                  "3, 'K5601', 'Corpo da válvula'"}) +
           Inserir("PECA", {"1, '12002', 'Válvula relé', NULL, NULL, NULL",
                            "2, 'A3402', 'Anel de vedação', NULL, NULL, NULL",
                            "3, 'K5602', 'Corpo da válvula', NULL, NULL, NULL"}) +
           Inserir("CLIENTECONCORRENTE", {"7, 'Bravil', 'I'", "9, 'Zenpar', 'C'"}) +
           Inserir("REFERENCIACRUZADA",
                   {"7, '12002', 'A71'", "7, '12002', 'A72'", "9, 'A3400', '55'"}) +
           Inserir("VEICULO", {"1, 'Bravil 1620', 7", "2, 'Cavalo 2040', 7"});
}

QStringList LinhasDePecas() {
    return Inserir("FOTOPECAPESQUISA",
                   {"1, 'Válvulas', 'valvulas.png'", "2, 'Cilindros', 'cilindros.png'",
                    "3, 'Molas', 'molas.png'"}) +
           List("UPDATE PECA SET CodigoFotoPecaPesquisa = 1 WHERE CodigoPeca < 3",
                "UPDATE PECA SET ArquivoFotoPeca = 'peca1.png' WHERE CodigoPeca = 1") +
           Inserir("PECA_COMPONENTE", {"1, '   1', 3, 1", "1, '   2', 1, 4", "1, '  12a', 2, 2",
                                       "1, ' 100', 2, NULL", "2, '   1', 3, 1"}) +
           Inserir("PECA_COMPONENTE_JOGOREPARO",
                   {"1, '  12a', 1", "1, '  12a', 2", "1, ' 100', 2"}) +
           Inserir("VEICULO_PECA", {"1, 1"}) +
           Inserir("REFERENCIACRUZADA", {"7, 'A3400', 'B9'", "7, 'A3400', 'B2'"});
}
