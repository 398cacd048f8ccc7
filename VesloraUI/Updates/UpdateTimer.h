// SPDX-License-Identifier: MIT
// When the program looks for updates by itself, kept in the settings over its end. Main thread only.
#pragma once

#include "VesloraCore/Timestamp.h"
#include "VesloraUI/Platform/Task.h"

#include <QObject>

#include <functional>

namespace veslora {

class Defaults;
class Scheduler;

class UpdateTimer : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(UpdateTimer)

  public:
    UpdateTimer(Scheduler& scheduler, Defaults& settings);
    ~UpdateTimer() override;

    /// From now on calls `look` whenever one is due, unless the user has turned that off. It is not counted
    /// before `looked`. Called once.
    void start(std::function<void()> look);

    /// Somebody looks now, by themselves or not: the next is due in a day.
    void looked();
    /// No server was reached: that was no look, and another try is made soon.
    void reachedNobody();

    [[nodiscard]] bool isOn() const { return m_isOn; }

  signals:
    /// The user has turned it on or off.
    void turned(bool isOn);

  private:
    void settle();
    void plan();
    void settingsChanged();

    Scheduler& m_scheduler;
    Defaults& m_settings;
    std::function<void()> m_look;
    bool m_isOn;
    bool m_isSettled = false;
    double m_due = 0;       ///< by the steady clock, once it has settled
    Timestamp m_before = 0; ///< the look before the last
    Task m_wait;
};

} // namespace veslora
