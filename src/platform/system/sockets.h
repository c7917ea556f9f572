#pragma once

#include <chrono>
#include <cstdint>
#include <vector>

#ifdef _WIN32
#include <winsock2.h>
#else
#include <sys/select.h>
#endif

namespace sys {

// A socket as the toolkit's notifier takes it.
using Socket = std::intptr_t;

// The members of a set, none of which is above `last`.
std::vector<Socket> SocketsIn(const fd_set& set, int last);

// Waits until one of these sockets can be read from or written to, `longest` at most, and lets the
// program's events through meanwhile, as soon as they come: a screen reader asks thousands of
// little questions, each after the answer to the last. Needs an application.
void WaitForSockets(const std::vector<Socket>& reading, const std::vector<Socket>& writing,
                    std::chrono::milliseconds longest);

}  // namespace sys
