// SPDX-License-Identifier: MIT
// Whether the lamp beside the closed notch lights up when the beat is heard. Two clocks are tied to the
// harness's own, the monotonic one: the display's, which stamps the frames, by ServerClock; the sound
// server's, which counts the samples of the recording, by HearingClock. So neither side of the comparison
// knows what the program believes.
#include "bench/Capture.h"
#include "bench/Clock.h"
#include "bench/Home.h"
#include "bench/Island.h"
#include "bench/Measurements.h"
#include "bench/Rack.h"
#include "bench/ServerClock.h"
#include "bench/SoundServer.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <vector>

namespace veslora::bench {

namespace {

/// When the lamp lights up, by the monotonic clock: the first frame after a rest. Its light lasts an eighth
/// of a second and goes out in steps that follow each other sooner, and nothing else draws in these wings
/// while the tempo stays. A frame counts from when its first piece has reached the display, not from the
/// compositor's next picture.
std::vector<double> lightsIn(const std::vector<Frame>& frames) {
    constexpr double rest = 0.16;
    const ServerClock clock;
    std::vector<double> lights;
    for (std::size_t index = 1; index < frames.size(); ++index) {
        if (frames[index].time - frames[index - 1].time > rest) {
            lights.push_back(clock.monotonic(frames[index].time));
        }
    }
    return lights;
}

std::vector<double> beatsIn(const Recording& recording) {
    const HearingClock clock(recording.arrivals);
    std::vector<double> beats;
    for (const std::int64_t onset : onsetsIn(recording.samples)) {
        beats.push_back(clock.timeOf(onset));
    }
    return beats;
}

/// Milliseconds from each beat that is heard while the frames are watched to the nearest light.
std::vector<double> differences(const std::vector<double>& beats, const std::vector<double>& lights) {
    std::vector<double> result;
    for (const double beat : beats) {
        if (beat < lights.front() - 0.1 || beat > lights.back() + 0.1) {
            continue;
        }
        const auto nearest =
            std::ranges::min_element(lights, {}, [beat](double light) { return std::abs(light - beat); });
        result.push_back((*nearest - beat) * 1000);
    }
    return result;
}

void report(const Bench& bench, const std::vector<double>& late) {
    constexpr double frame = 16.7;
    constexpr double farFromAny = 100;
    std::vector<double> sizes;
    std::ranges::transform(late, std::back_inserter(sizes), [](double each) { return std::abs(each); });
    const auto missing = std::ranges::count_if(sizes, [](double size) { return size > farFromAny; });
    const auto add = [&bench](const char* name, double value, std::optional<double> limit) {
        bench.report.add({name, value, "ms", limit, {-1000, 1000}});
    };
    add("metronome_light_error_p95", percentile(sizes, 0.95), frame);
    add("metronome_light_error_max", percentile(sizes, 1), {});
    add("metronome_light_spread", percentile(late, 0.95) - percentile(late, 0.05), {});
    add("metronome_light_median", median(late), {});
    bench.report.add({"metronome_light_beats", static_cast<double>(late.size()), "beats", {}, {2, 1e6}});
    bench.report.add({"metronome_light_missing", static_cast<double>(missing), "beats", 0, {0, 1e6}});
}

} // namespace

void measureMetronomeLight(const Bench& bench) {
    const Rack rack(bench.stage, "metronome:2,meters");
    // At a tempo that has beats at every part of a picture and of a server's block.
    const Home home(bench.executables, rack.settings().insert(1, R"("metronomeBPM": 137, )"));
    const SoundServer server(bench.executables, home.path());
    // Before the program is there: a server that is recorded has another latency.
    const Capture capture(home.path(), server.address(), SoundServer::sink);
    Island island(bench.stage, home, bench.program());
    island.open();
    rack.startMetronome();
    island.close();
    sleepFor(bench.choose(3.0, 1.0));
    const std::size_t first = island.frames().count();
    sleepFor(bench.choose(30.0, 3.0));
    const std::vector<double> lights = lightsIn(island.frames().framesSince(first));
    if (lights.empty()) {
        throw std::runtime_error("the lamp does not light up");
    }
    sleepFor(0.3);
    report(bench, differences(beatsIn(capture.recording()), lights));
}

} // namespace veslora::bench
