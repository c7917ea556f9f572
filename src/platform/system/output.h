#pragma once

#include "platform/erro.h"

#include <QFile>
#include <QString>

// Files that are made and put in place. Path texts as in paths.h.
namespace sys {

// Why this file could not be written: Erro::DiskFull or, for every other reason, PathFileAccess. To
// be asked at once, while what has been written still takes its room.
Erro::Code WriteFailure(const QFileDevice& file);

// A file that is written from its beginning; what it held is gone at once.
class Output {
public:
    explicit Output(const QString& path);           // Erro 75
    void Write(const char* bytes, qsizetype size);  // Erro 61, 75
    // Hands everything over to the system, which may find out only now that the disk is full:
    // Erro 61, 75. The destructor closes too, but keeps a failure to itself.
    void Close();

private:
    QFile file_;
};

// Returns when the content of this file, or the names of this folder, are on the disk: a power cut
// can take them no more. Erro 53, 61, 75.
void Flush(const QString& path);

// Puts `from` in the place of the file `to`, which need not exist. Whoever looks finds the old file
// or the new one at any moment, also after a power cut. Erro 53, 70, 75.
void Replace(const QString& from, const QString& to);

// Lets a file be started as a program, where that takes a permission. Erro 53, 70.
void MakeExecutable(const QString& path);

}  // namespace sys
