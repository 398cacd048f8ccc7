// SPDX-License-Identifier: MIT
#include "VesloraUI/Island/NotchWindowController.h"

#include "VesloraCore/Island/FullscreenDetector.h"
#include "VesloraUI/Platform/Logs.h"
#include "VesloraUI/Store/Defaults.h"

#include <algorithm>
#include <limits>

namespace veslora {

namespace {

/// A place that lies outside every zone of every screen.
constexpr Point nowhere{std::numeric_limits<double>::lowest(), std::numeric_limits<double>::lowest()};

bool containPoint(const std::vector<Rect>& zones, Point point) {
    return std::ranges::any_of(zones, [point](const Rect& zone) { return zone.contains(point); });
}

} // namespace

NotchWindowController::NotchWindowController(const Platform& platform, const TextMeasuring& measuring,
                                             Defaults& settings, AgentsModel& agents, MakeContent makeContent)
    : m_platform(platform), m_settings(settings),
      m_timer(settings, {platform.scheduler, platform.sounds, platform.haptics, &platform.timerNotifier}),
      m_rack(settings, platform.haptics), m_sampler(platform.scheduler, platform.systemReadings),
      m_agents(agents), m_keepAwake(settings, platform.power, platform.scheduler),
      m_music(settings, {.scheduler = platform.scheduler,
                         .spotify = platform.spotify,
                         .scripts = platform.scripts,
                         .adapter = platform.mediaAdapter,
                         .artwork = platform.artwork,
                         .apps = platform.apps}),
      m_musicOnIsland(m_music, m_rack, settings, platform.scheduler, [this] { presentationChanged(); }),
      m_metronome(settings, {platform.scheduler, platform.metronome, platform.suspension}),
      m_judge(m_models, settings, measuring), m_makeContent(std::move(makeContent)),
      m_fullscreenMonitor(platform.screenWindows, platform.scheduler),
      m_editTimeout(platform.pointer, platform.scheduler, [this] { m_rack.exitEditing(); }) {}

NotchWindowController::~NotchWindowController() {
    m_platform.panel.setContent(nullptr);
}

void NotchWindowController::start() {
    m_timer.onPresentationChange = [this] { presentationChanged(); };
    m_rack.onEditingChange = [this](bool isEditing) { editingChanged(isEditing); };
    m_rack.onIslandWidthChange = [this](double width) { islandWidthChanged(width); };
    m_agents.setOnChange([this] { agentsChanged(); });
    m_keepAwake.onChange = [this] { presentationChanged(); };
    m_metronome.onChange = [this] { presentationChanged(); };
    m_fullscreenMonitor.onChange = [this](bool) { applyVisibility(); };
    m_agents.start();
    layout();
    m_platform.panel.orderFront();
    Pointer& pointer = m_platform.pointer;
    m_observers = {
        connect(&m_settings, &Defaults::changed, this, &NotchWindowController::settingsChanged),
        connect(&pointer, &Pointer::moved, this, &NotchWindowController::mouseMoved),
        connect(&pointer, &Pointer::released, this, &NotchWindowController::updateClickThrough),
        connect(&pointer, &Pointer::pressedOutside, this, [this] { m_rack.exitEditing(); }),
        connect(&m_platform.screens, &Screens::changed, this, &NotchWindowController::screensChanged),
        connect(&m_platform.suspension, &Suspension::didWake, this, [this] { m_sampler.startAgain(); }),
    };
    watchFullscreen();
    m_musicOnIsland.start();
    pointer.setTracking(true);
}

void NotchWindowController::stop() {
    m_fullscreenMonitor.stop();
    m_rack.exitEditing();
    m_musicOnIsland.stop();
    m_metronome.onChange = nullptr;
    m_metronome.stop();
    m_agents.stop();
    m_agents.setOnChange(nullptr);
    m_keepAwake.onChange = nullptr;
    m_keepAwake.stop();
    m_keepAwake.setClaudeIsWorking(false);
    m_timer.onPresentationChange = nullptr;
    m_openDelayTask.cancel();
    m_platform.pointer.setTracking(false);
    for (const QMetaObject::Connection& observer : std::exchange(m_observers, {})) {
        disconnect(observer);
    }
    m_platform.panel.orderOut();
}

void NotchWindowController::judge() {
    const LiveActivityKind former = presentation().activity.kind;
    const LiveActivityKind kind = m_judge.judge(now()).activity.kind;
    if (kind != former) {
        qCInfo(Logs::island, "shows %s", std::string(name(kind)).c_str());
    }
}

std::optional<Size> NotchWindowController::alertSize() const {
    const bool isRequest =
        presentation().activity.kind == LiveActivityKind::claudeAlert && presentation().requestId.has_value();
    return isRequest ? std::optional(NotchGeometry::claudeRequestAlertSize) : std::nullopt;
}

bool NotchWindowController::isShowingAnAlert() const {
    return isAlert(presentation().activity.kind);
}

std::optional<Point> NotchWindowController::mouseLocation() const {
    return m_screen ? m_platform.pointer.positionOn(*m_screen) : std::nullopt;
}

void NotchWindowController::layout() {
    judge();
    buildLayout();
}

void NotchWindowController::screensChanged() {
    layout();
    m_fullscreenMonitor.recheck();
}

void NotchWindowController::buildLayout() {
    m_appliedDisplayChoice = ScreenChoice::of(m_settings);
    const auto screen = m_appliedDisplayChoice->among(m_platform.screens.list());
    if (!screen) {
        qCInfo(Logs::island, "stays as it is, without any screen");
        return;
    }
    qCInfo(Logs::island, "laid out on %s", screen->name.c_str());
    m_screen = screen;
    const NotchGeometry geometry(screen->metrics);
    m_rack.setScreenWidth(geometry.screenWidth);
    HoverTracker tracker(geometry, m_settings.doubleValue(SettingsKeys::hoverDelay));
    fillTracker(tracker);
    m_tracker = tracker;
    showContent(geometry);
    updateClickThrough();
}

void NotchWindowController::fillTracker(HoverTracker& tracker) {
    tracker.liveActivityWingWidth = presentation().activity.wingWidth;
    tracker.isShowingAlert = isShowingAnAlert();
    tracker.alertSize = alertSize();
    tracker.setPinnedOpen(m_rack.isEditing());
    tracker.isEditing = m_rack.isEditing();
    tracker.expandedWidth = m_rack.islandWidth();
    // The pointer did not open it, so no new screen takes it away from under the pointer.
    if (m_tracker && m_tracker->isHeldOpen()) {
        tracker.holdOpen();
    }
}

void NotchWindowController::showContent(const NotchGeometry& geometry) {
    auto model = std::make_unique<NotchViewModel>(geometry, m_models, presentation());
    model->setExpanded(m_tracker->isExpanded());
    IslandContent content = m_makeContent(*model);
    Panel& panel = m_platform.panel;
    panel.place(*m_screen, geometry.windowFrame());
    panel.setContent(content.item.get());
    panel.setOutline(content.outline);
    connect(model.get(), &NotchViewModel::alertCameOnScreen, this,
            &NotchWindowController::updateClickThrough);
    // The former view goes before the model that it reads.
    m_content = std::move(content);
    m_model = std::move(model);
}

void NotchWindowController::agentsChanged() {
    // A session that begins or ends to work may hold the machine awake or let it go, which is the same
    // change.
    m_isHearing = true;
    m_keepAwake.setClaudeIsWorking(m_agents.longestWorking().has_value());
    m_isHearing = false;
    presentationChanged();
}

void NotchWindowController::presentationChanged() {
    if (!m_isHearing) {
        judge();
        present();
    }
}

/// The order counts: the model goes before the zones, as they hold an alert back until its view has said that
/// it is on screen.
void NotchWindowController::present() {
    if (m_tracker) {
        m_tracker->liveActivityWingWidth = presentation().activity.wingWidth;
    }
    if (m_model) {
        m_model->refresh();
    }
    if (m_tracker) {
        m_tracker->isShowingAlert = isShowingAnAlert();
        m_tracker->alertSize = alertSize();
        if (m_tracker->isHeldOpen() && m_tracker->isShowingAlert) {
            // It would hide the alert from a user who looks elsewhere, and no movement need follow.
            mouseMoved();
        }
    }
    playApprovalSoundIfNew();
    updateClickThrough();
    applyVisibility();
}

void NotchWindowController::playApprovalSoundIfNew() {
    const std::set<std::string>& approvals = presentation().approvals;
    const bool haveNew = !std::ranges::includes(m_soundedApprovals, approvals);
    // Replaced whatever happens next: a wait that has begun in silence is not announced later.
    m_soundedApprovals = approvals;
    if (haveNew && !m_agents.areAlertsPaused() && m_settings.boolValue(SettingsKeys::claudeApprovalSound) &&
        m_settings.boolValue(SettingsKeys::claudeApprovalAlerts)) {
        m_platform.sounds.play("Glass");
    }
}

void NotchWindowController::editingChanged(bool isEditing) {
    if (m_tracker) {
        m_tracker->setPinnedOpen(isEditing);
        m_tracker->isEditing = isEditing;
    }
    m_platform.pointer.setWatchingPresses(isEditing);
    if (!isEditing) {
        if (m_model) {
            m_model->refresh();
        }
        mouseMoved();
        return;
    }
    if (m_model) {
        showExpanded(true);
    }
    updateClickThrough();
}

void NotchWindowController::islandWidthChanged(double width) {
    if (m_tracker) {
        m_tracker->expandedWidth = width;
    }
    if (m_model) {
        m_model->refresh();
    }
    updateClickThrough();
}

void NotchWindowController::settingsChanged() {
    if (m_tracker) {
        m_tracker->openDelay = m_settings.doubleValue(SettingsKeys::hoverDelay);
    }
    m_rack.settingsChanged();
    // All of it is one change, judged below.
    m_isHearing = true;
    m_musicOnIsland.settingsChanged();
    m_isHearing = false;
    // A toggle may have switched off what the island shows right now.
    judge();
    if (m_appliedDisplayChoice != ScreenChoice::of(m_settings)) {
        buildLayout();
        m_fullscreenMonitor.recheck();
    }
    watchFullscreen();
    present();
}

/// Windows are looked at only for a user who wants the island out of their way.
void NotchWindowController::watchFullscreen() {
    const bool isWanted = m_settings.boolValue(SettingsKeys::hideInFullscreen);
    if (!isWanted) {
        m_fullscreenMonitor.stop();
    } else if (!m_fullscreenMonitor.isRunning()) {
        m_fullscreenMonitor.start([this] { return m_screen; });
    }
}

void NotchWindowController::applyVisibility() {
    const bool isShown = FullscreenDetector::shouldShowIsland(
        m_fullscreenMonitor.isFullscreen(), m_settings.boolValue(SettingsKeys::hideInFullscreen),
        isShowingAnAlert());
    if (isShown != m_isHidden) {
        return;
    }
    m_isHidden = !isShown;
    qCInfo(Logs::island, isShown ? "comes up" : "hides");
    if (isShown) {
        m_platform.panel.orderFront();
        return;
    }
    m_rack.exitEditing();
    collapse();
    m_platform.panel.orderOut();
}

bool NotchWindowController::toggle() {
    if (!isOnScreen()) {
        return false;
    }
    if (!m_tracker->isExpanded()) {
        openByCommand();
        return true;
    }
    m_rack.exitEditing();
    m_tracker->shut();
    showExpanded(false);
    mouseMoved();
    return true;
}

void NotchWindowController::openByCommand() {
    m_tracker->holdOpen();
    m_rack.didOpen();
    showExpanded(true);
    // Takes in where the pointer is already.
    mouseMoved();
}

bool NotchWindowController::turnPage(int step) {
    if (!isOnScreen()) {
        return false;
    }
    // Before it opens, so that no other page ever shows.
    m_rack.flipPage(step);
    if (!m_tracker->isExpanded()) {
        openByCommand();
    }
    return true;
}

bool NotchWindowController::toggleEditing() {
    if (!isOnScreen()) {
        return false;
    }
    if (!m_tracker->isExpanded()) {
        openByCommand();
    }
    m_rack.isEditing() ? m_rack.exitEditing() : m_rack.enterEditing();
    return true;
}

void NotchWindowController::collapse() {
    if (!m_tracker || !m_tracker->isExpanded()) {
        return;
    }
    m_tracker->shut();
    m_tracker->update(nowhere, steadyNow());
    showExpanded(false);
    updateClickThrough();
}

void NotchWindowController::showExpanded(bool isExpanded) {
    if (m_model->isExpanded() && !isExpanded) {
        m_platform.memory.releaseSoon();
    }
    m_model->setExpanded(isExpanded);
}

void NotchWindowController::mouseMoved() {
    if (!isOnScreen()) {
        return;
    }
    const Point mouse = mouseLocation().value_or(nowhere);
    if (m_tracker->update(mouse, steadyNow())) {
        showExpanded(m_tracker->isExpanded());
        if (m_tracker->isExpanded()) {
            m_rack.didOpen();
        }
    }
    updateClickThrough();
    scheduleOpenDelayCheck(m_tracker->pendingOpenDeadline());
}

void NotchWindowController::scheduleOpenDelayCheck(std::optional<Timestamp> deadline) {
    if (deadline == m_pendingDeadline) {
        return;
    }
    m_pendingDeadline = deadline;
    m_openDelayTask.cancel();
    if (deadline) {
        // Without this a pointer that rests on the notch would never open the island: no event follows.
        m_openDelayTask = m_platform.scheduler.after(std::max(*deadline - steadyNow(), 0.0), [this] {
            m_pendingDeadline.reset();
            mouseMoved();
        });
    }
}

void NotchWindowController::updateClickThrough() {
    if (!m_tracker) {
        return;
    }
    m_tracker->isAlertOnScreen = m_model && m_model->isAlertOnScreen();
    PanelZones zones{m_tracker->clickZones(), {}};
    if (const auto zone = m_tracker->hoverZone()) {
        zones.hover.push_back(*zone);
    }
    m_editTimeout.update(m_rack.isEditing(), m_screen, zones);
    if (zones == m_zones) {
        return;
    }
    // A press in progress is never cut off; its release leads here again.
    if (!m_zones.clicks.empty() && m_platform.pointer.isButtonDown() &&
        containPoint(m_zones.clicks, mouseLocation().value_or(nowhere))) {
        return;
    }
    m_zones = zones;
    m_platform.panel.setZones(zones);
}

} // namespace veslora
