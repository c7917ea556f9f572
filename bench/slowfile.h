#pragma once

#include <QtGlobal>

#include <chrono>

// A file far away, under the engine: what it asks of catalogues is counted, and each read takes its
// time, as over a network or from a disk that has to turn.
namespace bench {

struct Traffic {
    qint64 reads = 0;
    qint64 bytes = 0;
    qint64 locks = 0;  // taken, let go or asked for
};

// Before the first connection is opened; holds for all files from then on.
void PutSlowFilesUnderTheEngine();
void SetReadDelay(std::chrono::microseconds delay);
// Since the last question.
Traffic TakeTraffic();

}  // namespace bench
