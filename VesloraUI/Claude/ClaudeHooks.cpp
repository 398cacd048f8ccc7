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
    const std::string original = m_support.pathOf(SupportNames::statusLineOriginal);
    const std::string wrapped = m_support.pathOf(SupportNames::statusLineWrapped);
    if (!previous) {
        if (!wasOurs) {
            m_files.remove(original);
            m_files.remove(wrapped);
        }
        return;
    }
    const WriteOptions options{.mode = SupportDirectory::fileMode, .sync = Sync::yes};
    throwIfFailed(m_files.write(original, *previous, options), original);
    if (const auto command = ClaudeStatusLineInstaller::commandOf(*previous)) {
        throwIfFailed(m_files.write(wrapped, *command, options), wrapped);
    } else {
        // What an earlier status line had left must not go on running in the place of this one.
        m_files.remove(wrapped);
    }
}

void ClaudeHooks::writeHelper() const {
    constexpr std::size_t largest = std::size_t{64} << 20;
    const ReadResult helper =
        m_files.read(m_helpers + "/" + std::string(SupportNames::jsonValue),
                     {.links = Links::follow, .owners = Owners::anyone, .cap = largest});
    // Without it the status line says less, but the hooks work; so an installation without it is not refused.
    if (helper) {
        std::ignore = m_files.write(m_support.pathOf(SupportNames::jsonValue), helper.bytes,
                                    {.mode = SupportDirectory::scriptMode});
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
    const ReadResult original = m_files.read(m_support.pathOf(SupportNames::statusLineOriginal), {});
    const auto previous = original ? std::optional<std::string_view>(original.bytes) : std::nullopt;
    settings.write(ClaudeStatusLineInstaller::removing(
                       withoutHooks, m_scripts.commandOf(SupportNames::claudeStatusLine), previous),
                   old);
    m_files.remove(m_support.pathOf(SupportNames::statusLineOriginal));
    m_files.remove(m_support.pathOf(SupportNames::statusLineWrapped));
    forgetConfiguration();
    return true;
}

} // namespace veslora
