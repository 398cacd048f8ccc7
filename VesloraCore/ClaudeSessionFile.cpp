// SPDX-License-Identifier: MIT
// See ClaudeSessionFile.h.
#include "VesloraCore/ClaudeSessionFile.h"

#include "VesloraCore/Iso8601.h"
#include "VesloraCore/Json.h"

namespace veslora {

namespace {

// Milliseconds since 1970, or a date as text.
std::optional<Timestamp> dateAt(const Json& root, std::string_view key) {
    if (const std::string* text = root.stringAt(key))
        return Iso8601::parse(*text);
    const Json* value = root.find(key);
    const std::optional<double> milliseconds = value ? value->number() : std::nullopt;
    return milliseconds ? std::optional(*milliseconds / 1000.0) : std::nullopt;
}

// An open dialog is the session's own business, and so it counts as work, not as waiting.
void readStatus(const Json& root, ClaudeSessionFile& file) {
    const std::string status = root.textAt("status");
    const std::string waitingFor = root.textAt("waitingFor");
    const bool isWaiting = status == "waiting";
    const bool hasDialogOpen = isWaiting && waitingFor == "dialog open";
    file.isBusy = status == "busy" || hasDialogOpen;
    if (isWaiting && !hasDialogOpen)
        file.waitingFor = waitingFor;
}

} // namespace

std::optional<ClaudeSessionFile> ClaudeSessionFile::parse(std::string_view bytes) {
    const std::optional<Json> root = Json::parse(bytes);
    if (!root)
        return std::nullopt;
    const Json* pidValue = root->find("pid");
    const std::optional<std::int32_t> pid = pidValue ? pidValue->integer32() : std::nullopt;
    ClaudeSessionFile file;
    file.sessionId = root->textAt("sessionId");
    if (file.sessionId.empty() || !pid)
        return std::nullopt;
    file.pid = *pid;
    file.cwd = root->textAt("cwd");
    file.name = root->textAt("name");
    readStatus(*root, file);
    file.statusSince = dateAt(*root, "statusUpdatedAt");
    if (const std::string* pane = root->stringAt("tmux"))
        file.tmux = *pane;
    return file;
}

} // namespace veslora
