// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Hooks/ClaudeHooks.h"

#include "VesloraCore/Agents/Hooks/SupportNames.h"
#include "VesloraUI/Claude/Hooks/ConfigurationFile.h"
#include "VesloraUI/Claude/Hooks/FileError.h"
#include "VesloraUI/Claude/Spool/SupportDirectory.h"
#include "VesloraUI/Platform/Logs.h"

#include <tuple>
#include <utility>

namespace veslora {

using ClaudeHooksInstaller::HookSet;

ClaudeHooks::ClaudeHooks(Files& files, SupportDirectory& support, std::string settingsFile,
                         std::string helpers)
    : AgentHooks(files, support, std::move(settingsFile), claudeHookNames, {SupportNames::claudeStatusLine}),
      m_helpers(std::move(helpers)) {}

ClaudeHooksInstaller::Commands ClaudeHooks::commands() const {
    ClaudeHooksInstaller::Commands commands = AgentHooks::commands();
    // Earlier versions registered the event script's bare path.
    commands.legacy = {m_support.pathOf(claudeHookNames.event)};
    return commands;
}

AgentHooks::Found ClaudeHooks::find(std::optional<std::string_view> text) const {
    const bool isLineIn =
        ClaudeStatusLineInstaller::isInstalled(text, m_scripts.commandOf(SupportNames::claudeStatusLine));
    const bool areHooksIn = ClaudeHooksInstaller::isInstalled(text, commands(), HookSet::claude());
    const bool areSomeIn = ClaudeHooksInstaller::isPartlyInstalled(text, commands(), HookSet::claude());
    return {.all = isLineIn && areHooksIn, .any = isLineIn || areHooksIn || areSomeIn};
}

bool ClaudeHooks::holdsOurs(const std::optional<std::string>& text) const {
    return ClaudeHooksInstaller::holdsAny(text, commands()) ||
           ClaudeStatusLineInstaller::isInstalled(text, m_scripts.commandOf(SupportNames::claudeStatusLine));
}

ClaudeStatusLineInstaller::Installed ClaudeHooks::installing(const std::optional<std::string>& text) const {
    return ClaudeStatusLineInstaller::installing(
        ClaudeHooksInstaller::installing(text, commands(), HookSet::claude()),
        m_scripts.commandOf(SupportNames::claudeStatusLine));
}

void ClaudeHooks::check() {
    ConfigurationFile settings(m_files, m_configuration);
    std::ignore = installing(settings.read());
}

void ClaudeHooks::install() {
    ConfigurationFile settings(m_files, m_configuration);
    const std::string lineCommand = m_scripts.commandOf(SupportNames::claudeStatusLine);
    const bool hadOurs = holdsOurs(settings.read());
    const bool hadLine = ClaudeStatusLineInstaller::isInstalled(settings.text(), lineCommand);
    const auto installed = installing(settings.text());
    FileError::throwIfFailed(m_support.create(), m_support.path());
    saveStatusLine(installed.previous, hadLine);
    m_scripts.write();
    writeHelper();
    putIn(settings, installed.text, hadOurs);
}

void ClaudeHooks::saveStatusLine(const std::optional<std::string>& previous, bool wasOurs) const {
    const OpenedFolder folder = m_support.open();
    FileError::throwIfFailed(folder.error, m_support.path());
    const std::string original(SupportNames::statusLineOriginal);
    const std::string wrapped(SupportNames::statusLineWrapped);
    if (!previous) {
        if (!wasOurs) {
            folder->remove(original);
            folder->remove(wrapped);
        }
        return;
    }
    const WriteOptions options{.mode = SupportDirectory::fileMode, .sync = Sync::yes};
    FileError::throwIfFailed(folder->write(original, *previous, options), m_support.pathOf(original));
    if (const auto command = ClaudeStatusLineInstaller::commandOf(*previous)) {
        FileError::throwIfFailed(folder->write(wrapped, *command, options), m_support.pathOf(wrapped));
    } else {
        // What an earlier status line had left must not go on running in the place of this one.
        folder->remove(wrapped);
    }
}

void ClaudeHooks::writeHelper() const {
    constexpr std::size_t largest = std::size_t{64} << 20;
    const std::string name(SupportNames::jsonValue);
    const ReadResult helper = m_files.read(
        m_helpers + "/" + name, {.links = Links::follow, .owners = Owners::anyone, .cap = largest});
    const OpenedFolder folder = m_support.open();
    // Without it the status line says less, but the hooks work; so an installation without it is not refused.
    std::error_code error = helper ? folder.error : helper.error;
    if (!error) {
        error = folder->write(name, helper.bytes, {.mode = SupportDirectory::scriptMode});
    }
    if (error) {
        qCWarning(Logs::hooks, "can't bring %s from %s: %s", name.c_str(), m_helpers.c_str(),
                  error.message().c_str());
    }
}

void ClaudeHooks::updateScripts() {
    if (m_scripts.update()) {
        writeHelper();
    }
}

std::optional<std::string> ClaudeHooks::savedStatusLine(const OpenedFolder& folder) const {
    ReadResult saved = folder ? folder->read(std::string(SupportNames::statusLineOriginal), {})
                              : ReadResult{{}, folder.error};
    if (saved.error == std::errc::no_such_file_or_directory) {
        return std::nullopt;
    }
    // One that is there but can't be read now must not be taken for none: it would be lost.
    FileError::throwIfFailed(saved.error, m_support.pathOf(SupportNames::statusLineOriginal),
                             FileError::Action::reading);
    return std::move(saved.bytes);
}

bool ClaudeHooks::remove() {
    ConfigurationFile settings(m_files, m_configuration);
    if (!settings.read()) {
        return false;
    }
    const std::string withoutHooks = ClaudeHooksInstaller::removing(*settings.text(), commands());
    const OpenedFolder folder = m_support.open();
    const auto previous = savedStatusLine(folder);
    takeOut(settings,
            ClaudeStatusLineInstaller::removing(
                withoutHooks, m_scripts.commandOf(SupportNames::claudeStatusLine), previous),
            holdsOurs(settings.text()));
    if (folder) {
        folder->remove(std::string(SupportNames::statusLineOriginal));
        folder->remove(std::string(SupportNames::statusLineWrapped));
    }
    return true;
}

} // namespace veslora
