#include "platform/system/sockets.h"

std::vector<sys::Socket> sys::SocketsIn(const fd_set& set, int last) {
    std::vector<Socket> sockets;
    for (int socket = 0; socket <= last; ++socket) {
        if (FD_ISSET(socket, &set)) {
            sockets.push_back(socket);
        }
    }
    return sockets;
}
