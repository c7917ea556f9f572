// The order is fixed: all downloads, then all files, then all scripts in the order of the lists,
// then the new version. So a version is never recorded before the last line of its scripts has run,
// and until the first file is put in place nothing has changed.

#include "update/instalacao.h"

#include "platform/dao/errors.h"
#include "platform/erro.h"
#include "platform/forms/application.h"
#include "platform/sizes.h"
#include "platform/system/output.h"
#include "platform/system/paths.h"
#include "platform/system/process.h"
#include "platform/system/proof.h"
#include "session/arquivos.h"
#include "session/global.h"
#include "settings/arquivo.h"
#include "update/endereco.h"
#include "update/onde.h"
#include "update/restos.h"
#include "update/scripts.h"

#include <QScopeGuard>
#include <QSet>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr quint8 PrimeiroPassoQueGrava = 3;
constexpr auto ComandoDemorado = 2s;
constexpr auto EsperaNotavel = 1s;  // a reader that is awake is done by then

constexpr QLatin1String FimDeLinha("\r\n");
// A list has to fit into memory; a server that never ends one must not fill the disk either.
constexpr qint64 MaiorLista = 64_MiB;

bool EhScript(const ArquivoAtualizacao& arquivo) {
    return arquivo.Tipo == "SDB"_L1;
}

bool EhPrograma(const ArquivoAtualizacao& arquivo) {
    return arquivo.Tipo == "EXE"_L1;
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

QString PastaDe(const QString& caminho) {
    return caminho.left(caminho.lastIndexOf(u'\\') + 1);
}

QString Acima(const QString& pasta) {
    return PastaDe(pasta.chopped(1));
}

QString EmPalavras(const std::optional<sys::LockHolder>& leitor) {
    if (!leitor || leitor->program.isEmpty()) {
        return u"outro computador ou outro programa, que usa o catálogo"_s;
    }
    return u"%1 (%2), que lê o catálogo neste computador"_s.arg(leitor->program, leitor->user);
}

}  // namespace

Instalacao::Instalacao(bool podePerguntar) : podePerguntar_(podePerguntar) {}

void Instalacao::Atualizar(qint16 VersaoAtual, qint16 VersaoNova) {
    try {
        ExcluirRestos(gCaminho);
        Conectar();
        {
            const sys::FolderListings cadaPastaUmaVez;
            BuscarListas(VersaoAtual, VersaoNova);
            BaixarArquivos();
            ColocarArquivos();
        }
        ExecutarScripts(VersaoAtual, VersaoNova);
    } catch (const Erro& erro) {
        Desistir(erro);
        throw;
    }
}

bool Instalacao::NadaGravou() const {
    return Passo < PrimeiroPassoQueGrava;
}

bool Instalacao::PodeInterromper() const {
    return NadaGravou() || Espera() || (scripts_ && scripts_->ComandoEmCurso() > ComandoDemorado);
}

void Instalacao::Interromper() {
    interrompida_ = true;
    HttpInterromper();
}

void Instalacao::AbrirPasso(quint8 sPasso, qint64 maximo) {
    Passo = sPasso;
    Q_EMIT PassoAberto(sPasso, maximo);
}

void Instalacao::Conectar() {
    chaves_ = LerChaves();
    const EnderecoServidor endereco = EnderecoDoCatalogo();
    caminhoBase_ = endereco.caminhoBase;
    HttpConectar(endereco.servidor);
    LerConfiguracao(u"USUARIO_SENHA"_s, usuario_, senha_);
}

void Instalacao::Buscar(const QString& nome, const QString& arquivo,
                        const ProgressoDownload& progresso) {
    recebidos_ += arquivo;
    DizendoOnde([&nome] { return nome; },
                [&] {
                    HttpExecutar(u"D"_s, podePerguntar_, caminhoBase_ + NoServidor(nome), false,
                                 arquivo, QString(), QString(), usuario_, senha_, progresso);
                });
}

QByteArray Instalacao::BuscarBytes(const QString& nome) {
    const QString arquivo = NomeDoRecebido(gCaminho);
    qint64 total = 0;
    Buscar(nome, arquivo, [&total](qint32 bytes) {
        total += bytes;
        if (total > MaiorLista) {
            throw Erro(TextoDemais, u"Espaço insuficiente para o texto"_s);
        }
    });
    const QByteArray bytes = sys::ReadBytes(arquivo);
    ExcluirArquivo(arquivo);
    return bytes;
}

QString Instalacao::BuscarLista(int versao) {
    const QString nome = u"ListVersao%1.txt"_s.arg(versao);
    const QByteArray lista = BuscarBytes(nome);
    if (chaves_.Exigem()) {
        // A missing signature is a wrong one; that the server could not be reached is told as that.
        QByteArray assinaturas;
        try {
            assinaturas = BuscarBytes(nome + u".sig"_s);
        } catch (const Erro& erro) {
            if (!erro.Description().contains("Status=404"_L1)) {
                throw;
            }
        }
        DizendoOnde([&nome] { return nome; },
                    [&] { ConferirLista(chaves_, versao, lista, assinaturas); });
    }
    return sys::DecodeText(lista);
}

void Instalacao::BuscarListas(qint16 VersaoAtual, qint16 VersaoNova) {
    // One more than there are lists: the bar is full only when the step is done.
    AbrirPasso(1, int(VersaoNova) - VersaoAtual + 1);
    QStringList listas;
    for (int versao = VersaoAtual + 1; versao <= VersaoNova; ++versao) {
        listas += BuscarLista(versao);
        Q_EMIT Avancou(1, 1);
    }
    int versao = VersaoAtual;
    for (const QString& lista : listas) {
        listas_.Ler(u"ListVersao%1.txt"_s.arg(++versao), lista, chaves_.Exigem());
        forms::DoEventsInTime();
    }
    Q_EMIT PassoConcluido(1);
}

void Instalacao::BaixarArquivos() {
    AbrirPasso(2, listas_.TotalBytes);
    for (ArquivoAtualizacao& arquivo : listas_.arquivos) {
        BaixarArquivo(arquivo);
    }
    Q_EMIT PassoConcluido(2);
    HttpDesconectar();
}

void Instalacao::BaixarArquivo(ArquivoAtualizacao& arquivo) {
    const bool script = EhScript(arquivo);
    arquivo.Conteudo = NomeDoRecebido(script ? gCaminho : PastaDeEspera(arquivo.Nome));
    ReceberConteudo(arquivo);
    if (script) {
        arquivo.Conteudo = LerArquivo(recebidos_.last());
        ExcluirArquivo(recebidos_.last());
        return;
    }
    // Before any file takes another one's place, all of them are whole and on the disk.
    sys::Flush(arquivo.Conteudo);
    if (EhPrograma(arquivo)) {
        sys::MakeExecutable(arquivo.Conteudo);
        ProgramaInstalado = gCaminho + arquivo.Nome;
    }
}

// Where the list tells what the file must be, more bytes than that are not even taken down.
void Instalacao::ReceberConteudo(ArquivoAtualizacao& arquivo) {
    const bool conhecido = !arquivo.Sha256.isEmpty();
    qint64 total = 0;
    const auto demais = [&] { return conhecido && total > arquivo.Bytes; };
    try {
        Buscar(arquivo.Nome, arquivo.Conteudo, [&](qint32 bytes) {
            Q_EMIT Avancou(2, bytes);
            total += bytes;
            if (demais()) {
                throw Erro(ConteudoAlterado, QString());  // said below
            }
        });
    } catch (const Erro&) {
        if (!demais()) {
            throw;
        }
    }
    if (conhecido && sys::HashOfFile(arquivo.Conteudo) != arquivo.Sha256) {
        throw Erro(
            ConteudoAlterado,
            u"O arquivo \"%1\" que veio do servidor não é o que a lista descreve. O catálogo "
            "continua como estava."_s.arg(arquivo.Nome));
    }
}

// In the data folder, or where the file will lie if that is another disk: to put it in place must
// be one step, and a disk that is full must show before the first of them.
QString Instalacao::PastaDeEspera(const QString& nome) {
    QString pasta = PastaDe(gCaminho + NaPasta(nome));
    while (!DiretorioExiste(pasta)) {
        pasta = Acima(pasta);
    }
    auto espera = esperas_.constFind(pasta);
    if (espera == esperas_.constEnd()) {
        const bool outroDisco = !sys::SameVolume(gCaminho, pasta);
        if (outroDisco) {
            ExcluirRestos(pasta);
        }
        espera = esperas_.insert(pasta, outroDisco ? pasta : gCaminho);
    }
    return *espera;
}

void Instalacao::ColocarArquivos() {
    ConferirSeInterrompida();
    AbrirPasso(3, qint64(listas_.arquivos.size()));
    QSet<QString> pastas;
    for (const ArquivoAtualizacao& arquivo : listas_.arquivos) {
        if (!EhScript(arquivo)) {
            DizendoOnde([&arquivo] { return arquivo.Nome; }, [&] { ColocarArquivo(arquivo); });
            const QString caminho = gCaminho + NaPasta(arquivo.Nome);
            for (QString pasta = PastaDe(caminho); pasta.size() >= gCaminho.size();
                 pasta = Acima(pasta)) {
                pastas += pasta;
            }
        }
        Q_EMIT Avancou(3, 1);
        forms::DoEventsInTime();
    }
    // Before the scripts speak of them; a power cut until then is one in the middle of this step.
    for (const QString& pasta : std::as_const(pastas)) {
        sys::Flush(pasta);
    }
    Q_EMIT PassoConcluido(3);
}

// In one go instead of deleting first: at no moment is the file missing.
void Instalacao::ColocarArquivo(const ArquivoAtualizacao& arquivo) {
    const QString nome = NaPasta(arquivo.Nome);
    CriarDiretorios(gCaminho, nome, true);
    sys::Replace(arquivo.Conteudo, gCaminho + nome);
}

void Instalacao::ExecutarScripts(qint16 VersaoAtual, qint16 VersaoNova) {
    std::vector<ArquivoAtualizacao> lidos;
    qint64 linhas = 0;
    for (ArquivoAtualizacao& arquivo : std::exchange(listas_.arquivos, {})) {
        if (EhScript(arquivo)) {
            linhas += arquivo.Conteudo.count(FimDeLinha) + 1;
            lidos.push_back(std::move(arquivo));
        }
    }
    AbrirPasso(4, linhas == 0 ? 0 : linhas + 1);
    {
        ScriptsDaAtualizacao scripts(
            [this] { return ContinuarComando(); },
            [this](std::chrono::milliseconds esperado) { return ContinuarEspera(esperado); });
        scripts_ = &scripts;
        const auto semScripts = qScopeGuard([this] { scripts_ = nullptr; });
        for (const ArquivoAtualizacao& script : lidos) {
            ExecutarLinhas(scripts, script);
        }
        scripts.GravarVersao(VersaoAtual, VersaoNova);
        TerminarEspera();
        scripts.Fechar();
    }
    Q_EMIT PassoConcluido(4);
}

void Instalacao::ExecutarLinhas(ScriptsDaAtualizacao& scripts, const ArquivoAtualizacao& script) {
    int numero = 0;
    for (const QString& linha : script.Conteudo.split(FimDeLinha)) {
        ++numero;
        try {
            scripts.ExecutarComandoAtualizacao(linha);
            TerminarEspera();
            ConferirSeInterrompida();
        } catch (const Erro& erro) {
            // What ran is kept, if that is possible; what failed first is what the user is told.
            try {
                scripts.FecharGrupo();
            } catch (const Erro&) {
            }
            throw Erro(erro.Number(),
                       u"%1 (%2, linha %3)"_s.arg(erro.Description(), script.Nome).arg(numero));
        }
        Q_EMIT Avancou(4, 1);
        forms::DoEventsInTime();
    }
}

bool Instalacao::ContinuarComando() {
    forms::DoEventsInTime();
    return !interrompida_ && scripts_->ComandoEmCurso() < maiorComando_;
}

bool Instalacao::ContinuarEspera(std::chrono::milliseconds esperado) {
    if (esperado >= EsperaNotavel) {
        const QString porQuem = EmPalavras(scripts_->Leitor());
        if (std::exchange(porQuem_, porQuem) != porQuem) {
            Q_EMIT Esperando(porQuem);
        }
    }
    forms::DoEventsInTime();
    return !interrompida_;
}

void Instalacao::TerminarEspera() {
    if (!std::exchange(porQuem_, QString()).isEmpty()) {
        Q_EMIT Esperando(QString());
    }
}

void Instalacao::ConferirSeInterrompida() const {
    if (interrompida_) {
        throw Erro(Interrompido, u"Interrompido pelo usuário"_s);
    }
}

void Instalacao::IniciarProgramaInstalado() const {
    if (ProgramaInstalado.isEmpty()) {
        return;
    }
    try {
        sys::Start(u'"' + ProgramaInstalado + u'"', 1);
    } catch (const Erro&) {
        // The update itself is complete.
    }
}

void Instalacao::Desistir(const Erro& erro) {
    HttpDesconectar();
    // What a failure leaves behind is known by its name and does no harm; but a full disk has to
    // let the catalogue breathe again, and who gives up in time wants to find nothing.
    if (interrompida_ || EhDiscoCheio(erro)) {
        ExcluirRecebidos();
    }
}

void Instalacao::ExcluirRecebidos() {
    for (const QString& arquivo : std::as_const(recebidos_)) {
        try {
            ExcluirArquivo(arquivo);
        } catch (const Erro&) {
            // It stays, as after any other failure.
        }
    }
}
