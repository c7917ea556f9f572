#pragma once

#include "platform/erro.h"
#include "platform/secret.h"
#include "update/internet.h"
#include "update/lista.h"
#include "update/prova.h"

#include <QHash>
#include <QObject>

#include <chrono>

class ScriptsDaAtualizacao;

// The four steps of an update, without any window: lists, downloads, files, scripts. To be carried
// out under the update lock. Events are let through on the way; nothing is ever undone, and the
// next update begins again from the old version.
class Instalacao final : public QObject {
    Q_OBJECT

public:
    // `podePerguntar`: the user may be asked for what a proxy wants to know.
    explicit Instalacao(bool podePerguntar);

    // With nobody there to interrupt: a statement of a script that takes longer ends Atualizar with
    // Erro 3059.
    void LimitarComandos(std::chrono::steady_clock::duration maior) { maiorComando_ = maior; }

    // Throws what went wrong, with the file or the line that it is about.
    void Atualizar(qint16 VersaoAtual, qint16 VersaoNova);

    // The last "EXE" of the lists; behind the end of an update. A failure is passed over.
    void IniciarProgramaInstalado() const;

    // The catalogue is as it was.
    bool NadaGravou() const;

    // Until the first file is put in place the catalogue is untouched, and the user may change his
    // mind; after that a half-done update would be worse than waiting, unless a statement of a
    // script does not come to its end, or another computer lets nothing be written.
    bool PodeInterromper() const;
    bool Espera() const { return !porQuem_.isEmpty(); }
    // Atualizar ends with Erro 18, 3059 or 3260, soon.
    void Interromper();
    bool Interrompida() const { return interrompida_; }

Q_SIGNALS:
    void PassoAberto(quint8 sPasso, qint64 maximo);
    void Avancou(quint8 sPasso, qint64 quanto);
    void PassoConcluido(quint8 sPasso);
    // Another computer, or program, stops the scripts: "CatalogoTarvo (maria), que lê o catálogo
    // neste computador". Empty: it goes on.
    void Esperando(const QString& porQuem);

private:
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
    bool ContinuarEspera(std::chrono::milliseconds esperado);
    void TerminarEspera();
    void ConferirSeInterrompida() const;
    void Desistir(const Erro& erro);
    void ExcluirRecebidos();

    void Buscar(const QString& nome, const QString& arquivo, const ProgressoDownload& progresso);
    QByteArray BuscarBytes(const QString& nome);

    void AbrirPasso(quint8 sPasso, qint64 maximo);

    bool podePerguntar_;
    bool interrompida_ = false;
    std::chrono::steady_clock::duration maiorComando_ = std::chrono::steady_clock::duration::max();
    quint8 Passo = 0;
    QString caminhoBase_;
    QString usuario_;
    QString senha_;
    const secret::WipeAtEnd<QString> semUsuario_{usuario_};
    const secret::WipeAtEnd<QString> semSenha_{senha_};
    ChavesDaAtualizacao chaves_;
    ListasDaAtualizacao listas_;
    QStringList recebidos_;            // temporary files that are there, or may be
    QHash<QString, QString> esperas_;  // where files of a folder wait for their turn
    QString ProgramaInstalado;
    QString porQuem_;                          // is waited for just now
    ScriptsDaAtualizacao* scripts_ = nullptr;  // while the fourth step runs
};
