#pragma once

#include "platform/system/paths.h"
#include "support/test.h"
#include "update/acesso.h"
#include "update/internet.h"

// A request of the update's way to its server, in the few words that most tests need.
struct Credentials {
    AnyText user;
    AnyText password;
    bool dialogs = true;
};

inline QString Fetch(const AnyText& path, const Credentials& with = {}) {
    return HttpExecutar(u"D"_s, with.dialogs, path, true, {}, {}, {}, with.user, with.password);
}
inline QByteArray FetchBytes(const AnyText& path, const Credentials& with = {},
                             const QString& file = {}) {
    const QString fetched =
        HttpExecutar(u"D"_s, with.dialogs, path, false, file, {}, {}, with.user, with.password);
    return file.isEmpty() || fetched == file ? sys::ReadBytes(fetched) : "not where it was wanted";
}

// Description of the Erro that `work` throws, its number in front; empty for none.
template <typename Work>
QString Failure(Work&& work) {
    try {
        work();
    } catch (const Erro& erro) {
        return QString::number(erro.Number()) + u' ' + erro.Description();
    }
    return {};
}

// Answers the log-in dialog with "user/password", the last answer again and again, and keeps how
// often it came. Without answers it is cancelled.
class Logins {
public:
    explicit Logins(const AnyTexts& answers) : answers_(answers) {
        SetPedidoDeAcesso([this](AcessoAoProxy& acesso) {
            asked.append(acesso);
            if (answers_.isEmpty()) {
                return false;
            }
            const QString answer = answers_.size() > 1 ? answers_.takeFirst() : answers_.first();
            acesso.usuario = answer.section(u'/', 0, 0);
            acesso.senha = answer.section(u'/', 1);
            return true;
        });
    }
    ~Logins() { SetPedidoDeAcesso({}); }

    QList<AcessoAoProxy> asked;

private:
    QStringList answers_;
};
