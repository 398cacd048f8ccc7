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
    Word{"settings", Command::settings},  Word{"toggle", Command::toggle},
    Word{"page next", Command::nextPage}, Word{"page previous", Command::previousPage},
    Word{"edit", Command::edit},          Word{"pause", Command::pause},
    Word{"resume", Command::resume},      Word{"quit", Command::quit},
    Word{"status", Command::status},
};

/// What is behind the word for a pause, which the length of one has to be. Absent for a line without both.
std::optional<std::string_view> lengthIn(std::string_view line) {
    const std::string_view word = wordFor(Command::pause);
    const bool hasOne = line.size() > word.size() && line.starts_with(word) && line[word.size()] == ' ';
    return hasOne ? std::optional(line.substr(word.size() + 1)) : std::nullopt;
}

/// Absent where that would hide what the words were: an empty one, or one with a blank in it.
std::optional<std::string> joined(std::span<const std::string_view> words) {
    std::string line;
    for (const std::string_view word : words) {
        if (word.empty() || word.find(' ') != std::string_view::npos) {
            return std::nullopt;
        }
        line += line.empty() ? "" : " ";
        line += word;
    }
    return line;
}

Request requestFor(std::string_view word) {
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
    const auto ask = askFor(word);
    return ask ? Request(*ask) : Request(Wrong{.isLength = lengthIn(word).has_value()});
}

} // namespace

Request parse(std::span<const std::string_view> words) {
    if (words.empty()) {
        return Start{};
    }
    const auto line = joined(words);
    return line ? requestFor(*line) : Request(Wrong{});
}

std::string_view wordFor(Command command) {
    return std::ranges::find(table, command, &Word::command)->text;
}

std::string lineFor(const Ask& ask) {
    std::string line(wordFor(ask.command));
    return ask.command == Command::pause ? line + " " + AlertPause::text(ask.length) : line;
}

std::optional<Ask> askFor(std::string_view line) {
    if (const auto text = lengthIn(line)) {
        const auto length = AlertPause::parse(*text);
        return length ? std::optional(Ask{Command::pause, *length}) : std::nullopt;
    }
    const auto* const found = std::ranges::find(table, line, &Word::text);
    return found == table.end() ? std::nullopt : std::optional(Ask{found->command});
}

std::string usage(const Words& words) {
    constexpr auto all = "[--verbose | settings | toggle | page next | page previous | edit | "
                         "pause [LENGTH] | resume | quit | status | report | --help | --version]";
    return Words::filled(words.translate("CommandLine", "usage: veslora %1"), {all}) + "\n";
}

std::string lengthUsage(const Words& words) {
    return words.translate(
               "CommandLine",
               "the length of a pause is such as 30m, 1h or 2h30m, from 1m to 168h, or tomorrow") +
           "\n";
}

std::string explanation(const Words& words) {
    return words.translate("CommandLine", R"(
Without a word Veslora starts; if it runs already, it opens its settings.
The other words work from a shell without a display too, and ask the one that
runs:

  settings       open the settings window
  toggle         open the island until the pointer has been in it and has left
                 it, or, if it is open, close it
  page next      turn to the next page of widgets; one that is closed opens on
                 it, as by toggle; the last page stays
  page previous  the same for the page before; the first page stays
  edit           open the island and edit its widgets, or end that
  pause          pause alerts for an hour: until then permission prompts go
                 straight to their terminals. "pause 30m", "pause 2h30m" or
                 "pause tomorrow" say how long: from 1m to 168h, or until the
                 first 6 o'clock in the morning that is over three hours ahead
  resume         end that
  quit           end it, and wait until it is gone; a permission prompt that
                 waits in the island goes on in its terminal
  status         print one line of JSON:
                   island    "closed" or "open"
                   shows     "rack" while it is open, else what it shows closed:
                             "timerAlert", "claudeAlert", "claudeFinished",
                             "metronome", "timer", "music", "claudeWorking",
                             "keepAwake" or "none"
                   sessions  how many of both agents' are "working",
                             "needsApproval", "finished" and "idle"
                   pausedUntil  until when alerts are paused by you, in seconds
                             since 1970; only while they are

  report         print what a report of a fault needs: versions, desktop,
                 screens, services and whether the agents' hooks are in; nothing
                 private

  --verbose      start, and tell on standard error what is decided and what
                 fails
  --help         print this
  --version      print the version

The status is 0 when it was done, 1 when it could not be done or Veslora is
not running, and 2 for any other words.
)");
}

} // namespace veslora::CommandLine
