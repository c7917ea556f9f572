#pragma once

#include <chrono>
#include <vector>

namespace sys {

// Waits until one of these sockets can be read from or written to, `longest` at most, and lets the
// program's events through meanwhile, as soon as they come: a screen reader asks thousands of
// little questions, each after the answer to the last. Needs an application.
void WaitForSockets(const std::vector<int>& reading, const std::vector<int>& writing,
                    std::chrono::milliseconds longest);

}  // namespace sys
