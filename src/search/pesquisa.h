#pragma once

#include "look/tela.h"
#include "look/tooltip.h"
#include "platform/forms/boundgrid.h"
#include "platform/forms/controls.h"
#include "platform/forms/datasource.h"
#include "search/galeria.h"
#include "update/novidades.h"

#include <array>
#include <memory>
#include <optional>

// The home screen, the only one that lives from start to exit: three panels (parts, vehicles,
// pictures) opened by three painted buttons. Its sources: pesquisa.cpp (life, events), layout.cpp
// (controls and their places), selecao.cpp (combo lists), pesquisa_pecas.cpp and
// pesquisa_veiculos.cpp (the searches), resultado.cpp (from a chosen row to the part views).
class frmPesquisa final : public Tela {
    Q_OBJECT

public:
    frmPesquisa();
    ~frmPesquisa() override;

    // Builds and runs the part search; `ordem` is the text behind "ORDER BY ". Does nothing while
    // the form loads.
    void Pesquisar1(const QString& ordem);
    // The same for the vehicle search.
    void Pesquisar2(const QString& ordem);

protected:
    void Load() override;
    void Activate() override;
    void Unloading() override;

private:
    void CriarFundo();
    void CriarPainelPecas();
    void CriarPainelVeiculos();
    void CriarPainelFiguras();
    void PosicionarControles();
    void LigarEventos();
    void LigarLuz();

    void PreencherCombos();
    void LimparPesquisa1();
    void LimparPesquisa2();

    // The customer or competitor chosen on this screen, -5 for none.
    qint32 CodigoClienteSelecionado() const;
    void AoEscolherCliente();

    struct Referencia;
    // Opens the chosen row of tab 0 (parts), 1 (vehicles) or 2 (pictures) in the part result
    // screen.
    void AbrirResultado(int aba);
    std::optional<Referencia> ReferenciaDaPeca() const;
    std::optional<Referencia> ReferenciaDoVeiculo() const;
    std::optional<Referencia> ReferenciaDaFigura() const;

    void LigarNovidades();
    void MostrarDicaDaVerificacao();

    void MostrarPainel(int indice, QWidget* foco);
    void EsconderPaineis();

    std::array<forms::Panel*, 3> pctTelaPesquisa{};
    forms::TextBox* txtNumeroTarvo = nullptr;
    forms::TextBox* txtDescricao = nullptr;
    forms::TextBox* txtNumeroClienteConcorrente = nullptr;
    forms::ComboList* cboNumeroClienteConcorrente = nullptr;
    forms::ComboList* cboTipo = nullptr;
    forms::BoundGrid* grdPesquisa1 = nullptr;
    forms::DataSource* dtcPesquisa1 = nullptr;

    forms::TextBox* txtVeiculo = nullptr;
    forms::ComboList* cboFabricante = nullptr;
    forms::BoundGrid* grdPesquisa2 = nullptr;
    forms::DataSource* dtcPesquisa2 = nullptr;

    Galeria* galeria_ = nullptr;

    forms::Label* lblEmissao = nullptr;
    forms::Panel* pctBarraAtualizacao = nullptr;
    forms::ClickZone* pctVerificarAtualizacoes = nullptr;  // its Tag: the tip, until it is shown
    std::unique_ptr<cToolTip> mToolTip;

    bool mPesquisa1Pronta = false;
    bool mPesquisa2Pronta = false;
    Novidades novidades_{this};
};
