#include "update/conversa.h"

#include "platform/secret.h"
#include "platform/system/paths.h"
#include "platform/system/process.h"

#include <QFile>
#include <QTemporaryFile>

#include <algorithm>
#include <array>
#include <atomic>
#include <new>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr char Variavel[] = "TARVO_CONVERSA";
constexpr quint32 Marca = 0x54430002;  // of this layout

struct Texto {
    std::array<char16_t, 256> letras;
    quint32 tamanho;
};

void Guardar(Texto& onde, const QString& texto) {
    onde.tamanho = quint32(std::min<qsizetype>(texto.size(), qsizetype(onde.letras.size())));
    std::copy_n(texto.utf16(), onde.tamanho, onde.letras.begin());
}

QString Ler(const Texto& onde) {
    const auto tamanho = std::min<std::size_t>(onde.tamanho, onde.letras.size());
    return QString::fromUtf16(onde.letras.data(), qsizetype(tamanho));
}

// Two processes look at it.
struct Dados {
    quint32 marca;
    std::atomic<quint32> chamadas;
    std::atomic<bool> desistiu;
    std::atomic<bool> temAcesso;
    qint64 catalogo;  // its process
    Texto usuario;
    Texto senha;
};
static_assert(std::atomic<quint32>::is_always_lock_free);
static_assert(std::atomic<bool>::is_always_lock_free);

}  // namespace

struct Conversa::Partilha {
    std::unique_ptr<QFile> arquivo;
    Dados* dados = nullptr;
    bool dona = false;
    quint32 chamadasVistas = 0;
};

Conversa::Conversa() : d_(new Partilha) {}

Conversa::~Conversa() {
    if (d_->dona) {
        secret::Wipe(d_->dados, sizeof(Dados));
    }
}

std::unique_ptr<Conversa> Conversa::Abrir() {
    auto arquivo = std::make_unique<QTemporaryFile>(sys::SharedMemoryFolder() + u"/tarvo-XXXXXX"_s);
    if (!arquivo->open() || !arquivo->resize(sizeof(Dados))) {
        return nullptr;
    }
    auto* inicio = arquivo->map(0, sizeof(Dados));
    if (!inicio) {
        return nullptr;
    }
    std::unique_ptr<Conversa> aberta(new Conversa);
    aberta->d_->arquivo = std::move(arquivo);
    aberta->d_->dados = new (inicio) Dados{};
    aberta->d_->dados->catalogo = sys::OwnProcessId();
    aberta->d_->dados->marca = Marca;
    aberta->d_->dona = true;
    return aberta;
}

std::unique_ptr<Conversa> Conversa::Atender() {
    const QString nome = qEnvironmentVariable(Variavel);
    auto arquivo = std::make_unique<QFile>(nome);
    if (nome.isEmpty() || !arquivo->open(QIODevice::ReadWrite | QIODevice::ExistingOnly) ||
        arquivo->size() != sizeof(Dados)) {
        return nullptr;
    }
    auto* dados = reinterpret_cast<Dados*>(arquivo->map(0, sizeof(Dados)));
    if (!dados || dados->marca != Marca) {
        return nullptr;
    }
    std::unique_ptr<Conversa> atendida(new Conversa);
    atendida->d_->arquivo = std::move(arquivo);
    atendida->d_->dados = dados;
    return atendida;
}

Conversa::Convite::Convite(const Conversa* conversa) {
    if (conversa) {
        qputenv(Variavel, QFile::encodeName(conversa->d_->arquivo->fileName()));
    }
}

Conversa::Convite::~Convite() {
    qunsetenv(Variavel);
}

void Conversa::Chamar() {
    ++d_->dados->chamadas;
}

bool Conversa::FoiChamada() {
    const quint32 chamadas = d_->dados->chamadas;
    return std::exchange(d_->chamadasVistas, chamadas) != chamadas;
}

void Conversa::Desistir() {
    d_->dados->desistiu = true;
}

bool Conversa::Desistiu() const {
    return d_->dados->desistiu || !sys::IsRunning(d_->dados->catalogo);
}

void Conversa::GuardarAcesso(const QString& usuario, const QString& senha) {
    Guardar(d_->dados->usuario, usuario);
    Guardar(d_->dados->senha, senha);
    d_->dados->temAcesso = true;
}

bool Conversa::LerAcesso(QString& usuario, QString& senha) const {
    if (!d_->dados->temAcesso) {
        return false;
    }
    usuario = Ler(d_->dados->usuario);
    senha = Ler(d_->dados->senha);
    return true;
}
