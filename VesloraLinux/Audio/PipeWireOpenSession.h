// SPDX-License-Identifier: MIT
// Plays a stream to PipeWire until it is stopped, also while it is silent, and tells the time by the device
// that drives the graph. Made, run and destroyed on one thread of its own; libpipewire renders on another.
#pragma once

#include "VesloraLinux/Audio/OpenStream.h"
#include "VesloraLinux/Audio/PipeWireSession.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace veslora {

/// Finished when the stream was moved to another device.
class PipeWireOpenSession final : public PipeWireSession {
  public:
    PipeWireOpenSession(const PipeWireLibrary& library, const PipeWireOptions& options, OpenStream& open);
    ~PipeWireOpenSession() override;
    PipeWireOpenSession(const PipeWireOpenSession&) = delete;
    PipeWireOpenSession& operator=(const PipeWireOpenSession&) = delete;

  private:
    void serverReady() override;
    void linksChanged() override;
    [[nodiscard]] bool hasProgress() override;
    void openStream();
    void streamChanged(pw_stream_state state, const char* error);

    // The rendering thread's.
    void render() noexcept;
    void tellTime(const pw_time& time, std::size_t samples) noexcept;
    void lookForGap(const pw_time& time, std::size_t samples) noexcept;

    OpenStream& m_open;
    pw_stream* m_stream = nullptr;
    pw_stream_events m_events{};
    spa_hook m_hook{};
    spa_source* m_gapSource = nullptr;
    std::optional<std::uint32_t> m_target; ///< the node that it goes to
    std::int64_t m_position = 0;           ///< at the last look for progress
    std::atomic<bool> m_measuresAgain = false;

    // The rendering thread's.
    std::optional<std::uint64_t> m_nextTick; ///< where the graph is to be at the next block
};

} // namespace veslora
