// SPDX-License-Identifier: MIT
// Tells the service's manager how the program is doing, for as long as its main thread turns: one that is
// stuck falls silent and is started again, since a dead island would otherwise end approvals silently. Main
// thread only.
#pragma once

#include "VesloraUI/Platform/Scheduler.h"
#include "VesloraUI/Platform/Trouble.h"

#include <functional>
#include <optional>
#include <string_view>
#include <system_error>

namespace veslora {

class ServiceLife {
  public:
    /// Sends such lines as "READY=1"; tells why it could not.
    using Tell = std::function<std::error_code(std::string_view lines)>;

    /// Tells that the program is ready, and from then on twice within each `interval` that it lives, at a
    /// tick that others have too; without an interval it does not. The scheduler must outlive this.
    ServiceLife(Scheduler& scheduler, std::optional<double> interval, Tell tell);
    ~ServiceLife() = default;
    ServiceLife(const ServiceLife&) = delete;
    ServiceLife& operator=(const ServiceLife&) = delete;

    /// Tells that the program stops, and no more that it lives. Not to be called where another version goes
    /// on in this process: that one tells of itself, and for the manager nothing has ended.
    void stop();

  private:
    void say(std::string_view lines);

    Tell m_tell;
    Trouble m_trouble;
    Task m_beat;
};

} // namespace veslora
