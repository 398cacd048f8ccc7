// SPDX-License-Identifier: MIT
#include "bench/inside/MetronomeRun.h"

#include "VesloraCore/Metronome/MetronomeTempo.h"
#include "VesloraLinux/Audio/MetronomeEngine.h"
#include "VesloraLinux/Audio/OpenServerOutput.h"
#include "VesloraLinux/Audio/SoundServers.h"
#include "VesloraLinux/System/LinuxScheduler.h"
#include "VesloraUI/Metronome/MetronomeModel.h"
#include "VesloraUI/Platform/Suspension.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "bench/Capture.h"
#include "bench/Clock.h"
#include "tests/VesloraLinux/Support/Waiting.h"
#include "tests/support/FakeDirectoryWatcher.h"
#include "tests/support/MemoryFiles.h"

#include <QLoggingCategory>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <memory>
#include <optional>
#include <stdexcept>
#include <thread>

namespace veslora::bench {

namespace {

using std::chrono::milliseconds;

/// The program's own choice among the servers that the environment leads to.
std::unique_ptr<OpenAudioOutput> makeOutput() {
    return std::make_unique<OpenServerOutput>(soundServers());
}

/// Counts how often the sound server had nothing to play, by what the output says of it.
class UnderrunCount {
  public:
    UnderrunCount() : m_former(qInstallMessageHandler(hearLine)) {
        s_count = 0;
        QLoggingCategory::setFilterRules(QStringLiteral("veslora.audio.info=true"));
    }
    UnderrunCount(const UnderrunCount&) = delete;
    UnderrunCount& operator=(const UnderrunCount&) = delete;
    ~UnderrunCount() { qInstallMessageHandler(m_former); }

    [[nodiscard]] static int value() { return s_count; }

  private:
    static void hearLine(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& line) {
        if (line.contains(QStringLiteral("ran out of samples"))) {
            ++s_count;
        }
    }

    static inline std::atomic<int> s_count = 0;
    QtMessageHandler m_former;
};

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

/// Brings a condition about while this is there.
class Circumstances {
  public:
    explicit Circumstances(Condition condition) {
        QObject::connect(&m_blocker, &QTimer::timeout,
                         [] { std::this_thread::sleep_for(milliseconds(300)); });
        if (condition == Condition::load) {
            m_load.emplace();
        } else if (condition == Condition::blocked) {
            m_blocker.start(700);
        }
    }

  private:
    std::optional<Load> m_load;
    QTimer m_blocker;
};

/// Changes of a tempo that keep within the range. Small ones: where the last beat was long ago, the next one
/// at a much faster tempo would be over already, and rightly not be heard.
std::array<int, 3> stepsFrom(int bpm) {
    const int size = std::max(1, bpm / 20);
    const int step = bpm + size > MetronomeTempo::range.upper ? -size : size;
    return {step, -step, step};
}

class Metronome {
  public:
    explicit Metronome(int bpm) : m_engine(makeOutput()) {
        SettingsKeys::registerDefaults(m_settings);
        m_settings.set(SettingsKeys::metronomeVolume, 1.0);
        m_metronome.setBpm(bpm);
        m_claimer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_claimer, &QTimer::timeout, [this] { claim(); });
    }

    /// Milliseconds for which that held the main thread.
    double start() {
        const double before = monotonicNow();
        m_metronome.start();
        const double time = (monotonicNow() - before) * 1000;
        if (!m_metronome.isRunning()) {
            throw std::runtime_error("the metronome does not start");
        }
        // No server's block is a multiple of it, so that every part of a block has its claims.
        constexpr int claimPeriod = 7;
        m_claimer.start(claimPeriod);
        return time;
    }
    /// What was asked of it until it ends, after so many seconds.
    [[nodiscard]] BeatPlan play(double seconds) {
        BeatPlan plan(m_player.first, m_metronome.bpm());
        const int part = static_cast<int>(seconds * 1000 / 4);
        testing::handleEventsFor(part);
        for (const int step : stepsFrom(m_metronome.bpm())) {
            m_metronome.adjust(step);
            plan.change(m_player.queued, m_metronome.bpm());
            testing::handleEventsFor(part);
        }
        m_heardUntil = heard().value_or(0);
        m_claimer.stop();
        m_metronome.stop();
        return plan;
    }

    [[nodiscard]] std::int64_t heardUntil() const { return m_heardUntil; }
    [[nodiscard]] const std::vector<Claim>& claims() const { return m_claims; }

  private:
    [[nodiscard]] std::optional<std::int64_t> heard() const {
        const auto sample = m_player.currentSample();
        return sample ? std::optional(*sample - m_player.outputLatency()) : std::nullopt;
    }
    void claim() {
        const auto sample = heard();
        if (sample) {
            m_claims.push_back({monotonicNow(), *sample});
        }
    }

    MemoryFiles m_files;
    FakeDirectoryWatcher m_watcher;
    Defaults m_settings{m_files, m_watcher, "/configuration"};
    LinuxScheduler m_scheduler;
    Suspension m_suspension;
    MetronomeEngine m_engine;
    CountingPlayer m_player{m_engine};
    MetronomeModel m_metronome{m_settings, {m_scheduler, m_player, m_suspension}};
    QTimer m_claimer;
    std::vector<Claim> m_claims;
    std::int64_t m_heardUntil = 0;
};

} // namespace

MetronomeRecord runMetronome(ServerKind kind, int bpm, double seconds, Condition condition) {
    const UnderrunCount underruns;
    PrivateServer server(kind);
    const Capture capture(server.environment().folder().path(), server.address(), PrivateServer::sink);
    Metronome metronome(bpm);
    const auto circumstances = std::make_unique<Circumstances>(condition);
    const double startTime = metronome.start();
    const BeatPlan plan = metronome.play(seconds);
    testing::handleEventsFor(300);
    return {.plan = plan,
            .recording = capture.recording(),
            .claims = metronome.claims(),
            .heardUntil = metronome.heardUntil(),
            .startTime = startTime,
            .underruns = UnderrunCount::value()};
}

} // namespace veslora::bench
