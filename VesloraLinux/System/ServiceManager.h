// SPDX-License-Identifier: MIT
// The manager that started the program as a service and waits to hear from it, as systemd's protocol has it:
// a datagram of lines for each thing there is to tell. Without such a manager nothing is told. Any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace veslora {

class ServiceManager {
  public:
    /// What the manager left in the environment.
    struct Variables {
        std::optional<std::string> socket;               ///< NOTIFY_SOCKET
        std::optional<std::string> watchdogMicroseconds; ///< WATCHDOG_USEC
        std::optional<std::string> watchdogProcess;      ///< WATCHDOG_PID
    };

    /// Takes the variables out of the environment: what the program starts is no service, and must not speak
    /// for it. To be called before there are other threads.
    [[nodiscard]] static ServiceManager fromEnvironment();

    /// The socket is an absolute path, or the name of an abstract one behind an "@"; any other, and one that
    /// is too long, counts as none. An interval that is no number above 0, or that is meant for another
    /// process than `process`, is none.
    ServiceManager(const Variables& variables, int process);

    [[nodiscard]] bool isThere() const { return !m_socket.empty(); }
    /// Seconds within which the manager wants to hear that the program lives, each time; absent where it does
    /// not ask, and without a manager.
    [[nodiscard]] std::optional<double> watchdogInterval() const { return m_interval; }

    /// Sends the lines, without waiting: a manager that takes nothing misses them. Why it could not be done;
    /// no error without a manager.
    std::error_code tell(std::string_view lines) const;

  private:
    std::string m_socket; ///< as an address has it; empty for none
    std::optional<double> m_interval;
};

} // namespace veslora
