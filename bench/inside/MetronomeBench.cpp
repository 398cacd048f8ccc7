// SPDX-License-Identifier: MIT
#include "bench/inside/MetronomeBench.h"

#include "bench/Report.h"
#include "bench/inside/MetronomeRun.h"
#include "bench/inside/PeerMetronome.h"
#include "tests/VesloraLinux/Support/Waiting.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace veslora::bench {

namespace {

/// Of all tempos. Where the server had nothing to play, its silence moves what comes after it, so such a run
/// only counts as one.
struct Total {
    std::int64_t worst = 0;
    int heard = 0;
    int missing = 0;
    int underruns = 0;
    double startTime = 0; ///< milliseconds
    HeardError position;  ///< of each figure the worst

    void add(const MetronomeRecord& run) {
        const Comparison comparison = compare(run.plan, onsetsIn(run.recording.samples), run.heardUntil);
        if (comparison.heard == 0) {
            throw std::runtime_error("nothing was heard of the metronome");
        }
        underruns += run.underruns;
        startTime = std::max(startTime, run.startTime);
        if (run.underruns == 0) {
            worst = std::max(worst, comparison.worst);
            heard += comparison.heard;
            missing += comparison.missing;
            addPosition(heardError(run.claims, run.recording, run.plan));
        }
    }

  private:
    void addPosition(const HeardError& error) {
        if (std::abs(error.offset) > std::abs(position.offset)) {
            position.offset = error.offset;
        }
        position.spread = std::max(position.spread, error.spread);
        position.range = std::max(position.range, error.range);
    }
};

constexpr int usualTempo = 137;
constexpr double usualSeconds = 20;

Total measure(ServerKind kind, Condition condition, bool isShort) {
    const std::vector<int> tempos = isShort ? std::vector{usualTempo} : std::vector{30, usualTempo, 300};
    Total total;
    for (const int bpm : tempos) {
        total.add(runMetronome(kind, bpm, isShort ? 3 : usualSeconds, condition));
    }
    return total;
}

void report(Report& report, const std::string& prefix, const Total& total, bool isUnderLoad) {
    const auto value = [](auto number) { return static_cast<double>(number); };
    report.add({prefix + "_error", value(total.worst), "samples", 0, {0, 1e9}});
    report.add({prefix + "_missing", value(total.missing), "beats", 0, {0, 1e6}});
    const double fewest = isUnderLoad ? 0 : 5;
    report.add({prefix + "_heard", value(total.heard), "beats", std::nullopt, {fewest, 1e6}});
    report.add({prefix + "_start", total.startTime, "ms", 16, {0.001, 60000}});
    report.add({prefix + "_underruns", value(total.underruns), "", std::nullopt, {0, 1e6}});
}

/// The offset is that of the server's own figures on PulseAudio. On PipeWire it also holds for how long the
/// recording is kept there, in blocks that no server tells of: good to compare two outputs by, no more.
void reportPosition(Report& report, const std::string& prefix, const HeardError& position) {
    report.add({prefix + "_position_spread", position.spread, "ms", 5, {1e-4, 1000}});
    report.add({prefix + "_position_range", position.range, "ms", std::nullopt, {1e-4, 60000}});
    report.add({prefix + "_position_offset", position.offset, "ms", std::nullopt, {-60000, 60000}});
}

void measureServer(Report& figures, ServerKind kind, const std::string& prefix, bool isShort) {
    const std::array<std::pair<const char*, Condition>, 3> conditions{
        {{"idle", Condition::idle}, {"load", Condition::load}, {"blocked", Condition::blocked}}};
    for (const auto& [name, condition] : conditions) {
        const Total total = measure(kind, condition, isShort);
        report(figures, prefix + name, total, condition == Condition::load);
        if (condition == Condition::idle) {
            reportPosition(figures, prefix + name, total.position);
        }
    }
}

/// By the exact length of a beat, at a tempo at which that is no whole number of samples.
void measurePeer(Report& report, const std::string& program) {
    const TempoError error = tempoError(peerOnsets(program, usualTempo, usualSeconds), usualTempo);
    report.add({"metronome_gtick_error", error.worst, "samples", std::nullopt, {0, 1e9}});
    report.add({"metronome_gtick_drift", error.drift, "samples/beat", std::nullopt, {-1e6, 1e6}});
    report.add({"metronome_gtick_heard", static_cast<double>(error.heard), "beats", std::nullopt, {5, 1e6}});
    report.add(
        {"metronome_gtick_missing", static_cast<double>(error.missing), "beats", std::nullopt, {0, 1e6}});
}

} // namespace

void measureMetronome(Report& report, const std::string& executables, bool isShort) {
    const testing::CoreApplication application;
    measureServer(report, ServerKind::pulse, "metronome_pulse_", isShort);
    measureServer(report, ServerKind::pipewire, "metronome_pipewire_", isShort);
    if (!isShort) {
        measurePeer(report, executables + "/../../peer/gtick/usr/bin/gtick");
    }
}

} // namespace veslora::bench
