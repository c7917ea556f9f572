#include "settings/configuracoes.h"

#include "platform/erro.h"
#include "platform/forms/application.h"
#include "platform/secret.h"
#include "session/erros.h"
#include "session/global.h"
#include "settings/arquivo.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int MaximoCaracteres = 20;

// Design pixels.
const Lugar Lugares[] = {
    {u"imgVerificarAuto", {30, 66, 330, 24}},
    {u"imgXVerificarAuto", {31, 67, 20, 20}},
    {u"img_VerificarAuto", {31, 67, 20, 20}},
    {u"txtUsuario", {92, 127, 93, 21}},
    {u"txtSenha", {92, 149, 93, 21}},
    {u"imgOk", {269, 182, 37, 27}},
    {u"imgOkSelecionada", {258, 181, 49, 29}},
    {u"imgCancelar", {338, 182, 76, 27}},
    {u"imgCancelarSelecionada", {327, 181, 87, 29}},
    {u"pctFocus", {0, 187, 48, 17}},
};

forms::TextBox* NovoCampo(const QString& nome, const QString& descricao, QWidget* pai) {
    auto* campo = new forms::TextBox(nome, descricao, pai);
    campo->setMaxLength(MaximoCaracteres);
    return campo;
}

}  // namespace

void frmConfiguracoes::Abrir() {
    const forms::Busy ocupado;
    try {
        UnicaInstancia<frmConfiguracoes>().ShowModal();
    } catch (const Erro& erro) {
        MostrarErro(erro.Number(), erro.Description());
    }
}

frmConfiguracoes::frmConfiguracoes()
    : TelaDeDialogo(Nome, QSize(434, 234), u"configuracoes"_s),
      imgVerificarAuto(nullptr),
      imgXVerificarAuto(new forms::LitPicture(u"imgXVerificarAuto"_s, Background(), Picture())),
      img_VerificarAuto(new forms::Panel(u"img_VerificarAuto"_s, QString(), Picture())),
      txtUsuario(NovoCampo(u"txtUsuario"_s, u"Usuário do proxy"_s, Picture())),
      txtSenha(NovoCampo(u"txtSenha"_s, u"Senha do proxy"_s, Picture())) {
    imgVerificarAuto = new forms::ClickZone(u"imgVerificarAuto"_s,
                                            u"Verificar atualizações automaticamente"_s, Picture());
    imgVerificarAuto->setFocusPolicy(Qt::TabFocus);
    txtSenha->setEchoMode(QLineEdit::Password);
    CriarBotao({u"OK"_s, u"imgOk"_s, u"OK"_s}, Picture(), Background());
    CriarBotao({u"CANCELAR"_s, u"imgCancelar"_s, u"Cancelar"_s}, Picture(), Background());
    new forms::Panel(u"pctFocus"_s, QString(), Picture());
    OrdenarTabulacao({u"imgVerificarAuto", u"txtUsuario", u"txtSenha", u"imgOk", u"imgCancelar"});
    LigarEventos();
}

void frmConfiguracoes::LigarEventos() {
    ApagarSobre<Form>(this);
    ApagarSobre(imgVerificarAuto);
    connect(imgVerificarAuto, &forms::ClickZone::MouseDown, this,
            [this] { MarcarVerificacao(imgVerificarAuto->Tag == u"0"_s); });
    connect(txtUsuario, &forms::TextBox::LostFocus, this, &frmConfiguracoes::AparaUsuario);
    AoClicar(u"imgOk"_s, [this] { Confirmar(); });
    AoClicar(u"imgCancelar"_s, [this] { Cancelar(); });
}

void frmConfiguracoes::PosicionarControles() {
    Posicionar(Lugares);
}

void frmConfiguracoes::Load() {
    PosicionarControles();
    MarcarVerificacao(VerificacaoAutomatica);
    QString usuario;
    QString senha;
    LerConfiguracao(u"USUARIO_SENHA"_s, usuario, senha);
    txtUsuario->setText(usuario);
    txtUsuario->setCursorPosition(0);  // a long name is seen from its beginning
    txtSenha->setText(senha);
    secret::Wipe(usuario);
    secret::Wipe(senha);
}

void frmConfiguracoes::MarcarVerificacao(bool ligada) {
    imgVerificarAuto->Tag = ligada ? u"1"_s : u"0"_s;
    imgVerificarAuto->SetTicked(ligada);
    imgXVerificarAuto->setVisible(ligada);
    img_VerificarAuto->setVisible(!ligada);
}

void frmConfiguracoes::AparaUsuario() {
    txtUsuario->setText(txtUsuario->text().trimmed());
}

void frmConfiguracoes::Confirmar() {
    const forms::Busy ocupado;
    AparaUsuario();
    GravarConfiguracao(imgVerificarAuto->Tag, txtUsuario->text(), txtSenha->text(), true);
    VerificacaoAutomatica = imgVerificarAuto->Tag == u"1"_s;
    Unload();
}

void frmConfiguracoes::Cancelar() {
    const forms::Busy ocupado;
    Unload();
}
