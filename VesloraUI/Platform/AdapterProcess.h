// SPDX-License-Identifier: MIT
// The seam for the media adapter, a helper process that tells what the machine's current player does. Main
// thread only.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace veslora {

/// What a player can be told to do; the numbers are the helper's.
enum class AdapterCommand : std::uint8_t { togglePlayPause = 2, next = 4, previous = 5 };

class AdapterProcess {
  public:
    using LineHandler = std::function<void(const std::string& line)>;
    using ExitHandler = std::function<void(std::int32_t status)>;

    virtual ~AdapterProcess() = default;

    /// Starts the helper, in place of one that runs. `onLine` is called with each line that it prints, and
    /// `onExit` once it has ended by itself; both never within this call, and never again once the helper was
    /// stopped or replaced. False when it can't be started; neither is called then. Nothing restarts it.
    [[nodiscard]] virtual bool start(LineHandler onLine, ExitHandler onExit) = 0;

    /// Ends the helper, if it runs.
    virtual void stop() = 0;

    /// Has the player that is reported carry out a command. Whether it did is not told.
    virtual void send(AdapterCommand command) = 0;
};

} // namespace veslora
