// SPDX-License-Identifier: MIT
#include "bench/Rack.h"

#include "VesloraCore/Island/NotchGeometry.h"
#include "bench/Clock.h"

#include <algorithm>
#include <stdexcept>

namespace veslora::bench {

namespace {

constexpr int spacing = 60;
constexpr int height = static_cast<int>(WidgetLayout::widgetHeight);
constexpr int top = static_cast<int>(NotchGeometry::fakeNotchMinHeight + NotchGeometry::rackTopInset);
/// The keys' blank below their words.
constexpr int keyFoot = top + height - 4;

int widthOf(const WidgetEntry& entry) {
    return static_cast<int>(entry.width());
}

bool isBright(Pixel pixel) {
    constexpr int bright = 160;
    return pixel.green() >= bright;
}

} // namespace

Rack::Rack(const Stage& stage, const std::string& widgets)
    : m_display(stage.display()), m_layout(WidgetLayout::fromStoredValue(widgets)) {}

std::string Rack::settings() const {
    return R"({"widgetSpacing": )" + std::to_string(spacing) + R"(, "widgetLayout": ")" +
           m_layout.storedValue() + R"("})";
}

Area Rack::moduleOf(WidgetID id) const {
    const auto& entries = m_layout.entries;
    int total = spacing * (static_cast<int>(entries.size()) - 1);
    for (const WidgetEntry& entry : entries) {
        total += widthOf(entry);
    }
    int left = (Stage::width - total) / 2;
    for (const WidgetEntry& entry : entries) {
        if (entry.id == id) {
            return {left, top, widthOf(entry), height};
        }
        left += widthOf(entry) + spacing;
    }
    throw std::runtime_error("the rack lacks a widget");
}

void Rack::press(Place place) const {
    m_display.moveTo(place);
    m_display.press();
    sleepFor(0.05);
    m_display.release();
    // Nothing shall lie under the pointer that shows a tip.
    m_display.moveTo(Island::notch);
}

void Rack::startTimer(Length length) const {
    const Area module = moduleOf(WidgetID::timer);
    constexpr int keyStep = 34 + 6;
    press({module.x + 17 + (length == Length::longest ? 2 * keyStep : 0), keyFoot});
    // At the right edge; once the timer runs a dim key is there.
    const Place key{module.right() - 20, keyFoot};
    waitUntil("the timer's key", [&] { return isBright(m_display.pixel(key)); });
    press(key);
    waitUntil("the timer", [&] { return !isBright(m_display.pixel(key)); });
}

void Rack::startMetronome() const {
    const Area module = moduleOf(WidgetID::metronome);
    // At the right edge, once the rack is there.
    const Place key{module.right() - 20, keyFoot};
    waitUntil("the metronome's key", [&] { return isBright(m_display.pixel(key)); });
    press(key);
    const Area pads{module.x + module.width / 2, module.y + 45, module.width / 2, 22};
    waitUntil("a beat", [&] { return std::ranges::any_of(m_display.pixels(pads), isBright); });
}

void Rack::startKeepAwake() const {
    const Area module = moduleOf(WidgetID::keepAwake);
    const Area clock{module.x, module.y + 18, module.width, 31};
    // Grey at first.
    const auto isLit = [&] { return std::ranges::any_of(m_display.pixels(clock), isBright); };
    if (isLit()) {
        throw std::runtime_error("the machine is kept awake already");
    }
    constexpr int thirdKey = 34 + 4 + 35 + 4 + 17;
    press({module.x + thirdKey, keyFoot});
    waitUntil("the session", isLit);
}

} // namespace veslora::bench
