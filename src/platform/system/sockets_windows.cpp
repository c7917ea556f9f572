#include "platform/system/sockets.h"

// The set is a list there.
std::vector<sys::Socket> sys::SocketsIn(const fd_set& set, int) {
    std::vector<Socket> sockets;
    for (u_int i = 0; i < set.fd_count; ++i) {
        sockets.push_back(static_cast<Socket>(set.fd_array[i]));
    }
    return sockets;
}
