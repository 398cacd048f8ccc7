// SPDX-License-Identifier: MIT
// See ClaudeSessionFile.h.
#include "VesloraCore/Agents/ClaudeSessionFile.h"

#include "VesloraCore/Text/Iso8601.h"
#include "VesloraCore/Text/Json.h"
#include "VesloraCore/Text/JsonScanner.h"
#include "VesloraCore/Text/Utf8.h"

namespace veslora {

namespace {

// What of a file is not yet understood.
struct Reading {
    ClaudeSessionFile file;
    std::optional<std::int32_t> pid;
    std::string status;
    std::string waitingFor;
};

// The next value, built unless it is a container.
Json scalar(JsonScanner& scanner) {
    const std::string_view text = scanner.raw();
    const bool isContainer = text.starts_with('{') || text.starts_with('[');
    return isContainer ? Json() : Json::parse(text).value_or(Json());
}

// Milliseconds since 1970, or a date as text.
std::optional<Timestamp> dateOf(const Json& value) {
    if (const std::string* text = value.string()) {
        return Iso8601::parse(*text);
    }
    const std::optional<double> milliseconds = value.number();
    return milliseconds ? std::optional(*milliseconds / 1000.0) : std::nullopt;
}

// Of several equal keys the last counts, also where it stands for nothing.
void readMember(JsonScanner::Key key, JsonScanner& scanner, Reading& reading) {
    if (key == "sessionId") {
        reading.file.sessionId = scanner.string().value_or("");
    } else if (key == "pid") {
        reading.pid = scalar(scanner).integer32();
    } else if (key == "cwd") {
        reading.file.cwd = scanner.string().value_or("");
    } else if (key == "name") {
        reading.file.name = scanner.string().value_or("");
    } else if (key == "status") {
        reading.status = scanner.string().value_or("");
    } else if (key == "waitingFor") {
        reading.waitingFor = scanner.string().value_or("");
    } else if (key == "statusUpdatedAt") {
        reading.file.statusSince = dateOf(scalar(scanner));
    } else if (key == "version") {
        reading.file.version = scanner.string().value_or("");
    } else if (key == "tmux") {
        reading.file.tmux = scanner.string();
    } else {
        scanner.skip();
    }
}

// An open dialog is the session's own business, and so it counts as work, not as waiting.
void takeStatus(const Reading& reading, ClaudeSessionFile& file) {
    const bool isWaiting = reading.status == "waiting";
    const bool hasDialogOpen = isWaiting && reading.waitingFor == "dialog open";
    file.isBusy = reading.status == "busy" || hasDialogOpen;
    if (isWaiting && !hasDialogOpen) {
        file.waitingFor = reading.waitingFor;
    }
}

} // namespace

std::optional<ClaudeSessionFile> ClaudeSessionFile::parse(std::string_view bytes) {
    if (!Utf8::isValid(bytes)) {
        return std::nullopt;
    }
    JsonScanner scanner(bytes);
    Reading reading;
    const bool isObject = scanner.object([&](JsonScanner::Key key) { readMember(key, scanner, reading); });
    ClaudeSessionFile& file = reading.file;
    if (!isObject || !scanner.isComplete() || file.sessionId.empty() || !reading.pid) {
        return std::nullopt;
    }
    file.pid = *reading.pid;
    takeStatus(reading, file);
    return file;
}

} // namespace veslora
