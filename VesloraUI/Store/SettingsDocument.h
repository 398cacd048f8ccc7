// SPDX-License-Identifier: MIT
// The settings as text: a JSON object that one store writes and another takes over. What is read may come
// from anywhere, and is judged whole by what readers of the settings would make of it. Pure functions.
#pragma once

#include "VesloraCore/Text/Json.h"
#include "VesloraCore/Text/Words.h"
#include "VesloraUI/Store/Setting.h"

#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace veslora::SettingsDocument {

/// Bytes of a text that is taken over; far more than all settings need.
inline constexpr std::size_t longest = std::size_t{64} << 10;

/// Why a text is not taken over.
enum class Reason {
    tooLong,     ///< than `longest`
    notAnObject, ///< no JSON, or none with keys and values
    unknownKey,  ///< no setting is called so
    state,       ///< that is no choice of the user's
    repeatedKey, ///< it is there more than once, so nobody can tell which value is meant
    unusable,    ///< the value is of another type, out of range or no choice that there is
};
struct Fault {
    Reason reason = Reason::notAnObject;
    std::string key; ///< as it stood in the text; empty where the whole text is meant
    bool operator==(const Fault&) const = default;
};

using Changes = std::vector<Setting::Change>;
/// Either all that the text asks for, or everything that is wrong with it.
using Reading = std::variant<Changes, std::vector<Fault>>;

/// The keys of the changes are those of `SettingsKeys`. A value must read as itself: one that a reader would
/// hold to its range, repair or take for the default is refused.
[[nodiscard]] Reading read(std::string_view text);

/// One sentence for people, in which nothing moves a terminal's cursor and a key has 60 bytes at most.
[[nodiscard]] std::string explain(const Fault& fault, const Words& words = {});

/// Only those of an object of settings that differ from their defaults.
[[nodiscard]] Json withoutDefaults(const Json& settings);

/// The value as a shell takes it: a text without quotes.
[[nodiscard]] std::string plain(const Json& value);
/// A text for `read` that gives the setting a value that was typed: true or false, a number, or the text
/// itself. Anything may have been typed.
[[nodiscard]] std::variant<std::string, Fault> assigning(std::string_view key, std::string_view typed);

} // namespace veslora::SettingsDocument
