// The part search: five inputs become one SQL text, stamped out once per row kind.

#include "search/consulta.h"
#include "search/pesquisa.h"
#include "session/modulo.h"

using namespace Qt::StringLiterals;

void frmPesquisa::Pesquisar1(const QString& ordem) {
    if (!mPesquisa1Pronta) {
        return;
    }
    QString onde;
    QString juncao;
    QString colunaCliente = u"'' AS NumeroClienteConcorrente"_s;
    const QString colunaJuntada = u"REFERENCIACRUZADA1.NumeroClienteConcorrente"_s;

    const qint32 cliente = cboNumeroClienteConcorrente->SelectedItemData();
    if (cliente > 0) {
        juncao =
            u"LEFT JOIN REFERENCIACRUZADA1 "
            "ON ?????.NumeroTarvo????? = REFERENCIACRUZADA1.NumeroTarvo "_s;
        const bool fabricante = QString::number(cliente).startsWith(u'1');
        const QString numero = txtNumeroClienteConcorrente->text();
        const bool digitado = !numero.trimmed().isEmpty();
        // A vehicle maker's numbers show at once and match by their beginning; a competitor's are
        // looked up only whole, and do not show before one is typed.
        if (fabricante || digitado) {
            colunaCliente = colunaJuntada;
        }
        if (digitado) {
            consulta::Acrescentar(
                onde,
                fabricante
                    ? colunaJuntada + u" LIKE '"_s + consulta::NumeroDeCliente(numero) + u"*' "_s
                    : colunaJuntada + u" = '"_s + consulta::NumeroDeCliente(numero) + u"' "_s);
        }
    }
    if (!txtNumeroTarvo->text().trimmed().isEmpty()) {
        consulta::Acrescentar(onde, u"?????.NumeroTarvo????? LIKE '"_s +
                                        NormalizarNumero(txtNumeroTarvo->text()) + u"*' "_s);
    }
    if (!txtDescricao->text().trimmed().isEmpty()) {
        consulta::Acrescentar(onde, u"?????.Descricao????? LIKE '"_s +
                                        consulta::Texto(txtDescricao->text()) + u"*' "_s);
    }

    const QString modelo =
        u"SELECT "
        "?????.NumeroTarvo????? As NumeroTarvo,"
        "?????.Descricao????? AS Descricao,"_s +
        colunaCliente +
        u","
        "'!!!!!' AS Tipo,"
        "Codigo????? AS Codigo "
        "FROM "
        "????? "_s +
        juncao + onde;

    struct {
        const char16_t* escolha;
        const char16_t* tabela;
        const char16_t* tipo;
    } const especies[] = {
        {u"COMPONENTES", u"COMPONENTE", u"Componente"},
        {u"JOGOS DE REPARO", u"JOGOREPARO", u"Jogo de Reparo"},
        {u"PEÇAS", u"PECA", u"Peça"},
    };
    const QString tipo = cboTipo->Text().trimmed().toUpper();
    QString sql;
    for (const auto& especie : especies) {
        if (tipo != QString::fromUtf16(especie.escolha) && tipo != u"TODOS OS TIPOS"_s) {
            continue;
        }
        QString selecao = modelo;
        selecao.replace(u"?????"_s, QString::fromUtf16(especie.tabela));
        selecao.replace(u"!!!!!"_s, QString::fromUtf16(especie.tipo));
        sql = sql.isEmpty() ? selecao : sql + u"UNION ALL "_s + selecao;
    }

    dtcPesquisa1->SetRecordSource(sql + u"ORDER BY "_s + ordem);
    dtcPesquisa1->Refresh();
}

void frmPesquisa::LimparPesquisa1() {
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
