#pragma once

#include "platform/dao/dao.h"

#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

// The last step of an update: the lines of its scripts, on a connection of their own with write
// access, and the new version.
//
// Lines are committed in groups, since each commit waits for the disk: a group ends after a quarter
// of a second, before a program starts and at the end. A death in the middle, or of a statement
// that the user ends, costs the last group, which the next update repeats. A group never ends while
// UMREGISTRO has no row, or one that cannot be read: such a catalogue could neither be updated nor
// say what it is. What has not been committed is rolled back with the object.
class ScriptsDaAtualizacao {
public:
    using Relogio = std::chrono::steady_clock;
    using Espera = std::function<bool(std::chrono::milliseconds)>;

    // `continuar` is called again and again while a statement runs; false ends it with Erro 3059.
    // `esperar` likewise, every few milliseconds, while other computers' locks are waited for, with
    // how long they have been; false ends it with Erro 3260. Without it that is after 5 s.
    explicit ScriptsDaAtualizacao(std::function<bool()> continuar = {}, Espera esperar = {});
    ScriptsDaAtualizacao(const ScriptsDaAtualizacao&) = delete;
    ScriptsDaAtualizacao& operator=(const ScriptsDaAtualizacao&) = delete;

    // Runs one line. A statement that fails is passed over in silence: so a script can run again
    // after a broken update. What is no fault of the statement (disk, file, memory, another
    // computer's lock, an interruption) and a program that cannot be started throw.
    void ExecutarComandoAtualizacao(const QString& Linha);

    // Commits what ran. Erro -112, and the last group goes with this object, if UMREGISTRO has no
    // row that can be read.
    void FecharGrupo();

    // Records the new version. Erro -112 if the catalogue does not take it.
    void GravarVersao(qint16 VersaoAtual, qint16 VersaoNova);

    // Nothing runs behind it. Lets events through.
    void Fechar();

    // Who reads the catalogue just now, so that no group can be committed.
    std::optional<sys::LockHolder> Leitor() const { return banco_->Reader(); }

    // For how long the statement under way has been running; zero between two.
    Relogio::duration ComandoEmCurso() const;

private:
    void Executar(const QString& comando);
    void Gravar(int opcoes = 0);
    bool RegistroServe() const;
    bool RegistroLegivel() const;
    std::optional<qint16> VersaoGravada() const;

    std::unique_ptr<dao::Workspace> sessao_;
    std::unique_ptr<dao::Database> banco_;
    QString ComandoBase;
    bool eraLegivel_ = true;  // the row of UMREGISTRO, before the scripts
    bool aberto_ = false;     // a group
    Relogio::time_point inicioDoGrupo_;
    Relogio::time_point inicioDoComando_;
};

inline constexpr int RegistroPerdido = -112;
