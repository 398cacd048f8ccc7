// SPDX-License-Identifier: MIT
// What music costs that plays beside the closed island, what of it is drawn again, and how long it takes from
// a player's change to the first frame that shows it.
#include "bench/Clock.h"
#include "bench/Home.h"
#include "bench/Island.h"
#include "bench/Measurements.h"
#include "bench/Use.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <functional>
#include <stdexcept>

namespace veslora::bench {

namespace {

constexpr Range share{1e-4, 400};
const std::string wideMusic = R"({"widgetLayout": "music:2"})";

/// A player on the stage's bus that does what it is told.
class Player {
  public:
    explicit Player(const std::string& name)
        : m_program({"/usr/bin/python3", VESLORA_PLAYER, "org.mpris.MediaPlayer2." + name}, 1,
                    testing::ProgramInput::told) {
        expect("\"ready\"");
    }

    /// As players tell it: a status, and what it is of.
    void play(const std::string& title, const std::string& status) const {
        tell(R"(["set", "PlaybackStatus", "s", ")" + status +
             R"(", "Position", "x", 0, "Metadata", "a{sv}",)" + R"({"mpris:trackid": ["o", "/track/)" +
             title + R"("], "xesam:title": ["s", ")" + title + R"("], "mpris:length": ["x", 3600000000]}])");
    }

  private:
    void tell(const std::string& words) const {
        m_program.tell(words);
        expect("\"done\"");
    }
    void expect(const std::string& answer) const {
        if (m_program.nextLine() != answer) {
            throw std::runtime_error("the player does not obey");
        }
    }

    testing::Program m_program;
};

/// A real one, with the plug-in by which it speaks as all players do. Told what to do by its own socket, so
/// that nothing of the way that is measured is used for it.
class Mpv {
  public:
    explicit Mpv(const Home& home)
        : m_socket(home.path() + "/mpv"),
          m_program({"mpv", "--no-video", "--ao=null", "--no-terminal", "--pause", "--keep-open=always",
                     "--input-ipc-server=" + m_socket, silence(home)}) {
        waitUntil("the player's socket", [this] { return access(m_socket.c_str(), F_OK) == 0; });
    }

    /// Such as "set_property", "pause", true.
    void tell(const std::string& words) const {
        const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        m_socket.copy(address.sun_path, sizeof address.sun_path - 1);
        const std::string command = "{\"command\": [" + words + "]}\n";
        const bool isTold = connect(connection, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0 &&
                            write(connection, command.data(), command.size()) > 0;
        close(connection);
        if (!isTold) {
            throw std::runtime_error("the player hears nothing");
        }
    }
    void kill() { m_program.kill(); }

  private:
    /// Two minutes of it, as a file without compression: 8 bits, 8000 times a second.
    static std::string silence(const Home& home) {
        constexpr std::uint32_t rate = 8000;
        constexpr std::uint32_t length = 120 * rate;
        const auto bytes = [](std::uint32_t number, int count) {
            std::string text;
            for (int place = 0; place < count; ++place) {
                text += static_cast<char>(number >> (8 * place) & 0xff);
            }
            return text;
        };
        std::string path = home.path() + "/Silence.wav";
        std::ofstream(path, std::ios::binary)
            << "RIFF" << bytes(36 + length, 4) << "WAVEfmt " << bytes(16, 4) << bytes(1, 2) << bytes(1, 2)
            << bytes(rate, 4) << bytes(rate, 4) << bytes(1, 2) << bytes(8, 2) << "data" << bytes(length, 4)
            << std::string(length, '\x80');
        return path;
    }

    std::string m_socket;
    testing::Program m_program;
};

double largestArea(const std::vector<Frame>& frames) {
    double largest = 0;
    for (const Frame& frame : frames) {
        largest = std::max(largest, frame.area());
    }
    return largest;
}

void measureBars(const Bench& bench, Island& island, const Player& player) {
    const double settling = bench.choose(2.0, 0.5);
    const double seconds = bench.choose(20.0, 1.0);
    player.play("Bars", "Playing");
    waitUntil("the bars", [&] { return island.frames().count() > 5; });
    sleepFor(settling);
    const Use playing = useDuring(island, seconds);
    bench.report.add({"music_bars_cpu", playing.processor, "% of a core", 1.5, share});
    bench.report.add({"music_bars_fps", playing.framesPerSecond(), "1/s", 16, {1, 1000}});
    // Five bars, as wide and high as they can be, each with a pixel around it.
    bench.report.add(
        {"music_bars_largest_frame", largestArea(playing.frames), "pixels", 5 * 5 * 18, {1, 1e7}});

    player.play("Bars", "Paused");
    // The wings of paused music go by themselves after ten seconds.
    constexpr double grace = 12;
    sleepFor(bench.choose(grace, settling));
    const Use paused = useDuring(island, seconds);
    bench.report.add({"music_paused_frames",
                      static_cast<double>(paused.frames.size()),
                      "frames",
                      0,
                      {0, bench.choose(0.0, 100.0)}});
}

std::vector<double> latencies(const Bench& bench, Island& island, const Player& player) {
    std::vector<double> milliseconds;
    const int warmUp = bench.choose(5, 0);
    const int rounds = warmUp + bench.choose(100, 2);
    for (int round = 0; round < rounds; ++round) {
        island.frames().waitForRest();
        const std::size_t frames = island.frames().count();
        const double start = monotonicNow();
        // A player that rests: nothing else than its change draws a frame.
        player.play("Title" + std::to_string(round), "Paused");
        const double taken = waitUntil(
            "a frame", [&] { return island.frames().count() > frames; }, 0.0003, start);
        if (round >= warmUp) {
            milliseconds.push_back(taken * 1000);
        }
    }
    return milliseconds;
}

void measureChanges(const Bench& bench, Island& island, const Player& player, const std::string& name) {
    player.play("First", "Paused");
    island.open();
    sleepFor(bench.choose(2.0, 0.5));
    const auto taken = latencies(bench, island, player);
    constexpr double usual = 0.5;
    constexpr double almostAll = 0.95;
    bench.report.add({name + "_p50", percentile(taken, usual), "ms", {}, {0.1, 5000}});
    bench.report.add({name + "_p95", percentile(taken, almostAll), "ms", 60, {0.1, 5000}});
    island.close();
    island.waitForClosed();
}

/// From a key that a user presses in a real player to the first frame: begin, leap, end. All from a player
/// that rests, so that nothing else draws one.
void measureRealPlayer(const Bench& bench, const Home& home, Island& island) {
    std::vector<double> milliseconds;
    const auto measure = [&](const std::function<void()>& change) {
        island.frames().waitForRest(0.3);
        const std::size_t frames = island.frames().count();
        const double start = monotonicNow();
        change();
        milliseconds.push_back(
            1000 * waitUntil(
                       "a frame", [&] { return island.frames().count() > frames; }, 0.0003, start));
    };
    const auto pause = [&](const Mpv& player) { player.tell(R"("set_property", "pause", true)"); };
    island.open();
    const int rounds = bench.choose(10, 1);
    for (int round = 0; round < rounds; ++round) {
        Mpv player(home);
        // It has come: its name and its time stand in place of "Nothing playing".
        sleepFor(1);
        measure([&] { player.tell(R"("seek", 40, "absolute")"); });
        measure([&] { player.tell(R"("set_property", "pause", false)"); });
        pause(player);
        sleepFor(1);
        measure([&] { player.tell(R"("seek", 7, "absolute")"); });
        measure([&] { player.kill(); });
    }
    constexpr double limit = 200;
    bench.report.add({"music_mpv_to_frame_p50", median(milliseconds), "ms", {}, {0.1, 5000}});
    bench.report.add(
        {"music_mpv_to_frame_max", *std::ranges::max_element(milliseconds), "ms", limit, {0.1, 5000}});
    island.close();
    island.waitForClosed();
}

} // namespace

void measureMusic(const Bench& bench) {
    const Home home(bench.executables, wideMusic);
    Island island(bench.stage, home, bench.program());
    {
        const Player player("bench");
        measureBars(bench, island, player);
        measureChanges(bench, island, player, "music_change_to_frame");
    }
    {
        const Player spotify("spotify");
        measureChanges(bench, island, spotify, "music_spotify_to_frame");
    }
    measureRealPlayer(bench, home, island);
}

} // namespace veslora::bench
