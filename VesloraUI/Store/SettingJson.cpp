// SPDX-License-Identifier: MIT
#include "VesloraUI/Store/SettingJson.h"

#include "VesloraCore/Overloaded.h"

#include <array>
#include <charconv>

namespace veslora::SettingJson {

namespace {

std::optional<Json> numberJson(double number) {
    std::array<char, 32> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), number);
    return Json::parse({text.data(), result.ptr});
}

template <class Found>
std::optional<Setting::Value> valueOf(const std::optional<Found>& found) {
    return found ? std::optional<Setting::Value>(*found) : std::nullopt;
}

} // namespace

std::optional<Json> make(const Setting::Value& value) {
    return std::visit(
        Overloaded{[](bool flag) { return std::optional(Json::makeBoolean(flag)); },
                   [](int integer) { return std::optional(Json::makeInteger(integer)); },
                   [](double number) { return numberJson(number); },
                   [](const std::string& text) { return std::optional(Json::makeString(text)); }},
        value);
}

std::optional<Setting::Value> read(const Json& stored, const Setting::Value& standard) {
    return std::visit(Overloaded{[&](bool) { return valueOf(stored.boolean()); },
                                 [&](int) { return valueOf<int>(stored.integer32()); },
                                 [&](double) { return valueOf(stored.number()); },
                                 [&](const std::string&) {
                                     const std::string* text = stored.string();
                                     return text ? std::optional<Setting::Value>(*text) : std::nullopt;
                                 }},
                      standard);
}

} // namespace veslora::SettingJson
