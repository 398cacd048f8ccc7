// SPDX-License-Identifier: MIT
// The status menu by StatusNotifierItem. The item is made when a panel is there to show it, and put up again
// whenever the panel or the desktop's list of items comes back. Main thread only.
#pragma once

#include "VesloraLinux/DBus/StatusMenuModel.h"
#include "VesloraLinux/DBus/StatusNotifierItem.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>

#include <optional>

namespace veslora {

class DBusStatusMenu final : public QObject, public StatusMenu {
    Q_OBJECT

  public:
    /// Without a bus it never shows anything.
    explicit DBusStatusMenu(std::optional<QDBusConnection> bus);
    ~DBusStatusMenu() override;
    DBusStatusMenu(const DBusStatusMenu&) = delete;
    DBusStatusMenu& operator=(const DBusStatusMenu&) = delete;

    void show(const QString& title, const QString& symbol, std::vector<StatusMenuRow> rows) override;

    /// The bus name of the item; panels ask for it there.
    [[nodiscard]] QString service() const;

  private slots:
    void askForHost();
    void registerItem();

  private:
    void watch();
    void publish();

    std::optional<QDBusConnection> m_bus;
    QDBusServiceWatcher m_watcher;
    StatusMenuModel m_menu;
    StatusNotifierItem m_item;
    bool m_isWatching = false;
    bool m_isPublished = false;
};

} // namespace veslora
