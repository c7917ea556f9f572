#pragma once

#include "look/dialogo.h"
#include "platform/erro.h"
#include "update/instalacao.h"

#include <array>

// The modal screen in which an update is carried out, under the update lock: the four steps of an
// Instalacao, each with a mark and a bar. Expects the local and the server's version in
// ParametroFormulario, as "5|7". It starts by itself and closes by itself; every failure is shown
// and ends it.
class frmAtualizando final : public TelaDeDialogo {
    Q_OBJECT

public:
    static const QString Nome;

    frmAtualizando();

    // Sets bar `sPasso` (1 to 4) to the part of its maximum that has been reached.
    void AtualizarProgressBar(quint8 sPasso);

    // The bar's width in design pixels, at most 216. A maximum of 0 is reached at once.
    static int LarguraDaBarra(qint64 valor, qint64 maximo);

protected:
    void Load() override;
    void PrimeiraAtivacao() override;
    void CloseRequested() override;

private:
    void PosicionarControles();
    void Atualizar(qint16 VersaoAtual, qint16 VersaoNova);
    void MostrarFalha(const Erro& erro);

    void AbrirPasso(quint8 sPasso, qint64 maximo);
    void FecharPasso(quint8 sPasso);
    void Avancar(quint8 sPasso, qint64 quanto);
    void MostrarEspera(const QString& porQuem);

    // Index 0 is not used: the steps count from 1.
    std::array<forms::Panel*, 5> imgPassoAtualAtualizacao{};
    std::array<forms::Panel*, 5> imgPassoConcluidoAtualizacao{};
    std::array<forms::Panel*, 5> imgBordaBarraAtualizacao{};
    std::array<forms::Panel*, 5> imgBarraAtualizacao{};
    forms::Label* lblEspera = nullptr;
    struct Progresso {
        qint64 maximo = 0;
        qint64 valor = 0;
    };
    std::array<Progresso, 5> barras_{};

    Instalacao instalacao_{true};
};
