// SPDX-License-Identifier: MIT
// The socket of a service manager that only listens.
#pragma once

#include "VesloraLinux/System/FileDescriptor.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <chrono>
#include <cstddef>
#include <cstring>
#include <optional>
#include <stdexcept>
#include <string>

namespace veslora::testing {

class ManagerSocket {
  public:
    /// Bound to a path, or behind an "@" to an abstract name, as NOTIFY_SOCKET has it.
    explicit ManagerSocket(const std::string& name)
        : m_socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::memcpy(address.sun_path, name.data(), std::min(name.size(), sizeof address.sun_path));
        if (name.starts_with('@')) {
            address.sun_path[0] = '\0';
        }
        const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size());
        if (bind(m_socket.value(), reinterpret_cast<const sockaddr*>(&address), size) != 0) {
            throw std::runtime_error("no socket for a manager");
        }
    }

    /// The next datagram; absent when none comes in time.
    [[nodiscard]] std::optional<std::string> next(std::chrono::milliseconds patience) const {
        pollfd ready{m_socket.value(), POLLIN, 0};
        char bytes[256];
        if (poll(&ready, 1, static_cast<int>(patience.count())) <= 0) {
            return std::nullopt;
        }
        const ssize_t count = recv(m_socket.value(), bytes, sizeof bytes, 0);
        return count < 0 ? std::nullopt : std::optional(std::string(bytes, static_cast<std::size_t>(count)));
    }

  private:
    FileDescriptor m_socket;
};

} // namespace veslora::testing
