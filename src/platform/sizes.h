#pragma once

#include <QtGlobal>

// Sizes in bytes, as they are spoken: 64_KiB, 4_MiB.
constexpr qsizetype operator""_KiB(unsigned long long size) {
    return static_cast<qsizetype>(size << 10);
}
constexpr qsizetype operator""_MiB(unsigned long long size) {
    return static_cast<qsizetype>(size << 20);
}
