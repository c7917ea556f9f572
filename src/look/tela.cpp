#include "look/tela.h"

using namespace Qt::StringLiterals;

namespace {

QString NomeDaAcesa(const QString& zona) {
    QString nome = zona;
    if (nome.contains(u"Fundo"_s)) {
        return nome.replace(u"Fundo"_s, u"Selecionada"_s);
    }
    return nome + u"Selecionada"_s;
}

// The child that a table or a statement of a screen names. That there is none is the program's
// fault, which the first opening tells.
template <typename Controle>
Controle& Filho(const QWidget& pai, const QString& nome) {
    auto* controle = pai.findChild<Controle*>(nome);
    if (!controle) {
        qFatal("no control %ls", qUtf16Printable(nome));
    }
    return *controle;
}

}  // namespace

forms::ClickZone* Tela::CriarBotao(const Botao& botao, QWidget* pai,
                                   const std::shared_ptr<forms::Artwork>& desenho) {
    acesas_.append({botao.palavra, new forms::LitPicture(NomeDaAcesa(botao.zona), desenho, pai)});
    auto* zona = new forms::ClickZone(botao.zona, botao.descricao, pai);
    zona->setFocusPolicy(Qt::TabFocus);
    connect(zona, &forms::ClickZone::MouseMove, this,
            [this, palavra = botao.palavra] { MostrarSelecionada(palavra); });
    return zona;
}

forms::LitPicture& Tela::AcesaDe(const forms::ClickZone& zona) {
    return Filho<forms::LitPicture>(*zona.parentWidget(), NomeDaAcesa(zona.objectName()));
}

void Tela::CriarBotoes(std::span<const Botao> botoes) {
    for (const Botao& botao : botoes) {
        CriarBotao(botao, Picture(), Background());
    }
    CriarBotaoMinimizar();
}

void Tela::CriarBotaoMinimizar() {
    auto* zona = new forms::ClickZone(u"imgMinimizar"_s, u"Minimizar a janela"_s, Picture());
    zona->setFocusPolicy(Qt::TabFocus);
    connect(zona, &forms::ClickZone::Click, this, [this] { Minimize(); });
}

void Tela::AoClicar(const QString& zona, std::function<void()> acao) {
    connect(&Filho<forms::ClickZone>(*Picture(), zona), &forms::ClickZone::Click, this,
            std::move(acao));
}

void Tela::OrdenarTabulacao(std::initializer_list<const char16_t*> nomes) {
    QWidget* anterior = nullptr;
    for (const char16_t* nome : nomes) {
        auto& controle = Filho<QWidget>(*Picture(), QString::fromUtf16(nome));
        if (anterior) {
            setTabOrder(anterior, &controle);
        }
        anterior = &controle;
    }
}

void Tela::DarTeclado(QWidget& controle) {
    const QWidget* atual = focusWidget();
    if (!atual || atual == Picture() || qobject_cast<const forms::ClickZone*>(atual)) {
        controle.setFocus();
    }
}

void Tela::Posicionar(std::span<const Lugar> lugares) {
    for (const Lugar& lugar : lugares) {
        Filho<QWidget>(*Picture(), QString::fromUtf16(lugar.nome)).setGeometry(lugar.retangulo);
    }
}

QWidget* Tela::ImagemSelecionada(const QString& palavra) const {
    for (const auto& [nome, acesa] : acesas_) {
        if (nome == palavra) {
            return acesa;
        }
    }
    return nullptr;
}
