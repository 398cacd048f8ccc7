// SPDX-License-Identifier: MIT
// Tells a touchpad from a wheel by the properties that its driver gives a device. The toolkit takes both for
// a mouse where the server tells of no gestures, and the distances that it hands on differ by driver, not by
// device. Main thread only.
#pragma once

#include "VesloraLinux/X11/X11Connection.h"
#include "VesloraUI/Platform/ScrollDevices.h"

#include <QObject>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace veslora {

class X11ScrollDevices final : public ScrollDevices {
  public:
    explicit X11ScrollDevices(X11Connection& connection) : m_connection(connection) {}

    /// Asks the server once for each device, of which the toolkit makes a new one when it is plugged in
    /// again. Unknown for a device of another driver's, such as the one that a Wayland compositor's server
    /// makes of all that there are.
    [[nodiscard]] ScrollSource sourceOf(const QPointingDevice& device) override;

  private:
    [[nodiscard]] ScrollSource ask(std::uint16_t device);
    [[nodiscard]] bool hasProperty(const std::vector<xcb_atom_t>& properties, const std::string& name);
    [[nodiscard]] std::vector<std::uint8_t> bytes(std::uint16_t device, const std::string& property);

    X11Connection& m_connection;
    std::map<const QObject*, ScrollSource> m_known;
    QObject m_listener;
};

} // namespace veslora
