// The queries of the component list: its rows, its kit filter, and the kits of one item.

#include "parts/item.h"
#include "parts/tabelas.h"
#include "partviews/lista_pecas.h"
#include "platform/convert.h"
#include "session/global.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace {

constexpr qint32 TodosOsComponentes = -5;

}  // namespace

bool frmListaPecas::ListaVazia() const {
    const dao::Recordset* lista = dtcListaPecas->GetRecordset();
    return !lista || lista->Eof();
}

QString frmListaPecas::OrdemAtual() const {
    return grdListaPecas->Tag.isEmpty() ? u"1"_s : grdListaPecas->Tag;
}

QString frmListaPecas::ItemAtual() const {
    return convert::ToText(dtcListaPecas->GetRecordset()->Fields(u"ItemComponente"_s).Value());
}

bool frmListaPecas::FazParteJogoReparo() const {
    return convert::ToText(
               dtcListaPecas->GetRecordset()->Fields(u"FazParteJogoReparo"_s).Value()) == u"S";
}

// The joins multiply an item by its kits and by its cross references; the grouping folds them back
// to one row per item. With a kit filter the WHERE turns the left join into an inner one.
void frmListaPecas::CarregarListaPecas(const QString& Ordem, const QString& ItemProcurado,
                                       bool Refrescar) {
    if (!mCarregado) {
        return;
    }
    grdListaPecas->Tag = Ordem;
    const qint32 jogo = cboMostraNaListaPecas->SelectedItemData();
    grdListaPecas->SetEmptyText(jogo >= 1
                                    ? u"Nenhum componente dessa Peça faz parte do Jogo de Reparo."_s
                                    : u"Essa Peça não possui Lista de Componentes."_s);
    QString sql =
        u"SELECT "
        "PECA_COMPONENTE.ItemComponente,"
        "Min(PECA_COMPONENTE.QuantidadeComponente) AS QuantidadeComponente,"
        "Min(COMPONENTE.DescricaoComponente) AS DescricaoComponente,"
        "Min(COMPONENTE.NumeroTarvoComponente) AS NumeroTarvoComponente,"
        "Min(REFERENCIACRUZADA1.NumeroClienteConcorrente) AS NumeroClienteConcorrente,"
        "IIF(IsNull(Min(PECA_COMPONENTE_JOGOREPARO.CodigoJogoReparo)),'N','S') "
        "AS FazParteJogoReparo "
        "FROM "
        "("_s +
        tabelas::ItensComJogos +
        u") "
        "LEFT JOIN REFERENCIACRUZADA1 "
        "ON COMPONENTE.NumeroTarvoComponente = REFERENCIACRUZADA1.NumeroTarvo "
        "WHERE "
        "PECA_COMPONENTE.CodigoPeca = "_s +
        QString::number(gCodigoPeca) + u' ';
    if (jogo >= 1) {
        sql +=
            u"AND PECA_COMPONENTE_JOGOREPARO.CodigoJogoReparo = "_s + QString::number(jogo) + u' ';
    }
    sql +=
        u"GROUP BY "
        "PECA_COMPONENTE.ItemComponente "
        "ORDER BY "_s +
        Ordem;
    dtcListaPecas->SetRecordSource(sql);
    if (Refrescar) {
        dtcListaPecas->Refresh();
    }
    if (!ItemProcurado.isEmpty()) {
        dtcListaPecas->GetRecordset()->FindFirst(CriterioDoItem(ItemProcurado));
    }
}

// The panel keeps its old rows while it is hidden.
void frmListaPecas::CarregarJogosReparo() {
    if (!FazParteJogoReparo()) {
        pctJogosReparo->hide();
        return;
    }
    dtcJogosReparoComponente->SetRecordSource(
        u"SELECT "
        "JOGOREPARO.DescricaoJogoReparo,"
        "JOGOREPARO.NumeroTarvoJogoReparo,"
        "REFERENCIACRUZADA1.NumeroClienteConcorrente,"
        "PECA_COMPONENTE_JOGOREPARO.CodigoJogoReparo "
        "FROM "
        "("_s +
        tabelas::JogosDaPeca +
        u") "
        "LEFT JOIN REFERENCIACRUZADA1 "
        "ON JOGOREPARO.NumeroTarvoJogoReparo = REFERENCIACRUZADA1.NumeroTarvo "
        "WHERE "
        "PECA_COMPONENTE_JOGOREPARO.CodigoPeca = "_s +
        QString::number(gCodigoPeca) +
        u" "
        "AND "
        "PECA_COMPONENTE_JOGOREPARO."_s +
        CriterioDoItem(ItemAtual()) +
        u" "
        "ORDER BY 1"_s);
    dtcJogosReparoComponente->Refresh();
    pctJogosReparo->show();
}

// Kits of one description are told apart by their numbers; the others need none.
void frmListaPecas::PreencherJogos() {
    const auto jogos = gDB->OpenRecordset(
        u"SELECT DISTINCT "
        "PECA_COMPONENTE_JOGOREPARO.CodigoJogoReparo, "
        "JOGOREPARO.DescricaoJogoReparo, "
        "JOGOREPARO.NumeroTarvoJogoReparo "
        "FROM "_s +
            tabelas::JogosDaPeca +
            u" "
            "WHERE "
            "PECA_COMPONENTE_JOGOREPARO.CodigoPeca = "_s +
            QString::number(gCodigoPeca) +
            u" "
            "ORDER BY "
            "2"_s,
        dao::dbOpenForwardOnly);
    struct Jogo {
        qint32 codigo;
        QString descricao;
        QString numero;
    };
    QList<Jogo> lidos;
    QHash<QString, int> vezes;
    for (; !jogos->Eof(); jogos->MoveNext()) {
        lidos += {convert::ToInt32(jogos->Fields(0).Value()),
                  convert::ToTextOrEmpty(jogos->Fields(1).Value()),
                  convert::ToTextOrEmpty(jogos->Fields(2).Value())};
        ++vezes[lidos.last().descricao];
    }
    const QString vao(8, u' ');
    for (const Jogo& jogo : lidos) {
        cboMostraNaListaPecas->AddItem(
            vezes.value(jogo.descricao) > 1 ? jogo.descricao + vao + jogo.numero : jogo.descricao,
            jogo.codigo);
    }
    cboMostraNaListaPecas->AddItem(u"TODOS OS COMPONENTES"_s, TodosOsComponentes);
    cboMostraNaListaPecas->SetListIndex(cboMostraNaListaPecas->ListCount() - 1);
}
