#include "platform/system/usage.h"

#include <io.h>
#include <windows.h>

namespace {

HANDLE HandleOf(std::FILE* stream) {
    const int descriptor = _fileno(stream);
    return descriptor < 0 ? nullptr : reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
}

bool IsConsole(HANDLE handle) {
    DWORD mode = 0;
    return handle && handle != INVALID_HANDLE_VALUE && GetConsoleMode(handle, &mode);
}

// A program with windows begins without a console: where somebody typed its name into one, what it
// has to say belongs there.
HANDLE ConsoleOfCaller() {
    static const bool attached = AttachConsole(ATTACH_PARENT_PROCESS) != 0;
    if (!attached) {
        return nullptr;
    }
    static const HANDLE console =
        CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                    nullptr, OPEN_EXISTING, 0, nullptr);
    return console;
}

}  // namespace

// A console takes letters whatever its code page is; what goes into a file or to another program is
// UTF-8.
void sys::Print(std::FILE* stream, const QString& text) {
    const HANDLE own = HandleOf(stream);
    const bool redirected = own && own != INVALID_HANDLE_VALUE && !IsConsole(own);
    if (redirected) {
        const QByteArray bytes = text.toUtf8();
        std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), stream);
        std::fflush(stream);
        return;
    }
    const HANDLE console = IsConsole(own) ? own : ConsoleOfCaller();
    if (IsConsole(console)) {
        std::fflush(stream);
        const std::wstring wide = text.toStdWString();
        DWORD written = 0;
        WriteConsoleW(console, wide.data(), DWORD(wide.size()), &written, nullptr);
    }
}

bool sys::IsTerminal(std::FILE* stream) {
    return IsConsole(HandleOf(stream));
}
