#pragma once

#include "app/telapassageira.h"

// The splash, the first screen of a run: checks the launch word, finds the data folder, opens the
// catalogue, and gives way to the search screen. Any failure on the way shows the error box and
// ends the program.
class frmApresentacao final : public TelaDePassagem {
    Q_OBJECT

public:
    // `linhaDeComando`: the command line without the program's own name.
    explicit frmApresentacao(const QString& linhaDeComando);

    // Ends the splash and opens the search screen.
    void IniciarCatalogo();

protected:
    void Load() override;
    void Encerrar() override { IniciarCatalogo(); }
    void CloseRequested() override;

private:
    QString linhaDeComando_;
};
