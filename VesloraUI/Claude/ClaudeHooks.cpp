// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/ClaudeHooks.h"

#include "VesloraCore/ClaudeStatusLineInstaller.h"
#include "VesloraCore/SupportNames.h"
#include "VesloraUI/Claude/ConfigurationFile.h"
#include "VesloraUI/Claude/SupportDirectory.h"

#include <array>
#include <tuple>
#include <utility>

namespace veslora {

using ClaudeHooksInstaller::HookSet;

namespace {

constexpr std::array scriptNames{SupportNames::claudeHook, SupportNames::claudePermission,
                                 SupportNames::claudeStatusLine};

} // namespace

ClaudeHooks::ClaudeHooks(Files& files, SupportDirectory& support, std::string settingsFile,
                         std::string helpers)
    : AgentHooks(files, support, std::move(settingsFile), scriptNames), m_helpers(std::move(helpers)) {}

ClaudeHooksInstaller::Commands ClaudeHooks::commands() const {
    // Earlier versions registered the event script's bare path.
    return {.event = m_scripts.commandOf(SupportNames::claudeHook),
            .permission = m_scripts.commandOf(SupportNames::claudePermission),
            .legacy = {m_support.pathOf(SupportNames::claudeHook)}};
}

AgentHooks::Found ClaudeHooks::find(std::optional<std::string_view> text) const {
    const bool isLineIn =
        ClaudeStatusLineInstaller::isInstalled(text, m_scripts.commandOf(SupportNames::claudeStatusLine));
    const bool areHooksIn = ClaudeHooksInstaller::isInstalled(text, commands(), HookSet::claude());
    const bool areSomeIn = ClaudeHooksInstaller::isPartlyInstalled(text, commands(), HookSet::claude());
    return {.all = isLineIn && areHooksIn, .any = isLineIn || areHooksIn || areSomeIn};
}

void ClaudeHooks::install() {
    ConfigurationFile settings(m_files, m_configuration);
    const auto old = settings.read();
    const std::string withHooks = ClaudeHooksInstaller::installing(old, commands(), HookSet::claude());
    const std::string lineCommand = m_scripts.commandOf(SupportNames::claudeStatusLine);
    const bool wasOurs = ClaudeStatusLineInstaller::isInstalled(withHooks, lineCommand);
    const auto installed = ClaudeStatusLineInstaller::installing(withHooks, lineCommand);
    throwIfFailed(m_support.create(), m_support.path());
    saveStatusLine(installed.previous, wasOurs);
    m_scripts.write();
    writeHelper();
    settings.write(installed.text, old);
    forgetConfiguration();
}

void ClaudeHooks::saveStatusLine(const std::optional<std::string>& previous, bool wasOurs) const {
    const OpenedFolder folder = m_support.open();
    throwIfFailed(folder.error, m_support.path());
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
    throwIfFailed(folder->write(original, *previous, options), m_support.pathOf(original));
    if (const auto command = ClaudeStatusLineInstaller::commandOf(*previous)) {
        throwIfFailed(folder->write(wrapped, *command, options), m_support.pathOf(wrapped));
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
    if (helper && folder) {
        std::ignore = folder->write(name, helper.bytes, {.mode = SupportDirectory::scriptMode});
    }
}

void ClaudeHooks::updateScripts() {
    if (m_scripts.update()) {
        writeHelper();
    }
}

bool ClaudeHooks::remove() {
    ConfigurationFile settings(m_files, m_configuration);
    const auto old = settings.read();
    if (!old) {
        return false;
    }
    const std::string withoutHooks = ClaudeHooksInstaller::removing(*old, commands());
    const OpenedFolder folder = m_support.open();
    const ReadResult original = folder ? folder->read(std::string(SupportNames::statusLineOriginal), {})
                                       : ReadResult{{}, folder.error};
    const auto previous = original ? std::optional<std::string_view>(original.bytes) : std::nullopt;
    settings.write(ClaudeStatusLineInstaller::removing(
                       withoutHooks, m_scripts.commandOf(SupportNames::claudeStatusLine), previous),
                   old);
    if (folder) {
        folder->remove(std::string(SupportNames::statusLineOriginal));
        folder->remove(std::string(SupportNames::statusLineWrapped));
    }
    forgetConfiguration();
    return true;
}

} // namespace veslora
