#pragma once

#include "look/tela.h"
#include "platform/dao/dao.h"
#include "platform/erro.h"
#include "update/lista.h"

#include <QSet>

#include <array>
#include <vector>

// The modal screen in which an update is carried out, under the update lock: four steps, each with
// a mark and a bar. Expects the local and the server's version in ParametroFormulario, as "5|7". It
// starts by itself and closes by itself; every failure is shown and ends it, and nothing is undone:
// the next update begins again from the old version. Its sources: atualizando.cpp (the screen),
// instalacao.cpp (the four steps).
class frmAtualizando final : public Tela {
    Q_OBJECT

public:
    static const QString Nome;

    frmAtualizando();

    // Sets bar `sPasso` (1 to 4) to the part of its maximum that has been reached.
    void AtualizarProgressBar(quint8 sPasso);

    // Bytes of the second step have arrived.
    void SomarBytes(qint32 bytes);

    // Runs one line of an update script on `Banco`. A statement that fails is passed over in
    // silence: so a script can run again after a broken update. What is no fault of the statement
    // (disk, file, another computer's lock) and a program that cannot be started throw.
    void ExecutarComandoAtualizacao(dao::Database& Banco, const QString& Linha);

protected:
    void Load() override;
    void Activate() override;
    void CloseRequested() override;

private:
    void PosicionarControles();
    void Atualizar(qint16 VersaoAtual, qint16 VersaoNova);

    void Conectar();
    void BuscarListas(qint16 VersaoAtual, qint16 VersaoNova);
    void LerLista(const QString& texto);
    void BaixarArquivos();
    void BaixarArquivo(ArquivoAtualizacao& arquivo);
    void ColocarArquivos();
    void ColocarArquivo(const ArquivoAtualizacao& arquivo);
    void ExecutarScripts(qint16 VersaoAtual, qint16 VersaoNova);
    QStringList LinhasDosScripts();
    void IniciarProgramaInstalado() const;
    void EncerrarComErro(const Erro& erro);
    void ExcluirTemporarios();
    void Fechar();

    QString Buscar(const QString& nome, bool texto, const QString& arquivo);

    void AbrirPasso(quint8 sPasso, qint64 maximo);
    void FecharPasso(quint8 sPasso);
    void Avancar(quint8 sPasso, qint64 quanto);

    // Index 0 is not used: the steps count from 1.
    std::array<forms::Panel*, 5> imgPassoAtualAtualizacao{};
    std::array<forms::Panel*, 5> imgPassoConcluidoAtualizacao{};
    std::array<forms::Panel*, 5> imgBordaBarraAtualizacao{};  // its Tag: the bar's maximum
    std::array<forms::Panel*, 5> imgBarraAtualizacao{};       // its Tag: what has been reached

    bool iniciada_ = false;
    bool cancelada_ = false;
    quint8 Passo = 0;  // the step in progress, 1 to 4
    QString caminhoBase_;
    QString usuario_;
    QString senha_;
    std::vector<ArquivoAtualizacao> arquivos_;
    QSet<QString> chaves_;  // of the files named so far
    qint32 TotalBytes = 0;
    QString ProgramaInstalado;
    QString ComandoBase;
};
