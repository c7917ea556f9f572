#include "parts/tabelas.h"
#include "platform/erro.h"
#include "printing/impressao.h"
#include "session/erros.h"
#include "session/global.h"

using namespace Qt::StringLiterals;

namespace {

// Page units: a table that would begin further down takes a new page.
constexpr int UltimoInicio = 2300;

}  // namespace

// The kits that the last column of the list names. They follow the list on its page where there is
// room, and have no title of their own.
void frmImpressao::ImprimirJogosReparo() {
    static constexpr Coluna Colunas[] = {
        {200, u"Código"},
        {500, u"Descrição do Jogo de Reparo"},
        {1600, u"Nº Tarvo"},
    };
    try {
        const auto linhas = gDB->OpenRecordset(
            u"SELECT DISTINCT "
            "PECA_COMPONENTE_JOGOREPARO.CodigoJogoReparo,"
            "JOGOREPARO.DescricaoJogoReparo,"
            "JOGOREPARO.NumeroTarvoJogoReparo "
            "FROM "_s +
                tabelas::JogosDaPeca +
                u" "
                "WHERE "
                "PECA_COMPONENTE_JOGOREPARO.CodigoPeca = "_s +
                QString::number(gCodigoPeca) +
                u" "
                "ORDER BY "
                "PECA_COMPONENTE_JOGOREPARO.CodigoJogoReparo"_s,
            dao::dbOpenForwardOnly);
        bool primeira = true;
        for (; !linhas->Eof(); linhas->MoveNext()) {
            if (primeira || PassouDe(FimDaPagina)) {
                primeira = false;
                if (PassouDe(UltimoInicio)) {
                    ImprimirCabecalho(u"Lista de Componentes"_s);
                }
                ImprimirTitulos(Colunas);
            }
            Descer(EspacoEntreLinhas);
            ImprimirLinha(Colunas, {linhas->Fields(u"CodigoJogoReparo"_s).Value(),
                                    linhas->Fields(u"DescricaoJogoReparo"_s).Value(),
                                    linhas->Fields(u"NumeroTarvoJogoReparo"_s).Value()});
        }
    } catch (const Erro& erro) {
        MostrarErro(erro.Number(), erro.Description());
    }
}
