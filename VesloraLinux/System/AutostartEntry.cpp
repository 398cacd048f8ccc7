// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/AutostartEntry.h"

#include <algorithm>
#include <cctype>
#include <functional>
#include <optional>

namespace veslora::AutostartEntry {
namespace {

constexpr std::string_view groupName = "[Desktop Entry]";
constexpr std::string_view blanks = " \t\r";

std::string_view trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(blanks);
    return begin == std::string_view::npos ? std::string_view()
                                           : text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(separator), text.size());
        parts.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

/// The key of a line, without its language; empty for what is no pair.
std::string_view keyOf(std::string_view line) {
    const std::size_t equals = line.find('=');
    return equals == std::string_view::npos || trimmed(line).starts_with('#')
               ? std::string_view()
               : trimmed(line.substr(0, equals));
}

std::string_view valueOf(std::string_view line) {
    return trimmed(line.substr(line.find('=') + 1));
}

/// Calls `visit` with each line and whether it stands in the group that counts.
void visitLines(std::string_view entry, const std::function<void(std::string_view, bool)>& visit) {
    bool isInGroup = false;
    for (const std::string_view line : split(entry, '\n')) {
        if (trimmed(line).starts_with('[')) {
            isInGroup = trimmed(line) == groupName;
        }
        visit(line, isInGroup);
    }
}

/// The first, as readers of such files take it.
std::optional<std::string_view> valueIn(std::string_view entry, std::string_view key) {
    std::optional<std::string_view> value;
    visitLines(entry, [&](std::string_view line, bool isInGroup) {
        if (isInGroup && !value && keyOf(line) == key) {
            value = valueOf(line);
        }
    });
    return value;
}

/// The switches of the desktops' own tools, such as GNOME's and MATE's.
bool isSwitch(std::string_view key) {
    return key.starts_with("X-") && key.ends_with("-Autostart-enabled");
}

bool isSwitchedOff(std::string_view entry) {
    bool isOff = false;
    visitLines(entry, [&](std::string_view line, bool isInGroup) {
        isOff = isOff || (isInGroup && isSwitch(keyOf(line)) && valueOf(line) == "false");
    });
    return isOff;
}

bool namesAny(std::string_view list, const std::vector<std::string>& desktops) {
    return std::ranges::any_of(split(list, ';'), [&](std::string_view name) {
        return std::ranges::find(desktops, trimmed(name)) != desktops.end();
    });
}

/// As an argument of a command in an entry: quoted where need be, with what a shell or the entry would take
/// for its own made harmless.
std::string quoted(const std::string& path) {
    const bool isPlain = std::ranges::all_of(path, [](char letter) {
        return std::isalnum(static_cast<unsigned char>(letter)) != 0 ||
               std::string_view("/._+-").find(letter) != std::string_view::npos;
    });
    if (isPlain) {
        return path;
    }
    std::string command = "\"";
    for (const char letter : path) {
        if (std::string_view("\"`$").find(letter) != std::string_view::npos) {
            // Once for the entry and once for the command.
            command += "\\\\";
        } else if (letter == '\\') {
            command += "\\\\\\";
        } else if (letter == '%') {
            command += '%';
        }
        command += letter;
    }
    return command + '"';
}

/// The value with the entry's own escapes taken away.
std::string unescaped(std::string_view value) {
    constexpr std::string_view letters = "sntr\\";
    constexpr std::string_view meanings = " \n\t\r\\";
    std::string text;
    for (std::size_t at = 0; at < value.size(); ++at) {
        const std::size_t meaning =
            value[at] == '\\' && at + 1 < value.size() ? letters.find(value[at + 1]) : std::string_view::npos;
        if (meaning == std::string_view::npos) {
            text += value[at];
        } else {
            text += meanings[meaning];
            ++at;
        }
    }
    return text;
}

/// The first argument of a command, without its quotes.
std::string firstArgument(const std::string& command) {
    std::string argument;
    bool isQuoted = false;
    for (std::size_t at = 0; at < command.size(); ++at) {
        const char letter = command[at];
        if (letter == '"') {
            isQuoted = !isQuoted;
        } else if (!isQuoted && letter == ' ') {
            break;
        } else if ((letter == '\\' && isQuoted) || letter == '%') {
            argument += command.substr(++at, 1);
        } else {
            argument += letter;
        }
    }
    return argument;
}

std::string commandLines(const std::string& executable) {
    std::string path;
    // A path is a plain value here, with the entry's escapes alone.
    for (const char letter : executable) {
        path += letter == '\\' ? "\\\\" : std::string(1, letter);
    }
    return "Exec=" + quoted(executable) + "\nTryExec=" + path + "\n";
}

/// The entry with the lines of these keys taken away and `added` put behind the group's name.
std::string changed(std::string_view entry, const std::function<bool(std::string_view)>& isDropped,
                    const std::string& added) {
    std::string text;
    visitLines(entry, [&](std::string_view line, bool isInGroup) {
        if (!isInGroup || !isDropped(keyOf(line))) {
            text.append(line) += '\n';
        }
        if (isInGroup && trimmed(line) == groupName) {
            text += added;
        }
    });
    return text;
}

bool isEntry(std::string_view text) {
    bool isFound = false;
    visitLines(text, [&](std::string_view /*line*/, bool isInGroup) { isFound = isFound || isInGroup; });
    return isFound;
}

} // namespace

std::string make(const std::string& executable) {
    return std::string(groupName) + "\n" + commandLines(executable) +
           "Type=Application\nName=Veslora\nIcon=org.veslora.Veslora\nTerminal=false\n";
}

bool isOn(std::string_view entry, const std::vector<std::string>& desktops) {
    const auto only = valueIn(entry, "OnlyShowIn");
    const auto never = valueIn(entry, "NotShowIn");
    return valueIn(entry, "Type") == "Application" && valueIn(entry, "Hidden") != "true" &&
           !isSwitchedOff(entry) && (!only || namesAny(*only, desktops)) &&
           (!never || !namesAny(*never, desktops)) && !programOf(entry).empty();
}

std::string programOf(std::string_view entry) {
    return firstArgument(unescaped(valueIn(entry, "Exec").value_or("")));
}

std::string turnedOn(std::string_view entry, const std::string& executable) {
    if (!isEntry(entry)) {
        return make(executable);
    }
    const auto isReplaced = [](std::string_view key) {
        return key == "Hidden" || key == "Exec" || key == "TryExec" || key == "Type" || key == "OnlyShowIn" ||
               key == "NotShowIn" || isSwitch(key);
    };
    return changed(entry, isReplaced, commandLines(executable) + "Type=Application\n");
}

std::string turnedOff(std::string_view entry) {
    if (!isEntry(entry)) {
        return std::string(groupName) + "\nType=Application\nName=Veslora\nHidden=true\n";
    }
    return changed(
        entry, [](std::string_view key) { return key == "Hidden"; }, "Hidden=true\n");
}

} // namespace veslora::AutostartEntry
