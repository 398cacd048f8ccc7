// SPDX-License-Identifier: MIT
#include "VesloraCore/Island/BugReport.h"

#include "VesloraCore/Text/VisibleText.h"

#include <cmath>

namespace veslora {

namespace {

constexpr std::size_t longest = 200;

std::string shown(const std::string& text) {
    const std::string line = VisibleText::line(text.substr(0, longest));
    return line.empty() ? "unknown" : line;
}

std::string line(const char* name, const std::string& value) {
    return std::string(name) + ": " + value + "\n";
}

std::string scaleText(double scale) {
    const auto hundredths = static_cast<int>(std::lround(scale * 100));
    std::string text = std::to_string(hundredths / 100);
    if (const int rest = hundredths % 100; rest != 0) {
        text += (rest < 10 ? ".0" : ".") + std::to_string(rest % 10 == 0 ? rest / 10 : rest);
    }
    return text;
}

std::string text(const BugReport::Screen& screen) {
    return line("screen", shown(screen.name) + " " + std::to_string(screen.width) + "x" +
                              std::to_string(screen.height) + " at " + scaleText(screen.scale) +
                              (screen.isBuiltIn ? ", built in" : "") + (screen.hasNotch ? ", notch" : ""));
}

std::string text(const std::optional<BugReport::Display>& display) {
    if (!display) {
        return line("display", "none");
    }
    std::string lines = line("display", display->isBelowWayland ? "X11 below Wayland" : "X11") +
                        line("window manager", shown(display->windowManager)) +
                        line("compositor", display->isComposited ? "yes" : "no");
    for (const BugReport::Screen& screen : display->screens) {
        lines += text(screen);
    }
    return lines;
}

std::string text(const std::optional<std::vector<BugReport::Service>>& services) {
    if (!services) {
        return line("session bus", "none");
    }
    std::string lines = line("session bus", "yes");
    for (const BugReport::Service& service : *services) {
        lines += line("service", shown(service.name) + (service.isThere ? ", there" : ", missing"));
    }
    return lines;
}

std::string text(const BugReport::Agent& agent) {
    const char* hooks = agent.hasHooks           ? "hooks installed"
                        : agent.areHooksOutdated ? "hooks incomplete"
                                                 : "no hooks";
    return line("agent",
                shown(agent.name) + " " + (agent.version ? shown(*agent.version) : "unknown") + ", " + hooks);
}

} // namespace

std::string text(const BugReport& report) {
    std::string lines = line("Veslora", shown(report.version)) + line("Qt", shown(report.toolkit)) +
                        line("system", shown(report.system)) + line("session", shown(report.session)) +
                        line("desktop", shown(report.desktop)) + text(report.display) + text(report.services);
    for (const BugReport::Agent& agent : report.agents) {
        lines += text(agent);
    }
    return lines + line("running", report.running ? *report.running : "no");
}

} // namespace veslora
