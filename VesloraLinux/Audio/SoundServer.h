// SPDX-License-Identifier: MIT
// One kind of sound server, which may or may not be there. Any thread; its functions wait for the server, so
// they are for threads that nobody waits for.
#pragma once

#include "VesloraLinux/Audio/SessionEnd.h"

#include <chrono>
#include <optional>

namespace veslora {

struct OpenStream;

class SoundServer {
  public:
    virtual ~SoundServer() = default;

    /// Renders the stream's mixer until its descriptor stops it; finished when it was moved to another
    /// device. Absent, with nothing rendered, where no such server has a device to play to.
    [[nodiscard]] virtual std::optional<SessionEnd> play(OpenStream& stream) const = 0;

    /// Whether it would play now. The stream's descriptor ends the question too, with no.
    [[nodiscard]] virtual bool isThere(const OpenStream& stream) const = 0;

    /// How long one that was lost may take to come back.
    [[nodiscard]] virtual std::chrono::milliseconds patience() const = 0;
};

} // namespace veslora
