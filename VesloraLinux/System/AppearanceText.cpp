// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/AppearanceText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <functional>
#include <string>

namespace veslora::AppearanceText {
namespace {

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// KDE writes "[$i]" after what the administrator does not let the user change.
std::string_view withoutMark(std::string_view name) {
    const std::size_t mark = name.find("[$");
    return trimmed(name.substr(0, mark));
}

std::string lowered(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return result;
}

using TakeValue = std::function<void(std::string_view group, std::string_view key, std::string_view value)>;

/// Tells every value of a file of groups. In the head of a group other brackets may stand.
void readGroups(std::string_view text, const TakeValue& take) {
    std::string_view group;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::string_view line = trimmed(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (line.starts_with('[')) {
            const std::string_view head = withoutMark(line);
            group = head.ends_with(']') ? head.substr(1, head.size() - 2) : std::string_view();
            continue;
        }
        const std::size_t equals = line.find('=');
        if (!line.starts_with('#') && equals != std::string_view::npos) {
            take(group, withoutMark(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
        }
    }
}

template <class Number>
std::optional<Number> number(std::string_view text) {
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(value) : std::nullopt;
}

std::optional<bool> truth(std::string_view text) {
    const std::string word = lowered(text);
    if (word == "1" || word == "true" || word == "yes") {
        return true;
    }
    return word == "0" || word == "false" || word == "no" ? std::optional(false) : std::nullopt;
}

/// "red,green,blue", each from 0 to 255.
std::optional<std::array<int, 3>> color(std::string_view text) {
    std::array<int, 3> channels{};
    for (std::size_t i = 0; i < channels.size(); ++i) {
        const std::size_t comma = text.find(',');
        const auto channel = number<int>(trimmed(text.substr(0, comma)));
        const bool isLast = i + 1 == channels.size();
        if (!channel || *channel < 0 || *channel > 255 || isLast != (comma == std::string_view::npos)) {
            return std::nullopt;
        }
        channels[i] = *channel;
        text.remove_prefix(isLast ? text.size() : comma + 1);
    }
    return channels;
}

ColorScheme schemeOf(const std::array<int, 3>& ground) {
    // How bright the eye finds each of them, in thousandths.
    const int brightness = 299 * ground[0] + 587 * ground[1] + 114 * ground[2];
    return brightness < 128 * 1000 ? ColorScheme::dark : ColorScheme::light;
}

/// The themes for high contrast, in the names that they have had.
bool isHighContrast(const std::string& theme) {
    return theme.find("highcontrast") != std::string::npos ||
           theme.find("high-contrast") != std::string::npos;
}

ColorScheme schemeOfTheme(const std::string& theme) {
    const bool isDark = theme.ends_with("-dark") || theme.ends_with(":dark") || theme.ends_with("inverse");
    return isDark ? ColorScheme::dark : ColorScheme::light;
}

} // namespace

Words ofGtk(std::string_view text) {
    Words words;
    std::optional<bool> prefersDark;
    std::string theme;
    readGroups(text, [&](std::string_view group, std::string_view key, std::string_view value) {
        if (group != "Settings") {
            return;
        }
        if (key == "gtk-application-prefer-dark-theme") {
            prefersDark = truth(value);
        } else if (key == "gtk-theme-name") {
            theme = lowered(value);
        } else if (const auto animates = truth(value); animates && key == "gtk-enable-animations") {
            words.reducedMotion = !*animates;
        }
    });
    if (!theme.empty()) {
        words.colorScheme = schemeOfTheme(theme);
        words.highContrast = isHighContrast(theme);
    }
    if (prefersDark && (*prefersDark || !words.colorScheme)) {
        words.colorScheme = *prefersDark ? ColorScheme::dark : ColorScheme::light;
    }
    return words;
}

Words ofKde(std::string_view text) {
    Words words;
    std::string scheme;
    std::optional<ColorScheme> ground;
    readGroups(text, [&](std::string_view group, std::string_view key, std::string_view value) {
        if (group == "General" && key == "ColorScheme") {
            scheme = lowered(value);
        } else if (group == "Colors:Window" && key == "BackgroundNormal") {
            const auto channels = color(value);
            ground = channels ? std::optional(schemeOf(*channels)) : std::nullopt;
        } else if (group == "KDE" && key == "AnimationDurationFactor") {
            const auto factor = number<double>(value);
            words.reducedMotion = factor ? std::optional(*factor == 0) : std::nullopt;
        }
    });
    if (!scheme.empty()) {
        const bool isDark = scheme.find("dark") != std::string::npos;
        words.colorScheme = isDark ? ColorScheme::dark : ColorScheme::light;
        words.highContrast = isHighContrast(scheme);
    }
    // What the colours are outweighs what they are called.
    words.colorScheme = ground ? ground : words.colorScheme;
    return words;
}

Words firstOf(const Words& first, const Words& second) {
    return {first.colorScheme ? first.colorScheme : second.colorScheme,
            first.highContrast ? first.highContrast : second.highContrast,
            first.reducedMotion ? first.reducedMotion : second.reducedMotion};
}

} // namespace veslora::AppearanceText
