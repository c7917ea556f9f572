#pragma once

#include "update/verificador.h"

#include <QObject>
#include <QTimer>

#include <memory>

class Conversa;

// Whether the catalogue is to be updated. The server is asked by a process of its own, which leaves
// its answer in a file; when there is something newer and the user agrees, the same check runs
// again under the update lock, since another computer may have updated the shared catalogue
// meanwhile, and then frmAtualizando does the work. Belongs to the search screen and ends with it.
class Novidades final : public QObject {
    Q_OBJECT

public:
    explicit Novidades(QObject* tela);
    ~Novidades() override;

    // Starts a check, by the clock (`true`) or because the user asked, unless one is running; then
    // the user at least gets to see what its verifier asks. Its answer comes later; so does every
    // failure.
    void IniciarVerificacao(bool Automatica);

    // Reads the emission line and the state of the last check, and announces both; with `true` it
    // also keeps the date of the last check.
    void CarregarDadosVerificacao(bool sAtualizarUltimaDataVerificacao);

    // The screen goes while a check may be running: nobody will read its answer, and nobody else
    // could update before the lock is let go.
    void Abandonar();

Q_SIGNALS:
    void EmissaoLida(const QString& texto);
    void DicaLida(const QString& texto);  // what the update button says to who points at it
    // A script of the update asked for it: the screen is to be unloaded.
    void ReinicioPedido();

private:
    struct Verificacao;
    class Viva;

    void AoTiqueLento();
    bool EhDevida() const;
    void AoTiqueDoProcesso();
    bool DecidirAtualizacao(Verificacao& verificacao);
    bool PerguntarSeInstala(const Verificacao& verificacao) const;
    bool BloquearParaInstalar();
    void Instalar(const Verificacao& verificacao);
    void EncerrarVerificacao(const Verificacao& verificacao);
    void SoltarBanco();

    // The check under way.
    struct EmCurso {
        bool automatica = false;
        int erro = 0;  // why the verifier could not be started
        QString descricao;
    };

    double DataUltimaVerificacaoTela;  // date serial; 1.0: no check was ever made
    QTimer tmrVerificarAtualizacoes;
    QTimer tmrVerificaProcessoVerificacao;
    EmCurso emCurso_;
    Verificador verificador_;
    std::unique_ptr<Conversa> conversa_;  // with the verifier, until the end of the update
    bool VerificacaoEmAndamento = false;
    bool BancoBloqueado = false;  // the update lock is ours
    bool segundaPassagem_ = false;
    bool abandonada_ = false;
    quint8 ContadorTempo = 0;  // ticks since the status was last read
};
