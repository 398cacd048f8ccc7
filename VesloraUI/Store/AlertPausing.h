// SPDX-License-Identifier: MIT
// Whether alerts are paused now: by the user for some time, which the settings keep, or by the desktop's
// do-not-disturb. Main thread only.
#pragma once

#include "VesloraCore/Agents/AlertPause.h"
#include "VesloraUI/Platform/Scheduler.h"

#include <QObject>

#include <memory>
#include <optional>

namespace veslora {

class Defaults;
class DoNotDisturb;

class AlertPausing : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(AlertPausing)

  public:
    /// All of them must outlive it; `calendar` says where the user's days end.
    AlertPausing(Defaults& settings, Scheduler& scheduler, const DoNotDisturb& doNotDisturb,
                 std::shared_ptr<const Calendar> calendar);
    ~AlertPausing() override = default;

    /// By the user, or by the desktop where the user follows it.
    [[nodiscard]] bool isPaused() const { return m_state.until || isPausedByDesktop(); }
    /// When the user's own pause is over, which is ahead; absent without one.
    [[nodiscard]] std::optional<Timestamp> pausedUntil() const { return m_state.until; }

    /// Pauses alerts from now on, in place of a pause that there is.
    void pause(const AlertPause::Length& length);
    /// Ends the user's own pause.
    void resume();

  signals:
    /// Asked within it, all of the above is true already.
    void changed();

  private:
    /// As it was last told of. A desktop that can be asked but does not tell is asked each time.
    struct State {
        std::optional<Timestamp> until;
        bool isByDesktop = false;
        bool operator==(const State&) const = default;
    };

    [[nodiscard]] bool isPausedByDesktop() const;
    void update();
    void awaitEnd(std::optional<Timestamp> until);

    Defaults& m_settings;
    Scheduler& m_scheduler;
    const DoNotDisturb& m_doNotDisturb;
    std::shared_ptr<const Calendar> m_calendar;
    State m_state;
    Task m_end;
    Task m_limit;
};

} // namespace veslora
