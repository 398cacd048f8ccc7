// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/PackageKitInstaller.h"

#include "VesloraLinux/DBus/PackageKitTransaction.h"

#include <utility>

namespace veslora {

Task PackageKitInstaller::install(const std::string& path, std::function<void(InstallOutcome)> done) {
    const auto state = std::make_shared<TaskState>();
    const auto outcome = std::make_shared<InstallOutcome>(InstallOutcome::failed);
    state->run = [outcome, done = std::move(done)] { done(*outcome); };
    const auto finish = [state, outcome](InstallOutcome how) {
        *outcome = how;
        if (const auto run = std::exchange(state->run, nullptr)) {
            run();
        }
    };
    // Never within this call, also where the bus is known not to be there.
    const auto later = std::make_shared<Task>();
    *later = m_scheduler.after(0, [this, path, finish, later] {
        m_bus.whenConnected(*this, [this, path, finish](const SystemBus::Connection& bus) {
            if (!bus) {
                finish(InstallOutcome::absent);
                return;
            }
            auto* const transaction = new PackageKitTransaction(*bus, m_scheduler, this);
            connect(transaction, &PackageKitTransaction::ended, this, finish);
            transaction->install(path);
        });
    });
    return Task(state);
}

} // namespace veslora
