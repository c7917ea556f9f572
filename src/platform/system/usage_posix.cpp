#include "platform/system/usage.h"

#include <QTextStream>

#include <unistd.h>

void sys::Print(std::FILE* stream, const QString& text) {
    QTextStream out(stream);
    out.setEncoding(QStringConverter::System);
    out << text;
}

bool sys::IsTerminal(std::FILE* stream) {
    return isatty(fileno(stream)) != 0;
}
