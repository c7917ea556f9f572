#include "parts/tabelas.h"
#include "platform/convert.h"
#include "printing/impressao.h"
#include "session/erros.h"
#include "session/global.h"

using namespace Qt::StringLiterals;

namespace {

// The codes of the current row's item, which may have several rows; afterwards the row behind them
// is current. An item without a kit has one row, with Null.
QString JogosDoItem(dao::Recordset& linhas) {
    QString jogos;
    if (linhas.Fields(u"CodigoJogoReparo"_s).Value().isNull()) {
        linhas.MoveNext();
        return jogos;
    }
    const auto item = [&linhas] {
        return convert::ToTextOrEmpty(linhas.Fields(u"ItemComponente"_s).Value());
    };
    const QString primeiro = item();
    for (; !linhas.Eof() && item() == primeiro; linhas.MoveNext()) {
        if (!jogos.isEmpty()) {
            jogos += u", "_s;
        }
        jogos += convert::ToTextOrEmpty(linhas.Fields(u"CodigoJogoReparo"_s).Value());
    }
    return jogos;
}

}  // namespace

// A row that crosses the end of the page is printed where it stands; the next one takes a new page.
void frmImpressao::ImprimirListaComponentes() {
    static constexpr Coluna Colunas[] = {
        {200, u"Item"},
        {400, u"Qtd."},
        {600, u"Descrição do Componente"},
        {1600, u"Nº Tarvo"},
        {2200, u"Jogo(s) de Reparo"},
    };
    try {
        const auto linhas = gDB->OpenRecordset(
            u"SELECT "
            "PECA_COMPONENTE.ItemComponente,"
            "PECA_COMPONENTE.QuantidadeComponente,"
            "COMPONENTE.DescricaoComponente,"
            "COMPONENTE.NumeroTarvoComponente,"
            "PECA_COMPONENTE_JOGOREPARO.CodigoJogoReparo "
            "FROM "_s +
                tabelas::ItensComJogos +
                u" "
                "WHERE "
                "PECA_COMPONENTE.CodigoPeca = "_s +
                QString::number(gCodigoPeca) +
                u" "
                "ORDER BY "
                "PECA_COMPONENTE.ItemComponente,"
                "PECA_COMPONENTE_JOGOREPARO.CodigoJogoReparo"_s,
            dao::dbOpenForwardOnly);
        bool primeira = true;
        while (!linhas->Eof()) {
            if (primeira || PassouDe(FimDaPagina)) {
                primeira = false;
                ImprimirCabecalho(u"Lista de Componentes"_s);
                ImprimirTitulos(Colunas);
            }
            Descer(EspacoEntreLinhas);
            QVariantList valores = {
                linhas->Fields(u"ItemComponente"_s).Value(),
                linhas->Fields(u"QuantidadeComponente"_s).Value(),
                linhas->Fields(u"DescricaoComponente"_s).Value(),
                linhas->Fields(u"NumeroTarvoComponente"_s).Value(),
            };
            valores += JogosDoItem(*linhas);
            ImprimirLinha(Colunas, valores);
        }
    } catch (const Erro& erro) {
        MostrarErro(erro.Number(), erro.Description());
        return;  // the kits belong to the list
    }
    ImprimirJogosReparo();
}
