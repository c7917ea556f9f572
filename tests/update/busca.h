#pragma once

#include "support/test.h"
#include "update/acesso.h"
#include "update/internet.h"

// A request of the update's way to its server, in the few words that most tests need.
struct Credentials {
    AnyText user;
    AnyText password;
    bool dialogs = true;
};

// Number and description of the Erro that `work` throws; empty for none.
template <typename Work>
QString Failure(Work&& work) {
    try {
        work();
    } catch (const Erro& erro) {
        return QString::number(erro.Number()) + u' ' + erro.Description();
    }
    return {};
}

// The text that came, or the failure.
inline QString Fetch(const AnyText& path, const Credentials& with = {}) {
    QString text;
    const QString failure = Failure([&] {
        text = HttpExecutar(u"D"_s, with.dialogs, path, true, {}, {}, {}, with.user, with.password);
    });
    return failure.isEmpty() ? text : failure;
}

// Answers the log-in dialog with "user/password", the last answer again and again, and keeps how
// often it came. Without answers it is cancelled.
class Logins {
public:
    explicit Logins(const AnyTexts& answers) {
        SetPedidoDeAcesso([this, answers](AcessoAoProxy& acesso) {
            const QString answer = answers.value(qMin(asked.size(), answers.size() - 1));
            asked.append(acesso);
            acesso.usuario = answer.section(u'/', 0, 0);
            acesso.senha = answer.section(u'/', 1);
            return !answer.isEmpty();
        });
    }
    ~Logins() {
        SetPedidoDeAcesso({});
        EsquecerAcesso();
    }

    QList<AcessoAoProxy> asked;
};
