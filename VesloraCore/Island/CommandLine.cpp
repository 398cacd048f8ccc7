// SPDX-License-Identifier: MIT
#include "VesloraCore/Island/CommandLine.h"

#include "VesloraCore/Agents/AgentTraits.h"

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
    Word{"page next", Command::nextPage},
    Word{"page previous", Command::previousPage},
    Word{"edit", Command::edit},
    Word{"pause", Command::pause},
    Word{"resume", Command::resume},
    Word{"quit", Command::quit},
    Word{"status", Command::status},
    Word{"export", Command::exportSettings},
    Word{"import", Command::importSettings},
    Word{"hooks install", Command::installHooks},
    Word{"hooks remove", Command::removeHooks},
    Word{"hooks status", Command::hooksStatus},
};

/// Before what is to be done with them.
constexpr std::string_view hooks = "hooks";

constexpr std::array withText{Command::importSettings, Command::installHooks, Command::removeHooks,
                              Command::hooksStatus};

bool takesText(Command command) {
    return std::ranges::find(withText, command) != withText.end();
}

/// What is behind the words for a command. Absent for a line without both.
std::optional<std::string_view> textBehind(Command command, std::string_view line) {
    const std::string_view word = wordFor(command);
    const bool hasOne = line.size() > word.size() && line.starts_with(word) && line[word.size()] == ' ';
    return hasOne ? std::optional(line.substr(word.size() + 1)) : std::nullopt;
}

std::optional<Ask> askWithText(std::string_view line) {
    for (const Command command : withText) {
        const auto text = textBehind(command, line);
        if (text && !text->empty() && (command == Command::importSettings || agentKindOf(*text))) {
            return Ask{command, {}, std::string(*text)};
        }
    }
    return std::nullopt;
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

using Arguments = std::span<const std::string_view>;

Request getFor(Arguments words) {
    const bool isRight = words.empty() || (words.size() == 1 && !words[0].empty());
    return isRight ? Request(Get{words.empty() ? "" : std::string(words[0])}) : Request(Wrong{});
}

Request setFor(Arguments words) {
    const bool isRight = words.size() == 2 && !words[0].empty();
    return isRight ? Request(Set{std::string(words[0]), std::string(words[1])}) : Request(Wrong{});
}

Request exportFor(Arguments words) {
    const bool isWhole = words.size() == 1 && words[0] == "--all";
    return words.empty() || isWhole ? Request(Export{isWhole}) : Request(Wrong{});
}

Request importFor(Arguments words) {
    const bool isRight = words.empty() || (words.size() == 1 && !words[0].empty());
    const bool isFile = isRight && !words.empty() && words[0] != "-";
    return isRight ? Request(Import{isFile ? std::string(words[0]) : ""}) : Request(Wrong{});
}

Request hooksFor(Arguments words) {
    const auto* const found =
        words.empty() ? table.end() : std::ranges::find_if(table, [&](const Word& word) {
            return word.text == std::string(hooks) + " " + std::string(words[0]);
        });
    const auto agent = words.size() == 2 ? agentKindOf(words[1]) : std::nullopt;
    const bool isRight = found != table.end() && (words.size() == 1 || agent);
    return isRight ? Request(Hooks{found->command, agent}) : Request(Wrong{});
}

/// The words whose arguments may hold anything; absent for all others.
std::optional<Request> requestWithArguments(std::string_view word, Arguments arguments) {
    if (word == "get") {
        return getFor(arguments);
    }
    if (word == "set") {
        return setFor(arguments);
    }
    if (word == wordFor(Command::exportSettings)) {
        return exportFor(arguments);
    }
    if (word == wordFor(Command::importSettings)) {
        return importFor(arguments);
    }
    return word == hooks ? std::optional(hooksFor(arguments)) : std::nullopt;
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
    return ask ? Request(*ask) : Request(Wrong{.isLength = textBehind(Command::pause, word).has_value()});
}

} // namespace

Request parse(std::span<const std::string_view> words) {
    if (words.empty()) {
        return Start{};
    }
    if (auto request = requestWithArguments(words[0], words.subspan(1))) {
        return *std::move(request);
    }
    const auto line = joined(words);
    return line ? requestFor(*line) : Request(Wrong{});
}

std::string_view wordFor(Command command) {
    return std::ranges::find(table, command, &Word::command)->text;
}

std::string lineFor(const Ask& ask) {
    const std::string line(wordFor(ask.command));
    if (takesText(ask.command)) {
        return line + " " + ask.text;
    }
    return ask.command == Command::pause ? line + " " + AlertPause::text(ask.length) : line;
}

std::optional<Ask> askFor(std::string_view line) {
    if (const auto text = textBehind(Command::pause, line)) {
        const auto length = AlertPause::parse(*text);
        return length ? std::optional(Ask{Command::pause, *length}) : std::nullopt;
    }
    const auto* const found = std::ranges::find(table, line, &Word::text);
    const bool isWhole = found != table.end() && !takesText(found->command);
    return isWhole ? std::optional(Ask{found->command}) : askWithText(line);
}

std::string usage(const Words& words) {
    constexpr auto all = "[--verbose | settings | toggle | page next | page previous | edit | "
                         "pause [LENGTH] | resume | quit | status | get [KEY] | set KEY VALUE | "
                         "export [--all] | import [FILE] | hooks install [AGENT] | hooks remove [AGENT] | "
                         "hooks status [AGENT] | report | --help | --version]";
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
The other words work from a shell without a display too. Those of the first
list ask the one that runs:

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

Those of the second list serve also while it does not run:

  get            print the setting KEY; without one all of them, each on a line
                 with its value, its default and what it may be, and tabs
                 between
  set            give the setting KEY the value VALUE
  export         print the settings that differ from their defaults as JSON;
                 with "--all" the others too
  import         take over the settings of such a text from FILE, or from
                 standard input; nothing of one in which anything is wrong
  hooks install  put hooks into the configuration of AGENT, "claude" or "codex",
                 or of both, as the tab "Agents" does
  hooks remove   take them out; agents that run go on working
  hooks status   print a line on how they stand

  report         print what a report of a fault needs: versions, desktop,
                 screens, services and whether the agents' hooks are in; nothing
                 private

  --verbose      start, and tell on standard error what is decided and what
                 fails
  --help         print this
  --version      print the version

The status is 0 when it was done, 1 when it could not be done or Veslora is
not running, 2 for any other words, and 3 when hooks are not installed.
)");
}

} // namespace veslora::CommandLine
