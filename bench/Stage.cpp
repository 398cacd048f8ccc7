// SPDX-License-Identifier: MIT
#include "bench/Stage.h"

#include "bench/Clock.h"

#include <cstdlib>
#include <map>

namespace veslora::bench {

namespace {

constexpr Place corner{Stage::width - 1, Stage::height - 1};

std::map<std::string, std::string> keptVariables() {
    std::map<std::string, std::string> kept;
    for (const char* name : {"PATH", "ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS", "TSAN_OPTIONS"}) {
        if (const char* value = std::getenv(name)) {
            kept[name] = value;
        }
    }
    return kept;
}

} // namespace

/// Whatever the caller's session says about Qt, its scale, its bus or its folders is none of the program's
/// business.
Stage::Environment::Environment(const std::string& home) {
    auto variables = keptVariables();
    variables["HOME"] = home;
    variables["LANG"] = "C.UTF-8";
    // On a real disk, so that a write to it counts as one.
    variables["TMPDIR"] = "/var/tmp";
    // The machine's login manager is none of its business either.
    variables["DBUS_SYSTEM_BUS_ADDRESS"] = "disabled:";
    clearenv();
    for (const auto& [name, value] : variables) {
        setenv(name.c_str(), value.c_str(), 1);
    }
}

Stage::Stage()
    : m_environment(m_home.path()), m_pieces(std::to_string(width) + "x" + std::to_string(height)) {
    setenv("DISPLAY", m_pieces.name().c_str(), 1);
    setenv("DBUS_SESSION_BUS_ADDRESS", m_pieces.startBus().c_str(), 1);
    m_display = std::make_unique<Display>();
    m_pieces.startWindowManager();
    testing::Program({"hsetroot", "-solid", "#0000ff"}).wait();
    m_pieces.startCompositor();
    m_display->moveTo({width / 2, height - 100});
    waitUntil("the desktop", [this] { return isDesktop(m_display->pixel(corner)); });
}

} // namespace veslora::bench
