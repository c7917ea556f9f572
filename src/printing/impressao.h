#pragma once

#include "look/dialogo.h"
#include "platform/forms/controls.h"
#include "platform/printer/printdialog.h"
#include "platform/printer/printer.h"

#include <array>
#include <memory>
#include <span>

// The dialog between the print buttons and the paper, and the pages themselves, which carry the
// state of one job. Shown modal, with the part in gCodigoPeca and the first ticks in
// ParametroFormulario: "FD:1LC:0" (figure), "FD:0LC:1" (component list).
//
// Its sources: impressao.cpp (dialog and job), pagina.cpp (what all pages share), and one for each
// kind of page. A page unit is 1/360 inch; all constants of the pages are in it.
class frmImpressao final : public TelaDeDialogo {
    Q_OBJECT

public:
    static inline const QString Nome = QStringLiteral("frmImpressao");

    frmImpressao();

    // Whether a job is under way. The dialog must stay until its end.
    static bool Imprimindo();

protected:
    void Load() override;
    void Confirmar() override { Imprimir(); }
    void Cancelar() override;
    void CloseRequested() override;

private:
    // A tick box. The Tag of its zone is the state, "0" or "1".
    struct Opcao {
        QString marcador;  // in ParametroFormulario
        forms::ClickZone* zona;
        QWidget* marca;
        bool (*possui)(qint32 codigoPeca);
        QString recusa;  // the box when the part does not have it
    };

    // A column of a table on paper, by its left edge.
    struct Coluna {
        int esquerda;
        const char16_t* titulo;
    };

    // Page units.
    static constexpr int MargemEsquerda = 200;
    static constexpr int EspacoEntreLinhas = 20;
    static constexpr int FimDaPagina = 2400;  // further down no row of a table begins

    void CriarControles();
    Opcao CriarOpcao(const QString& marcador, const QString& zona, const QString& descricao,
                     bool (*possui)(qint32), const QString& recusa);
    void PosicionarControles();
    void LigarEventos();
    static bool Marcada(const Opcao& opcao);
    static void Marcar(const Opcao& opcao, const QString& estado);
    void AlternarOpcao(const Opcao& opcao);

    void Imprimir();
    void PrepararImpressora();
    // Asks when the paper is too low for the ticked pages; whether to print.
    bool AceitarPapel(bool figura, bool lista) const;

    // What the pages share; distances and limits are page units. All of it throws what the printer
    // and the database throw.
    void ImprimirCabecalho(const QString& Titulo);
    QString LinhaDaPeca() const;
    void Descer(int distancia);
    void ImprimirTitulos(std::span<const Coluna> colunas);
    void ImprimirLinha(std::span<const Coluna> colunas, const QVariantList& valores);
    bool PassouDe(int limite) const;

    // A failure of these is shown and ends the one in which it happened, not the job.
    void ImprimirFigura();
    void ImprimirListaComponentes();
    void ImprimirJogosReparo();

    bool imprimindo_ = false;  // a job lets events through: no second one, no leaving
    double mEscala = 0;        // printer pixels in a page unit
    QString mCabecalho;        // part line; empty: the job has no page yet
    std::unique_ptr<printer::Printer> impressora_;

    std::array<Opcao, 2> opcoes_{};
    forms::Label* lblFonte = nullptr;
    forms::Picture* imgFigura = nullptr;
    printer::PrintDialog cdgImpressoras;
};
