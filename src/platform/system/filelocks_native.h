#pragma once

#include "platform/system/filelocks.h"

#include <QFile>

#include <optional>

// What filelocks.cpp asks of each system; filelocks_posix.cpp and filelocks_windows.cpp hold it.
namespace sys {

// Far behind the bytes that the database engine locks, which lie at one gigabyte.
inline constexpr qint64 ProbedByte = qint64(1) << 40;

enum class Outcome { Granted, Taken, Impossible };

// Locks that byte of an open file, without waiting. Two open files of one process meet as those of
// two programs do.
Outcome TryLock(const QFile& file);

// Of the lock that sys::FindLock is about; 0 where the system doesn't tell.
std::optional<qint64> ProcessThatLocks(const QString& native, void* own, qint64 from, qint64 bytes);
LockHolder DescribeProcess(qint64 process);

}  // namespace sys
