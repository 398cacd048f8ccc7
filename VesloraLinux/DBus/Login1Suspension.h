// SPDX-License-Identifier: MIT
// The machine's sleep as its session manager tells of it on the system bus. Main thread only.
#pragma once

#include "VesloraLinux/DBus/SystemBus.h"
#include "VesloraUI/Platform/Suspension.h"

#include <memory>

class OrgFreedesktopLogin1ManagerInterface;

namespace veslora {

class Login1Suspension final : public Suspension {
    Q_OBJECT

  public:
    /// Silent without a bus, and while no session manager is on it: none is started for this.
    explicit Login1Suspension(SystemBus& bus);
    ~Login1Suspension() override;
    Login1Suspension(const Login1Suspension&) = delete;
    Login1Suspension& operator=(const Login1Suspension&) = delete;

  private:
    void listenOn(const SystemBus::Connection& bus);
    void prepareForSleep(bool start);

    std::unique_ptr<OrgFreedesktopLogin1ManagerInterface> m_manager;
};

} // namespace veslora
