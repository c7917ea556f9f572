#include "platform/erro.h"
#include "platform/system/process_native.h"

#include <QDir>
#include <QProcess>

#include <limits>
#include <memory>
#include <string>
#include <unordered_map>
#include <windows.h>

using namespace Qt::StringLiterals;

namespace {

struct Closer {
    using pointer = HANDLE;
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<HANDLE, Closer>;

// Of the processes that this one started, kept so that the exit code stays readable and the
// identifier is given to nobody else.
std::unordered_map<sys::ProcessId, Handle>& Children() {
    static std::unordered_map<sys::ProcessId, Handle> children;
    return children;
}

constexpr DWORD ElevationRequired = 740;  // the program wants to be started by an administrator

Erro StartError(DWORD reason) {
    switch (reason) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_BAD_PATHNAME:
        case ERROR_BAD_NETPATH:
        case ERROR_INVALID_NAME:
            return Erro(Erro::FileNotFound);
        case ERROR_ACCESS_DENIED:
        case ElevationRequired:
            return Erro(Erro::PermissionDenied);
        default:
            return Erro(Erro::InvalidArgument);
    }
}

// What is known of a process that is somebody else's child.
struct Stranger {
    Handle handle;       // null: there is none, or this user may not watch it
    bool there = false;  // a process of another user is there without a handle, too
};

Stranger Find(sys::ProcessId process) {
    if (process <= 0 || process > std::numeric_limits<DWORD>::max()) {
        return {};
    }
    Handle handle(
        OpenProcess(SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, DWORD(process)));
    const bool there = handle || GetLastError() == ERROR_ACCESS_DENIED;
    return {std::move(handle), there};
}

bool HasEnded(HANDLE handle) {
    return WaitForSingleObject(handle, 0) == WAIT_OBJECT_0;
}

int CodeOf(HANDLE handle) {
    if (!HasEnded(handle)) {
        return sys::StillActive;
    }
    DWORD code = 0;
    return GetExitCodeProcess(handle, &code) ? int(code) : 0;
}

}  // namespace

// A program gets its command line as it stands there, and splits it as it likes. One without an
// ending is taken for an .exe.
sys::ProcessId sys::StartNative(const CommandLine& command, int windowStyle, Rest) {
    const QString program = QDir::toNativeSeparators(NativeProgram(command.program));
    std::wstring line = (u'"' + program + u"\" "_s + command.rest).toStdWString();
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = static_cast<WORD>(windowStyle);
    PROCESS_INFORMATION started = {};
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, CREATE_UNICODE_ENVIRONMENT,
                        nullptr, nullptr, &startup, &started)) {
        throw StartError(GetLastError());
    }
    CloseHandle(started.hThread);
    Children()[started.dwProcessId] = Handle(started.hProcess);
    return started.dwProcessId;
}

int sys::ExitCode(ProcessId process) {
    if (const auto child = Children().find(process); child != Children().end()) {
        return CodeOf(child->second.get());
    }
    return IsRunning(process) ? StillActive : 0;
}

bool sys::IsRunning(ProcessId process) {
    if (const auto child = Children().find(process); child != Children().end()) {
        return !HasEnded(child->second.get());
    }
    const Stranger stranger = Find(process);
    return stranger.handle ? !HasEnded(stranger.handle.get()) : stranger.there;
}

void sys::WaitForEnd(ProcessId process) {
    if (const auto child = Children().find(process); child != Children().end()) {
        WaitForSingleObject(child->second.get(), INFINITE);
        return;
    }
    if (const Stranger stranger = Find(process); stranger.handle) {
        WaitForSingleObject(stranger.handle.get(), INFINITE);
        return;
    }
    constexpr DWORD PollMilliseconds = 50;
    while (IsRunning(process)) {
        Sleep(PollMilliseconds);
    }
}

int sys::GoOnAs(const QString& program, const QStringList& arguments) {
    constexpr int NotStarted = -2;  // of the toolkit
    const int code = QProcess::execute(QDir::toNativeSeparators(NativeProgram(program)), arguments);
    if (code == NotStarted) {
        throw Erro(Erro::FileNotFound);
    }
    return code;
}
