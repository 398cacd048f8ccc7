// SPDX-License-Identifier: MIT
#include "tests/VesloraUI/Fixtures/FakePlatform.h"

#include "VesloraCore/Text/PathText.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

namespace veslora {

std::optional<RunningProcess> FakeProcesses::processOf(std::int32_t pid) const {
    const auto found = std::ranges::find(running, pid, &RunningProcess::pid);
    return found == running.end() ? std::nullopt : std::optional(*found);
}

std::vector<RunningProcess> FakeProcesses::processesNamed(std::string_view name) const {
    ++scans;
    std::vector<RunningProcess> found;
    std::ranges::copy_if(running, std::back_inserter(found), [name](const RunningProcess& process) {
        return PathText::lastComponent(process.executable) == name;
    });
    return found;
}

Task FakeMultiplexer::showPane(std::int32_t pid, const std::optional<std::string>& pane,
                               std::function<void(Client)> done) {
    calls.push_back({pid, pane});
    const auto found = clients.find(pid);
    const Client client = found == clients.end() ? std::nullopt : Client(found->second);
    return m_scheduler.after(0, [client, done = std::move(done)] { done(client); });
}

Task FakeFrameClock::afterFrame(std::function<void(std::uint32_t)> shown) {
    ++marks;
    // A frame that never is on screen is waited for forever.
    const double wait = isStuck ? std::numeric_limits<double>::infinity() : 0;
    return m_scheduler.after(wait, [time = eventTime(), shown = std::move(shown)] { shown(time); });
}

Task FakeMultiplexer::findClients(std::int32_t pid, const std::optional<std::string>& pane,
                                  std::function<void(const Clients&)> done) {
    looks.push_back({pid, pane});
    const bool isTooLate = answerTime > findLimit;
    return m_scheduler.after(std::min(answerTime, findLimit), [this, pid, isTooLate, done = std::move(done)] {
        done(isTooLate ? Clients() : showing[pid]);
    });
}

ScreenInfo FakeScreens::make(const std::string& name, double width, double height, bool isBuiltIn) {
    ScreenInfo screen;
    screen.name = name;
    screen.metrics.frame = {0, 0, width, height};
    screen.metrics.menuBarHeight = 28;
    screen.isBuiltIn = isBuiltIn;
    return screen;
}

void FakeScreenWindows::change(std::vector<WindowFrame> newWindows) {
    windows = std::move(newWindows);
    if (isWatching) {
        emit changed();
    }
}

void FakePointer::moveTo(std::optional<Point> point) {
    position = point;
    emit moved();
}

void FakePanel::place(const ScreenInfo& screen, const Rect& newFrame) {
    screenName = screen.name;
    frame = newFrame;
    ++placements;
}

bool FakePanel::takesClicksAt(Point point) const {
    return std::ranges::any_of(zones.clicks, [point](const Rect& zone) { return zone.contains(point); });
}

FakePlatform::FakePlatform() {
    paths = {.home = "/home/me",
             .support = "/home/me/.local/share/Veslora",
             .runtime = "/run/user/1000/veslora",
             .configuration = "/home/me/.config/Veslora",
             .cache = "/home/me/.cache/Veslora",
             .claude = "/home/me/.claude",
             .codex = "/home/me/.codex",
             .executables = "/opt/veslora"};
    displays.screens = {FakeScreens::make("eDP-1", 1440, 900, true)};
    disk.clock = time.now();
}

void FakePlatform::advance(double seconds) {
    // Files that a callback writes on the way carry the clock at the end; no test asks for more.
    disk.clock = time.now() + seconds;
    time.advance(seconds);
}

} // namespace veslora
