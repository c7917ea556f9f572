#pragma once

#include "support/database.h"
#include "update/acesso.h"
#include "update/internet.h"

// A request of the update's way to its server, in the few words that most tests need: the text that
// came, or the failure. A stored password is maria's.
inline QString Fetch(const AnyText& path, const AnyText& password = {}, bool dialogs = true) {
    const QString user = password.isEmpty() ? QString() : u"maria"_s;
    QString text;
    const QString failure = SaidBy(
        [&] { text = HttpExecutar(u"D"_s, dialogs, path, true, {}, {}, {}, user, password); });
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
