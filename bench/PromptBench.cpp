// SPDX-License-Identifier: MIT
// From a request's arrival in the spool to the first frame that it causes, in which the island begins to
// grow, and to the first one on screen that holds its text; and from the release of the button on "Allow" to
// the answer's arrival.
#include "bench/Clock.h"
#include "bench/Home.h"
#include "bench/Island.h"
#include "bench/Measurements.h"
#include "bench/RequestAlert.h"

#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <stdexcept>

namespace veslora::bench {

namespace {

constexpr double pollPause = 0.0003;

/// Tells of each file that is moved into a folder.
class ArrivalWatch {
  public:
    explicit ArrivalWatch(const std::string& folder) : m_descriptor(inotify_init1(IN_CLOEXEC | IN_NONBLOCK)) {
        if (inotify_add_watch(m_descriptor, folder.c_str(), IN_MOVED_TO) < 0) {
            throw std::runtime_error("the answers can't be watched");
        }
    }
    ArrivalWatch(const ArrivalWatch&) = delete;
    ArrivalWatch& operator=(const ArrivalWatch&) = delete;
    ~ArrivalWatch() { ::close(m_descriptor); }

    /// When the next file arrived.
    [[nodiscard]] double wait() const {
        constexpr int patienceMilliseconds = 5000;
        pollfd ready{m_descriptor, POLLIN, 0};
        if (poll(&ready, 1, patienceMilliseconds) != 1) {
            throw std::runtime_error("no answer came");
        }
        const double now = monotonicNow();
        char events[4096];
        while (read(m_descriptor, events, sizeof events) > 0) {
        }
        return now;
    }

  private:
    int m_descriptor;
};

void waitForDesktop(const Bench& bench, Island& island) {
    island.waitForClosed();
    waitUntil("the alert to leave the screen",
              [&] { return Stage::isDesktop(bench.stage.display().pixel(RequestAlert::middle)); });
}

double answerOnce(const Display& display, const ArrivalWatch& answers) {
    waitUntil("the keys to come alive", [&] { return RequestAlert::isArmed(display); });
    display.moveTo(RequestAlert::allowKey);
    display.press();
    sleepFor(0.05);
    const double start = monotonicNow();
    display.release();
    return answers.wait() - start;
}

} // namespace

void measurePrompts(const Bench& bench) {
    const Home home(bench.executables);
    Island island(bench.stage, home, bench.program());
    std::vector<double> firstFrames;
    std::vector<double> texts;
    const int warmUp = bench.choose(5, 0);
    const int rounds = warmUp + bench.choose(200, 1);
    for (int round = 0; round < rounds; ++round) {
        waitForDesktop(bench, island);
        const std::string id = "prompt" + std::to_string(round);
        const double start = home.fileRequest(id, "make install-" + std::to_string(round));
        const std::size_t frames = island.frames().count();
        const double firstFrame = waitUntil(
            "a frame", [&] { return island.frames().count() > frames; }, pollPause, start);
        const double text = waitUntil(
            "the request's text", [&] { return RequestAlert::showsText(bench.stage.display()); }, pollPause,
            start);
        if (round >= warmUp) {
            firstFrames.push_back(firstFrame * 1000);
            texts.push_back(text * 1000);
        }
        home.filePrompt("said" + std::to_string(round));
    }
    const Range sensible{1, 20000};
    bench.report.add({"prompt_filed_to_first_frame_p50", median(firstFrames), "ms", {}, sensible});
    bench.report.add({"prompt_filed_to_first_frame_p95", percentile(firstFrames, 0.95), "ms", 15, sensible});
    bench.report.add({"prompt_filed_to_frame_p50", median(texts), "ms", {}, sensible});
    bench.report.add({"prompt_filed_to_frame_p95", percentile(texts, 0.95), "ms", 110, sensible});
}

void measureAnswers(const Bench& bench) {
    const Home home(bench.executables);
    Island island(bench.stage, home, bench.program());
    const ArrivalWatch answers(home.answers());
    std::vector<double> times;
    const int warmUp = bench.choose(1, 0);
    const int rounds = warmUp + bench.choose(60, 1);
    for (int round = 0; round < rounds; ++round) {
        waitForDesktop(bench, island);
        home.fileRequest("answer" + std::to_string(round), "make check-" + std::to_string(round));
        const double time = answerOnce(bench.stage.display(), answers);
        if (round >= warmUp) {
            times.push_back(time * 1000);
        }
        bench.stage.display().moveTo(Island::far);
    }
    const Range sensible{0.05, 5000};
    bench.report.add({"release_to_answer_p50", median(times), "ms", {}, sensible});
    bench.report.add({"release_to_answer_p95", percentile(times, 0.95), "ms", 5, sensible});
}

} // namespace veslora::bench
