#include "platform/erro.h"
#include "platform/system/process_native.h"

#include <QFile>
#include <QProcess>
#include <QThread>

#include <cerrno>
#include <limits>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <unordered_map>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

// Exit codes of the processes that this one started; StillActive until the end was seen.
std::unordered_map<sys::ProcessId, int>& Children() {
    static std::unordered_map<sys::ProcessId, int> children;
    return children;
}

constexpr int SignalBase = 128;  // as shells report the death by a signal

int ExitCodeOf(int status) {
    return WIFEXITED(status) ? WEXITSTATUS(status) : SignalBase + WTERMSIG(status);
}

// Reaps a child of ours. With WNOHANG in `options` it returns at once.
int Reap(int& exitCode, pid_t process, int options) {
    if (exitCode != sys::StillActive) {
        return exitCode;
    }
    int status = 0;
    const pid_t ended = TEMP_FAILURE_RETRY(waitpid(process, &status, options));
    if (ended > 0) {
        exitCode = ExitCodeOf(status);
    } else if (ended == -1) {
        exitCode = 0;
    }
    return exitCode;
}

Erro StartError(int reason) {
    switch (reason) {
        case ENOENT:
        case ENOTDIR:
            return Erro(Erro::FileNotFound);
        case EACCES:
        case EPERM:
            return Erro(Erro::PermissionDenied);
        default:
            return Erro(Erro::InvalidArgument);
    }
}

// What the system's calls take: the program, then its arguments.
class CommandTexts {
public:
    explicit CommandTexts(const QStringList& pieces) {
        for (const QString& piece : pieces) {
            texts_.push_back(QFile::encodeName(piece));
        }
        for (QByteArray& text : texts_) {
            vector_.push_back(text.data());
        }
        vector_.push_back(nullptr);
    }
    char* const* Vector() const { return vector_.data(); }

private:
    std::vector<QByteArray> texts_;
    std::vector<char*> vector_;
};

// Signals to 0 and to negative numbers would go to whole groups.
bool IsPlausible(sys::ProcessId process) {
    return process > 0 && process <= std::numeric_limits<pid_t>::max();
}

// An ended process whose parent has not asked yet is still listed, with the state Z.
bool IsZombie(sys::ProcessId process) {
    QFile file(u"/proc/%1/stat"_s.arg(process));
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    // The name in brackets may hold anything, so the state is looked for behind the last one.
    const QByteArray text = file.readAll();
    const qsizetype state = text.lastIndexOf(')') + 2;
    return state < text.size() && (text.at(state) == 'Z' || text.at(state) == 'X');
}

// Waits on a descriptor of the process; false where the system has none to give.
bool WaitOnDescriptor([[maybe_unused]] sys::ProcessId process) {
#ifdef SYS_pidfd_open
    const auto descriptor = static_cast<int>(syscall(SYS_pidfd_open, process, 0));
    if (descriptor < 0) {
        return false;
    }
    pollfd wanted = {descriptor, POLLIN, 0};
    const auto ready = TEMP_FAILURE_RETRY(poll(&wanted, 1, -1));
    close(descriptor);
    return ready > 0;
#else
    return false;
#endif
}

}  // namespace

// The window style has no counterpart here: a window manager decides. The child gets a session of
// its own, so that the end of ours, or of the terminal behind it, does not take it along.
sys::ProcessId sys::StartNative(const CommandLine& command, int, Rest rest) {
    const CommandTexts texts(
        QStringList{NativeProgram(command.program)} +
        (rest == Rest::Whole ? QStringList{command.rest} : QProcess::splitCommand(command.rest)));

    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
    pid_t child = 0;
    const int reason =
        posix_spawnp(&child, texts.Vector()[0], nullptr, &attributes, texts.Vector(), environ);
    posix_spawnattr_destroy(&attributes);
    if (reason != 0) {
        throw StartError(reason);
    }
    Children()[child] = StillActive;
    return child;
}

int sys::ExitCode(ProcessId process) {
    if (const auto child = Children().find(process); child != Children().end()) {
        return Reap(child->second, static_cast<pid_t>(process), WNOHANG);
    }
    return IsRunning(process) ? StillActive : 0;
}

bool sys::IsRunning(ProcessId process) {
    if (Children().contains(process)) {
        return ExitCode(process) == StillActive;
    }
    if (!IsPlausible(process)) {
        return false;
    }
    const bool listed = kill(static_cast<pid_t>(process), 0) == 0 || errno == EPERM;
    return listed && !IsZombie(process);
}

void sys::WaitForEnd(ProcessId process) {
    if (const auto child = Children().find(process); child != Children().end()) {
        Reap(child->second, static_cast<pid_t>(process), 0);
        return;
    }
    if (!IsRunning(process) || WaitOnDescriptor(process)) {
        return;
    }
    constexpr unsigned long PollMilliseconds = 50;
    while (IsRunning(process)) {
        QThread::msleep(PollMilliseconds);
    }
}

int sys::GoOnAs(const QString& program, const QStringList& arguments) {
    const CommandTexts texts(QStringList{NativeProgram(program)} + arguments);
    execvp(texts.Vector()[0], texts.Vector());
    throw StartError(errno);
}
