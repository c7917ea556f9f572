#include "platform/system/process.h"

#include "platform/erro.h"
#include "platform/system/paths.h"
#include "platform/system/process_native.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {

sys::CommandLine Split(const QString& text) {
    const QString line = text.trimmed();
    const bool quoted = line.startsWith(u'"');
    const qsizetype end = line.indexOf(quoted ? u'"' : u' ', 1);
    if (end < 0) {
        return {quoted ? line.mid(1) : line, QString()};
    }
    return {line.mid(quoted ? 1 : 0, quoted ? end - 1 : end), line.mid(end + 1).trimmed()};
}

sys::StartHandler& Handler() {
    static sys::StartHandler handler;
    return handler;
}

}  // namespace

QString sys::NativeProgram(const QString& program) {
    const bool hasFolder = program.contains(u'\\') || program.contains(u'/');
    return hasFolder ? ToNative(program) : program;
}

sys::ProcessId sys::Start(const QString& commandLine, int windowStyle, Rest rest) {
    if (Handler()) {
        return Handler()(commandLine, windowStyle);
    }
    const CommandLine command = Split(commandLine);
    if (command.program.isEmpty()) {
        throw Erro(Erro::InvalidArgument);
    }
    return StartNative(command, windowStyle, rest);
}

sys::ProcessId sys::OwnProcessId() {
    return QCoreApplication::applicationPid();
}

void sys::ExitNow(int code) {
    std::fflush(nullptr);
    std::_Exit(code);
}

void sys::SetStartHandler(StartHandler handler) {
    Handler() = std::move(handler);
}
