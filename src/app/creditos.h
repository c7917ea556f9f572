#pragma once

#include "app/telapassageira.h"

// The credits, the last screen of a run; its unload ends the process. The catalogue is closed by
// the time it shows.
class frmCreditos final : public TelaDePassagem {
    Q_OBJECT

public:
    frmCreditos();

protected:
    void Unloading() override;
    void Encerrar() override { Unload(); }
};
