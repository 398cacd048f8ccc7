// SPDX-License-Identifier: MIT
#include "bench/inside/MetronomeBench.h"

#include "VesloraCore/Metronome/MetronomeTempo.h"
#include "VesloraLinux/Audio/MetronomeEngine.h"
#include "VesloraLinux/Audio/PulseOpenOutput.h"
#include "VesloraLinux/System/LinuxScheduler.h"
#include "VesloraUI/Metronome/MetronomeModel.h"
#include "VesloraUI/Platform/Suspension.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "bench/Clock.h"
#include "bench/Report.h"
#include "bench/inside/BeatRecord.h"
#include "tests/VesloraLinux/Support/SoundServer.h"
#include "tests/VesloraLinux/Support/Waiting.h"
#include "tests/support/FakeDirectoryWatcher.h"
#include "tests/support/MemoryFiles.h"

#include <QLoggingCategory>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace veslora::bench {

namespace {

using std::chrono::milliseconds;

/// How often the sound server had nothing to play, by what the output says of it.
std::atomic<int> underruns = 0;

void hearLine(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& line) {
    if (line.contains(QStringLiteral("ran out of samples"))) {
        ++underruns;
    }
}

/// The engine, and what was queued with it.
class CountingPlayer final : public MetronomePlaying {
  public:
    std::size_t queued = 0;
    std::int64_t first = 0;

    explicit CountingPlayer(MetronomeEngine& engine) : m_engine(engine) {}

    [[nodiscard]] std::optional<std::int64_t> currentSample() const override {
        return m_engine.currentSample();
    }
    [[nodiscard]] double sampleRate() const override { return m_engine.sampleRate(); }
    [[nodiscard]] std::int64_t outputLatency() const override { return m_engine.outputLatency(); }
    [[nodiscard]] StartResult start() override {
        const StartResult result = m_engine.start();
        first = std::get<std::int64_t>(result);
        return result;
    }
    void stop() override { m_engine.stop(); }
    void schedule(MetronomeSound sound, bool accent, std::int64_t atSample) override {
        ++queued;
        m_engine.schedule(sound, accent, atSample);
    }
    void setVolume(float volume) override { m_engine.setVolume(volume); }

  private:
    MetronomeEngine& m_engine;
};

/// Every processor has more to do than it can, while this is there.
class Load {
  public:
    Load() {
        for (unsigned count = 0; count < 2 * std::thread::hardware_concurrency(); ++count) {
            m_threads.emplace_back([this] {
                while (!m_isOver) {
                }
            });
        }
    }
    Load(const Load&) = delete;
    Load& operator=(const Load&) = delete;
    ~Load() {
        m_isOver = true;
        for (std::thread& thread : m_threads) {
            thread.join();
        }
    }

  private:
    std::atomic<bool> m_isOver = false;
    std::vector<std::thread> m_threads;
};

/// Changes of a tempo that keep within the range. Small ones: where the last beat was long ago, the next one
/// at a much faster tempo would be over already, and rightly not be heard.
std::array<int, 3> stepsFrom(int bpm) {
    const int size = std::max(1, bpm / 20);
    const int step = bpm + size > MetronomeTempo::range.upper ? -size : size;
    return {step, -step, step};
}

enum class Condition { idle, load, blocked };

class Run {
  public:
    explicit Run(int bpm) {
        SettingsKeys::registerDefaults(m_settings);
        m_settings.set(SettingsKeys::metronomeVolume, 1.0);
        m_metronome.setBpm(bpm);
    }

    [[nodiscard]] Comparison compareAfter(double seconds, Condition condition) {
        const testing::Recorder recorder(m_environment, m_server.address(), "cap");
        std::optional<Load> load;
        if (condition == Condition::load) {
            load.emplace();
        }
        QTimer blocker;
        QObject::connect(&blocker, &QTimer::timeout, [] { std::this_thread::sleep_for(milliseconds(300)); });
        if (condition == Condition::blocked) {
            blocker.start(700);
        }
        const double before = monotonicNow();
        m_metronome.start();
        m_startTime = (monotonicNow() - before) * 1000;
        if (!m_metronome.isRunning()) {
            throw std::runtime_error("the metronome does not start");
        }
        BeatPlan plan(m_player.first, m_metronome.bpm());
        const int part = static_cast<int>(seconds * 1000 / 4);
        testing::handleEventsFor(part);
        for (const int step : stepsFrom(m_metronome.bpm())) {
            m_metronome.adjust(step);
            plan.change(m_player.queued, m_metronome.bpm());
            testing::handleEventsFor(part);
        }
        const std::int64_t heardUntil = m_engine.currentSample().value_or(0) - m_engine.outputLatency();
        m_metronome.stop();
        testing::handleEventsFor(300);
        return compare(plan, onsetsIn(recorder.samples()), heardUntil);
    }

    /// Milliseconds for which the last start held the main thread.
    [[nodiscard]] double startTime() const { return m_startTime; }

  private:
    double m_startTime = 0;
    testing::SoundEnvironment m_environment;
    testing::PulseServer m_server{m_environment};
    MemoryFiles m_files;
    FakeDirectoryWatcher m_watcher;
    Defaults m_settings{m_files, m_watcher, "/configuration"};
    LinuxScheduler m_scheduler;
    Suspension m_suspension;
    MetronomeEngine m_engine{std::make_unique<PulseOpenOutput>(PulseOptions{.server = m_server.address()})};
    CountingPlayer m_player{m_engine};
    MetronomeModel m_metronome{m_settings, {m_scheduler, m_player, m_suspension}};
};

/// Of all tempos. Where the server had nothing to play, its silence moves what comes after it, so such a run
/// only counts as one.
struct Total {
    std::int64_t worst = 0;
    int heard = 0;
    int missing = 0;
    int underruns = 0;
    double startTime = 0; ///< milliseconds

    void add(const Comparison& run, int dry, double start) {
        underruns += dry;
        startTime = std::max(startTime, start);
        if (dry == 0) {
            worst = std::max(worst, run.worst);
            heard += run.heard;
            missing += run.missing;
        }
    }
};

Total measure(Condition condition, bool isShort) {
    const std::vector<int> tempos = isShort ? std::vector{137} : std::vector{30, 137, 300};
    Total total;
    for (const int bpm : tempos) {
        underruns = 0;
        Run metronome(bpm);
        const Comparison run = metronome.compareAfter(isShort ? 3 : 20, condition);
        if (run.heard == 0) {
            throw std::runtime_error("nothing was heard of the metronome");
        }
        total.add(run, underruns, metronome.startTime());
    }
    return total;
}

} // namespace

void measureMetronome(Report& report, bool isShort) {
    const testing::CoreApplication application;
    QLoggingCategory::setFilterRules(QStringLiteral("veslora.audio.info=true"));
    const auto former = qInstallMessageHandler(hearLine);
    const std::array<std::pair<const char*, Condition>, 3> conditions{
        {{"idle", Condition::idle}, {"load", Condition::load}, {"blocked", Condition::blocked}}};
    for (const auto& [name, condition] : conditions) {
        const Total total = measure(condition, isShort);
        const std::string prefix = std::string("metronome_") + name;
        const auto value = [](auto number) { return static_cast<double>(number); };
        report.add({prefix + "_error", value(total.worst), "samples", 0, {0, 1e9}});
        report.add({prefix + "_missing", value(total.missing), "beats", 0, {0, 1e6}});
        const double fewest = condition == Condition::load ? 0 : 5;
        report.add({prefix + "_heard", value(total.heard), "beats", std::nullopt, {fewest, 1e6}});
        report.add({prefix + "_start", total.startTime, "ms", 16, {0.001, 60000}});
        report.add({prefix + "_underruns", value(total.underruns), "", std::nullopt, {0, 1e6}});
    }
    qInstallMessageHandler(former);
}

} // namespace veslora::bench
