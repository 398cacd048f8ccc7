// SPDX-License-Identifier: MIT
// The seam for what the toolkit does not tell of a device that scrolls: whether a wheel or fingers move it.
// Main thread only.
#pragma once

class QPointingDevice;

namespace veslora {

enum class ScrollSource {
    unknown, ///< nobody tells; what the device sends has to do
    wheel,
    fingers ///< on a touchpad, in any direction and as far as they like
};

class ScrollDevices {
  public:
    virtual ~ScrollDevices() = default;

    /// Cheap enough to be asked at every event of a wheel.
    [[nodiscard]] virtual ScrollSource sourceOf(const QPointingDevice& device) = 0;
};

} // namespace veslora
