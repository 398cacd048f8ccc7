// SPDX-License-Identifier: MIT
// Views drawn into memory, with their controls found and pressed as a user of a screen reader and a mouse
// would.
#pragma once

#include "VesloraUI/Settings/LoginItemManager.h"
#include "VesloraUI/Settings/UpdaterModel.h"
#include "VesloraUI/Store/AlertPausing.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Style/ViewEnvironment.h"
#include "VesloraUI/Widgets/IslandModels.h"
#include "tests/VesloraUI/Fixtures/FakeMonitor.h"
#include "tests/VesloraUI/Fixtures/FakePlatform.h"
#include "tests/support/FixedCalendar.h"

#include <QPointF>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QStringList>

#include <array>
#include <memory>

class QAccessibleInterface;

namespace veslora {

class Scene {
  public:
    Scene();
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;
    ~Scene();

    FakePlatform platform;
    FakeDefaults settings{platform};
    FakeMonitor claude;
    FakeMonitor codex{AgentKind::codex};
    AgentsModel agents{{&claude, &codex}};
    RackModel rack{settings, platform.taps};
    SystemSampler sampler{platform.time, platform.readings};
    KeepAwakeModel keepAwake{settings, platform.energy, platform.time};
    TimerModel timer{settings, {platform.time, platform.sound, platform.taps, &platform.notices}};
    MetronomeModel metronome{settings, {platform.time, platform.beats, platform.sleep}};
    MetronomeModel previewer{settings, {platform.time, platform.beatsOfSamples, platform.sleep}};
    MusicModel music{settings,
                     {.scheduler = platform.time,
                      .spotify = platform.spotify,
                      .scripts = platform.scripts,
                      .adapter = platform.adapter,
                      .artwork = platform.web,
                      .apps = platform.apps}};
    LoginItemManager loginItem{platform.login};
    UpdaterModel updater{platform.updates};
    IslandModels models{{agents, keepAwake, metronome, music, timer, rack, sampler}};
    AlertPausing pausing{settings, platform.time, platform.quiet, test::fixedCalendar()};
    ViewEnvironment environment{
        platform.time,      platform.frames,     settings,      platform.taps,     platform.sound,
        platform.scrolling, platform.automation, platform.look, platform.displays, pausing};
    QQmlEngine engine;
    /// Device pixels to a point, on the screen where windows are shown from now on: one of `screenScales`.
    double scale = 1;
    static constexpr std::array screenScales{1.0, 1.25, 1.5, 1.75, 2.0};

    /// Shows the view of a file in a window of that size, with what it asks for.
    void show(const QString& file, const QVariantMap& properties, QSize size = {520, 200});
    /// Shows a page of widgets, with the scene's other models.
    void showRack(RackModel& shown, QSize size);
    /// Shows a view that is written down, with all of Qt Quick and of ours at hand.
    void showText(const QString& text, QSize size, const QVariantMap& properties = {});
    /// Shows a window of its own.
    void showWindow(std::unique_ptr<QQuickWindow> shown);

    /// Takes the view away, before what it shows goes.
    void close();

    /// Whether something of that name can be seen.
    [[nodiscard]] bool shows(const QString& name) const;
    [[nodiscard]] bool isEnabled(const QString& name) const;
    /// The names of all that can be seen, from the top left to the bottom right as views stack them.
    [[nodiscard]] QStringList names() const;
    /// The middle of a control, in the window's coordinates.
    [[nodiscard]] QPointF centerOf(const QString& name) const;
    /// A press and a release of the left button in the middle of a control, both of now.
    void press(const QString& name);
    void pressDown(const QString& name);
    void release(QPointF point);
    /// Lets that much time pass for the views' timelines.
    void advance(double seconds);

    /// The texts of all visible items that show one, in the order of the tree.
    [[nodiscard]] QStringList texts() const;
    /// The first visible item that carries a property of that value, such as a text.
    [[nodiscard]] QQuickItem* itemWith(const char* property, const QVariant& value) const;

    /// The item that goes by that name; null when none can be seen.
    [[nodiscard]] QQuickItem* itemNamed(const QString& name) const;

    [[nodiscard]] bool isShown() const { return m_window != nullptr; }
    [[nodiscard]] QQuickWindow& window() const { return *m_window; }
    /// What `show` made.
    [[nodiscard]] QObject& view() const { return *m_view; }
    [[nodiscard]] QImage picture() const;

  private:
    void show(std::unique_ptr<QObject> view, QSize size);
    [[nodiscard]] QAccessibleInterface* find(const QString& name) const;
    void stampMouse() const;

    std::unique_ptr<IslandModels> m_modelsOfRack;
    std::unique_ptr<QQuickWindow> m_window;
    std::unique_ptr<QObject> m_view;
};

} // namespace veslora
