// SPDX-License-Identifier: MIT
// The words of the command line, and what a program that runs can be asked for by them. Plain text in, plain
// values out: neither a display nor a home is needed to understand or to refuse a word.
#pragma once

#include "VesloraCore/Agents/AgentKind.h"
#include "VesloraCore/Agents/AlertPause.h"
#include "VesloraCore/Text/Words.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace veslora {

/// What another process can ask a running program for. Nothing of it answers a permission prompt.
enum class Command {
    settings,     ///< open the settings window
    toggle,       ///< open the island, or close it
    nextPage,     ///< turn to the rack's next page, and open the island if need be
    previousPage, ///< the same for the page before
    edit,         ///< enter edit mode, or leave it
    pause,        ///< pause alerts for some time
    resume,       ///< end that
    quit,         ///< end in the whole order of stopping
    status,       ///< tell in one line what is going on
    // The words below are served by the program that runs and, where none does, by the one that is asked.
    exportSettings, ///< tell all settings as one line of JSON
    importSettings, ///< take over the settings of a JSON object
    installHooks,   ///< put an agent's hooks into its configuration
    removeHooks,    ///< take them out
    hooksStatus,    ///< tell in one line how they stand
};

/// What became of a command. The text is what was asked for, or why it could not be done; else it is empty.
/// One line.
struct CommandOutcome {
    bool isDone = true;
    std::string text;
};

namespace CommandLine {

/// Run the program, or show the settings of the one that runs already.
struct Start {
    bool isVerbose = false; ///< it tells on standard error what it decides and what fails
    bool operator==(const Start&) const = default;
};
struct Help {
    bool operator==(const Help&) const = default;
};
struct Version {
    bool operator==(const Version&) const = default;
};
/// Print what a report of a fault needs.
struct Report {
    bool operator==(const Report&) const = default;
};
/// Ask the program that runs.
struct Ask {
    Command command;
    AlertPause::Length length = {}; ///< of a pause; else without a meaning
    /// The settings to take over as one line of JSON, or the agent whose hooks are meant, as its traits spell
    /// it; else empty.
    std::string text = {};
    bool operator==(const Ask&) const = default;
};
/// Print a setting, or without a key all of them.
struct Get {
    std::string key;
    bool operator==(const Get&) const = default;
};
/// Change a setting. The value is text as it was typed.
struct Set {
    std::string key;
    std::string value;
    bool operator==(const Set&) const = default;
};
/// Print the settings as JSON.
struct Export {
    bool isWhole = false; ///< also those that are as they are by default
    bool operator==(const Export&) const = default;
};
/// Take over settings from a file, or without one from standard input.
struct Import {
    std::string file;
    bool operator==(const Import&) const = default;
};
/// Do something with agents' hooks: one of the commands `installHooks`, `removeHooks` and `hooksStatus`.
struct Hooks {
    Command command = Command::hooksStatus;
    std::optional<AgentKind> agent; ///< absent for all of them
    bool operator==(const Hooks&) const = default;
};
/// Words that have no meaning, alone or together.
struct Wrong {
    bool isLength = false; ///< it is the length of a pause that has none
    bool operator==(const Wrong&) const = default;
};
using Request = std::variant<Start, Help, Version, Report, Ask, Get, Set, Export, Import, Hooks, Wrong>;

/// `words` are the arguments without the program's own name.
[[nodiscard]] Request parse(std::span<const std::string_view> words);

/// The word for a command, or its words with one blank between them.
[[nodiscard]] std::string_view wordFor(Command command);
/// What is asked for as one line between two processes, and for most commands also on the command line: the
/// command's words, and behind them the length of a pause, or the text that belongs to it.
[[nodiscard]] std::string lineFor(const Ask& ask);
/// What such a line asks for; a pause without a length is one of an hour. Absent for any other text. Whether
/// the settings of an import are any is not looked at.
[[nodiscard]] std::optional<Ask> askFor(std::string_view line);

/// One line that lists every word, with its line end.
[[nodiscard]] std::string usage(const Words& words = {});
/// What lengths a pause may have, with its line end.
[[nodiscard]] std::string lengthUsage(const Words& words = {});
/// What "--help" prints below the usage, with its line end.
[[nodiscard]] std::string explanation(const Words& words = {});

} // namespace CommandLine

} // namespace veslora
