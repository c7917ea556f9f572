#include "session/banco.h"

#include "platform/dao/errors.h"
#include "platform/erro.h"
#include "platform/secret.h"
#include "platform/system/paths.h"
#include "session/erros.h"
#include "session/global.h"

#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <chrono>
#include <iterator>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto PacienciaDoRegistro = 5s;

// The update lock, while it is held.
std::unique_ptr<dao::Workspace> mWsLockTrans;
std::unique_ptr<dao::Database> mDbLockTrans;

bool TemRegistro(const QString& sql) {
    return !gDB->OpenRecordset(sql, dao::dbOpenForwardOnly)->Eof();
}

// A catalogue of the engine that this one took the place of.
bool EhCatalogoAntigo(const QString& caminho) {
    const QByteArray marca = "\0\1\0\0Standard Jet DB"_ba;
    QFile arquivo(sys::ToNative(caminho));
    return arquivo.open(QIODevice::ReadOnly) && arquivo.read(marca.size()) == marca;
}

}  // namespace

void AbrirBancoDados(std::unique_ptr<dao::Workspace>& workspace, const QString& nomeWorkspace,
                     std::unique_ptr<dao::Database>& banco, bool somenteLeitura) {
    workspace = dao::DBEngine::Instance().CreateWorkspace(nomeWorkspace, u"admin"_s, QString(),
                                                          dao::dbUseJet);
    QString senha = SenhaBancoDados();
    const secret::WipeAtEnd semSenha(senha);
    QString conexao = ";pwd="_L1 + senha;
    const secret::WipeAtEnd semConexao(conexao);
    const QString caminho = gCaminho + "Tarvo.mdb"_L1;
    try {
        banco = workspace->OpenDatabase(caminho, false, somenteLeitura, conexao);
    } catch (const Erro& erro) {
        if (erro.Number() == int(dao::Failure::NotACatalogue) && EhCatalogoAntigo(caminho)) {
            throw Erro(
                erro.Number(),
                erro.Description() +
                    u"\nÉ um catálogo antigo: o tarvo-importar faz dele um catálogo de hoje."_s);
        }
        throw;
    }
}

void AbrirSessao() {
    AbrirBancoDados(gWS, u"gWS"_s, gDB, false);
    RenovarSessao();
}

void RenovarSessao() {
    gDB->Shadow({u"CODIGOCLIENTECONCORRENTE"_s, u"REFERENCIACRUZADA1"_s});
}

void FecharBancoDados(std::unique_ptr<dao::Workspace>& workspace,
                      std::unique_ptr<dao::Database>& banco) {
    // Dropping either one closes it without an error, the workspace with its open transaction.
    banco.reset();
    workspace.reset();
}

void FecharGravado(std::unique_ptr<dao::Workspace>& workspace,
                   std::unique_ptr<dao::Database>& banco) {
    dao::DBEngine::Instance().Idle(dao::dbRefreshCache);
    FecharBancoDados(workspace, banco);
    QCoreApplication::processEvents();
    dao::DBEngine::Instance().Idle(dao::dbRefreshCache);
    QCoreApplication::processEvents();
}

// Stands nowhere as a whole, so that looking through the program's texts does not show it: a table
// of the codes would. It has its full length at once because growing would leave pieces behind.
QString SenhaBancoDados() {
    QString senha(13, QChar());
    senha[0] = QChar(76);
    senha[1] = QChar(94);
    senha[2] = QChar(53);
    senha[3] = QChar(81);
    senha[4] = QChar(105);
    senha[5] = QChar(118);
    senha[6] = QChar(65);
    senha[7] = QChar(55);
    senha[8] = QChar(89);
    senha[9] = QChar(102);
    senha[10] = QChar(46);
    senha[11] = QChar(116);
    senha[12] = QChar(120);
    return senha;
}

bool BloquearBancoDados(bool bloquear, int* motivo) {
    if (!bloquear) {
        mWsLockTrans->CommitTrans();
        FecharBancoDados(mWsLockTrans, mDbLockTrans);
        return true;
    }
    AbrirBancoDados(mWsLockTrans, u"mWsLockTrans"_s, mDbLockTrans, false);
    mWsLockTrans->BeginTrans();
    try {
        mDbLockTrans->Execute(u"UPDATE CONTROLETRAN SET a = a"_s,
                              dao::dbFailOnError | dao::dbSeeChanges);
        return true;
    } catch (const Erro& erro) {
        FecharBancoDados(mWsLockTrans, mDbLockTrans);
        if (motivo) {
            *motivo = erro.Number();
        }
        return false;
    }
}

void GravarUltimaVerificacao(const QString& dataHora, const QString& flagErro) {
    QStringList campos;
    if (!dataHora.isEmpty()) {
        campos.append("DataUltimaVerificacao="_L1 + dataHora);
    }
    if (!flagErro.isEmpty()) {
        campos.append("FlagErroUltimaVerificacao="_L1 + flagErro);
    }
    if (campos.isEmpty()) {
        return;
    }
    std::unique_ptr<dao::Workspace> workspace;
    std::unique_ptr<dao::Database> banco;
    AbrirBancoDados(workspace, u"sWsNotReadOnly"_s, banco, false);
    // The window is painted meanwhile.
    banco->SetPatience([](std::chrono::milliseconds esperado) {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        return esperado < PacienciaDoRegistro;
    });
    workspace->BeginTrans();
    banco->Execute("UPDATE UMREGISTRO SET "_L1 + campos.join(u','), dao::dbFailOnError);
    workspace->CommitTrans(dao::dbForceOSFlush);
    FecharGravado(workspace, banco);
}

void GravarClienteConcorrente(qint32 codigo) {
    try {
        gDB->Execute(
            "UPDATE CODIGOCLIENTECONCORRENTE SET "
            "CodigoClienteConcorrente = "_L1 +
            QString::number(codigo));
    } catch (const Erro& erro) {
        MostrarErro(erro.Number(), erro.Description());
    }
}

bool CodigoEmUso(const QString& tipo, qint32 codigo) {
    struct Consulta {
        QLatin1String tipo;
        QLatin1String sql;
    };
    static constexpr Consulta Consultas[] = {
        {"COM"_L1,
         "SELECT CodigoComponente "
         "FROM PECA_COMPONENTE "
         "WHERE CodigoComponente = "_L1},
        {"JRE"_L1,
         "SELECT CodigoJogoReparo "
         "FROM PECA_COMPONENTE_JOGOREPARO "
         "WHERE CodigoJogoReparo = "_L1},
        {"VEI"_L1,
         "SELECT CodigoVeiculo "
         "FROM VEICULO_PECA "
         "WHERE CodigoVeiculo = "_L1},
        {"FPC"_L1,
         "SELECT CodigoFotoPecaPesquisa "
         "FROM PECA "
         "WHERE CodigoFotoPecaPesquisa = "_L1},
    };
    if (tipo == "PCA"_L1) {
        return true;
    }
    const auto* consulta = std::find_if(std::begin(Consultas), std::end(Consultas),
                                        [&tipo](const Consulta& c) { return c.tipo == tipo; });
    // Another kind leaves the text empty, which the engine rejects.
    return TemRegistro(consulta == std::end(Consultas) ? QString()
                                                       : consulta->sql + QString::number(codigo));
}

bool PossuiFiguraDetalhada(qint32 codigoPeca) {
    const auto peca = gDB->OpenRecordset(
        "SELECT CodigoFigura "
        "FROM PECA "
        "WHERE CodigoPeca = "_L1 +
            QString::number(codigoPeca),
        dao::dbOpenForwardOnly);
    return !peca->Eof() && !peca->Fields(u"CodigoFigura"_s).Value().isNull();
}

bool PossuiListaComponentes(qint32 codigoPeca) {
    return TemRegistro(
        "SELECT ItemComponente "
        "FROM PECA_COMPONENTE "
        "WHERE CodigoPeca = "_L1 +
        QString::number(codigoPeca));
}
