// SPDX-License-Identifier: MIT
// Owns the island's panel and turns events into state: feeds the hover tracker, keeps the view model in step,
// decides where the panel takes clicks and when it hides. Main thread only.
#pragma once

#include "VesloraCore/Island/HoverTracker.h"
#include "VesloraUI/Island/EditTimeout.h"
#include "VesloraUI/Island/FullscreenMonitor.h"
#include "VesloraUI/Island/IslandContent.h"
#include "VesloraUI/Island/MusicOnIsland.h"
#include "VesloraUI/Island/NotchViewModel.h"
#include "VesloraUI/Island/ScreenChoice.h"
#include "VesloraUI/Platform/Platform.h"
#include "VesloraUI/Store/SettingsKeys.h"

#include <QObject>

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace veslora {

class TextMeasuring;

class NotchWindowController : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(NotchWindowController)

  public:
    using MakeContent = std::function<IslandContent(NotchViewModel&)>;

    /// Nothing runs and nothing shows before `start`. `makeContent` builds the island's view for a model.
    NotchWindowController(const Platform& platform, const TextMeasuring& measuring, Defaults& settings,
                          AgentsModel& agents, MakeContent makeContent);
    ~NotchWindowController() override;

    /// Once, at launch.
    void start();
    /// Once, at the end: the monitors stop, the scripts are let go and the panel goes.
    void stop();

    [[nodiscard]] TimerModel& timer() { return m_timer; }
    [[nodiscard]] RackModel& rack() { return m_rack; }
    [[nodiscard]] SystemSampler& sampler() { return m_sampler; }
    [[nodiscard]] KeepAwakeModel& keepAwake() { return m_keepAwake; }
    [[nodiscard]] MusicModel& music() { return m_music; }
    [[nodiscard]] MetronomeModel& metronome() { return m_metronome; }
    /// Null before the first layout.
    [[nodiscard]] NotchViewModel* model() const { return m_model.get(); }
    /// Absent before the first layout.
    [[nodiscard]] const std::optional<HoverTracker>& tracker() const { return m_tracker; }

    /// Opens the island until the pointer has been in it and has left, or closes it, also one that is being
    /// edited. False while it is not on screen: then nothing changes.
    bool toggle();
    /// Turns the rack's page by `step`, as far as there are pages. A closed island opens as by `toggle`, on
    /// the page that it was turned to. False while it is not on screen: then nothing changes.
    bool turnPage(int step);
    /// Enters edit mode, which opens the island, or leaves it. False while it is not on screen.
    bool toggleEditing();
    /// What is on the island while it is closed, also without a screen.
    [[nodiscard]] LiveActivityKind closedActivity() const { return presentation().activity.kind; }
    /// By which one can see that no change is judged twice.
    [[nodiscard]] std::uint64_t judgements() const { return m_judge.judgements(); }

    /// Rebuilds all that depends on a screen. Without any screen everything stays as it was.
    void layout();
    /// Whatever a closed island shows may have changed.
    void presentationChanged();

  private:
    void mouseMoved();
    void settingsChanged();
    void screensChanged();
    void editingChanged(bool isEditing);
    void islandWidthChanged(double width);
    void judge();
    void present();
    void buildLayout();
    void watchFullscreen();
    void applyVisibility();
    void openByCommand();
    void collapse();
    /// Opens or closes the view, by the tracker's word.
    void showExpanded(bool isExpanded);
    [[nodiscard]] bool isOnScreen() const { return !m_isHidden && m_tracker.has_value(); }
    void updateClickThrough();
    void scheduleOpenDelayCheck(std::optional<Timestamp> deadline);
    void playApprovalSoundIfNew();
    void agentsChanged();
    void fillTracker(HoverTracker& tracker);
    void showContent(const NotchGeometry& geometry);
    [[nodiscard]] const IslandPresentation& presentation() const { return m_judge.presentation(); }
    [[nodiscard]] std::optional<Size> alertSize() const;
    [[nodiscard]] bool isShowingAnAlert() const;
    [[nodiscard]] std::optional<Point> mouseLocation() const;
    [[nodiscard]] Timestamp now() const { return m_platform.scheduler.now(); }
    /// Times hovering, whatever the wall clock is set to meanwhile.
    [[nodiscard]] double steadyNow() const { return m_platform.scheduler.steadyNow(); }

    Platform m_platform;
    Defaults& m_settings;
    TimerModel m_timer;
    RackModel m_rack;
    SystemSampler m_sampler;
    AgentsModel& m_agents;
    KeepAwakeModel m_keepAwake;
    MusicModel m_music;
    MusicOnIsland m_musicOnIsland;
    MetronomeModel m_metronome;
    IslandModels m_models{{m_agents, m_keepAwake, m_metronome, m_music, m_timer, m_rack, m_sampler}};
    PresentationJudge m_judge;
    MakeContent m_makeContent;

    bool m_isHearing = false; ///< more of the same change may follow, and all is judged at its end
    std::set<std::string> m_soundedApprovals; ///< the waits that were announced already
    std::unique_ptr<NotchViewModel> m_model;
    IslandContent m_content;
    std::optional<HoverTracker> m_tracker;
    std::optional<ScreenInfo> m_screen;
    PanelZones m_zones;
    Task m_openDelayTask;                       ///< sleeps until the hover deadline
    std::optional<Timestamp> m_pendingDeadline; ///< by `steadyNow`
    FullscreenMonitor m_fullscreenMonitor;      ///< runs while somebody wants the island to step aside
    bool m_isHidden = false;                    ///< it has stepped aside
    EditTimeout m_editTimeout;
    std::optional<ScreenChoice> m_appliedDisplayChoice;
    std::vector<QMetaObject::Connection> m_observers;
};

} // namespace veslora
