#pragma once

#include "figure/item_figura.h"
#include "look/tela.h"
#include "platform/dao/dao.h"
#include "session/passagens.h"

#include <QTimer>

#include <array>
#include <memory>
#include <vector>

// The exploded figure of the part in gCodigoPeca: one picture with a number on it for each row of
// the figure. The mouse on a number shows its component and lights its relatives, a click goes to
// it in the component list. Each activation takes a selection string from ParametroFormulario and
// lets its numbers blink until the mouse touches one.
//
// A part's figure lives until the user goes back to the parts or to the search; the list only hides
// it. Its sources: figura_detalhada.cpp (life, the ways in and out), figura_layout.cpp (controls),
// figura_carga.cpp (picture and numbers), figura_itens.cpp (selection, blinking, mouse).
class frmFiguraDetalhada final : public Tela {
    Q_OBJECT

public:
    static inline const QString Nome = QStringLiteral("frmFiguraDetalhada");

    frmFiguraDetalhada();

protected:
    // Erro 6 for a number's code beyond 16 bits, 94 for a number without a place or an item.
    void Load() override;
    void Activate() override;
    void Unloading() override;
    // The part result waits behind this one, hidden.
    void CloseRequested() override { VoltarAoResultado(*this); }

private:
    static constexpr qint16 SemItem = -1;

    struct ItemPiscando {
        ItemFigura* item;
        Cor cor;
    };

    void CriarControles();
    void PosicionarControles();
    void LigarEventos();

    void AbrirComponentes();
    void CarregarFigura();
    // The name of the picture's file.
    QString CriarItens(dao::Recordset& linhas);
    void CriarItem(const dao::Recordset& linha);
    void CriarPicture(const QString& arquivo);
    void MostrarBotoesCobertos();
    void NomearItens();

    // `Itens`: items, each with a comma behind it. `JogoReparo`: a kit's code. `Tipo`: what the
    // message calls a selection that has no number. Each may be empty.
    void SelecionarItens(const QString& Itens, const QString& JogoReparo, const QString& Tipo);
    Cor CorNaSelecao(const ItemFigura& item, const QString& Itens, const QString& JogoReparo);
    bool MostrarComponente(const QString& item);
    void Piscar();
    void AoMoverSobreItem(qint16 Index);
    void AoClicarNoItem();
    void AcenderParentes(const ItemFigura& atual);
    void MoverMarcador(const ItemFigura& item);
    QString RotulosCortados() const;  // the whole text of each label that is cut, by lines
    void LimparItemAtual();
    void ApagarItens();
    void PintarRotulos(Cor cor);

    void AbrirLista();
    void Imprimir();

    bool mIgnorarAtivacao = false;                 // the next activation brings no selection
    qint16 mItemAtual = SemItem;                   // the number under the mouse
    qint16 mQuantidadeItens = 0;                   // the last index of lblItem
    std::unique_ptr<dao::Recordset> mComponentes;  // one row for each item and kit, by item
    std::vector<ItemPiscando> mItensPiscando;
    QTimer Timer1{this};

    forms::Label* lblInf = nullptr;
    forms::Label* lblComponente = nullptr;
    forms::Label* lblNumeroTarvo = nullptr;
    forms::Label* lblObservacao = nullptr;
    // Element 0 of each is a template that stays hidden; imgFigura(0) is the frame that gives the
    // picture its corner.
    std::array<forms::Picture*, 2> imgFigura{};
    std::array<MarcadorItem*, 2> shpSelecaoItem{};
    std::vector<ItemFigura*> lblItem;
};
