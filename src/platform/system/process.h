#pragma once

#include <QString>
#include <QStringList>

#include <functional>

// Starting and watching programs. Everything about processes stands in process.cpp and, by system,
// in process_posix.cpp and process_windows.cpp.
namespace sys {

using ProcessId = qint64;

inline constexpr int StillActive = 259;

// What becomes of the text behind the program: pieces as the platform splits them, or one piece
// with every blank in it.
enum class Rest { Pieces, Whole };

// Starts a command line: the program first, in double quotes if its path has blanks. The program's
// path may be a path text of the system. `windowStyle` 1: normal with focus, 0: hidden. Returns the
// process's identifier. Erro 53 when there is no such program, 70 when it may not be started, 5 for
// an empty text or a file that is no program.
ProcessId Start(const QString& commandLine, int windowStyle, Rest rest = Rest::Pieces);

// StillActive while the process of this identifier runs, its exit code afterwards (0 when it was
// not started by this program). Never waits.
int ExitCode(ProcessId process);

ProcessId OwnProcessId();
bool IsRunning(ProcessId process);  // also for a process that somebody else started

// Waits without a busy loop until the process has ended.
void WaitForEnd(ProcessId process);

// Goes on as another program, in the same console; where the system has no such thing, waits for
// it. Returns its exit code, if at all. Errors as of Start.
int GoOnAs(const QString& program, const QStringList& arguments);

// Ends this process at once, after the buffers are flushed: no screen, no unload.
[[noreturn]] void ExitNow(int code);

// Puts something in place of Start (tests). An empty function restores the real one.
using StartHandler = std::function<ProcessId(const QString& commandLine, int windowStyle)>;
void SetStartHandler(StartHandler handler);

}  // namespace sys
