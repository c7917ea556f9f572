// The vehicle search.

#include "parts/consulta.h"
#include "search/pesquisa.h"

using namespace Qt::StringLiterals;

void frmPesquisa::Pesquisar2(const QString& ordem) {
    if (!mPesquisa2Pronta) {
        return;
    }
    grdPesquisa2->Tag = ordem;
    const qint32 fabricante = cboFabricante->SelectedItemData();
    QString onde;
    QStringList entradas;
    if (!txtVeiculo->text().trimmed().isEmpty()) {
        consulta::Acrescentar(onde, u"VEICULO.DescricaoVeiculo LIKE '"_s +
                                        consulta::Texto(txtVeiculo->text()) + u"*' "_s);
        entradas += u"a descrição “"_s + txtVeiculo->text().trimmed() + u'”';
    }
    if (fabricante != 0) {
        consulta::Acrescentar(
            onde, u"VEICULO.CodigoClienteConcorrente = "_s + QString::number(fabricante) + u' ');
        entradas += u"o fabricante "_s + cboFabricante->Text();
    }
    grdPesquisa2->SetEmptyText(consulta::NadaEncontrado(u"Nenhum veículo encontrado"_s, entradas));
    dtcPesquisa2->SetRecordSource(
        u"SELECT "
        "VEICULO.DescricaoVeiculo As Veiculo,"
        "CLIENTECONCORRENTE.DescricaoClienteConcorrente AS Fabricante,"
        "VEICULO.CodigoVeiculo AS Codigo "
        "FROM "
        "VEICULO INNER JOIN CLIENTECONCORRENTE "
        "ON VEICULO.CodigoClienteConcorrente = CLIENTECONCORRENTE.CodigoClienteConcorrente "_s +
        onde + u"ORDER BY "_s + ordem);
    dtcPesquisa2->Refresh();
}

void frmPesquisa::LimparPesquisa2() {
    grdPesquisa2->SetEmptyText(u"Digite um veículo ou escolha um fabricante."_s);
    dtcPesquisa2->SetRecordSource(
        u"SELECT "
        "VEICULO.CodigoVeiculo AS Codigo,"
        "VEICULO.DescricaoVeiculo As Veiculo,"
        "'' AS Fabricante "
        "FROM "
        "VEICULO  "
        "WHERE "
        "CodigoVeiculo = -5"_s);
}
