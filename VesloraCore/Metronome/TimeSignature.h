// SPDX-License-Identifier: MIT
// The metronome's time signatures.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace veslora {

struct TimeSignature {
    int beats = 4;
    int unit = 4;

    static const TimeSignature common;             ///< 4/4
    static const std::array<TimeSignature, 6> all; ///< the ones that the metronome offers, in order

    /// The member of `all` that is written so; 4/4 for an absent or any other text.
    [[nodiscard]] static TimeSignature fromStoredValue(std::optional<std::string_view> text);

    /// As in "6/8".
    [[nodiscard]] std::string display() const;
    [[nodiscard]] std::string storedValue() const { return display(); }

    /// The one after this in `all`, the first after the last. One that is not in there counts as the first.
    [[nodiscard]] TimeSignature next() const;

    bool operator==(const TimeSignature&) const = default;
};

inline constexpr TimeSignature TimeSignature::common{4, 4};
inline constexpr std::array<TimeSignature, 6> TimeSignature::all{
    {{2, 4}, {3, 4}, {4, 4}, {5, 4}, {6, 8}, {7, 8}}};

} // namespace veslora
