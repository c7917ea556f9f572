#pragma once

#include <QString>

// What output.cpp asks of each system; output_posix.cpp and output_windows.cpp hold it. Both paths
// are there, in the platform's form.
namespace sys {

void FlushNative(const QString& path);                       // a file or a folder; Erro 61, 75
void ReplaceNative(const QString& from, const QString& to);  // Erro 70, 75

}  // namespace sys
