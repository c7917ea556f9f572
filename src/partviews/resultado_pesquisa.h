#pragma once

#include "look/tela.h"
#include "platform/forms/boundgrid.h"
#include "platform/forms/controls.h"
#include "platform/forms/datasource.h"
#include "session/passagens.h"

// The parts behind the row that was chosen in a search, with the vehicles and the photo of the one
// under the cursor. Takes its reference from ParametroFormulario at load.
class frmResultadoPesquisa final : public Tela {
    Q_OBJECT

public:
    static inline const QString Nome = QStringLiteral("frmResultadoPesquisa");

    frmResultadoPesquisa();

protected:
    void Load() override;
    void Activate() override;
    // The search screen waits behind this one, hidden.
    void CloseRequested() override { VoltarAPesquisa(*this); }

private:
    void CriarControles();
    void LigarEventos();

    void AtualizarResultado(bool Refrescar);
    void CarregarVeiculos();
    void CarregarFoto();
    void AoMudarPeca(const dao::Bookmark& anterior);
    void AoEscolherCliente();

    // Whether the part under the cursor has what the next screen shows; tells the user if not.
    bool PodeAvancar(bool (*possui)(qint32), const QString& recusa);
    // Part and customer for the next screen.
    void EntregarPeca();
    void AbrirLista();
    void AbrirFigura();

    QString mTipoItem;
    qint32 mCodigoItem = 0;
    bool mCarregado = false;
    QString mSelecao;  // selection string for the figure screen

    forms::Label* lblInf = nullptr;
    forms::ComboList* cboNumeroClienteConcorrentePeca = nullptr;
    forms::BoundGrid* grdResultadoPesquisaPeca = nullptr;
    forms::DataSource* dtcResultadoPesquisaPeca = nullptr;
    forms::Picture* imgFotoPeca = nullptr;
    forms::BoundGrid* grdVeiculosPeca = nullptr;
    forms::DataSource* dtcVeiculosPeca = nullptr;
};
