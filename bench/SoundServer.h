// SPDX-License-Identifier: MIT
// PulseAudio with nothing but a sink that drops what it is given, for the program that the harness starts.
#pragma once

#include "tests/VesloraLinux/Support/Program.h"

#include <string>

namespace veslora::bench {

/// Every client that is started while it is there finds it.
class SoundServer {
  public:
    static constexpr const char* sink = "null";

    /// `executables` is the folder of the harness; the server's socket comes into `folder`.
    SoundServer(const std::string& executables, const std::string& folder);
    SoundServer(const SoundServer&) = delete;
    SoundServer& operator=(const SoundServer&) = delete;
    ~SoundServer();

    [[nodiscard]] std::string address() const { return "unix:" + m_socket; }
    [[nodiscard]] pid_t pid() const { return m_program.pid(); }

  private:
    std::string m_socket;
    testing::Program m_program;
};

} // namespace veslora::bench
