// SPDX-License-Identifier: MIT
// Spotify's player on the session bus, by the interface that every Linux player speaks (MPRIS 2.2): its
// changes as the notifications of Spotify's own form, and the few sentences that are said to it as calls.
// Main thread only.
#pragma once

#include "VesloraUI/Platform/Scheduler.h"
#include "VesloraUI/Platform/ScriptRunning.h"
#include "VesloraUI/Platform/SpotifyNotifications.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantMap>

#include <deque>
#include <functional>
#include <memory>
#include <optional>

namespace veslora {

/// What the player's properties say, under the keys of its notifications. Values of another type than theirs
/// are left out.
[[nodiscard]] SpotifyNotification::UserInfo spotifyUserInfo(const QVariantMap& properties);

class SpotifyOnBus final : public SpotifyNotifications, public ScriptRunning {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SpotifyOnBus)

  public:
    /// Seconds between two looks at a player that never stops changing. The first change is looked at at
    /// once.
    static constexpr double pace = 0.05;

    /// Silent, and refusing every script, without a bus.
    SpotifyOnBus(Scheduler& scheduler, std::optional<QDBusConnection> bus)
        : m_scheduler(scheduler), m_bus(std::move(bus)) {}
    ~SpotifyOnBus() override = default;

    void start() override;
    [[nodiscard]] Task run(const std::string& script, std::function<void(const Result&)> done) override;

  private slots:
    void ownerChanged(const QString& name, const QString& before, const QString& after);
    void propertiesChanged(const QString& interface, const QVariantMap& changed,
                           const QStringList& invalidated);
    void seeked(qlonglong position);

  private:
    struct Script {
        std::string text;
        std::shared_ptr<Result> result;
        std::shared_ptr<TaskState> listener;
    };

    void read();
    void readNow();
    void wasRead(const QDBusMessage& reply, std::optional<qlonglong> sought);
    void tell(const QDBusMessage& reply, std::optional<qlonglong> sought);
    void call(const QDBusMessage& message, std::function<void(const QDBusMessage& reply)> answered);
    void runNext();
    void finish(Result result);

    Scheduler& m_scheduler;
    std::optional<QDBusConnection> m_bus;
    bool m_isReading = false;
    bool m_isStale = false;            ///< it has changed while it was read, or since
    double m_lastRead = -pace;         ///< by `steadyNow`, when the last look began
    Task m_nextRead;                   ///< waits for the pace
    std::optional<qlonglong> m_sought; ///< microseconds to which it leapt since the last look began
    std::optional<Result> m_held;      ///< of a script that has ended while the player was read
    int m_readsBeforeHeld = 0;         ///< looks that have to end before it is told
    std::deque<Script> m_scripts;      ///< the first one is under way
};

} // namespace veslora
