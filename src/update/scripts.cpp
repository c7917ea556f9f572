#include "update/scripts.h"

#include "platform/convert.h"
#include "platform/dao/errors.h"
#include "session/banco.h"
#include "session/datas.h"
#include "session/global.h"
#include "session/processos.h"
#include "update/comando.h"

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto DuracaoDoGrupo = 250ms;

// Failures of the disk, the file or the network, of another computer that holds the file, and the
// user's will: the statement would have worked, so passing over it would lose it for good. One that
// the memory is too small for takes the lines of its group with it.
bool EhFalhaDoMeio(const Erro& erro) {
    using dao::Failure;
    static constexpr std::array falhas = {Failure::DiskFull, Failure::InOut,  Failure::ReadOnly,
                                          Failure::Damaged,  Failure::Locked, Failure::Interrupted,
                                          Failure::Resources};
    return std::any_of(falhas.begin(), falhas.end(),
                       [&erro](Failure falha) { return erro.Number() == static_cast<int>(falha); });
}

}  // namespace

ScriptsDaAtualizacao::ScriptsDaAtualizacao(std::function<bool()> continuar, Espera esperar) {
    AbrirBancoDados(sessao_, u"sWsNotReadOnly"_s, banco_, false);
    eraLegivel_ = RegistroLegivel();
    banco_->SetIdle(std::move(continuar));
    banco_->SetPatience(std::move(esperar));
}

void ScriptsDaAtualizacao::ExecutarComandoAtualizacao(const QString& Linha) {
    const ComandoAtualizacao comando = LerComandoAtualizacao(ComandoBase, Linha);
    switch (comando.tipo) {
        case ComandoAtualizacao::Tipo::Nada:
            break;
        case ComandoAtualizacao::Tipo::Programa:
            FecharGrupo();  // the program may want to look at the catalogue, and to write
            ExecutarEAguardar(comando.texto, 1);
            break;
        case ComandoAtualizacao::Tipo::Reinicio:
            ReiniciarPrograma = true;
            break;
        case ComandoAtualizacao::Tipo::Sql:
            Executar(comando.texto);
            break;
    }
    if (aberto_ && Relogio::now() - inicioDoGrupo_ >= DuracaoDoGrupo && RegistroServe()) {
        FecharGrupo();
    }
}

void ScriptsDaAtualizacao::Executar(const QString& comando) {
    inicioDoComando_ = Relogio::now();
    if (!aberto_) {
        sessao_->BeginTrans();
        aberto_ = true;
        inicioDoGrupo_ = inicioDoComando_;
    }
    try {
        banco_->Execute(comando, dao::dbFailOnError);
    } catch (const Erro& erro) {
        if (EhFalhaDoMeio(erro)) {
            inicioDoComando_ = {};
            throw;
        }
    }
    inicioDoComando_ = {};
}

void ScriptsDaAtualizacao::FecharGrupo() {
    if (!aberto_) {
        return;
    }
    if (!RegistroServe()) {
        throw Erro(RegistroPerdido,
                   u"Os scripts da atualização apagaram ou estragaram o registro da versão "
                   "(UMREGISTRO). O que fizeram desde então foi desfeito"_s);
    }
    Gravar();
}

void ScriptsDaAtualizacao::Gravar(int opcoes) {
    sessao_->CommitTrans(opcoes);
    aberto_ = false;
}

void ScriptsDaAtualizacao::GravarVersao(qint16 VersaoAtual, qint16 VersaoNova) {
    FecharGrupo();
    Executar(
        u"UPDATE UMREGISTRO SET "
        "Versao                    = %1,"
        "VersaoAnterior            = %2,"
        "DataUltimaVerificacao     = %3,"
        "FlagErroUltimaVerificacao = 0"_s.arg(QString::number(VersaoNova),
                                              QString::number(VersaoAtual), DataHoraSql(1.0)));
    if (VersaoGravada() != VersaoNova) {
        throw Erro(RegistroPerdido,
                   u"Os scripts da atualização mudaram a tabela UMREGISTRO, e a versão %1 não pôde "
                   "ser registrada"_s.arg(VersaoNova));
    }
    Gravar(dao::dbForceOSFlush);
}

void ScriptsDaAtualizacao::Fechar() {
    FecharGravado(sessao_, banco_);
}

ScriptsDaAtualizacao::Relogio::duration ScriptsDaAtualizacao::ComandoEmCurso() const {
    return inicioDoComando_ == Relogio::time_point() ? Relogio::duration::zero()
                                                     : Relogio::now() - inicioDoComando_;
}

// A row that was out of order before is no fault of these scripts, which may be what mends it.
bool ScriptsDaAtualizacao::RegistroServe() const {
    return eraLegivel_ ? RegistroLegivel() : VersaoGravada().has_value();
}

// Whether the next start finds in it what it reads there.
bool ScriptsDaAtualizacao::RegistroLegivel() const {
    try {
        const auto registro = banco_->OpenRecordset(
            u"SELECT Versao, VersaoAnterior, DataEmissao, DataUltimaVerificacao, "
            "FlagErroUltimaVerificacao, ComplementoDataEmissao, UrlAtualizacao FROM UMREGISTRO"_s,
            dao::dbOpenForwardOnly);
        const auto valor = [&](int coluna) { return registro->Fields(coluna).Value(); };
        convert::ToInt16(valor(0));
        convert::ToInt16(valor(1));
        FormatarData(convert::ToDouble(valor(2)));
        if (const QVariant ultima = valor(3); !convert::IsNull(ultima)) {
            FormatarData(convert::ToDouble(ultima));
        }
        if (const QVariant falhou = valor(4); !convert::IsNull(falhou)) {
            convert::ToInt64(falhou);
        }
        return true;
    } catch (const Erro&) {
        return false;  // no row, no number, or a column or the table itself is gone
    }
}

std::optional<qint16> ScriptsDaAtualizacao::VersaoGravada() const {
    try {
        const auto registro =
            banco_->OpenRecordset(u"SELECT Versao FROM UMREGISTRO"_s, dao::dbOpenForwardOnly);
        return convert::ToInt16(registro->Fields(0).Value());
    } catch (const Erro&) {
        return std::nullopt;  // no row, no number, or the table itself is gone
    }
}
