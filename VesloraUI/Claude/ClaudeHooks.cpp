// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/ClaudeHooks.h"

#include "VesloraCore/ClaudeHooksInstaller.h"
#include "VesloraCore/ClaudeStatusLineInstaller.h"
#include "VesloraCore/HookScripts.h"
#include "VesloraCore/Json.h"
#include "VesloraCore/ShellQuote.h"
#include "VesloraUI/Claude/SupportDirectory.h"

#include <algorithm>
#include <array>
#include <utility>

namespace veslora {

namespace {

constexpr auto hookName = "claude-hook.sh";
constexpr auto permissionName = "claude-permission.sh";
constexpr auto statusLineName = "claude-statusline.sh";
constexpr std::array scriptNames{hookName, permissionName, statusLineName};
constexpr auto originalName = "statusline-original.json";
constexpr auto wrappedName = "statusline-wrapped";
constexpr auto helperName = "json-value";

} // namespace

ClaudeHooks::ClaudeHooks(Files& files, SupportDirectory& support, std::string settingsFile, std::string helpers)
    : m_files(files), m_support(support), m_settingsFile(std::move(settingsFile)), m_helpers(std::move(helpers)) {}

std::string ClaudeHooks::scriptCommand(const std::string& name) const {
    return shellQuoted(m_support.pathOf(name));
}

bool ClaudeHooks::scriptsAreReady() const {
    return std::ranges::all_of(scriptNames,
                               [this](const char* name) { return m_files.isExecutable(m_support.pathOf(name)); });
}

void ClaudeHooks::readSettings() {
    const ReadResult read = m_files.read(m_settingsFile, {.links = Links::follow, .cap = ConfigurationFile::cap});
    const std::string text = read ? read.bytes : std::string();
    const std::string command = scriptCommand(hookName);
    const std::string permissionCommand = scriptCommand(permissionName);
    m_lineInstalled = ClaudeStatusLineInstaller::isInstalled(text, scriptCommand(statusLineName));
    m_hooksIn = ClaudeHooksInstaller::isInstalled(text, command, permissionCommand, HookSet::claude());
    m_hooksPartlyIn = ClaudeHooksInstaller::isPartlyInstalled(text, command, permissionCommand, HookSet::claude());
}

ClaudeHooks::State ClaudeHooks::state() {
    const auto found = m_files.stat(m_settingsFile, Links::follow);
    if (!found || found != m_settingsStat) {
        m_settingsStat = found;
        readSettings();
    }
    const bool areInstalled = m_lineInstalled && m_hooksIn && scriptsAreReady();
    return {areInstalled, !areInstalled && (m_lineInstalled || m_hooksIn || m_hooksPartlyIn)};
}

std::string ClaudeHooks::installedText(const std::optional<std::string>& old, std::optional<std::string>& previous,
                                       bool& wasOurs) const {
    // Earlier versions registered the script's bare path.
    const std::vector<std::string> legacyCommands{m_support.pathOf(hookName)};
    const std::string text =
        ClaudeHooksInstaller::installing(old, scriptCommand(hookName), scriptCommand(permissionName), legacyCommands,
                                         HookSet::claude());
    const std::string command = scriptCommand(statusLineName);
    wasOurs = ClaudeStatusLineInstaller::isInstalled(text, command);
    auto installed = ClaudeStatusLineInstaller::installing(text, command);
    previous = std::move(installed.previous);
    return installed.text;
}

void ClaudeHooks::install() {
    const ConfigurationFile settings(m_files, m_settingsFile);
    const auto old = settings.read();
    std::optional<std::string> previous;
    bool wasOurs = false;
    const std::string text = installedText(old, previous, wasOurs);
    throwIfFailed(m_support.create(), m_support.path());
    saveStatusLine(previous, wasOurs);
    writeScripts();
    writeHelper();
    settings.write(text, old);
    m_settingsStat.reset();
}

void ClaudeHooks::saveStatusLine(const std::optional<std::string>& previous, bool wasOurs) const {
    const std::string original = m_support.pathOf(originalName);
    const std::string wrapped = m_support.pathOf(wrappedName);
    if (!previous) {
        if (!wasOurs) {
            m_files.remove(original);
            m_files.remove(wrapped);
        }
        return;
    }
    const WriteOptions options{.mode = SupportDirectory::fileMode, .sync = Sync::yes};
    throwIfFailed(m_files.write(original, *previous, options), original);
    const auto value = Json::parse(*previous);
    const std::string* command = value ? value->stringAt("command") : nullptr;
    if (command) {
        throwIfFailed(m_files.write(wrapped, *command, options), wrapped);
    } else {
        // What an earlier status line had left must not go on running in the place of this one.
        m_files.remove(wrapped);
    }
}

void ClaudeHooks::writeScripts() const {
    for (const char* name : scriptNames) {
        const std::string path = m_support.pathOf(name);
        throwIfFailed(m_files.write(path, std::string(HookScripts::text(name)), {.mode = SupportDirectory::scriptMode}),
                      path);
        throwIfFailed(m_files.setMode(path, SupportDirectory::scriptMode), path);
    }
}

void ClaudeHooks::writeHelper() const {
    constexpr std::size_t largest = std::size_t{64} << 20;
    const ReadResult helper = m_files.read(
        m_helpers + "/" + helperName, {.links = Links::follow, .owners = Owners::anyone, .cap = largest});
    // Without it the status line says less, but the hooks work; so an installation without it is not refused.
    if (helper) {
        std::ignore = m_files.write(m_support.pathOf(helperName), helper.bytes, {.mode = SupportDirectory::scriptMode});
    }
}

void ClaudeHooks::updateScripts() {
    const bool isCurrent = std::ranges::all_of(scriptNames, [this](const char* name) {
        const ReadResult found = m_files.read(m_support.pathOf(name), {});
        return found.error == std::errc::no_such_file_or_directory ||
               (found && found.bytes == HookScripts::text(name));
    });
    if (!isCurrent) {
        for (const char* name : scriptNames) {
            std::ignore = m_files.write(m_support.pathOf(name), std::string(HookScripts::text(name)),
                                        {.mode = SupportDirectory::scriptMode});
        }
        writeHelper();
    }
}

void ClaudeHooks::remove() {
    const ConfigurationFile settings(m_files, m_settingsFile);
    const auto old = settings.read();
    if (!old) {
        return;
    }
    const std::vector<std::string> legacyCommands{m_support.pathOf(hookName)};
    const std::string withoutHooks = ClaudeHooksInstaller::removing(*old, scriptCommand(hookName),
                                                                    scriptCommand(permissionName), legacyCommands);
    const ReadResult original = m_files.read(m_support.pathOf(originalName), {});
    const auto previous = original ? std::optional(original.bytes) : std::nullopt;
    settings.write(ClaudeStatusLineInstaller::removing(withoutHooks, scriptCommand(statusLineName), previous), old);
    m_files.remove(m_support.pathOf(originalName));
    m_files.remove(m_support.pathOf(wrappedName));
    m_settingsStat.reset();
}

} // namespace veslora
