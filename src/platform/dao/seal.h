#pragma once

#include "platform/dao/errors.h"

#include <QByteArray>

// The first sixteen bytes of a catalogue file. The engine keeps the salt of its key there and takes
// any value; a catalogue made here uses one that tells, without the key, what the file is: an
// enciphered file that cannot be opened is otherwise the same noise whether the password is wrong,
// the file damaged, or something else altogether.
//
//   4  mark, the same in every catalogue
//   4  random
//   6  check of the password, computed from it and the eight bytes before
//   2  CRC of the fourteen bytes before
namespace dao::seal {

inline constexpr int Size = 16;

QByteArray Make(const QByteArray& password);

// Why a file that begins with `start` does not open with `password`: NotACatalogue, WrongPassword
// or Damaged. `start` may be shorter than a seal.
Failure Explain(const QByteArray& start, const QByteArray& password);

}  // namespace dao::seal
