#include "platform/system/usage.h"

using namespace Qt::StringLiterals;

bool sys::AnswerUsage(const QStringList& arguments, const QString& program, const QString& usage) {
    if (arguments == QStringList{u"--help"_s} || arguments == QStringList{u"--ajuda"_s}) {
        Print(stdout, usage);
        return true;
    }
    if (arguments == QStringList{u"--version"_s} || arguments == QStringList{u"--versao"_s}) {
        Print(stdout, program + u" " TARVO_VERSION "\n"_s);
        return true;
    }
    return false;
}
