#pragma once

#include <QStringList>

#include <cstdio>

namespace sys {

// Writes a text to a stream of this process, in the system's encoding.
void Print(std::FILE* stream, const QString& text);

// Whether somebody looks at the stream as it is written.
bool IsTerminal(std::FILE* stream);

// Answers "--help" (or "--ajuda") with `usage` and "--version" (or "--versao") with the program's
// name and version, on the standard output. False for any other command line: nothing is written
// then.
bool AnswerUsage(const QStringList& arguments, const QString& program, const QString& usage);

}  // namespace sys
