// The four steps of an update, in an order that is fixed: all downloads, then all files, then all
// scripts in the order of the lists, then the new version. So a version is never recorded before
// the last line of its scripts has run, and until the first file is put in place nothing has
// changed.

#include "platform/convert.h"
#include "platform/dao/errors.h"
#include "platform/erro.h"
#include "platform/forms/application.h"
#include "platform/forms/msgbox.h"
#include "platform/secret.h"
#include "platform/system/output.h"
#include "platform/system/process.h"
#include "session/arquivos.h"
#include "session/banco.h"
#include "session/datas.h"
#include "session/erros.h"
#include "session/global.h"
#include "session/processos.h"
#include "settings/arquivo.h"
#include "update/atualizando.h"
#include "update/comando.h"
#include "update/endereco.h"
#include "update/internet.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1String FimDeLinha("\r\n");

bool EhScript(const ArquivoAtualizacao& arquivo) {
    return arquivo.Tipo == "SDB"_L1;
}

bool EhPrograma(const ArquivoAtualizacao& arquivo) {
    return arquivo.Tipo == "EXE"_L1;
}

// Failures of the disk, the file or the network, and of another computer that holds the file: the
// statement would have worked, so passing over it would lose it for good.
bool EhFalhaDoMeio(const Erro& erro) {
    using dao::Failure;
    static constexpr std::array falhas = {Failure::DiskFull, Failure::InOut, Failure::ReadOnly,
                                          Failure::Damaged, Failure::Locked};
    return std::any_of(falhas.begin(), falhas.end(),
                       [&erro](Failure falha) { return erro.Number() == static_cast<int>(falha); });
}

bool EhDiscoCheio(const Erro& erro) {
    return erro.Number() == Erro::DiskFull ||
           erro.Number() == static_cast<int>(dao::Failure::DiskFull) ||
           // Out of the composite text of a request.
           erro.Description().contains(u";%1;"_s.arg(int(Erro::DiskFull)));
}

// In this program and on disk folder levels are separated by a backslash, in an address by a slash.
QString NoServidor(const QString& nome) {
    return QString(nome).replace(u'\\', u'/');
}

QString NaPasta(const QString& nome) {
    return QString(nome).replace(u'/', u'\\');
}

void AtualizarCache() {
    dao::DBEngine::Instance().Idle(dao::dbRefreshCache);
    forms::DoEvents();
}

}  // namespace

void frmAtualizando::Atualizar(qint16 VersaoAtual, qint16 VersaoNova) {
    try {
        Passo = 1;
        Conectar();
        BuscarListas(VersaoAtual, VersaoNova);
        BaixarArquivos();
        ColocarArquivos();
        ExecutarScripts(VersaoAtual, VersaoNova);
        forms::MsgBox(u"Atualização concluída com sucesso."_s, forms::vbInformation,
                      TituloCatalogo);
        IniciarProgramaInstalado();
    } catch (const Erro& erro) {
        EncerrarComErro(erro);
    }
    Fechar();
}

void frmAtualizando::Conectar() {
    const auto registro =
        gDB->OpenRecordset(u"SELECT UrlAtualizacao FROM UMREGISTRO"_s, dao::dbOpenForwardOnly);
    const EnderecoServidor endereco =
        LerEndereco(convert::ToTextOrEmpty(registro->Fields(u"UrlAtualizacao"_s).Value()));
    registro->Close();
    caminhoBase_ = endereco.caminhoBase;
    HttpConectar(endereco.servidor);
    LerConfiguracao(u"USUARIO_SENHA"_s, usuario_, senha_);
}

QString frmAtualizando::Buscar(const QString& nome, bool texto, const QString& arquivo) {
    return HttpExecutar(u"D"_s, true, caminhoBase_ + NoServidor(nome), texto, arquivo, QString(),
                        QString(), usuario_, senha_);
}

void frmAtualizando::BuscarListas(qint16 VersaoAtual, qint16 VersaoNova) {
    // One more than there are lists: the bar is full only when the step is done.
    AbrirPasso(1, int(VersaoNova) - VersaoAtual + 1);
    QStringList listas;
    for (int versao = VersaoAtual + 1; versao <= VersaoNova; ++versao) {
        listas += Buscar(u"ListVersao%1.txt"_s.arg(versao), true, QString());
        Avancar(1, 1);
        forms::DoEvents();
    }
    for (const QString& lista : listas) {
        LerLista(lista);
    }
    FecharPasso(1);
}

// Of two lines that name the same file, in whatever lists, the first one counts.
void frmAtualizando::LerLista(const QString& texto) {
    for (const QString& linha : texto.split(FimDeLinha)) {
        if (linha.trimmed().isEmpty()) {
            continue;
        }
        if (const QString chave = ChaveDaLinha(linha); !chaves_.contains(chave)) {
            arquivos_.push_back(LerLinhaDaLista(linha));
            TotalBytes = convert::Narrow<qint32>(qint64(TotalBytes) + arquivos_.back().Tamanho);
            chaves_.insert(chave);
        }
        forms::DoEventsInTime();
    }
}

void frmAtualizando::BaixarArquivos() {
    AbrirPasso(2, TotalBytes);
    PassoDownload = u"P2"_s;
    for (ArquivoAtualizacao& arquivo : arquivos_) {
        BaixarArquivo(arquivo);
        forms::DoEvents();
    }
    PassoDownload.clear();
    FecharPasso(2);
    HttpDesconectar();
}

void frmAtualizando::BaixarArquivo(ArquivoAtualizacao& arquivo) {
    if (EhScript(arquivo)) {
        arquivo.Conteudo = Buscar(arquivo.Nome, true, QString());
        return;
    }
    arquivo.Conteudo = NomeArquivoTemporario();
    Buscar(arquivo.Nome, false, arquivo.Conteudo);
    // Before any file takes another one's place, all of them are whole and on the disk.
    sys::Flush(arquivo.Conteudo);
    if (EhPrograma(arquivo)) {
        sys::MakeExecutable(arquivo.Conteudo);
        ProgramaInstalado = gCaminho + arquivo.Nome;
    }
}

void frmAtualizando::ColocarArquivos() {
    AbrirPasso(3, qint64(arquivos_.size()));
    for (const ArquivoAtualizacao& arquivo : arquivos_) {
        if (!EhScript(arquivo)) {
            ColocarArquivo(arquivo);
        }
        Avancar(3, 1);
        forms::DoEvents();
    }
    FecharPasso(3);
}

// In one go instead of deleting first: at no moment is the file missing.
void frmAtualizando::ColocarArquivo(const ArquivoAtualizacao& arquivo) {
    const QString nome = NaPasta(arquivo.Nome);
    CriarDiretorios(gCaminho, nome, true);
    sys::Replace(arquivo.Conteudo, gCaminho + nome);
    sys::Flush(gCaminho + nome.left(nome.lastIndexOf(u'\\') + 1));
}

QStringList frmAtualizando::LinhasDosScripts() {
    QStringList linhas;
    for (const ArquivoAtualizacao& arquivo : arquivos_) {
        if (EhScript(arquivo)) {
            linhas += arquivo.Conteudo.split(FimDeLinha);
        }
    }
    arquivos_.clear();
    return linhas;
}

void frmAtualizando::ExecutarScripts(qint16 VersaoAtual, qint16 VersaoNova) {
    const QStringList linhas = LinhasDosScripts();
    AbrirPasso(4, linhas.isEmpty() ? 0 : linhas.size() + 1);
    AtualizarProgressBar(4);
    std::unique_ptr<dao::Workspace> workspace;
    std::unique_ptr<dao::Database> banco;
    AbrirBancoDados(workspace, u"sWsNotReadOnly"_s, banco, false);
    for (const QString& linha : linhas) {
        ExecutarComandoAtualizacao(*banco, linha);
        Avancar(4, 1);
        forms::DoEventsInTime();
    }
    workspace->BeginTrans();
    ExecutarComandoAtualizacao(
        *banco,
        u"E:UPDATE UMREGISTRO SET "
        "Versao                    = %1,"
        "VersaoAnterior            = %2,"
        "DataUltimaVerificacao     = %3,"
        "FlagErroUltimaVerificacao = 0"_s.arg(QString::number(VersaoNova),
                                              QString::number(VersaoAtual), DataHoraSql(1.0)));
    workspace->CommitTrans(dao::dbForceOSFlush);
    AtualizarCache();
    FecharBancoDados(workspace, banco);
    forms::DoEvents();
    AtualizarCache();
    FecharPasso(4);
}

void frmAtualizando::ExecutarComandoAtualizacao(dao::Database& Banco, const QString& Linha) {
    const ComandoAtualizacao comando = LerComandoAtualizacao(ComandoBase, Linha);
    switch (comando.tipo) {
        case ComandoAtualizacao::Tipo::Nada:
            return;
        case ComandoAtualizacao::Tipo::Programa:
            ExecutarEAguardar(comando.texto, 1);
            return;
        case ComandoAtualizacao::Tipo::Reinicio:
            ReiniciarPrograma = true;
            return;
        case ComandoAtualizacao::Tipo::Sql:
            break;
    }
    try {
        Banco.Execute(comando.texto, dao::dbFailOnError);
    } catch (const Erro& erro) {
        if (EhFalhaDoMeio(erro)) {
            throw;
        }
    }
}

void frmAtualizando::IniciarProgramaInstalado() const {
    if (ProgramaInstalado.isEmpty()) {
        return;
    }
    try {
        sys::Start(u'"' + ProgramaInstalado + u'"', 1);
    } catch (const Erro&) {
        // The update itself is complete.
    }
}

void frmAtualizando::EncerrarComErro(const Erro& erro) {
    PassoDownload.clear();
    if (Passo < 3) {
        HttpDesconectar();
    }
    // What a failure leaves behind is known by its name and does no harm; but a full disk has to
    // let the catalogue breathe again, and who gives up in time wants to find nothing.
    if (cancelada_ || EhDiscoCheio(erro)) {
        ExcluirTemporarios();
    }
    if (cancelada_) {
        forms::SetMousePointer(forms::vbDefault);
        forms::MsgBox(u"Atualização cancelada. O catálogo continua como estava."_s,
                      forms::vbInformation, TituloCatalogo);
        return;
    }
    MostrarErro(erro.Number(), erro.Description());
}

void frmAtualizando::ExcluirTemporarios() {
    for (const ArquivoAtualizacao& arquivo : arquivos_) {
        if (EhScript(arquivo) || arquivo.Conteudo.isEmpty()) {
            continue;
        }
        try {
            ExcluirArquivo(arquivo.Conteudo);
        } catch (const Erro&) {
            // It stays, as after any other failure.
        }
    }
}

void frmAtualizando::Fechar() {
    secret::Wipe(usuario_);
    secret::Wipe(senha_);
    const forms::Busy ocupado;
    Unload();
}
