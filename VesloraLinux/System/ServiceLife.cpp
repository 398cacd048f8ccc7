// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/ServiceLife.h"

#include "VesloraUI/Platform/Logs.h"

#include <utility>

namespace veslora {

ServiceLife::ServiceLife(Scheduler& scheduler, std::optional<double> interval, Tell tell)
    : m_tell(std::move(tell)) {
    say("READY=1");
    if (interval) {
        say("WATCHDOG=1");
        m_beat = scheduler.every(*interval / 2, Precision::coarse, [this] { say("WATCHDOG=1"); });
    }
}

void ServiceLife::stop() {
    m_beat.cancel();
    say("STOPPING=1");
}

void ServiceLife::say(std::string_view lines) {
    const std::error_code error = m_tell(lines);
    if (m_trouble.begins(error)) {
        qCWarning(Logs::start, "can't reach the service's manager: %s", error.message().c_str());
    }
}

} // namespace veslora
