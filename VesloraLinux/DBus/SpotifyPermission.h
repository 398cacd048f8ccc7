// SPDX-License-Identifier: MIT
// Whether Spotify's player is on the session bus. There nobody is asked for a permission: a player that is
// there can be controlled. Main thread only.
#pragma once

#include "VesloraUI/Platform/AutomationPermission.h"

#include <QDBusConnection>

#include <optional>

namespace veslora {

class SpotifyPermission final : public AutomationPermission {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SpotifyPermission)

  public:
    /// Without a bus nothing can be controlled.
    explicit SpotifyPermission(std::optional<QDBusConnection> bus) : m_bus(std::move(bus)) {}
    ~SpotifyPermission() override = default;

    /// Knows Spotify alone.
    [[nodiscard]] AutomationStatus status(const std::string& bundleID) override;

  private slots:
    void ownerChanged(const QString& name, const QString& before, const QString& after);

  private:
    void watch();
    void setRunning(bool isRunning);

    std::optional<QDBusConnection> m_bus; ///< none any more once it is watched
    bool m_isRunning = false;
};

} // namespace veslora
