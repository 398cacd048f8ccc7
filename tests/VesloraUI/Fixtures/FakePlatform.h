// SPDX-License-Identifier: MIT
// A machine that obeys a test: every seam of the platform, held in memory.
#pragma once

#include "VesloraUI/Platform/Platform.h"
#include "VesloraUI/Platform/TextMeasuring.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "tests/VesloraUI/Fixtures/FakeMetronome.h"
#include "tests/VesloraUI/Fixtures/FakeMusic.h"
#include "tests/VesloraUI/Fixtures/FakeUpdater.h"
#include "tests/support/FakeDirectoryWatcher.h"
#include "tests/support/ManualScheduler.h"
#include "tests/support/MemoryFiles.h"

#include <cmath>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace veslora {

class FakeProcesses final : public Processes {
  public:
    std::set<std::int32_t> alive;

    [[nodiscard]] std::int32_t ownId() const override { return 4711; }
    [[nodiscard]] std::string ownNamespace() const override { return "pid:[4026531836]"; }
    [[nodiscard]] bool isAlive(std::int32_t pid) const override { return alive.contains(pid); }

    std::vector<RunningProcess> running; ///< what can be told of some of them
    mutable int scans = 0;               ///< looks at all processes

    [[nodiscard]] std::optional<RunningProcess> processOf(std::int32_t pid) const override;
    [[nodiscard]] std::vector<RunningProcess> processesNamed(std::string_view name) const override;
};

class FakeHostApplications final : public HostApplications {
  public:
    std::map<std::int32_t, HostApp> apps; ///< by the process that asks
    std::set<std::int32_t> frontmost;
    std::vector<HostApp> activated;

    [[nodiscard]] std::optional<HostApp> hostAppOf(std::int32_t pid) override {
        const auto found = apps.find(pid);
        return found == apps.end() ? std::nullopt : std::optional(found->second);
    }
    [[nodiscard]] bool isFrontmost(std::int32_t pid) override { return frontmost.contains(pid); }
    void activate(const HostApp& app) override { activated.push_back(app); }
};

class FakeMultiplexer final : public TerminalMultiplexer {
  public:
    struct Call {
        std::int32_t pid = 0;
        std::optional<std::string> pane;
        bool operator==(const Call&) const = default;
    };
    std::map<std::int32_t, std::int32_t> clients; ///< by the process that asks
    std::vector<Call> calls;
    std::map<std::int32_t, Clients> showing; ///< by the process that asks; those in it are held
    double answerTime = 0;                   ///< seconds until `findClients` answers
    std::vector<Call> looks;

    explicit FakeMultiplexer(Scheduler& scheduler) : m_scheduler(scheduler) {}

    [[nodiscard]] bool mayHold(std::int32_t pid) const override { return showing.contains(pid); }
    [[nodiscard]] Task showPane(std::int32_t pid, const std::optional<std::string>& pane,
                                std::function<void(Client)> done) override;
    [[nodiscard]] Task findClients(std::int32_t pid, const std::optional<std::string>& pane,
                                   std::function<void(const Clients&)> done) override;

  private:
    Scheduler& m_scheduler;
};

/// Says what a test put into it, and counts how often it was asked.
class FakeSystemReadings final : public SystemReadings {
  public:
    std::optional<std::uint64_t> physical = std::uint64_t{16} << 30;
    std::optional<CPUTicks> counted;
    std::optional<MemoryPages> memory;
    std::optional<BatteryReading> power;
    std::optional<DiskCapacity> volume;
    int reads = 0;     ///< of anything
    int diskReads = 0; ///< of the disk alone

    [[nodiscard]] std::optional<std::uint64_t> physicalMemory() override { return ++reads, physical; }
    [[nodiscard]] std::optional<CPUTicks> ticks() override { return ++reads, counted; }
    [[nodiscard]] std::optional<MemoryPages> memoryPages() override { return ++reads, memory; }
    [[nodiscard]] std::optional<BatteryReading> battery() override { return ++reads, power; }
    [[nodiscard]] std::optional<DiskCapacity> disk() override { return ++reads, ++diskReads, volume; }
};

class FakeScreens final : public Screens {
  public:
    std::vector<ScreenInfo> screens;

    [[nodiscard]] std::vector<ScreenInfo> list() const override { return screens; }

    /// A screen of that size without a notch, with a bar of 28 points.
    static ScreenInfo make(const std::string& name, double width, double height, bool isBuiltIn);
};

/// Has the windows that a test put into it, on whichever screen.
class FakeScreenWindows final : public ScreenWindows {
  public:
    std::vector<WindowFrame> windows;
    bool isWatching = false;
    int looks = 0;

    [[nodiscard]] std::vector<WindowFrame> windowsOn(const ScreenInfo& /*screen*/) override {
        ++looks;
        return windows;
    }
    void setWatching(bool watching) override { isWatching = watching; }

    /// Replaces the windows and says so, as far as anybody wants to hear it.
    void change(std::vector<WindowFrame> newWindows);
};

class FakePointer final : public Pointer {
  public:
    std::optional<Point> position;
    bool isDown = false;
    bool isTracking = false;
    bool isWatchingPresses = false;
    bool hearsPresses = true; ///< those outside the island, while it is told to watch them

    [[nodiscard]] std::optional<Point> positionOn(const ScreenInfo& /*screen*/) const override {
        return position;
    }
    [[nodiscard]] bool isButtonDown() const override { return isDown; }
    void setTracking(bool tracking) override { isTracking = tracking; }
    [[nodiscard]] bool hearsPressesOutside() const override { return hearsPresses; }
    void setWatchingPresses(bool watching) override { isWatchingPresses = watching; }

    /// Moves the pointer and says so.
    void moveTo(std::optional<Point> point);
};

/// All devices are of the same kind.
class FakeScrollDevices final : public ScrollDevices {
  public:
    ScrollSource source = ScrollSource::unknown;

    [[nodiscard]] ScrollSource sourceOf(const QPointingDevice& /*device*/) override { return source; }
};

class FakePanel final : public Panel {
  public:
    Rect frame;
    std::string screenName;
    PanelZones zones;
    bool isShown = false;
    int placements = 0;

    void place(const ScreenInfo& screen, const Rect& newFrame) override;
    void setContent(QQuickItem* /*content*/) override {}
    void setOutline(std::function<QPainterPath()> /*outline*/) override {}
    void setZones(const PanelZones& newZones) override { zones = newZones; }
    void orderFront() override { isShown = true; }
    void orderOut() override { isShown = false; }
    [[nodiscard]] QQuickWindow* window() const override { return nullptr; }

    [[nodiscard]] bool takesClicksAt(Point point) const;
};

/// Draws at once, and stamps frames and events by the test's own clock.
class FakeFrameClock final : public FrameClock {
  public:
    ScreenLook screen = ScreenLook::asDrawn;
    bool isStuck = false; ///< the window system does not get to draw
    int looks = 0;
    int marks = 0; ///< how often the time of a frame was asked for

    explicit FakeFrameClock(Scheduler& scheduler) : m_scheduler(scheduler) {}

    /// The moment, by the clock that stamps events.
    [[nodiscard]] std::uint32_t eventTime() const {
        return static_cast<std::uint32_t>(std::llround(m_scheduler.steadyNow() * 1000));
    }
    [[nodiscard]] Task afterFrame(std::function<void(std::uint32_t)> shown) override;
    [[nodiscard]] ScreenLook look(const QRectF& /*area*/) override { return ++looks, screen; }

  private:
    Scheduler& m_scheduler;
};

class RecordingSounds final : public SoundPlaying {
  public:
    std::vector<std::string> played;
    void play(const std::string& name) override { played.push_back(name); }
};

class RecordingHaptics final : public HapticPerforming {
  public:
    std::vector<HapticPattern> performed;
    void perform(HapticPattern pattern) override { performed.push_back(pattern); }
};

/// Seven points a byte.
class FixedTextMeasuring final : public TextMeasuring {
  public:
    [[nodiscard]] double wingTextWidth(const std::string& text) const override {
        return 7.0 * static_cast<double>(text.size());
    }
};

class RecordingStatusMenu final : public StatusMenu {
  public:
    std::vector<StatusMenuRow> rows;
    void show(const QString& /*title*/, const QString& /*symbol*/,
              std::vector<StatusMenuRow> newRows) override {
        rows = std::move(newRows);
    }
};

class RecordingPower final : public PowerAsserting {
  public:
    std::vector<std::optional<KeepAwakeHold>> applied;
    void apply(const std::optional<KeepAwakeHold>& hold) override { applied.push_back(hold); }
};

/// Remembers what it was asked to tell.
class RecordingNotifier final : public TimerNotifying {
  public:
    std::vector<std::string> log;
    void requestPermission() override { log.emplace_back("permission"); }
    void timerFinished(double duration) override {
        log.push_back("finished " + std::to_string(std::lround(duration)));
    }
};

/// A desktop that changes its look when a test says so.
class FakeAppearance final : public Appearance {
  public:
    bool isFollowed = false;

    void follow() override { isFollowed = true; }
    void change(const DesktopAppearance& appearance) { set(appearance); }
};

/// Does what it is told unless it is to fail.
class FakeLoginItem final : public LoginItem {
  public:
    bool isOn = false;
    std::error_code failure;

    [[nodiscard]] bool isEnabled() override { return isOn; }
    std::error_code enable() override { return change(true); }
    std::error_code disable() override { return change(false); }
    [[nodiscard]] std::string place() const override { return "~/.config/autostart/entry"; }

  private:
    std::error_code change(bool toOn) {
        isOn = failure ? isOn : toOn;
        return failure;
    }
};

class FakeMemory final : public MemoryReleasing {
  public:
    int releases = 0;

    void releaseSoon() override { ++releases; }
};

/// Programs that end when a test says so.
class FakePrograms final : public ProgramRunning {
  public:
    struct Run {
        std::vector<std::string> arguments;
        std::string input;
        std::shared_ptr<TaskState> state;
        std::shared_ptr<Result> result;
    };
    std::vector<Run> runs;

    [[nodiscard]] Task run(const std::vector<std::string>& arguments, const std::string& input,
                           double /*limit*/, std::function<void(const Result&)> done) override {
        const auto result = std::make_shared<Result>();
        const auto state = std::make_shared<TaskState>();
        state->run = [result, done = std::move(done)] { done(*result); };
        runs.push_back({arguments, input, state, result});
        return Task(state);
    }
    /// Whether somebody still waits for that one.
    [[nodiscard]] bool isAwaited(std::size_t place) const { return runs.at(place).state->run != nullptr; }
    void end(std::size_t place, const Result& result) {
        *runs.at(place).result = result;
        if (const auto run = std::exchange(runs.at(place).state->run, nullptr)) {
            run();
        }
    }
};

/// An installer that ends when a test says so.
class FakeInstaller final : public PackageInstalling {
  public:
    std::vector<std::string> paths; ///< that it was given

    [[nodiscard]] Task install(const std::string& path, std::function<void(InstallOutcome)> done) override {
        paths.push_back(path);
        m_state = std::make_shared<TaskState>();
        m_state->run = [this, done = std::move(done)] { done(m_outcome); };
        return Task(m_state);
    }
    void end(InstallOutcome outcome) {
        m_outcome = outcome;
        if (const auto run = std::exchange(m_state->run, nullptr)) {
            run();
        }
    }

  private:
    InstallOutcome m_outcome = InstallOutcome::failed;
    std::shared_ptr<TaskState> m_state;
};

/// A desktop whose do-not-disturb a test turns on and off.
class FakeDoNotDisturb final : public DoNotDisturb {
  public:
    bool isFollowed = false;

    void follow() override { isFollowed = true; }
    [[nodiscard]] bool isOn() const override { return m_isOn; }
    void turn(bool isOn) {
        turnSilently(isOn);
        emit changed();
    }
    void turnSilently(bool isOn) { m_isOn = isOn; }

  private:
    bool m_isOn = false;
};

class FakePlatform {
  public:
    FakePlatform();

    Directories paths;
    ManualScheduler time;
    MemoryFiles disk;
    FakeDirectoryWatcher watches;
    FakeProcesses tasks;
    FakeHostApplications hosts;
    FakeMultiplexer multiplexer{time};
    FakeSystemReadings readings;
    Suspension sleep;
    FakeScreens displays;
    FakeScreenWindows others;
    FakePointer mouse;
    FakeScrollDevices scrolling;
    FakePanel window;
    FakeFrameClock frames{time};
    RecordingSounds sound;
    FakeMetronomePlayer beats{time};
    FakeMetronomePlayer beatsOfSamples{time};
    RecordingHaptics taps;
    FixedTextMeasuring measuring;
    RecordingStatusMenu menu;
    RecordingPower energy;
    RecordingNotifier notices;
    FakeSpotify spotify;
    FakeScripts scripts{time};
    FakeAdapter adapter;
    FakeArtwork web{time};
    RecordingApps apps;
    FakeAutomation automation;
    FakeAppearance look;
    FakeLoginItem login;
    FakePrograms programs;
    FakeUpdater updates;
    FakeInstaller installer;
    FakeDoNotDisturb quiet;
    FakeMemory freed;

    /// Lets time pass, and the files' stamps with it.
    void advance(double seconds);

    Platform seams{.directories = paths,
                   .scheduler = time,
                   .files = disk,
                   .directoryWatcher = watches,
                   .processes = tasks,
                   .hostApplications = hosts,
                   .terminalMultiplexer = multiplexer,
                   .systemReadings = readings,
                   .suspension = sleep,
                   .screens = displays,
                   .screenWindows = others,
                   .pointer = mouse,
                   .scrollDevices = scrolling,
                   .panel = window,
                   .frameClock = frames,
                   .sounds = sound,
                   .metronome = beats,
                   .metronomePreview = beatsOfSamples,
                   .haptics = taps,
                   .statusMenu = menu,
                   .power = energy,
                   .timerNotifier = notices,
                   .spotify = spotify,
                   .scripts = scripts,
                   .mediaAdapter = adapter,
                   .artwork = web,
                   .apps = apps,
                   .automation = automation,
                   .appearance = look,
                   .loginItem = login,
                   .programs = programs,
                   .packages = installer,
                   .doNotDisturb = quiet,
                   .memory = freed};
};

/// The settings of a user who never touched any.
class FakeDefaults final : public Defaults {
  public:
    explicit FakeDefaults(FakePlatform& platform)
        : Defaults(platform.disk, platform.watches, platform.paths.configuration) {
        SettingsKeys::registerDefaults(*this);
    }
};

} // namespace veslora
