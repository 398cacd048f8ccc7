// SPDX-License-Identifier: MIT
// The helper for music: what it costs beside a real player of which nothing changes, and how soon its line
// follows a change. playerctl, which follows players too and prints what they play, is measured beside it.
#include "bench/Clock.h"
#include "bench/Measurements.h"
#include "bench/ProcessMeter.h"
#include "tests/VesloraLinux/Support/Program.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"

#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace veslora::bench {

namespace {

using testing::Program;
using testing::ProgramInput;

/// As they lie in a WAV.
std::string bytesOf(std::uint32_t number) {
    std::string bytes(sizeof number, '\0');
    std::memcpy(bytes.data(), &number, sizeof number);
    return bytes;
}

/// Where the helper notes which player it reports, and what a player plays.
class Runtime {
  public:
    Runtime() { setenv("XDG_RUNTIME_DIR", m_folder.path().c_str(), 1); }

    /// playerctl ends where the system's bus is said to be disabled, but not where that is gone.
    [[nodiscard]] std::vector<std::string> playerctl(const std::vector<std::string>& words) const {
        std::vector<std::string> command{"env", "DBUS_SYSTEM_BUS_ADDRESS=unix:path=" + m_folder.path("none"),
                                         "playerctl"};
        command.insert(command.end(), words.begin(), words.end());
        return command;
    }

    /// Makes ten minutes of silence and tells its path.
    [[nodiscard]] std::string recording() const {
        constexpr std::uint32_t rate = 8000;
        constexpr std::uint32_t size = rate * 600;
        const std::string head = "RIFF" + bytesOf(36 + size) + "WAVEfmt " + bytesOf(16) +
                                 bytesOf(0x00010001) + bytesOf(rate) + bytesOf(rate) + bytesOf(0x00080001) +
                                 "data" + bytesOf(size);
        std::string path = m_folder.put("silence.wav", head);
        std::filesystem::resize_file(path, head.size() + size);
        return path;
    }

  private:
    testing::TemporaryFolder m_folder;
};

std::vector<std::string> adapterCommand(const Bench& bench) {
    return {bench.executables + "/veslora-media-adapter", "stream"};
}

/// Reads on until a line has that in it.
void waitForLine(const Program& program, const std::string& text) {
    while (program.nextLine().find(text) == std::string::npos) {
    }
}

/// That it still follows, and that this is seen to wake it up.
void requireThatChangesCount(const Program& adapter, const ProcessMeter& meter,
                             const std::vector<std::string>& command, const std::string& line) {
    const auto before = meter.sleeps();
    if (Program(command).wait() != 0) {
        throw std::runtime_error("the player does not obey");
    }
    waitForLine(adapter, line);
    if (meter.sleeps() == before) {
        throw std::runtime_error("a change does not count as a wake-up");
    }
}

/// A player that is told what to do by lines of JSON; it tells when it did so.
class ScriptedPlayer {
  public:
    ScriptedPlayer()
        : m_program({VESLORA_PLAYER, "org.mpris.MediaPlayer2.scripted"}, STDOUT_FILENO, ProgramInput::told) {
        waitForLine(m_program, "ready");
        // Of others playerctl says nothing.
        m_program.tell(R"(["keep", "CanPlay", "b", true])");
        waitForLine(m_program, "done");
    }

    /// Plays another track; tells when its signal began, on the harness's clock.
    [[nodiscard]] double play(const std::string& title) const {
        m_program.tell(
            R"(["timed", "set", "PlaybackStatus", "s", "Playing", "Position", "x", 0, "Metadata", )"
            R"("a{sv}", {"xesam:title": ["s", ")" +
            title + R"("], "mpris:trackid": ["o", "/track/)" + title + R"("]}])");
        return std::stod(m_program.nextLine());
    }

  private:
    Program m_program;
};

/// Milliseconds from each change to the line with it.
std::vector<double> delaysOf(const std::vector<std::string>& command, const Bench& bench, double& pss) {
    const ScriptedPlayer player;
    const Program follower(command, STDOUT_FILENO);
    (void)player.play("First");
    waitForLine(follower, "First");
    std::vector<double> delays;
    const int changes = bench.choose(300, 10);
    for (int number = 0; number < changes; ++number) {
        // Further apart than the lines, which have a pace of their own.
        sleepFor(0.08);
        const std::string title = "Title" + std::to_string(number);
        const double begin = player.play(title);
        waitForLine(follower, title);
        delays.push_back(1000 * (monotonicNow() - begin));
    }
    pss = ProcessMeter(follower.pid()).memory().pss;
    return delays;
}

} // namespace

void measureMediaRest(const Bench& bench) {
    const Runtime runtime;
    const Program player({"mpv", "--no-video", "--ao=null", "--no-terminal", "--pause",
                          "--force-media-title=Silence", runtime.recording()});
    const Program adapter(adapterCommand(bench), STDOUT_FILENO);
    waitForLine(adapter, "Silence");
    const ProcessMeter meter(adapter.pid());
    sleepFor(bench.choose(3.0, 0.3));
    const double seconds = bench.choose(20.0, 0.5);
    const auto paused = static_cast<double>(meter.wakeUpsIn(seconds));
    const Memory memory = meter.memory();
    requireThatChangesCount(adapter, meter, runtime.playerctl({"play"}), R"("playing":true)");
    sleepFor(bench.choose(3.0, 0.3));
    const auto playing = static_cast<double>(meter.wakeUpsIn(seconds));
    requireThatChangesCount(adapter, meter, runtime.playerctl({"pause"}), R"("playing":false)");

    const Range megabytes{1, 4096};
    bench.report.add({"media_pss", memory.pss, "MB", 8, megabytes});
    bench.report.add({"media_own", memory.own, "MB", {}, {0.1, 4096}});
    bench.report.add({"media_paused_wakeups", paused, "wake-ups", 0, {0, 1e6}});
    bench.report.add({"media_playing_wakeups", playing, "wake-ups", 0, {0, 1e6}});
}

void measureMediaChanges(const Bench& bench) {
    const Runtime runtime;
    const Range milliseconds{0.05, 20000};
    const auto measure = [&](const std::string& name, const std::vector<std::string>& command,
                             std::optional<double> limit) {
        double pss = 0;
        const std::vector<double> delays = delaysOf(command, bench, pss);
        bench.report.add({name + "_p50", percentile(delays, 0.5), "ms", {}, milliseconds});
        bench.report.add({name + "_p95", percentile(delays, 0.95), "ms", limit, milliseconds});
        bench.report.add({name + "_pss", pss, "MB", {}, {1, 4096}});
    };
    measure("media_change_to_line", adapterCommand(bench), 20);
    measure("media_playerctl", runtime.playerctl({"--follow", "metadata", "--format", "{{title}}"}), {});
}

} // namespace veslora::bench
