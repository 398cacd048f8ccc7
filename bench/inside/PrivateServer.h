// SPDX-License-Identifier: MIT
// A sound server of either kind, private to the measurement, with the sink "cap". Every program that plays
// sound finds it.
#pragma once

#include "tests/VesloraLinux/Support/SoundServer.h"

#include <optional>
#include <string>

namespace veslora::bench {

enum class ServerKind { pulse, pipewire };

class PrivateServer {
  public:
    static constexpr const char* sink = "cap";

    explicit PrivateServer(ServerKind kind) {
        if (kind == ServerKind::pulse) {
            m_pulse.emplace(m_environment);
            m_environment.set("PULSE_SERVER", m_pulse->address());
        } else {
            m_pipeWire.emplace(m_environment);
        }
    }

    [[nodiscard]] testing::SoundEnvironment& environment() { return m_environment; }
    /// As libpulse's clients know it.
    [[nodiscard]] const std::string& address() const {
        return m_pulse ? m_pulse->address() : m_pipeWire->address();
    }

  private:
    testing::SoundEnvironment m_environment;
    std::optional<testing::PulseServer> m_pulse;
    std::optional<testing::PipeWireServer> m_pipeWire;
};

} // namespace veslora::bench
