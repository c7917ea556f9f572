#include "update/acesso.h"

#include "platform/forms/application.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "platform/forms/owner.h"
#include "platform/secret.h"
#include "session/global.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

// Design pixels.
constexpr int LarguraTexto = 320;
constexpr int LarguraBotao = 96;

PedidoDeAcesso& Substituto() {
    static PedidoDeAcesso pedido;
    return pedido;
}

std::optional<AcessoDigitado>& Lembrado() {
    static std::optional<AcessoDigitado> acesso;
    return acesso;
}

class Dialogo : public QDialog {
public:
    explicit Dialogo(const AcessoAoProxy& acesso) {
        setWindowTitle(TituloCatalogo);
        auto* grade = new QGridLayout(this);
        grade->setContentsMargins(18, 16, 18, 14);
        grade->setHorizontalSpacing(12);
        grade->setVerticalSpacing(10);
        grade->setSizeConstraint(QLayout::SetFixedSize);
        grade->addWidget(Texto(Explicacao(acesso)), 0, 0, 1, 2);
        txtUsuario = Caixa(grade, 1, u"txtUsuario"_s, u"&Usuário"_s);
        txtUsuario->setText(acesso.usuario);
        txtSenha = Caixa(grade, 2, u"txtSenha"_s, u"&Senha"_s);
        txtSenha->setEchoMode(QLineEdit::Password);
        grade->addWidget(Botoes(), 3, 0, 1, 2, Qt::AlignHCenter);
        (acesso.usuario.isEmpty() ? txtUsuario : txtSenha)->setFocus();
    }

    forms::TextBox* txtUsuario = nullptr;
    forms::TextBox* txtSenha = nullptr;

private:
    static QString Explicacao(const AcessoAoProxy& acesso) {
        QString texto =
            acesso.recusado ? u"O proxy recusou o usuário ou a senha.\n\n"_s : QString();
        texto += u"A atualização passa por um servidor proxy que pede usuário e senha."_s +
                 u"\n\n"_s + u"Proxy: "_s + acesso.proxy;
        if (!acesso.area.isEmpty()) {
            texto += u"\nÁrea: "_s + acesso.area;
        }
        return texto;
    }

    QLabel* Texto(const QString& texto) {
        auto* rotulo = new QLabel(this);
        rotulo->setTextFormat(Qt::PlainText);  // the area's name comes from outside
        rotulo->setText(texto);
        rotulo->setWordWrap(true);
        rotulo->setFixedWidth(LarguraTexto);
        return rotulo;
    }

    forms::TextBox* Caixa(QGridLayout* grade, int linha, const QString& nome,
                          const QString& palavra) {
        auto* caixa = new forms::TextBox(nome, QString(palavra).remove(u'&'), this);
        auto* rotulo = new QLabel(palavra, this);
        rotulo->setBuddy(caixa);
        grade->addWidget(rotulo, linha, 0);
        grade->addWidget(caixa, linha, 1);
        return caixa;
    }

    QWidget* Botoes() {
        auto* caixa = new QDialogButtonBox(this);
        auto* ok = caixa->addButton(u"OK"_s, QDialogButtonBox::ActionRole);
        auto* cancelar = caixa->addButton(u"&Cancelar"_s, QDialogButtonBox::ActionRole);
        for (QPushButton* botao : {ok, cancelar}) {
            botao->setMinimumWidth(LarguraBotao);
        }
        connect(ok, &QPushButton::clicked, this, &QDialog::accept);
        connect(cancelar, &QPushButton::clicked, this, &QDialog::reject);
        return caixa;
    }
};

}  // namespace

bool PedirAcessoAoProxy(AcessoAoProxy& acesso) {
    if (const PedidoDeAcesso pedido = Substituto()) {
        return pedido(acesso);
    }
    Dialogo dialogo(acesso);
    dialogo.adjustSize();
    if (!forms::Form::Active()) {
        // The verifier has no window of its own to stand over: the catalogue would hide it.
        dialogo.setWindowFlag(Qt::WindowStaysOnTopHint);
    }
    forms::PlaceOverActiveForm(dialogo);
    const bool aceito = dialogo.exec() == QDialog::Accepted;
    acesso.usuario = dialogo.txtUsuario->text();
    acesso.senha = dialogo.txtSenha->text();
    return aceito;
}

void SetPedidoDeAcesso(PedidoDeAcesso pedido) {
    Substituto() = std::move(pedido);
}

void LembrarAcesso(const AcessoDigitado& acesso) {
    Lembrado() = acesso;
}

void EsquecerAcesso() {
    if (Lembrado()) {
        secret::Wipe(Lembrado()->usuario);
        secret::Wipe(Lembrado()->senha);
        Lembrado().reset();
    }
}

const AcessoDigitado* AcessoLembrado() {
    return Lembrado() ? &*Lembrado() : nullptr;
}
