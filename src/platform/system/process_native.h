#pragma once

#include "platform/system/process.h"

// What process.cpp asks of each system; process_posix.cpp and process_windows.cpp hold it, and with
// it what process.h declares about a process that runs.
namespace sys {

struct CommandLine {
    QString program;
    QString rest;
};

// A program's path in the platform's form; a name without a folder is left to the platform's own
// search.
QString NativeProgram(const QString& program);

ProcessId StartNative(const CommandLine& command, int windowStyle, Rest rest);  // Erro 5, 53, 70

}  // namespace sys
