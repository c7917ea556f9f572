// The part search: five inputs become one SQL text, stamped out once per row kind.

#include "parts/consulta.h"
#include "parts/tiposdelinha.h"
#include "search/pesquisa.h"
#include "session/numeros.h"

using namespace Qt::StringLiterals;

namespace {

// What the chosen customer or competitor brings to the query of each row kind.
struct ParteDoCliente {
    QString coluna = u"'' AS NumeroClienteConcorrente"_s;
    QString juncao;
    QString condicao;
};

// A vehicle maker's numbers show at once and match by their beginning; a competitor's are looked up
// only whole, and do not show before one is typed.
ParteDoCliente LerCliente(qint32 cliente, const QString& numero) {
    ParteDoCliente parte;
    if (cliente <= 0) {
        return parte;
    }
    const QString coluna = u"REFERENCIACRUZADA1.NumeroClienteConcorrente"_s;
    const bool fabricante = QString::number(cliente).startsWith(u'1');
    const bool digitado = !numero.trimmed().isEmpty();
    parte.juncao =
        u"LEFT JOIN REFERENCIACRUZADA1 "
        "ON ?????.NumeroTarvo????? = REFERENCIACRUZADA1.NumeroTarvo "_s;
    if (fabricante || digitado) {
        parte.coluna = coluna;
    }
    if (digitado) {
        parte.condicao = fabricante
                             ? coluna + u" LIKE '"_s + consulta::NumeroDeCliente(numero) + u"*' "_s
                             : coluna + u" = '"_s + consulta::NumeroDeCliente(numero) + u"' "_s;
    }
    return parte;
}

// The template, once for each row kind that `escolha` stands for.
QString Carimbar(const QString& modelo, const QString& escolha) {
    QString sql;
    for (const TipoDeLinha& cada : TiposDeLinha) {
        if (escolha != QString::fromUtf16(cada.escolha) && escolha != u"TODOS OS TIPOS"_s) {
            continue;
        }
        QString selecao = modelo;
        selecao.replace(u"?????"_s, QString::fromUtf16(cada.tabela));
        selecao.replace(u"!!!!!"_s, QString::fromUtf16(cada.nome));
        sql = sql.isEmpty() ? selecao : sql + u"UNION ALL "_s + selecao;
    }
    return sql;
}

}  // namespace

void frmPesquisa::Pesquisar1(const QString& ordem) {
    if (!mPesquisa1Pronta) {
        return;
    }
    const ParteDoCliente cliente = LerCliente(cboNumeroClienteConcorrente->SelectedItemData(),
                                              txtNumeroClienteConcorrente->text());
    QString onde;
    QStringList entradas;
    if (!cliente.condicao.isEmpty()) {
        consulta::Acrescentar(onde, cliente.condicao);
        entradas += cboNumeroClienteConcorrente->Text() + u' ' +
                    txtNumeroClienteConcorrente->text().trimmed();
    }
    if (!txtNumeroTarvo->text().trimmed().isEmpty()) {
        consulta::Acrescentar(onde, u"?????.NumeroTarvo????? LIKE '"_s +
                                        NormalizarNumero(txtNumeroTarvo->text()) + u"*' "_s);
        entradas += u"Nº Tarvo "_s + txtNumeroTarvo->text().trimmed();
    }
    if (!txtDescricao->text().trimmed().isEmpty()) {
        consulta::Acrescentar(onde, u"?????.Descricao????? LIKE '"_s +
                                        consulta::Texto(txtDescricao->text()) + u"*' "_s);
        entradas += u"descrição “"_s + txtDescricao->text().trimmed() + u'”';
    }
    const QString modelo =
        u"SELECT "
        "?????.NumeroTarvo????? As NumeroTarvo,"
        "?????.Descricao????? AS Descricao,"_s +
        cliente.coluna +
        u","
        "'!!!!!' AS Tipo,"
        "Codigo????? AS Codigo "
        "FROM "
        "????? "_s +
        cliente.juncao + onde;
    grdPesquisa1->SetEmptyText(
        consulta::NadaEncontrado(u"Nada encontrado em "_s + cboTipo->Text().toLower(), entradas));
    dtcPesquisa1->SetRecordSource(Carimbar(modelo, cboTipo->Text().trimmed().toUpper()) +
                                  u"ORDER BY "_s + ordem);
    dtcPesquisa1->Refresh();
}

void frmPesquisa::LimparPesquisa1() {
    grdPesquisa1->SetEmptyText(u"Digite um número ou uma descrição."_s);
    dtcPesquisa1->SetRecordSource(
        u"SELECT "
        "PECA.NumeroTarvoPeca As NumeroTarvo,"
        "PECA.DescricaoPeca AS Descricao,"
        "PECA.NumeroTarvoPeca As NumeroClienteConcorrente,"
        "'' AS Tipo "
        "FROM "
        "PECA "
        "WHERE "
        "CodigoPeca = -5"_s);
}
