#include "support/catalogo.h"

#include "platform/system/paths.h"
#include "session/banco.h"
#include "session/esquema.h"
#include "session/global.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace {

// Made once: deriving the key and flushing each definition to the disk takes far longer than a copy.
void PorCatalogoVazio() {
    static QByteArray modelo;
    const QString caminho = gCaminho + u"Tarvo.mdb"_s;
    if (modelo.isEmpty()) {
        CriarCatalogo(caminho, SenhaBancoDados());
        modelo = sys::ReadBytes(caminho);
        return;
    }
    QFile arquivo(sys::ToNative(caminho));
    if (!arquivo.open(QIODevice::WriteOnly) || arquivo.write(modelo) != modelo.size()) {
        qFatal("cannot write %s", qPrintable(arquivo.fileName()));
    }
}

}  // namespace

CatalogoDeTeste::CatalogoDeTeste() {
    gCaminho = pasta_.path() + u'\\';
    PorCatalogoVazio();
    AbrirBancoDados(gWS, u"gWS"_s, gDB, false);
    Executar(
        {u"UPDATE UMREGISTRO SET DataEmissao = DateSerial(2026,3,5), "
         "ComplementoDataEmissao = ' - teste'"_s});
}

CatalogoDeTeste::~CatalogoDeTeste() {
    FecharBancoDados(gWS, gDB);
}

void CatalogoDeTeste::Executar(const QStringList& comandos) {
    gWS->BeginTrans();  // one flush to the disk instead of one for each row
    for (const QString& comando : comandos) {
        gDB->Execute(comando, dao::dbFailOnError);
    }
    gWS->CommitTrans();
}

QStringList LinhasDePesquisa() {
    QStringList linhas;
    const QStringList tabelas = {u"COMPONENTE"_s, u"JOGOREPARO"_s, u"PECA"_s};
    for (qsizetype t = 0; t < tabelas.size(); ++t) {
        const QString& tabela = tabelas.at(t);
        const QString sufixo = QString::number(t);
        const std::pair<QString, QString> itens[] = {
            {u"1200"_s + sufixo, u"Válvula relé"_s},
            {u"A340"_s + sufixo, u"Anel de vedação"_s},
            {u"K560"_s + sufixo, u"Corpo da válvula"_s},
        };
        int codigo = 0;
        for (const auto& [numero, descricao] : itens) {
            linhas +=
                u"INSERT INTO %1 (Codigo%1, NumeroTarvo%1, Descricao%1) "
                "VALUES (%2, '%3', '%4')"_s.arg(tabela, QString::number(++codigo), numero,
                                                descricao);
        }
    }
    linhas +=
        u"INSERT INTO CLIENTECONCORRENTE (CodigoClienteConcorrente, "
        "DescricaoClienteConcorrente, TipoClienteConcorrente) VALUES (7, 'Bravil', 'I')"_s;
    linhas +=
        u"INSERT INTO CLIENTECONCORRENTE (CodigoClienteConcorrente, "
        "DescricaoClienteConcorrente, TipoClienteConcorrente) VALUES (9, 'Zenpar', 'C')"_s;
    linhas +=
        u"INSERT INTO REFERENCIACRUZADA (CodigoClienteConcorrente, NumeroTarvo, "
        "NumeroClienteConcorrente) VALUES (7, '12002', 'A71')"_s;
    linhas +=
        u"INSERT INTO REFERENCIACRUZADA (CodigoClienteConcorrente, NumeroTarvo, "
        "NumeroClienteConcorrente) VALUES (7, '12002', 'A72')"_s;
    linhas +=
        u"INSERT INTO REFERENCIACRUZADA (CodigoClienteConcorrente, NumeroTarvo, "
        "NumeroClienteConcorrente) VALUES (9, 'A3400', '55')"_s;
    linhas +=
        u"INSERT INTO VEICULO (CodigoVeiculo, DescricaoVeiculo, CodigoClienteConcorrente) "
        "VALUES (1, 'Bravil 1620', 7)"_s;
    linhas +=
        u"INSERT INTO VEICULO (CodigoVeiculo, DescricaoVeiculo, CodigoClienteConcorrente) "
        "VALUES (2, 'Cavalo 2040', 7)"_s;
    return linhas;
}

QStringList LinhasDePecas() {
    return {
        u"INSERT INTO FOTOPECAPESQUISA (CodigoFotoPecaPesquisa, DescricaoFotoPecaPesquisa, "
        "ArquivoFotoPecaPesquisa) VALUES (1, 'Válvulas', 'valvulas.png')"_s,
        u"INSERT INTO FOTOPECAPESQUISA (CodigoFotoPecaPesquisa, DescricaoFotoPecaPesquisa, "
        "ArquivoFotoPecaPesquisa) VALUES (2, 'Cilindros', 'cilindros.png')"_s,
        u"INSERT INTO FOTOPECAPESQUISA (CodigoFotoPecaPesquisa, DescricaoFotoPecaPesquisa, "
        "ArquivoFotoPecaPesquisa) VALUES (3, 'Molas', 'molas.png')"_s,
        u"UPDATE PECA SET CodigoFotoPecaPesquisa = 1, ArquivoFotoPeca = 'peca1.png' "
        "WHERE CodigoPeca = 1"_s,
        u"UPDATE PECA SET CodigoFotoPecaPesquisa = 1 WHERE CodigoPeca = 2"_s,
        u"INSERT INTO PECA_COMPONENTE (CodigoPeca, ItemComponente, CodigoComponente, "
        "QuantidadeComponente) VALUES (1, '   1', 3, 1)"_s,
        u"INSERT INTO PECA_COMPONENTE (CodigoPeca, ItemComponente, CodigoComponente, "
        "QuantidadeComponente) VALUES (1, '   2', 1, 4)"_s,
        u"INSERT INTO PECA_COMPONENTE (CodigoPeca, ItemComponente, CodigoComponente, "
        "QuantidadeComponente) VALUES (1, '  12a', 2, 2)"_s,
        u"INSERT INTO PECA_COMPONENTE (CodigoPeca, ItemComponente, CodigoComponente, "
        "QuantidadeComponente) VALUES (1, ' 100', 2, NULL)"_s,
        u"INSERT INTO PECA_COMPONENTE (CodigoPeca, ItemComponente, CodigoComponente, "
        "QuantidadeComponente) VALUES (2, '   1', 3, 1)"_s,
        u"INSERT INTO PECA_COMPONENTE_JOGOREPARO (CodigoPeca, ItemComponente, CodigoJogoReparo) "
        "VALUES (1, '  12a', 1)"_s,
        u"INSERT INTO PECA_COMPONENTE_JOGOREPARO (CodigoPeca, ItemComponente, CodigoJogoReparo) "
        "VALUES (1, '  12a', 2)"_s,
        u"INSERT INTO PECA_COMPONENTE_JOGOREPARO (CodigoPeca, ItemComponente, CodigoJogoReparo) "
        "VALUES (1, ' 100', 2)"_s,
        u"INSERT INTO VEICULO_PECA (CodigoVeiculo, CodigoPeca) VALUES (1, 1)"_s,
        u"INSERT INTO REFERENCIACRUZADA (CodigoClienteConcorrente, NumeroTarvo, "
        "NumeroClienteConcorrente) VALUES (7, 'A3400', 'B9')"_s,
        u"INSERT INTO REFERENCIACRUZADA (CodigoClienteConcorrente, NumeroTarvo, "
        "NumeroClienteConcorrente) VALUES (7, 'A3400', 'B2')"_s,
    };
}
