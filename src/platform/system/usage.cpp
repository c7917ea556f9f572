#include "platform/system/usage.h"

#include <QTextStream>

using namespace Qt::StringLiterals;

void sys::Print(std::FILE* stream, const QString& text) {
    QTextStream out(stream);
    out.setEncoding(QStringConverter::System);
    out << text;
}

bool sys::AnswerUsage(const QStringList& arguments, const QString& program, const QString& usage) {
    if (arguments == QStringList{u"--help"_s}) {
        Print(stdout, usage);
        return true;
    }
    if (arguments == QStringList{u"--version"_s}) {
        Print(stdout, program + u" " TARVO_VERSION "\n"_s);
        return true;
    }
    return false;
}
