#pragma once

#include <QStringList>

#include <cstdio>

namespace sys {

// Writes a text to a stream of this process, in the system's encoding.
void Print(std::FILE* stream, const QString& text);

// Answers "--help" with `usage` and "--version" with the program's name and version, on the
// standard output. False for any other command line: nothing is written then.
bool AnswerUsage(const QStringList& arguments, const QString& program, const QString& usage);

}  // namespace sys
