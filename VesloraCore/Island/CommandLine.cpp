// SPDX-License-Identifier: MIT
#include "VesloraCore/Island/CommandLine.h"

#include <algorithm>
#include <array>

namespace veslora::CommandLine {

namespace {

struct Word {
    std::string_view text;
    Command command;
};

constexpr std::array table{
    Word{"settings", Command::settings},
    Word{"toggle", Command::toggle},
    Word{"quit", Command::quit},
    Word{"status", Command::status},
};

} // namespace

Request parse(std::span<const std::string_view> words) {
    if (words.empty()) {
        return Start{};
    }
    if (words.size() > 1) {
        return Wrong{};
    }
    const std::string_view word = words.front();
    if (word == "--help") {
        return Help{};
    }
    if (word == "--version") {
        return Version{};
    }
    if (word == "--verbose") {
        return Start{true};
    }
    if (word == "report") {
        return Report{};
    }
    const auto command = commandFor(word);
    return command ? Request(Ask{*command}) : Request(Wrong{});
}

std::string_view wordFor(Command command) {
    return std::ranges::find(table, command, &Word::command)->text;
}

std::optional<Command> commandFor(std::string_view word) {
    const auto* const found = std::ranges::find(table, word, &Word::text);
    return found == table.end() ? std::nullopt : std::optional(found->command);
}

std::string_view usage() {
    return "usage: veslora [--verbose | settings | toggle | quit | status | report | --help | --version]\n";
}

std::string_view explanation() {
    return R"(
Without a word Veslora starts; if it runs already, it opens its settings.
The other words work from a shell without a display too, and ask the one that
runs:

  settings   open the settings window
  toggle     open the island until the pointer has been in it and has left it,
             or, if it is open, close it
  quit       end it, and wait until it is gone; a permission prompt that waits
             in the island goes on in its terminal
  status     print one line of JSON:
               island    "closed" or "open"
               shows     "rack" while it is open, else what it shows closed:
                         "timerAlert", "claudeAlert", "claudeFinished",
                         "metronome", "timer", "music", "claudeWorking",
                         "keepAwake" or "none"
               sessions  how many of both agents' are "working",
                         "needsApproval", "finished" and "idle"

  report     print what a report of a fault needs: versions, desktop, screens,
             services and whether the agents' hooks are in; nothing private

  --verbose  start, and tell on standard error what is decided and what fails
  --help     print this
  --version  print the version

The status is 0 when it was done, 1 when it could not be done or Veslora is
not running, and 2 for any other word.
)";
}

} // namespace veslora::CommandLine
