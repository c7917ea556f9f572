// Whether the catalogue is to be updated. The server is asked by a process of its own, which leaves
// its answer in a file; when there is something newer and the user agrees, the same check runs
// again under the update lock, since another computer may have updated the shared catalogue
// meanwhile, and then frmAtualizando does the work.

#include "platform/convert.h"
#include "platform/erro.h"
#include "platform/forms/application.h"
#include "platform/forms/msgbox.h"
#include "platform/system/clock.h"
#include "search/pesquisa.h"
#include "session/arquivos.h"
#include "session/banco.h"
#include "session/datas.h"
#include "session/erros.h"
#include "session/formularios.h"
#include "session/global.h"
#include "session/passagens.h"
#include "update/atualizando.h"

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto IntervaloLento = 65535ms;
constexpr auto IntervaloDoProcesso = 500ms;
constexpr quint8 TiquesPorLeitura = 3;
constexpr int SegundosEntreVerificacoes = 10 * 60;
constexpr double NuncaVerificado = 1.0;

enum Numero : int { ProcessoNaoIniciou = -1, VerificadorFalhou = -2 };

constexpr int Pergunta = forms::vbYesNo | forms::vbQuestion | forms::vbDefaultButton2;

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

// A verifier that died leaves no file or an empty one, and that has no first field.
QString TextoDoResultado(const QString& arquivo) {
    return ArquivoExiste(arquivo) ? LerArquivo(arquivo) : QString();
}

qint16 LerVersao(const QString& campos, qsizetype indice) {
    const QStringList versoes = campos.isEmpty() ? QStringList() : campos.split(u'|');
    if (indice >= versoes.size()) {
        throw Erro(Erro::SubscriptOutOfRange);
    }
    return convert::ToInt16(versoes.at(indice));
}

}  // namespace

// What one tick of the watch finds out.
struct frmPesquisa::Verificacao {
    bool automatica = false;
    qint16 local = 0;
    qint16 servidor = 0;
    bool instalar = false;
    int erro = 0;
    QString descricao;
};

void frmPesquisa::LigarVerificacao() {
    pctVerificarAtualizacoes =
        Picture()->findChild<forms::ClickZone*>(u"pctVerificarAtualizacoes"_s);
    connect(pctVerificarAtualizacoes, &forms::ClickZone::Click, this,
            [this] { IniciarVerificacao(false); });
    connect(pctVerificarAtualizacoes, &forms::ClickZone::MouseMove, this,
            &frmPesquisa::MostrarDicaDaVerificacao);

    tmrVerificarAtualizacoes.setObjectName(u"tmrVerificarAtualizacoes"_s);
    tmrVerificarAtualizacoes.setInterval(IntervaloLento);
    connect(&tmrVerificarAtualizacoes, &QTimer::timeout, this, &frmPesquisa::AoTiqueLento);
    tmrVerificaProcessoVerificacao.setObjectName(u"tmrVerificaProcessoVerificacao"_s);
    tmrVerificaProcessoVerificacao.setInterval(IntervaloDoProcesso);
    connect(&tmrVerificaProcessoVerificacao, &QTimer::timeout, this,
            &frmPesquisa::AoTiqueDoProcesso);
    tmrVerificarAtualizacoes.start();
}

void frmPesquisa::AoTiqueLento() {
    if (++ContadorTempo >= TiquesPorLeitura) {
        ContadorTempo = 0;
        if (!BancoBloqueado) {
            // Nobody asked for it, so a catalogue that is busy just now must end nothing.
            IgnorandoErros([this] { CarregarDadosVerificacao(false); });
        }
    }
    if (!VerificacaoAutomatica || VerificacaoEmAndamento) {
        return;
    }
    const bool devida =
        DataUltimaVerificacaoTela == NuncaVerificado ||
        sys::FromSerial(sys::Now()) >=
            sys::FromSerial(DataUltimaVerificacaoTela).addSecs(SegundosEntreVerificacoes);
    if (devida) {
        IniciarVerificacao(true);
    }
}

void frmPesquisa::IniciarVerificacao(bool Automatica) {
    const forms::StillLoaded aberta(this);
    forms::DoEvents();
    if (!aberta || VerificacaoEmAndamento) {
        return;
    }
    VerificacaoEmAndamento = true;
    const QString automatica = Automatica ? u"1"_s : u"0"_s;
    try {
        const QString arquivo = NomeArquivoTemporario();
        // The path may hold blanks, even several in a row, and is not quoted.
        ProcessoVerificacao =
            sys::Start(u'"' + CaminhoPrograma(true) + u"VerifAtualizCatalogoTarvo.exe\" "_s +
                           automatica + u'|' + arquivo,
                       1, sys::Rest::Whole);
        tmrVerificaProcessoVerificacao.Tag = u'1' + automatica + arquivo;
    } catch (const Erro& erro) {
        // Dealt with at the watch's next tick, where every failure comes to the same end.
        tmrVerificaProcessoVerificacao.Tag =
            u'0' + QString::number(erro.Number()) + u' ' + erro.Description();
    }
    tmrVerificaProcessoVerificacao.start();
}

void frmPesquisa::AoTiqueDoProcesso() {
    // The answer waits: a box has the user's attention, and a page that is being printed needs its
    // dialog, which an update would take away.
    if (forms::IsBoxOpen() || ImpressaoEmAndamento()) {
        return;
    }
    const forms::StillLoaded aberta(this);
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
    if (aberta) {
        EncerrarVerificacao(verificacao);
    }
}

// False: the process is still running, or the second pass has just begun.
bool frmPesquisa::DecidirAtualizacao(Verificacao& verificacao) {
    const QString tag = tmrVerificaProcessoVerificacao.Tag;
    if (tag.startsWith(u'0')) {
        throw Erro(ProcessoNaoIniciou, tag.mid(1));
    }
    if (sys::ExitCode(ProcessoVerificacao) == sys::StillActive) {
        return false;
    }
    tmrVerificaProcessoVerificacao.stop();
    verificacao.automatica = tag.mid(1, 1) == "1"_L1;
    const QString resultado = TextoDoResultado(tag.mid(2));
    if (resultado.startsWith(u'0')) {
        throw Erro(VerificadorFalhou, resultado.mid(1));
    }
    verificacao.local = LerVersao(resultado.mid(1), 0);
    verificacao.servidor = LerVersao(resultado.mid(1), 1);
    verificacao.instalar = PerguntarSeInstala(verificacao);
    if (!verificacao.instalar || BancoBloqueado) {
        return true;
    }
    verificacao.instalar = BloquearParaInstalar();
    return !verificacao.instalar;
}

bool frmPesquisa::PerguntarSeInstala(const Verificacao& verificacao) const {
    if (verificacao.servidor <= verificacao.local) {
        if (!verificacao.automatica) {
            Avisar(u"Não existem Novas Atualizações."_s);
        }
        return false;
    }
    const bool segundaPassagem = pctBarraAtualizacao->Tag == "1"_L1;
    if (segundaPassagem && !verificacao.automatica) {
        return true;
    }
    PiscarJanelaAtiva();
    return Avisar(u"Existem Novas Atualizações. Deseja Instalar agora?"_s, Pergunta) ==
           forms::vbYes;
}

// Takes the lock and begins the second pass under it.
bool frmPesquisa::BloquearParaInstalar() {
    BancoBloqueado = BloquearBancoDados(true);
    if (!BancoBloqueado) {
        Avisar(
            u"Não foi possível Bloquear o Banco de Dados. (Outro Computador, de sua rede, já está "
            "Atualizando o Catálogo)."_s);
        return false;
    }
    ExcluirArquivo(tmrVerificaProcessoVerificacao.Tag.mid(2));
    pctBarraAtualizacao->Tag = u"1"_s;
    VerificacaoEmAndamento = false;
    IniciarVerificacao(false);
    return true;
}

void frmPesquisa::Instalar(const Verificacao& verificacao) {
    const forms::StillLoaded aberta(this);
    forms::SetMousePointer(forms::vbHourglass);
    FecharTelasSecundarias();
    forms::DoEvents();
    if (Form* ativa = Form::Active(); ativa && ativa->isMinimized()) {
        ativa->Show();
        forms::DoEvents();
    }
    if (aberta) {
        ParametroFormulario =
            QString::number(verificacao.local) + u'|' + QString::number(verificacao.servidor);
        (new frmAtualizando)->ShowModal();
    }
    forms::SetMousePointer(forms::vbDefault);
}

void frmPesquisa::EncerrarVerificacao(const Verificacao& verificacao) {
    pctBarraAtualizacao->Tag.clear();
    tmrVerificaProcessoVerificacao.stop();
    IgnorandoErros([this] { ExcluirArquivo(tmrVerificaProcessoVerificacao.Tag.mid(2)); });
    const forms::StillLoaded aberta(this);
    IgnorandoErros([&verificacao] {
        GravarUltimaVerificacao(DataHoraSql(NuncaVerificado),
                                verificacao.erro == 0 ? u"0"_s : u"1"_s);
    });
    if (!aberta) {
        return;  // its unload has let the lock go
    }
    if (BancoBloqueado) {
        IgnorandoErros([] { BloquearBancoDados(false); });
        BancoBloqueado = false;
    }
    VerificacaoEmAndamento = false;
    if (verificacao.instalar) {
        // Either way this screen is gone afterwards. A failure here rises: there would be nothing
        // to go on with.
        if (ReiniciarPrograma) {
            Unload();
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

// The screen goes while a check is running: nobody will read its answer, and nobody else could
// update before the lock is let go.
void frmPesquisa::AbandonarVerificacao() {
    tmrVerificarAtualizacoes.stop();
    tmrVerificaProcessoVerificacao.stop();
    if (BancoBloqueado) {
        IgnorandoErros([] { BloquearBancoDados(false); });
        BancoBloqueado = false;
    }
}

// The tip is made anew once for each refresh of the status; after that it comes by itself.
void frmPesquisa::MostrarDicaDaVerificacao() {
    if (pctVerificarAtualizacoes->Tag.isEmpty()) {
        return;
    }
    constexpr qint32 Espera = 850;   // milliseconds
    constexpr qint32 Vida = 20'000;  // milliseconds
    mToolTip->Create(pctVerificarAtualizacoes, pctVerificarAtualizacoes->Tag,
                     cToolTip::Balao | cToolTip::SempreVisivel, false, cToolTip::Informacao,
                     u"Verificar se existem Novas Atualizações"_s, cToolTip::TextoDeBotao,
                     cToolTip::FundoDeDica, Espera, Vida);
    pctVerificarAtualizacoes->Tag.clear();
}

void frmPesquisa::CarregarDadosVerificacao(bool sAtualizarUltimaDataVerificacao) {
    const auto registro = gDB->OpenRecordset(
        u"SELECT "
        "DataEmissao,"
        "ComplementoDataEmissao,"
        "DataUltimaVerificacao,"
        "FlagErroUltimaVerificacao "
        "FROM "
        "UMREGISTRO"_s,
        dao::dbOpenForwardOnly);
    const QVariant ultima = registro->Fields(u"DataUltimaVerificacao"_s).Value();
    const bool nunca = convert::IsNull(ultima);
    if (sAtualizarUltimaDataVerificacao) {
        DataUltimaVerificacaoTela = nunca ? NuncaVerificado : convert::ToDouble(ultima);
    }

    TextoEmissao = FormatarData(convert::ToDouble(registro->Fields(u"DataEmissao"_s).Value())) +
                   convert::ToTextOrEmpty(registro->Fields(u"ComplementoDataEmissao"_s).Value());
    lblEmissao->SetText(TextoEmissao);

    if (nunca) {
        pctVerificarAtualizacoes->Tag = u" "_s;
        return;
    }
    const QVariant falhou = registro->Fields(u"FlagErroUltimaVerificacao"_s).Value();
    pctVerificarAtualizacoes->Tag =
        (!convert::IsNull(falhou) && convert::ToInt64(falhou) == 1 ? u"ERRO na Última Verificação"_s
                                                                   : u"Última Verificação"_s) +
        u": "_s + FormatarDataHora(convert::ToDouble(ultima));
}
