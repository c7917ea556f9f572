#include "platform/erro.h"
#include "platform/system/output_native.h"
#include "platform/system/paths.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>

#include <io.h>
#include <string>
#include <windows.h>

using namespace std::chrono_literals;

namespace {

// How long somebody may have a file open that is to be replaced: another computer that shows a
// picture, a guard against viruses that looks at what is new.
constexpr auto Patience = 10s;
constexpr DWORD Pause = 50;  // milliseconds

bool Move(const std::wstring& from, const std::wstring& to) {
    return MoveFileExW(from.c_str(), to.c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
}

bool IsHeld(DWORD reason) {
    return reason == ERROR_ACCESS_DENIED || reason == ERROR_SHARING_VIOLATION ||
           reason == ERROR_LOCK_VIOLATION || reason == ERROR_USER_MAPPED_FILE;
}

// A program that runs lets itself be renamed, though not replaced. It goes on under the name that
// the new file had, which whoever gave it knows for a leftover.
bool Swap(const std::wstring& from, const std::wstring& to) {
    const std::wstring aside = from + L".old";
    if (!Move(to, aside)) {
        return false;
    }
    if (!Move(from, to)) {
        Move(aside, to);
        return false;
    }
    if (!DeleteFileW(aside.c_str())) {
        Move(aside, from);
    }
    return true;
}

}  // namespace

bool sys::AwaitRelease(const QDeadlineTimer& end) {
    Sleep(Pause);
    return !end.hasExpired();
}

// The toolkit opens files so that nobody can delete them meanwhile, not even who opened them.
bool sys::OpenOutput(QFile& file) {
    const HANDLE handle =
        CreateFileW(ToSystem(file.fileName()).toStdWString().c_str(), GENERIC_WRITE,
                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, CREATE_ALWAYS,
                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        return false;
    }
    const int descriptor = _open_osfhandle(reinterpret_cast<intptr_t>(handle), 0);
    return file.open(descriptor, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle);
}

// A folder's names need no flush of their own.
void sys::FlushNative(const QString& path) {
    QFile file(path);
    if (QFileInfo(file).isDir()) {
        return;
    }
    if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly) || _commit(file.handle()) != 0) {
        throw Erro(Erro::PathFileAccess);
    }
}

void sys::ReplaceNative(const QString& from, const QString& to) {
    const std::wstring source = ToSystem(from).toStdWString();
    const std::wstring target = ToSystem(to).toStdWString();
    for (const QDeadlineTimer end(Patience); !Move(source, target);) {
        if (!IsHeld(GetLastError())) {
            throw Erro(Erro::PathFileAccess);
        }
        if (Swap(source, target)) {
            return;
        }
        if (!AwaitRelease(end)) {
            throw Erro(Erro::PermissionDenied);
        }
    }
}
