// SPDX-License-Identifier: MIT
#include "bench/Island.h"

#include "bench/Clock.h"

#include <cstdio>
#include <utility>

namespace veslora::bench {

namespace {

std::vector<std::string> commandOf(std::vector<std::string> runner, const std::string& program) {
    runner.push_back(program);
    return runner;
}

} // namespace

Island::Island(const Stage& stage, const Home&, const std::string& program, std::vector<std::string> runner)
    : m_display(stage.display()), m_begin(monotonicNow()),
      m_process(std::make_unique<testing::Program>(commandOf(std::move(runner), program))) {
    m_startTime = waitUntil(
        "the island", [this] { return Stage::isBlack(m_display.pixel(notch)); }, 0.0005, m_begin);
    waitUntil("the panel", [this] {
        const auto panel = m_display.panelOf(pid());
        m_panel = panel.value_or(XCB_WINDOW_NONE);
        return panel.has_value();
    });
    m_meter.emplace(pid());
    m_frames.emplace(m_panel);
}

Island::~Island() {
    m_process.reset();
    try {
        waitUntil("the island to leave", [this] { return Stage::isDesktop(m_display.pixel(notch)); });
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench: %s\n", error.what());
    }
}

std::optional<Area> Island::area() const {
    return m_display.inputOf(m_panel);
}

void Island::open() const {
    m_display.moveTo(notch);
    waitUntil("the island to open", [this] { return area().has_value(); });
}

void Island::close() const {
    m_display.moveTo(far);
    waitUntil("the island to close", [this] { return !area(); });
}

void Island::waitForClosed() {
    waitUntil("the island to be closed", [this] { return !area(); });
    m_frames->waitForRest();
}

} // namespace veslora::bench
