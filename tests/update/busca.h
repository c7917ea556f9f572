#pragma once

#include "support/database.h"
#include "update/acesso.h"
#include "update/internet.h"

// A request of the update's way to its server, in the few words that most tests need.
struct Credentials {
    AnyText user;
    AnyText password;
    bool dialogs = true;
};

// The text that came, or the failure.
inline QString Fetch(const AnyText& path, const Credentials& with = {}) {
    QString text;
    const QString failure = SaidBy([&] {
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
