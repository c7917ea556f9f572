#pragma once

#include "look/tela.h"
#include "look/tooltip.h"
#include "platform/forms/boundgrid.h"
#include "platform/forms/controls.h"
#include "platform/forms/datasource.h"
#include "platform/system/process.h"

#include <QTimer>

#include <array>
#include <memory>
#include <optional>

// The home screen, the only one that lives from start to exit: three panels (parts, vehicles,
// pictures) opened by three painted buttons. Its sources: pesquisa.cpp (life, events), layout.cpp
// (controls and their places), selecao.cpp (combo lists), pesquisa_pecas.cpp and
// pesquisa_veiculos.cpp (the searches), galeria.cpp (the strip of pictures), resultado.cpp (from a
// chosen row to the part views), atualizacao.cpp (whether the catalogue is to be updated).
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

    // Starts a check for a newer catalogue, by the clock (`true`) or because the user asked, unless
    // one is running. Its answer comes later; so does every failure.
    void IniciarVerificacao(bool Automatica);

    // Re-reads the emission line and the text of the update button's tip; with `true` also the date
    // of the last check.
    void CarregarDadosVerificacao(bool sAtualizarUltimaDataVerificacao);

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

    // A row of the gallery's table.
    struct Figura {
        QString codigo;
        QString descricao;
        QString arquivo;
    };
    struct Referencia;

    void CarregarFiguras();
    void ExibirFiguras(qint32 primeira);
    void SelecionarFigura(qint32 linha);
    void AoRolarFiguras();
    void AoTeclarNasFiguras(int tecla);
    void LigarGaleria();
    const Figura& LinhaDaGaleria(qint32 linha) const;  // from 1; Erro 9 outside the table

    // Opens the chosen row of tab 0 (parts), 1 (vehicles) or 2 (pictures) in the part result
    // screen.
    void AbrirResultado(int aba);
    std::optional<Referencia> ReferenciaDaPeca() const;
    std::optional<Referencia> ReferenciaDoVeiculo() const;
    std::optional<Referencia> ReferenciaDaFigura() const;

    // A timer with a free text: what it watches.
    struct Temporizador : QTimer {
        using QTimer::QTimer;
        QString Tag;
    };
    struct Verificacao;

    void LigarVerificacao();
    void AoTiqueLento();
    void AoTiqueDoProcesso();
    bool DecidirAtualizacao(Verificacao& verificacao);
    bool PerguntarSeInstala(const Verificacao& verificacao) const;
    bool BloquearParaInstalar();
    void Instalar(const Verificacao& verificacao);
    void EncerrarVerificacao(const Verificacao& verificacao);
    void AbandonarVerificacao();
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

    forms::Panel* pctPesquisaFiguras = nullptr;
    forms::ScrollBar* sclPesquisaFiguras = nullptr;
    std::array<forms::Picture*, 4> imgFigura{};
    std::array<forms::Label*, 4> lblDescricaoFigura{};
    forms::Panel* imgFiguraSelecionada = nullptr;

    QList<Figura> mFiguras;
    qint32 mPrimeiraFigura = 1;
    qint32 mFiguraSelecionada = 1;
    qint32 mTotalFiguras = 0;

    forms::Label* lblEmissao = nullptr;
    forms::Panel* pctBarraAtualizacao = nullptr;           // its Tag: "1" in the second pass
    forms::ClickZone* pctVerificarAtualizacoes = nullptr;  // its Tag: the tip, until it is shown
    std::unique_ptr<cToolTip> mToolTip;

    bool mPesquisa1Pronta = false;
    bool mPesquisa2Pronta = false;
    double DataUltimaVerificacaoTela = 1.0;  // date serial; 1.0: no check was ever made
    Temporizador tmrVerificarAtualizacoes{this};
    // Its Tag while a check runs: "1" and "1" or "0" for an automatic one or not, and the path of
    // the result file; "0", number and text of the error when the check could not be started.
    Temporizador tmrVerificaProcessoVerificacao{this};
    bool VerificacaoEmAndamento = false;
    bool BancoBloqueado = false;  // this screen holds the update lock
    sys::ProcessId ProcessoVerificacao = 0;
    quint8 ContadorTempo = 0;  // ticks since the status was last read
};
