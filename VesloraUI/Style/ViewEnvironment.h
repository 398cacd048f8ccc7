// SPDX-License-Identifier: MIT
// What views reach through their engine: the clocks, the settings, taps under the finger, short sounds, what
// is known of the devices that scroll, of the screens, of other applications and of the desktop's look, the
// pause of alerts, and the shared ticks of their timelines.
#pragma once

#include "VesloraUI/Platform/HapticPerforming.h"
#include "VesloraUI/Platform/Scheduler.h"

#include <QObject>

#include <map>

class QQmlEngine;

namespace veslora {

class AlertPausing;
class Appearance;
class AutomationPermission;
class Defaults;
class FrameClock;
class Screens;
class ScrollDevices;
class SoundPlaying;

/// One repetition that every timeline of its period listens to. It runs while somebody does.
class TimelineTicker : public QObject {
    Q_OBJECT

  public:
    TimelineTicker(Scheduler& scheduler, double period) : m_scheduler(scheduler), m_period(period) {}

    void addListener();
    void removeListener();

  signals:
    void ticked();

  private:
    Scheduler& m_scheduler;
    double m_period;
    int m_listeners = 0;
    Task m_task;
};

class ViewEnvironment : public QObject {
    Q_OBJECT

  public:
    ViewEnvironment(Scheduler& scheduler, FrameClock& frameClock, Defaults& settings,
                    HapticPerforming& haptics, SoundPlaying& sounds, ScrollDevices& scrollDevices,
                    AutomationPermission& automation, Appearance& appearance, Screens& screens,
                    AlertPausing& pausing)
        : m_scheduler(scheduler), m_frameClock(frameClock), m_settings(settings), m_haptics(haptics),
          m_sounds(sounds), m_scrollDevices(scrollDevices), m_automation(automation),
          m_appearance(appearance), m_screens(screens), m_pausing(pausing) {}

    /// Makes this the environment of every view of `engine`, which it must outlive.
    void installOn(QQmlEngine& engine);

    /// The environment of an engine, which must have one.
    static ViewEnvironment& of(const QQmlEngine* engine);

    [[nodiscard]] Scheduler& scheduler() const { return m_scheduler; }
    /// Of the island's panel, and of no other window.
    [[nodiscard]] FrameClock& frameClock() const { return m_frameClock; }
    [[nodiscard]] Defaults& settings() const { return m_settings; }
    [[nodiscard]] HapticPerforming& haptics() const { return m_haptics; }
    [[nodiscard]] SoundPlaying& sounds() const { return m_sounds; }
    [[nodiscard]] ScrollDevices& scrollDevices() const { return m_scrollDevices; }
    [[nodiscard]] AutomationPermission& automation() const { return m_automation; }
    [[nodiscard]] Appearance& appearance() const { return m_appearance; }
    [[nodiscard]] Screens& screens() const { return m_screens; }
    [[nodiscard]] AlertPausing& pausing() const { return m_pausing; }

    /// Whether the desktop wants nothing to move that need not: lengths and places are then taken at once,
    /// and what comes and goes fades.
    [[nodiscard]] bool reducesMotion() const;

    /// The ticker of a period in seconds; the same one for equal periods, and alive as long as this.
    [[nodiscard]] TimelineTicker& ticker(double period);

    /// Lets every timeline that runs read the clock now, as after a sleep of the machine.
    void readClocks();

  private:
    Scheduler& m_scheduler;
    FrameClock& m_frameClock;
    Defaults& m_settings;
    HapticPerforming& m_haptics;
    SoundPlaying& m_sounds;
    ScrollDevices& m_scrollDevices;
    AutomationPermission& m_automation;
    Appearance& m_appearance;
    Screens& m_screens;
    AlertPausing& m_pausing;
    std::map<double, TimelineTicker> m_tickers;
};

} // namespace veslora
