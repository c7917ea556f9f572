#pragma once

#include "platform/system/process.h"
#include "update/falhas.h"

#include <QDate>
#include <QString>

class Conversa;

// One run of the program that asks the server for the newest version: a process of its own, which
// leaves its answer in a file.
class Verificador {
public:
    struct Resposta {
        qint16 local = 0;
        qint16 servidor = 0;
        QDate assinada;  // the day of the publisher's signature; invalid where nothing is signed

        bool HaNovas() const { return servidor > local; }
    };

    // `automatica`: nobody may be asked for anything, and there need be no conversation. Throws
    // what sys::Start does.
    void Iniciar(bool automatica, const Conversa* conversa);
    bool EmCurso() const;
    // To be asked behind the end. Throws VerificadorFalhou and what the verifier says, or the error
    // of an answer that is none.
    Resposta Ler() const;
    // How the process itself says that it ended; without an answer a failure.
    Desfecho Fim() const;
    void ExcluirResposta() const;

private:
    QString arquivo_;
    sys::ProcessId ProcessoVerificacao = 0;
};

inline constexpr int VerificadorFalhou = -2;
