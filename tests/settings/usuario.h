#pragma once

#include "session/global.h"
#include "settings/arquivo.h"
#include "support/test.h"

// What is stored, as it is read: "1|user|password".
inline QString Lido() {
    QString usuario = u"?"_s;
    QString senha = usuario;
    LerConfiguracao(u"VERIFICACAOAUTOMATICA"_s, usuario, senha);
    LerConfiguracao(u"USUARIO_SENHA"_s, usuario, senha);
    return u"%1|%2|%3"_s.arg(int(VerificacaoAutomatica)).arg(usuario, senha);
}

// Each test with the data folder of a user of its own.
struct ComUsuario : Fixture {
    const QTemporaryDir pasta_;
    const QByteArray anterior_ = qgetenv(UserData);

    ComUsuario() { qputenv(UserData, pasta_.path().toUtf8()); }
    ~ComUsuario() override { qputenv(UserData, anterior_); }

    QString Ordavia() const { return pasta_.filePath(u"Ordavia"_s); }
    QString Configuracao() const { return Ordavia() + u"/CatalogoTarvoConfig.txt"_s; }
    QString Guardado() const { return sys::ReadText(Configuracao()); }
};
