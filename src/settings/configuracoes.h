#pragma once

#include "look/dialogo.h"

// The settings: the automatic update check and the proxy's user and password. What it changes is
// the settings file and VerificacaoAutomatica, both only by OK.
class frmConfiguracoes final : public TelaDeDialogo {
    Q_OBJECT

public:
    static inline const QString Nome = QStringLiteral("frmConfiguracoes");

    // Shows it modally; a settings file that cannot be had is shown as an error and nothing opens.
    static void Abrir();

    frmConfiguracoes();

protected:
    void Load() override;
    void Confirmar() override;
    void Cancelar() override;

private:
    void PosicionarControles();
    void LigarEventos();
    void MarcarVerificacao(bool ligada);
    void AparaUsuario();

    forms::ClickZone* imgVerificarAuto;
    forms::LitPicture* imgXVerificarAuto;  // the tick, cut out of the lit drawing
    forms::Panel* img_VerificarAuto;       // the empty box, which the drawing holds at rest
    forms::TextBox* txtUsuario;
    forms::TextBox* txtSenha;
};
