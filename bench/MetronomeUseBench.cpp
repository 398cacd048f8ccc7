// SPDX-License-Identifier: MIT
// What a running metronome costs, in the open rack and beside the closed notch, its sound included, before a
// sound server of the harness's own.
#include "bench/Clock.h"
#include "bench/Home.h"
#include "bench/Island.h"
#include "bench/Measurements.h"
#include "bench/Rack.h"
#include "bench/Use.h"

#include <unistd.h>

#include <cstdlib>
#include <string>

namespace veslora::bench {

namespace {

constexpr Range share{1e-4, 400};

/// PulseAudio with nothing but a sink that drops what it is given. Every client that is started finds it.
class SoundServer {
  public:
    SoundServer(const Bench& bench, const Home& home)
        : m_socket(home.path() + "/native"),
          m_program({bench.executables + "/../sound/bin/pulseaudio", "-n", "--daemonize=no",
                     "--use-pid-file=no", "--exit-idle-time=-1", "--disallow-exit", "--realtime=no",
                     "--high-priority=no", "-L", "module-null-sink rate=48000 norewinds=1", "-L",
                     "module-native-protocol-unix socket=" + m_socket + " auth-anonymous=1"}) {
        waitUntil("the sound server", [this] { return access(m_socket.c_str(), F_OK) == 0; });
        setenv("PULSE_SERVER", ("unix:" + m_socket).c_str(), 1);
    }
    SoundServer(const SoundServer&) = delete;
    SoundServer& operator=(const SoundServer&) = delete;
    ~SoundServer() { unsetenv("PULSE_SERVER"); }

  private:
    std::string m_socket;
    testing::Program m_program;
};

void report(const Bench& bench, const std::string& name, const Use& use, double limit) {
    bench.report.add({name + "_cpu", use.processor, "% of a core", limit, share});
    bench.report.add({name + "_fps", use.framesPerSecond(), "1/s", {}, {0.5, 1000}});
}

} // namespace

void measureMetronomeUse(const Bench& bench) {
    const Rack rack(bench.stage, "metronome:2,meters");
    const Home home(bench.executables, rack.settings());
    const SoundServer server(bench, home);
    Island island(bench.stage, home, bench.program());
    const double settling = bench.choose(3.0, 0.5);
    const double seconds = bench.choose(20.0, 1.0);
    island.open();
    rack.startMetronome();
    sleepFor(settling);
    report(bench, "metronome_open", useDuring(island, seconds), 3);
    island.close();
    sleepFor(settling);
    const Use wings = useDuring(island, seconds);
    report(bench, "metronome_wings", wings, 1.5);
    const double wakeUps = static_cast<double>(island.meter().wakeUpsIn(bench.choose(10.0, 1.2)));
    bench.report.add({"metronome_wings_wakeups", wakeUps / bench.choose(10.0, 1.2), "1/s", {}, {1, 10000}});
}

} // namespace veslora::bench
