#pragma once

#include "look/dialogo.h"

// The tour of the maker: five pictures of the data folder, leafed through by three buttons. The
// pages carry all their text, and each says where its buttons stand. Every load begins at page 1.
class frmConhecaTarvo final : public TelaDeDialogo {
    Q_OBJECT

public:
    static inline const QString Nome = QStringLiteral("frmConhecaTarvo");

    frmConhecaTarvo();

protected:
    void Load() override;
    void Cancelar() override;

private:
    void CriarControles();
    void LigarEventos();
    void PosicionarControles();

    void MostrarPagina();
    void CarregarPagina();
    void Folhear(int passo);  // pages; does nothing where the page has no button for it

    quint8 mPagina = 1;

    forms::Picture* pctPagina = nullptr;
    forms::ClickZone* imgAvancar = nullptr;
    forms::ClickZone* imgVoltar = nullptr;
    forms::ClickZone* imgFechar = nullptr;
};
