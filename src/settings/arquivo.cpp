#include "settings/arquivo.h"

#include "platform/erro.h"
#include "platform/system/paths.h"
#include "session/arquivos.h"
#include "session/global.h"
#include "settings/textocifrado.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto NomeArquivo = "CatalogoTarvoConfig.txt"_L1;
constexpr auto Padrao = "1||"_L1;
constexpr auto Ligada = "1"_L1;
constexpr auto Separador = u'|';

QString CaminhoDoUsuario() {
    return PastaDadosUsuario(true) + NomeArquivo;
}

// An empty text has no field at all, not one that is empty.
QStringList Campos(const QString& texto) {
    return texto.isEmpty() ? QStringList() : texto.split(Separador);
}

QString& Campo(QStringList& campos, qsizetype indice) {
    if (indice >= campos.size()) {
        throw Erro(Erro::SubscriptOutOfRange);
    }
    return campos[indice];
}

// The machine-wide file of older installations. It stays for the machine's other users.
void TrazerDaMaquina(const QString& caminho) {
    const QString daMaquina = PastaSistema(u"SYSTEM"_s, true) + NomeArquivo;
    if (daMaquina.toUpper() == caminho.toUpper() || !ArquivoExiste(daMaquina)) {
        return;
    }
    try {
        sys::WriteWhole(caminho, sys::ReadBytes(daMaquina), sys::Access::OwnerOnly);
    } catch (const Erro&) {
        // The user then begins with the defaults.
    }
}

// An error tells which file it is that cannot be had: the user has never heard of it.
QString LerComNome(const QString& caminho) {
    try {
        return LerArquivo(caminho);
    } catch (const Erro& erro) {
        throw Erro(erro.Number(), erro.Description() + u": "_s + sys::ToShown(caminho));
    }
}

// False when the field is lost; its text is then empty.
bool LerCredencial(QStringList& campos, qsizetype indice, QString& texto) {
    texto.clear();
    try {
        const QString& guardado = Campo(campos, indice);
        texto = CifrarTexto(guardado, false);
        // Nothing is stored as an empty field, so a field that holds nothing else was refused.
        return guardado.isEmpty() || !texto.isEmpty();
    } catch (const Erro&) {
        return false;
    }
}

// Nobody is told of a failure. The defaults are no way out then: they would cost the user his
// settings where only the disk was full for a moment.
void Escrever(const QString& caminho, const QString& texto) {
    try {
        sys::WriteWhole(caminho, texto.toUtf8(), sys::Access::OwnerOnly);
    } catch (const Erro&) {
    }
}

}  // namespace

void GravarConfiguracao(const QString& Verificacao, const QString& Usuario, const QString& Senha,
                        bool GravarCredenciais) {
    const QString caminho = CaminhoDoUsuario();
    QString texto;
    try {
        QStringList campos = Campos(ArquivoExiste(caminho) ? LerArquivo(caminho) : Padrao);
        if (!Verificacao.isEmpty()) {
            Campo(campos, 0) = Verificacao;
        }
        if (GravarCredenciais) {
            Campo(campos, 1) = CifrarTexto(Usuario, true);
            Campo(campos, 2) = CifrarTexto(Senha, true);
        }
        texto = campos.join(Separador);
    } catch (const Erro&) {
        texto = Padrao;
    }
    Escrever(caminho, texto);
}

void LerConfiguracao(const QString& Chave, QString& Usuario, QString& Senha) {
    const QString caminho = CaminhoDoUsuario();
    if (!ArquivoExiste(caminho)) {
        TrazerDaMaquina(caminho);
        if (!ArquivoExiste(caminho)) {
            Escrever(caminho, Padrao);
        }
    }
    QStringList campos = Campos(LerComNome(caminho));
    if (Chave == "VERIFICACAOAUTOMATICA"_L1) {
        if (!campos.isEmpty()) {
            VerificacaoAutomatica = campos.first() == Ligada;
            return;
        }
        VerificacaoAutomatica = true;
        Escrever(caminho, Padrao);
    } else if (Chave == "USUARIO_SENHA"_L1) {
        const bool usuarioLido = LerCredencial(campos, 1, Usuario);
        const bool senhaLida = LerCredencial(campos, 2, Senha);
        if (!usuarioLido || !senhaLida) {
            GravarConfiguracao(QString(), Usuario, Senha, true);
        }
    }
}
