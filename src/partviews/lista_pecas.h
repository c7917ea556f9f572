#pragma once

#include "look/tela.h"
#include "platform/forms/boundgrid.h"
#include "platform/forms/controls.h"
#include "platform/forms/datasource.h"
#include "session/passagens.h"

#include <array>

// The components of the part in gCodigoPeca, one row per item, with four boxes to jump in the list,
// a filter by kit, and the kits of the item under the cursor. Its sources: lista_pecas.cpp (life,
// events, seeks), lista_layout.cpp (controls), lista_consultas.cpp (queries and kit panel).
class frmListaPecas final : public Tela {
    Q_OBJECT

public:
    static inline const QString Nome = QStringLiteral("frmListaPecas");

    frmListaPecas();

    // Moves the cursor to the first row of an item, as stored; without one it stays.
    void IrPara(const QString& item);

protected:
    void Load() override;
    void Activate() override;
    // The part result waits behind this one, hidden.
    void CloseRequested() override { VoltarAoResultado(*this); }

private:
    // A box above a column: the column's sort key and how its text becomes the seek's criterion.
    struct Caixa {
        forms::TextBox* caixa;
        QString ordem;
        QString coluna;
        QString (*valor)(const QString& texto);
    };

    void CriarControles();
    void CriarPainelJogos();
    void PosicionarControles();
    void LigarEventos();
    void LigarCaixa(const Caixa& caixa);
    void PreencherJogos();

    // `Ordem` is a column's position; `ItemProcurado` a stored item number to go to, or empty.
    void CarregarListaPecas(const QString& Ordem, const QString& ItemProcurado, bool Refrescar);
    void CarregarJogosReparo();
    QString OrdemAtual() const;
    QString ItemAtual() const;
    bool FazParteJogoReparo() const;
    QString SelecaoAtual() const;
    bool ListaVazia() const;

    void AoMudarItem(const dao::Bookmark& anterior);
    void AoEscolherJogo();
    void AoEscolherCliente();
    void AbrirFigura();

    bool mCarregado = false;

    forms::Label* lblInf = nullptr;
    forms::ComboList* cboMostraNaListaPecas = nullptr;
    forms::ComboList* cboNumeroClienteConcorrenteComponente = nullptr;
    std::array<Caixa, 4> caixas_{};
    forms::BoundGrid* grdListaPecas = nullptr;
    forms::DataSource* dtcListaPecas = nullptr;
    forms::Panel* pctJogosReparo = nullptr;
    forms::Label* lblNumeroClienteConcorrente = nullptr;
    forms::BoundGrid* grdJogosReparoComponente = nullptr;
    forms::DataSource* dtcJogosReparoComponente = nullptr;
};
