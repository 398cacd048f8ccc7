// SPDX-License-Identifier: MIT
// A timer's end told by the desktop's own notifications. Main thread only.
#pragma once

#include "VesloraUI/Platform/TimerNotifying.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

#include <functional>
#include <optional>

namespace veslora {

/// Never waits for the service. What it can do is asked again each time, since another may have taken its
/// place; the bus may start one that is not running.
class TimerNotifier final : public QObject, public TimerNotifying {
    Q_OBJECT

  public:
    /// Without a bus it never tells anything.
    explicit TimerNotifier(std::optional<QDBusConnection> bus) : m_bus(std::move(bus)) {}
    ~TimerNotifier() override = default;
    TimerNotifier(const TimerNotifier&) = delete;
    TimerNotifier& operator=(const TimerNotifier&) = delete;

    /// Nothing: this desktop asks no such question, it has settings of its own.
    void requestPermission() override {}
    void timerFinished(double duration) override;

  private:
    /// A notification as the service that shows it knows it.
    struct Shown {
        QString service; ///< the connection's own name, which no other service ever gets
        quint32 id = 0;
    };

    void call(const QString& service, const QString& method, const QVariantList& arguments,
              std::function<void(const QDBusMessage&)> answered);
    void notify(const QString& service, const QString& body);

    std::optional<QDBusConnection> m_bus;
    Shown m_shown; ///< what stands for "timer-done", to be replaced by the next
};

} // namespace veslora
