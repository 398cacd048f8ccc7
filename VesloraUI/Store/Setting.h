// SPDX-License-Identifier: MIT
// What one setting may hold: its default, which also says of what type it is, and its bounds. Plain values.
#pragma once

#include "VesloraCore/Text/Words.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace veslora {

/// A range that holds both its ends.
struct ClosedRange {
    double lower = 0;
    double upper = 0;

    [[nodiscard]] constexpr double clamped(double value) const { return std::clamp(value, lower, upper); }
    bool operator==(const ClosedRange&) const = default;
};

struct Setting {
    using Value = std::variant<bool, int, double, std::string>;
    /// A key, and what it is to hold.
    using Change = std::pair<std::string_view, Value>;

    /// Texts of which it is one. Any other counts as the default.
    struct Choices {
        std::vector<std::string> all;
    };
    /// Texts of a form. `read` gives the text that counts in place of any other.
    struct Form {
        std::string (*read)(std::string_view text) = nullptr;
        const char* description = ""; ///< what it may be, untranslated
    };
    using Bounds = std::variant<std::monostate, ClosedRange, Choices, Form>;

    std::string_view key;
    Value standard;
    Bounds bounds = {};
    /// What the program remembers for a while and nobody chose to have elsewhere too. It is neither shown nor
    /// changed, exported nor imported by the command line.
    bool isState = false;

    /// The value that counts where that one is stored, by the rules of those who read it; the same one where
    /// it is within the bounds. It must be of the default's type.
    [[nodiscard]] Value held(const Value& stored) const;
    /// What it may be, in words that follow "must be": "a number from 8 to 80".
    [[nodiscard]] std::string description(const Words& words = {}) const;
};

} // namespace veslora
