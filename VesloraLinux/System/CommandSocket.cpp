// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/CommandSocket.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <cstdio>

namespace veslora::CommandSocket {
namespace {

/// By way of the opened directory: its own path may be longer than an address can hold.
sockaddr_un addressIn(const FileDescriptor& directory) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::snprintf(address.sun_path, sizeof address.sun_path, "/proc/self/fd/%d/%s", directory.value(), name);
    return address;
}

FileDescriptor make() {
    return FileDescriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
}

} // namespace

FileDescriptor listen(const FileDescriptor& directory) {
    FileDescriptor socket = make();
    const sockaddr_un address = addressIn(directory);
    unlinkat(directory.value(), name, 0);
    constexpr int mostWaiting = 8;
    const bool isListening =
        bind(socket.value(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
        fchmodat(directory.value(), name, 0600, 0) == 0 && ::listen(socket.value(), mostWaiting) == 0;
    return isListening ? std::move(socket) : FileDescriptor();
}

FileDescriptor connect(const FileDescriptor& directory) {
    FileDescriptor socket = make();
    const sockaddr_un address = addressIn(directory);
    const bool isConnected =
        ::connect(socket.value(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    return isConnected ? std::move(socket) : FileDescriptor();
}

bool isOurUsers(const FileDescriptor& connection) {
    ucred peer{};
    socklen_t size = sizeof peer;
    return getsockopt(connection.value(), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 &&
           peer.uid == geteuid();
}

} // namespace veslora::CommandSocket
