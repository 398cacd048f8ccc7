// SPDX-License-Identifier: MIT
#include "VesloraCore/Music/OrphanedAdapters.h"

#include "VesloraCore/Text/PathText.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace veslora {

namespace {

constexpr std::int32_t firstProcess = 1;

struct ListedProcess {
    std::int32_t pid = 0;
    std::int32_t parent = 0;
    std::string_view command;
};

void skipBlanks(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
}

/// Takes the number at the front, after blanks, with the blank behind it.
std::optional<std::int32_t> takeNumber(std::string_view& text) {
    skipBlanks(text);
    const std::string_view piece = text.substr(0, text.find(' '));
    const char* const end = piece.data() + piece.size();
    std::int32_t number = 0;
    const auto read = std::from_chars(piece.data(), end, number);
    text.remove_prefix(piece.size());
    return read.ec == std::errc() && read.ptr == end ? std::optional(number) : std::nullopt;
}

std::optional<ListedProcess> processOf(std::string_view line) {
    const auto pid = takeNumber(line);
    const auto parent = takeNumber(line);
    skipBlanks(line);
    // A signal to 0 or to a negative number would reach a whole group of processes.
    if (!pid || !parent || *pid < firstProcess || line.empty()) {
        return std::nullopt;
    }
    return ListedProcess{*pid, *parent, line};
}

std::vector<ListedProcess> processesIn(std::string_view listing) {
    std::vector<ListedProcess> processes;
    while (!listing.empty()) {
        const std::string_view line = listing.substr(0, listing.find('\n'));
        listing.remove_prefix(std::min(line.size() + 1, listing.size()));
        if (const auto process = processOf(line)) {
            processes.push_back(*process);
        }
    }
    return processes;
}

bool takesOrphans(const ListedProcess& process) {
    const std::size_t end = process.command.find(' ');
    return process.pid == firstProcess ||
           (end != std::string_view::npos &&
            PathText::lastComponent(process.command.substr(0, end)) == "systemd" &&
            process.command.substr(end).starts_with(" --user"));
}

bool runs(const ListedProcess& process, std::string_view executable) {
    const std::string_view command = process.command;
    return command.starts_with(executable) &&
           (command.size() == executable.size() || command[executable.size()] == ' ');
}

} // namespace

std::vector<std::int32_t> orphanedAdapters(std::string_view listing, std::string_view adapter) {
    const std::vector<ListedProcess> processes = processesIn(listing);
    std::vector<std::int32_t> takers{firstProcess};
    std::vector<std::int32_t> orphans;
    for (const ListedProcess& process : processes) {
        if (takesOrphans(process)) {
            takers.push_back(process.pid);
        }
    }
    for (const ListedProcess& process : processes) {
        if (runs(process, adapter) && std::ranges::count(takers, process.parent) > 0) {
            orphans.push_back(process.pid);
        }
    }
    return orphans;
}

} // namespace veslora
