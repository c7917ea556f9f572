#pragma once

#include <QString>

// What paths.cpp and output.cpp ask of each system beside what paths.h declares; paths_posix.cpp
// and paths_windows.cpp hold it.
namespace sys {

extern const Qt::CaseSensitivity NameCase;  // whether the system's own names differ by it

// Takes away what hinders a file to be deleted or replaced, as far as this program may.
void LetGo(const QString& native);

QString UserDataRoot();  // it need not be there

}  // namespace sys
