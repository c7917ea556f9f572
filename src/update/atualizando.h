#pragma once

#include "look/dialogo.h"
#include "platform/erro.h"
#include "update/internet.h"
#include "update/lista.h"
#include "update/prova.h"

#include <QHash>

#include <array>

class ScriptsDaAtualizacao;

// The modal screen in which an update is carried out, under the update lock: four steps, each with
// a mark and a bar. Expects the local and the server's version in ParametroFormulario, as "5|7". It
// starts by itself and closes by itself; every failure is shown and ends it, and nothing is undone:
// the next update begins again from the old version. Its sources: atualizando.cpp (the screen),
// instalacao.cpp (the four steps).
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

    void Conectar();
    void BuscarListas(qint16 VersaoAtual, qint16 VersaoNova);
    QString BuscarLista(int versao);
    void BaixarArquivos();
    void BaixarArquivo(ArquivoAtualizacao& arquivo);
    void ReceberConteudo(ArquivoAtualizacao& arquivo);
    QString PastaDeEspera(const QString& nome);
    void ColocarArquivos();
    void ColocarArquivo(const ArquivoAtualizacao& arquivo);
    void ExecutarScripts(qint16 VersaoAtual, qint16 VersaoNova);
    void ExecutarLinhas(ScriptsDaAtualizacao& scripts, const ArquivoAtualizacao& script);
    bool ContinuarComando();
    void IniciarProgramaInstalado() const;
    void ConferirSeCancelada() const;
    void EncerrarComErro(const Erro& erro);
    void ExcluirRecebidos();
    void Fechar();

    void Buscar(const QString& nome, const QString& arquivo, const ProgressoDownload& progresso);
    QByteArray BuscarBytes(const QString& nome);

    void AbrirPasso(quint8 sPasso, qint64 maximo);
    void FecharPasso(quint8 sPasso);
    void Avancar(quint8 sPasso, qint64 quanto);

    // Index 0 is not used: the steps count from 1.
    std::array<forms::Panel*, 5> imgPassoAtualAtualizacao{};
    std::array<forms::Panel*, 5> imgPassoConcluidoAtualizacao{};
    std::array<forms::Panel*, 5> imgBordaBarraAtualizacao{};
    std::array<forms::Panel*, 5> imgBarraAtualizacao{};
    struct Progresso {
        qint64 maximo = 0;
        qint64 valor = 0;
    };
    std::array<Progresso, 5> barras_{};

    bool cancelada_ = false;
    bool perguntando_ = false;
    quint8 Passo = 0;  // the step in progress, 1 to 4
    QString caminhoBase_;
    QString usuario_;
    QString senha_;
    ChavesDaAtualizacao chaves_;
    ListasDaAtualizacao listas_;
    QStringList recebidos_;            // temporary files that are there, or may be
    QHash<QString, QString> esperas_;  // where files of a folder wait for their turn
    QString ProgramaInstalado;
    ScriptsDaAtualizacao* scripts_ = nullptr;  // while the fourth step runs
};
