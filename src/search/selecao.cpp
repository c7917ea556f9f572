// The combo lists of the search screen and the customer chosen in them.

#include "platform/convert.h"
#include "search/pesquisa.h"
#include "session/banco.h"
#include "session/global.h"

using namespace Qt::StringLiterals;

namespace {

// The digit in front of the code tells vehicle makers from all others without asking the database
// again.
qint32 ComDigitoDoTipo(const QVariant& tipo, const QVariant& codigo) {
    const bool fabricante = convert::ToTextOrEmpty(tipo) == u"I"_s;
    return convert::ToInt32((fabricante ? u"1"_s : u"2"_s) + convert::ToText(codigo));
}

}  // namespace

// The last two lists come from one pass; all keep the order of filling.
void frmPesquisa::PreencherCombos() {
    for (const QString& tipo :
         {u"Componentes"_s, u"Jogos de Reparo"_s, u"Peças"_s, u"TODOS OS TIPOS"_s}) {
        cboTipo->AddItem(tipo);
    }
    cboTipo->SetListIndex(cboTipo->ListCount() - 1);

    cboNumeroClienteConcorrente->AddItem(QString(), SemCliente);
    const auto clientes = gDB->OpenRecordset(
        u"SELECT "
        "CodigoClienteConcorrente, "
        "DescricaoClienteConcorrente, "
        "TipoClienteConcorrente "
        "FROM "
        "CLIENTECONCORRENTE "
        "ORDER BY "
        "DescricaoClienteConcorrente"_s,
        dao::dbOpenForwardOnly);
    for (; !clientes->Eof(); clientes->MoveNext()) {
        const QVariant codigo = clientes->Fields(u"CodigoClienteConcorrente"_s).Value();
        const QString descricao =
            convert::ToTextOrEmpty(clientes->Fields(u"DescricaoClienteConcorrente"_s).Value());
        const qint32 dados =
            ComDigitoDoTipo(clientes->Fields(u"TipoClienteConcorrente"_s).Value(), codigo);
        cboNumeroClienteConcorrente->AddItem(u"Nº "_s + descricao, dados);
        if (QString::number(dados).startsWith(u'1')) {
            cboFabricante->AddItem(descricao, convert::ToInt32(codigo));
        }
    }
    cboFabricante->AddItem(u"TODOS OS FABRICANTES"_s, 0);
    cboNumeroClienteConcorrente->SetListIndex(0);
    cboFabricante->SetListIndex(cboFabricante->ListCount() - 1);
}

qint32 frmPesquisa::CodigoClienteSelecionado() const {
    const qint32 dados = cboNumeroClienteConcorrente->SelectedItemData();
    if (dados < 1) {
        return SemCliente;
    }
    return convert::ToInt32(QString::number(dados).mid(1));
}

// The write comes first because the query's join answers for the customer that stands in the
// database.
void frmPesquisa::AoEscolherCliente() {
    GravarClienteConcorrente(CodigoClienteSelecionado());
    Pesquisar1(u"3"_s);
}
