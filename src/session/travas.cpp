#include "session/travas.h"

using namespace Qt::StringLiterals;

QString FaltaDeTravas(const QString& pasta) {
    return FaltaDeTravas(pasta, sys::MountOf(pasta + u"Tarvo.mdb"_s));
}

QString FaltaDeTravas(const QString& pasta, const sys::Mount& volume) {
    if (const QString opcao = sys::LocalLocksOption(volume); !opcao.isEmpty()) {
        return u"A pasta de dados está montada (%1) com a opção \"%2\": as travas de arquivo não "
               "chegam aos outros computadores."_s.arg(volume.type, opcao);
    }
    switch (sys::ProbeLock(pasta + u"Tarvo.mdb"_s)) {
        case sys::LockAnswer::Ignored:
            return u"O sistema de arquivos da pasta de dados (%1) concede a mesma trava duas vezes."_s
                .arg(volume.type);
        case sys::LockAnswer::Refused:
            return u"O sistema de arquivos da pasta de dados (%1) não concede travas; em NFS, "
                   u"falta o "
                   "serviço de travas."_s.arg(volume.type);
        case sys::LockAnswer::Kept:
        case sys::LockAnswer::Unknown:
            break;
    }
    return {};
}
