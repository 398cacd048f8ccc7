// SPDX-License-Identifier: MIT
// The services of a session bus that keep the machine awake and give a number for it. Main thread only.
#pragma once

#include "VesloraLinux/Shared/Inhibitor.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QVariantList>

#include <optional>

namespace veslora {

class InhibitingService final : public Inhibitor {
    Q_OBJECT

  public:
    enum class Kind {
        sessionManager,  ///< GNOME and its kin; serves all needs by one request
        powerManagement, ///< KDE, XFCE
        screenSaver,     ///< KDE, XFCE and most others
    };

    /// Without a bus every request is refused.
    InhibitingService(Kind kind, std::optional<QDBusConnection> bus);

    [[nodiscard]] QString name() const override;
    [[nodiscard]] AwakeNeeds covers() const override;
    void inhibit(AwakeNeeds needs, const QString& reason, Done done) override;

  private:
    void watch();
    [[nodiscard]] QVariantList arguments(AwakeNeeds needs, const QString& reason) const;

    Kind m_kind;
    std::optional<QDBusConnection> m_bus;
    QDBusServiceWatcher m_watcher;
    bool m_isWatching = false;
};

} // namespace veslora
