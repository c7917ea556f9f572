#include "update/novidades.h"

#include "platform/convert.h"
#include "platform/dao/dao.h"
#include "platform/erro.h"
#include "platform/forms/application.h"
#include "platform/forms/form.h"
#include "platform/forms/msgbox.h"
#include "platform/secret.h"
#include "platform/system/clock.h"
#include "session/banco.h"
#include "session/datas.h"
#include "session/erros.h"
#include "session/formularios.h"
#include "session/global.h"
#include "session/passagens.h"
#include "update/acesso.h"
#include "update/atualizando.h"
#include "update/conversa.h"

#include <QDate>
#include <QPointer>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto IntervaloLento = 65535ms;
constexpr auto IntervaloDoProcesso = 500ms;
constexpr quint8 TiquesPorLeitura = 3;
constexpr int SegundosEntreVerificacoes = 10 * 60;
constexpr double NuncaVerificado = 1.0;  // long ago
constexpr double MaiorAdianto = 1.0;     // days
constexpr qint64 DiasDeAssinatura = 60;

constexpr int ProcessoNaoIniciou = -1;

constexpr int Pergunta = forms::vbYesNo | forms::vbQuestion | forms::vbDefaultButton2;

const QString SemRegistro =
    u"O catálogo está sem o registro da versão: uma atualização foi interrompida. As pesquisas "
    "funcionam, mas é preciso instalar uma nova cópia do catálogo"_s;

// The day on which the publisher last stood behind the newest version, as far as this run of the
// program has heard; the search screen is made anew after each update.
QDate assinadaEm;

int Avisar(const QString& texto, int sinais = forms::vbInformation) {
    return forms::MsgBox(texto, sinais, TituloCatalogo);
}

// For the end of a check, which must be reached whatever happens on the way.
template <typename Trabalho>
void IgnorandoErros(Trabalho trabalho) {
    try {
        trabalho();
    } catch (const Erro&) {
        // Each step stands for itself.
    }
}

// A server that is kept from telling of anything newer still serves what was signed long ago.
QString AvisoDaAssinatura() {
    const qint64 dias = assinadaEm.daysTo(sys::FromSerial(sys::Now()).date());
    return assinadaEm.isValid() && dias > DiasDeAssinatura
               ? u"\nHá %1 dias o servidor não confirma qual é a versão mais nova"_s.arg(dias)
               : QString();
}

// A script may have left something else there; the catalogue has to open all the same.
QString TextoDaData(const QVariant& data) {
    try {
        return FormatarData(convert::ToDouble(data));
    } catch (const Erro&) {
        return {};
    }
}

}  // namespace

// What one tick of the watch finds out.
struct Novidades::Verificacao {
    bool automatica = false;
    Verificador::Resposta resposta;
    bool instalar = false;
    int erro = 0;
    QString descricao;
};

// For what lets events through: the user may close the screen meanwhile.
class Novidades::Viva {
public:
    explicit Viva(Novidades* novidades) : novidades_(novidades) {}
    explicit operator bool() const { return novidades_ && !novidades_->abandonada_; }

private:
    QPointer<Novidades> novidades_;
};

Novidades::Novidades(QObject* tela)
    : QObject(tela),
      DataUltimaVerificacaoTela(NuncaVerificado),
      tmrVerificarAtualizacoes(this),
      tmrVerificaProcessoVerificacao(this) {
    setObjectName(u"Novidades"_s);
    tmrVerificarAtualizacoes.setObjectName(u"tmrVerificarAtualizacoes"_s);
    tmrVerificarAtualizacoes.setInterval(IntervaloLento);
    connect(&tmrVerificarAtualizacoes, &QTimer::timeout, this, &Novidades::AoTiqueLento);
    tmrVerificaProcessoVerificacao.setObjectName(u"tmrVerificaProcessoVerificacao"_s);
    tmrVerificaProcessoVerificacao.setInterval(IntervaloDoProcesso);
    connect(&tmrVerificaProcessoVerificacao, &QTimer::timeout, this, &Novidades::AoTiqueDoProcesso);
    tmrVerificarAtualizacoes.start();
}

Novidades::~Novidades() = default;

void Novidades::AoTiqueLento() {
    if (++ContadorTempo >= TiquesPorLeitura) {
        ContadorTempo = 0;
        if (!BancoBloqueado) {
            // Nobody asked for it, so a catalogue that is busy just now must end nothing.
            IgnorandoErros([this] { CarregarDadosVerificacao(false); });
        }
    }
    if (VerificacaoAutomatica && !VerificacaoEmAndamento && EhDevida()) {
        IniciarVerificacao(true);
    }
}

// A date that lies ahead comes from a clock that was wrong once, perhaps another computer's; it
// must not stop the checks of all of them until that day.
bool Novidades::EhDevida() const {
    const double agora = sys::Now();
    return DataUltimaVerificacaoTela > agora + MaiorAdianto ||
           sys::FromSerial(agora) >=
               sys::FromSerial(DataUltimaVerificacaoTela).addSecs(SegundosEntreVerificacoes);
}

void Novidades::IniciarVerificacao(bool Automatica) {
    const Viva viva(this);
    forms::DoEvents();
    if (!viva) {
        return;
    }
    if (VerificacaoEmAndamento) {
        if (!Automatica && conversa_) {
            conversa_->Chamar();  // it may be asking for a password behind another window
        }
        return;
    }
    if (!gFaltaDeTravas.isEmpty()) {
        // Nothing would keep two computers from updating the catalogue at once.
        if (!Automatica) {
            Avisar(gFaltaDeTravas + u"\n\nO catálogo não se atualiza assim."_s);
        }
        return;
    }
    VerificacaoEmAndamento = true;
    emCurso_ = {};
    try {
        if (!conversa_) {
            conversa_ = Conversa::Abrir();
        }
        verificador_.Iniciar(Automatica, conversa_.get());
        emCurso_.automatica = Automatica;
    } catch (const Erro& erro) {
        // Dealt with at the watch's next tick, where every failure comes to the same end.
        emCurso_.erro = erro.Number();
        emCurso_.descricao = erro.Description();
    }
    tmrVerificaProcessoVerificacao.start();
}

void Novidades::AoTiqueDoProcesso() {
    // The answer waits: a box has the user's attention, and a page that is being printed needs its
    // dialog, which an update would take away.
    if (forms::IsBoxOpen() || ImpressaoEmAndamento()) {
        return;
    }
    const Viva viva(this);
    Verificacao verificacao;
    try {
        if (!DecidirAtualizacao(verificacao)) {
            return;
        }
        if (verificacao.instalar) {
            Instalar(verificacao);
        }
    } catch (const Erro& erro) {
        verificacao.erro = erro.Number();
        verificacao.descricao = erro.Description();
    }
    if (viva) {
        EncerrarVerificacao(verificacao);
    }
}

// False: the process is still running, or the second pass has just begun.
bool Novidades::DecidirAtualizacao(Verificacao& verificacao) {
    if (emCurso_.erro != 0) {
        throw Erro(ProcessoNaoIniciou, QString::number(emCurso_.erro) + u' ' + emCurso_.descricao);
    }
    if (verificador_.EmCurso()) {
        return false;
    }
    tmrVerificaProcessoVerificacao.stop();
    verificacao.automatica = emCurso_.automatica;
    verificacao.resposta = verificador_.Ler();
    assinadaEm = verificacao.resposta.assinada;
    verificacao.instalar = PerguntarSeInstala(verificacao);
    if (!verificacao.instalar || BancoBloqueado) {
        return true;
    }
    verificacao.instalar = BloquearParaInstalar();
    return !verificacao.instalar;
}

bool Novidades::PerguntarSeInstala(const Verificacao& verificacao) const {
    if (!verificacao.resposta.HaNovas()) {
        if (!verificacao.automatica) {
            Avisar(u"Não existem Novas Atualizações."_s);
        }
        return false;
    }
    if (segundaPassagem_) {
        return true;  // he has been asked
    }
    PiscarJanelaAtiva();
    return Avisar(u"Existem Novas Atualizações. Deseja Instalar agora?"_s, Pergunta) ==
           forms::vbYes;
}

// Takes the lock and begins the second pass under it.
bool Novidades::BloquearParaInstalar() {
    BancoBloqueado = BloquearBancoDados(true);
    if (!BancoBloqueado) {
        Avisar(
            u"Não foi possível Bloquear o Banco de Dados. (Outro Computador, de sua rede, já está "
            "Atualizando o Catálogo)."_s);
        return false;
    }
    verificador_.ExcluirResposta();
    segundaPassagem_ = true;
    VerificacaoEmAndamento = false;
    IniciarVerificacao(false);
    return true;
}

void Novidades::Instalar(const Verificacao& verificacao) {
    const Viva viva(this);
    const forms::Busy ocupado;
    FecharTelasSecundarias();
    forms::DoEvents();
    if (forms::Form* ativa = forms::Form::Active(); ativa && ativa->isMinimized()) {
        ativa->Show();
        forms::DoEvents();
    }
    if (!viva) {
        return;
    }
    AcessoDigitado acesso;
    if (conversa_ && conversa_->LerAcesso(acesso.usuario, acesso.senha)) {
        LembrarAcesso(acesso);
    }
    ParametroFormulario =
        u"%1|%2"_s.arg(verificacao.resposta.local).arg(verificacao.resposta.servidor);
    (new frmAtualizando)->ShowModal();
    EsquecerAcesso();
}

void Novidades::EncerrarVerificacao(const Verificacao& verificacao) {
    segundaPassagem_ = false;
    conversa_.reset();
    tmrVerificaProcessoVerificacao.stop();
    verificador_.ExcluirResposta();
    const Viva viva(this);
    IgnorandoErros([&verificacao] {
        GravarUltimaVerificacao(DataHoraSql(NuncaVerificado),
                                verificacao.erro == 0 ? u"0"_s : u"1"_s);
    });
    if (!viva) {
        return;  // its end has let the lock go
    }
    SoltarBanco();
    VerificacaoEmAndamento = false;
    if (verificacao.instalar) {
        // Either way the screen is gone afterwards. A failure here rises: there would be nothing to
        // go on with.
        if (ReiniciarPrograma) {
            Q_EMIT ReinicioPedido();
        } else {
            RecarregarFormularios(QString());
        }
        return;
    }
    IgnorandoErros([this] { CarregarDadosVerificacao(true); });
    if (verificacao.erro != 0 && !verificacao.automatica) {
        MostrarErro(verificacao.erro,
                    u"Erro ao tentar Verificar Atualizações\n\n"
                    "Observação: Requer acesso à Internet\n\n"_s +
                        verificacao.descricao);
    }
}

void Novidades::SoltarBanco() {
    if (BancoBloqueado) {
        IgnorandoErros([] { BloquearBancoDados(false); });
        BancoBloqueado = false;
    }
}

void Novidades::Abandonar() {
    abandonada_ = true;
    tmrVerificarAtualizacoes.stop();
    tmrVerificaProcessoVerificacao.stop();
    if (VerificacaoEmAndamento) {
        if (conversa_) {
            conversa_->Desistir();
        }
        verificador_.ExcluirResposta();
    }
    SoltarBanco();
}

void Novidades::CarregarDadosVerificacao(bool sAtualizarUltimaDataVerificacao) {
    const auto registro = gDB->OpenRecordset(
        u"SELECT "
        "DataEmissao,"
        "ComplementoDataEmissao,"
        "DataUltimaVerificacao,"
        "FlagErroUltimaVerificacao "
        "FROM "
        "UMREGISTRO"_s,
        dao::dbOpenForwardOnly);
    if (registro->Eof()) {
        TextoEmissao.clear();
        Q_EMIT EmissaoLida(TextoEmissao);
        Q_EMIT DicaLida(SemRegistro);
        return;
    }
    const QVariant ultima = registro->Fields(u"DataUltimaVerificacao"_s).Value();
    const bool nunca = convert::IsNull(ultima);
    if (sAtualizarUltimaDataVerificacao) {
        DataUltimaVerificacaoTela = nunca ? NuncaVerificado : convert::ToDouble(ultima);
    }

    TextoEmissao = TextoDaData(registro->Fields(u"DataEmissao"_s).Value()) +
                   convert::ToTextOrEmpty(registro->Fields(u"ComplementoDataEmissao"_s).Value());
    Q_EMIT EmissaoLida(TextoEmissao);

    if (nunca) {
        Q_EMIT DicaLida(u" "_s);
        return;
    }
    const QVariant falhou = registro->Fields(u"FlagErroUltimaVerificacao"_s).Value();
    const bool erro = !convert::IsNull(falhou) && convert::ToInt64(falhou) == 1;
    Q_EMIT DicaLida((erro ? u"ERRO na Última Verificação"_s : u"Última Verificação"_s) + u": "_s +
                    FormatarDataHora(convert::ToDouble(ultima)) + AvisoDaAssinatura());
}
