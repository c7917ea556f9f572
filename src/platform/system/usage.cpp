#include "platform/system/usage.h"

#include <QTextStream>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

void sys::Print(std::FILE* stream, const QString& text) {
    QTextStream out(stream);
    out.setEncoding(QStringConverter::System);
    out << text;
}

bool sys::IsTerminal(std::FILE* stream) {
#ifdef Q_OS_WIN
    return _isatty(_fileno(stream)) != 0;
#else
    return isatty(fileno(stream)) != 0;
#endif
}

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
