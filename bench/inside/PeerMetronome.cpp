// SPDX-License-Identifier: MIT
#include "bench/inside/PeerMetronome.h"

#include "bench/Capture.h"
#include "bench/inside/PrivateServer.h"
#include "tests/VesloraLinux/Support/Program.h"
#include "tests/VesloraLinux/Support/Waiting.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <stdexcept>

namespace veslora::bench {

namespace {

/// GTick before a server of its own, playing.
class Peer {
  public:
    Peer(const std::string& program, const std::string& display, int bpm) {
        m_server.environment().set("DISPLAY", display);
        m_server.environment().folder().put("HOME/.gtickrc", "SoundSystem = <pulseaudio>\n"
                                                             "SoundDevice = <default>\n"
                                                             "SampleFilename = <default>\n"
                                                             "Meter = 1\n"
                                                             "Speed = " +
                                                                 std::to_string(bpm) + "\n");
        m_program = std::make_unique<testing::Program>(std::vector{program});
        // No option starts it, but a key does. It has to be known by its window, which may take its time.
        const auto pressed =
            testing::Program({"timeout", "20", "xdotool", "search", "--sync", "--onlyvisible", "--name",
                              "^GTick", "windowfocus", "--sync", "key", "ctrl+s"})
                .wait();
        if (pressed != 0) {
            throw std::runtime_error("GTick shows no window that its start key can be pressed in");
        }
    }

    /// From before the first beat on.
    [[nodiscard]] Recording recording() const { return m_capture.recording(); }

  private:
    PrivateServer m_server{ServerKind::pulse};
    Capture m_capture{m_server.environment().folder().path(), m_server.address(), PrivateServer::sink};
    std::unique_ptr<testing::Program> m_program;
};

} // namespace

std::vector<std::int64_t> peerOnsets(const std::string& program, int bpm, double seconds) {
    const char* const display = std::getenv("DISPLAY");
    if (access(program.c_str(), X_OK) != 0 || display == nullptr) {
        throw std::runtime_error("the metronome to compare with can't be started; run tools/unpack "
                                 "build/peer/gtick gtick, and give it a display");
    }
    const Peer peer(program, display, bpm);
    testing::handleEventsFor(static_cast<int>(seconds * 1000));
    const auto onsets = onsetsIn(peer.recording().samples);
    if (onsets.size() < 3) {
        throw std::runtime_error("nothing was heard of GTick");
    }
    // The server brings it from 44100 hertz to 48000, which lets each click swell some samples before its
    // time, but the one that the stream begins with. That one would seem to be late.
    return {onsets.begin() + 1, onsets.end()};
}

TempoError tempoError(const std::vector<std::int64_t>& onsets, int bpm) {
    constexpr double secondsInMinute = 60;
    const double period = secondsInMinute / bpm * Recording::sampleRate;
    TempoError result;
    double beat = 0;
    for (const std::int64_t onset : onsets) {
        const auto time = static_cast<double>(onset - onsets.front());
        const double nearest = std::round(time / period);
        result.missing += static_cast<int>(std::max(nearest - beat - 1, 0.0));
        result.worst = std::max(result.worst, std::abs(time - nearest * period));
        ++result.heard;
        beat = nearest;
    }
    result.drift = static_cast<double>(onsets.back() - onsets.front()) / beat - period;
    return result;
}

} // namespace veslora::bench
