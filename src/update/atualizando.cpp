#include "update/atualizando.h"

#include "look/paleta.h"
#include "platform/convert.h"
#include "platform/erro.h"
#include "platform/forms/application.h"
#include "platform/forms/msgbox.h"
#include "session/erros.h"
#include "session/global.h"

#include <algorithm>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

const QString frmAtualizando::Nome = u"frmAtualizando"_s;

namespace {

constexpr quint8 Passos = 4;
constexpr int LarguraTotal = 216;

// Design pixels; the tops are those of the four rows.
struct Coluna {
    int esquerda;
    std::array<int, Passos> topos;
    QSize tamanho;
};
constexpr Coluna PassoAtual{38, {68, 119, 172, 223}, {15, 19}};
constexpr Coluna PassoConcluido{35, {68, 119, 172, 223}, {23, 18}};
constexpr Coluna Borda{85, {90, 142, 194, 246}, {228, 17}};
constexpr Coluna Barra{91, {94, 146, 198, 250}, {0, 9}};
constexpr QRect Espera{27, 276, 400, 23};

void PorEmFila(const std::array<forms::Panel*, Passos + 1>& imagens, const Coluna& coluna) {
    for (quint8 passo = 1; passo <= Passos; ++passo) {
        imagens.at(passo)->setGeometry(
            QRect(QPoint(coluna.esquerda, coluna.topos.at(passo - 1u)), coluna.tamanho));
    }
}

}  // namespace

frmAtualizando::frmAtualizando() : TelaDeDialogo(Nome, QSize(434, 299), u"atualizando"_s) {
    const auto criar = [this](auto& imagens, const QString& nome, const QString& desenho) {
        for (quint8 passo = 1; passo <= Passos; ++passo) {
            auto* imagem =
                new forms::Panel(nome + u'(' + QString::number(passo) + u')', desenho, Picture());
            imagem->setFocusPolicy(Qt::NoFocus);
            imagem->hide();
            imagens.at(passo) = imagem;
        }
    };
    // What the drawing says, for who does not see it: the mark in view names the step under way.
    static const QString nomes[] = {u"Consultando as novas versões"_s, u"Baixando os arquivos"_s,
                                    u"Instalando os arquivos"_s, u"Atualizando o catálogo"_s};
    criar(imgPassoAtualAtualizacao, u"imgPassoAtualAtualizacao"_s, u"atualizando-passo"_s);
    for (quint8 passo = 1; passo <= Passos; ++passo) {
        imgPassoAtualAtualizacao.at(passo)->setAccessibleName(nomes[passo - 1]);
    }
    criar(imgPassoConcluidoAtualizacao, u"imgPassoConcluidoAtualizacao"_s,
          u"atualizando-concluido"_s);
    criar(imgBordaBarraAtualizacao, u"imgBordaBarraAtualizacao"_s, u"atualizando-borda"_s);
    criar(imgBarraAtualizacao, u"imgBarraAtualizacao"_s, u"atualizando-barra"_s);
    lblEspera = new forms::Label(u"lblEspera"_s, Picture());
    // Over the foot of the drawing, which says something else.
    QPalette fundo;
    fundo.setColor(lblEspera->backgroundRole(), Paleta::Atual().petroleoFundo);
    lblEspera->setPalette(fundo);
    lblEspera->setAutoFillBackground(true);
    lblEspera->SetForeColor(Paleta::Atual().gelo);
    lblEspera->hide();
    connect(&instalacao_, &Instalacao::Esperando, this, &frmAtualizando::MostrarEspera);
    connect(&instalacao_, &Instalacao::PassoAberto, this, &frmAtualizando::AbrirPasso);
    connect(&instalacao_, &Instalacao::Avancou, this, &frmAtualizando::Avancar);
    connect(&instalacao_, &Instalacao::PassoConcluido, this, &frmAtualizando::FecharPasso);
}

void frmAtualizando::PosicionarControles() {
    PorEmFila(imgPassoAtualAtualizacao, PassoAtual);
    PorEmFila(imgPassoConcluidoAtualizacao, PassoConcluido);
    PorEmFila(imgBordaBarraAtualizacao, Borda);
    PorEmFila(imgBarraAtualizacao, Barra);
    lblEspera->setGeometry(Espera);
}

void frmAtualizando::Load() {
    PosicionarControles();
    Tag = std::exchange(ParametroFormulario, QString());
}

// The whole update runs inside the first activation, with events let through.
void frmAtualizando::PrimeiraAtivacao() {
    repaint();
    forms::DoEvents();
    Atualizar(convert::ToInt16(Tag.section(u'|', 0, 0)), convert::ToInt16(Tag.section(u'|', 1, 1)));
}

void frmAtualizando::Atualizar(qint16 VersaoAtual, qint16 VersaoNova) {
    try {
        instalacao_.Atualizar(VersaoAtual, VersaoNova);
        forms::MsgBox(u"Atualização concluída com sucesso."_s, forms::vbInformation,
                      TituloCatalogo);
        instalacao_.IniciarProgramaInstalado();
    } catch (const Erro& erro) {
        MostrarFalha(erro);
    }
    const forms::Busy ocupado;
    Unload();
}

void frmAtualizando::MostrarFalha(const Erro& erro) {
    if (!instalacao_.Interrompida()) {
        MostrarErro(erro.Number(), erro.Description());
        return;
    }
    forms::MsgBox(instalacao_.NadaGravou()
                      ? u"Atualização cancelada. O catálogo continua como estava."_s
                      : u"Atualização interrompida. Uma parte dela já está no catálogo; a "
                        "próxima atualização recomeça do início."_s,
                  forms::vbInformation, TituloCatalogo);
}

void frmAtualizando::CloseRequested() {
    if (instalacao_.Interrompida() || !instalacao_.PodeInterromper()) {
        return;
    }
    const int resposta = forms::MsgBox(
        instalacao_.NadaGravou() ? u"Deseja cancelar a atualização?"_s
        : instalacao_.Espera()
            ? lblEspera->Text() + u".\n\nDeseja interromper a atualização?"_s
            : u"Um comando da atualização está demorando. Deseja interromper a atualização?"_s,
        forms::vbYesNo | forms::vbQuestion | forms::vbDefaultButton2, TituloCatalogo);
    if (resposta == forms::vbYes) {
        instalacao_.Interromper();
    }
}

int frmAtualizando::LarguraDaBarra(qint64 valor, qint64 maximo) {
    const double parte = maximo <= 0 ? 1.0 : std::min(double(valor) / double(maximo), 1.0);
    return int(std::nearbyint(parte * LarguraTotal));
}

void frmAtualizando::AtualizarProgressBar(quint8 sPasso) {
    forms::Panel* barra = imgBarraAtualizacao.at(sPasso);
    const int largura = LarguraDaBarra(barras_.at(sPasso).valor, barras_.at(sPasso).maximo);
    if (barra->width() == largura) {
        return;  // the usual case among very many small pieces
    }
    barra->resize(largura, barra->height());
    barra->repaint();
}

void frmAtualizando::Avancar(quint8 sPasso, qint64 quanto) {
    barras_.at(sPasso).valor += quanto;
    AtualizarProgressBar(sPasso);
}

void frmAtualizando::AbrirPasso(quint8 sPasso, qint64 maximo) {
    imgPassoAtualAtualizacao.at(sPasso)->show();
    imgBordaBarraAtualizacao.at(sPasso)->show();
    imgBarraAtualizacao.at(sPasso)->show();
    barras_.at(sPasso) = {maximo, 0};
}

void frmAtualizando::MostrarEspera(const QString& porQuem) {
    lblEspera->SetText(u"À espera de "_s + porQuem);
    lblEspera->setVisible(!porQuem.isEmpty());
}

void frmAtualizando::FecharPasso(quint8 sPasso) {
    barras_.at(sPasso).valor = barras_.at(sPasso).maximo;
    AtualizarProgressBar(sPasso);
    forms::DoEvents();
    imgPassoAtualAtualizacao.at(sPasso)->hide();
    imgPassoConcluidoAtualizacao.at(sPasso)->show();
}
