#pragma once

#include <QDeadlineTimer>
#include <QFile>
#include <QString>

// What paths.cpp and output.cpp ask of each system; output_posix.cpp and output_windows.cpp hold
// it. Paths are in the platform's form.
namespace sys {

// Waits a moment for a file that somebody else has open. False where that would help nothing, and
// when the end has come.
bool AwaitRelease(const QDeadlineTimer& end);

// From the beginning, and so that it may be deleted before it is closed. False: `file` may say why.
bool OpenOutput(QFile& file);

// Both paths are there.
void FlushNative(const QString& path);                       // a file or a folder; Erro 61, 75
void ReplaceNative(const QString& from, const QString& to);  // Erro 70, 75

}  // namespace sys
