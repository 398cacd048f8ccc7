// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/ServiceManager.h"

#include "VesloraLinux/System/FileDescriptor.h"
#include "VesloraLinux/System/PosixReading.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace veslora {

namespace {

constexpr double microseconds = 1e6;

std::optional<std::int64_t> positiveNumber(const std::optional<std::string>& text) {
    if (!text) {
        return std::nullopt;
    }
    std::int64_t number = 0;
    const char* end = text->data() + text->size();
    const auto result = std::from_chars(text->data(), end, number);
    return result.ec == std::errc() && result.ptr == end && number > 0 ? std::optional(number) : std::nullopt;
}

/// The bytes of an address; empty for none.
std::string addressOf(const std::string& name) {
    const bool isAbstract = name.starts_with('@') && name.size() > 1;
    const bool isPath = name.starts_with('/');
    if ((!isAbstract && !isPath) || name.size() >= sizeof sockaddr_un::sun_path) {
        return {};
    }
    return isAbstract ? std::string(1, '\0') + name.substr(1) : name;
}

std::optional<std::string> variable(const char* name) {
    const char* value = std::getenv(name);
    std::optional<std::string> text;
    if (value != nullptr) {
        text = value;
        unsetenv(name);
    }
    return text;
}

} // namespace

ServiceManager ServiceManager::fromEnvironment() {
    const Variables variables{variable("NOTIFY_SOCKET"), variable("WATCHDOG_USEC"), variable("WATCHDOG_PID")};
    return {variables, getpid()};
}

ServiceManager::ServiceManager(const Variables& variables, int process)
    : m_socket(addressOf(variables.socket.value_or(""))) {
    const auto interval = positiveNumber(variables.watchdogMicroseconds);
    const bool isForUs =
        !variables.watchdogProcess || positiveNumber(variables.watchdogProcess) == std::int64_t{process};
    if (isThere() && interval && isForUs) {
        m_interval = static_cast<double>(*interval) / microseconds;
    }
}

std::error_code ServiceManager::tell(std::string_view lines) const {
    if (!isThere()) {
        return {};
    }
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, m_socket.data(), m_socket.size());
    // Of an abstract name every byte counts, so none may follow it.
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + m_socket.size());
    const FileDescriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    const bool isSent = socket && sendto(socket.value(), lines.data(), lines.size(), MSG_NOSIGNAL,
                                         reinterpret_cast<const sockaddr*>(&address), size) >= 0;
    return isSent ? std::error_code() : PosixReading::lastError();
}

} // namespace veslora
