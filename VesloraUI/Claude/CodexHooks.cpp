// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/CodexHooks.h"

#include "VesloraCore/ConfigurationText.h"
#include "VesloraCore/SupportNames.h"
#include "VesloraUI/Claude/ConfigurationFile.h"
#include "VesloraUI/Claude/SupportDirectory.h"

#include <array>
#include <utility>

namespace veslora {

using ClaudeHooksInstaller::HookSet;

namespace {

constexpr std::array scriptNames{SupportNames::codexHook, SupportNames::codexPermission};

} // namespace

CodexHooks::CodexHooks(Files& files, SupportDirectory& support, std::string hooksFile)
    : m_files(files), m_support(support), m_scripts(files, support, scriptNames),
      m_hooksFile(std::move(hooksFile)) {}

ClaudeHooksInstaller::Commands CodexHooks::commands() const {
    return {.event = m_scripts.commandOf(SupportNames::codexHook),
            .permission = m_scripts.commandOf(SupportNames::codexPermission)};
}

void CodexHooks::readHooks() {
    const ReadResult read =
        m_files.read(m_hooksFile, {.links = Links::follow, .cap = ConfigurationFile::cap});
    const auto text = read ? std::optional<std::string_view>(read.bytes) : std::nullopt;
    m_hooksIn = ClaudeHooksInstaller::isInstalled(text, commands(), HookSet::codex());
    m_hooksPartlyIn = ClaudeHooksInstaller::isPartlyInstalled(text, commands(), HookSet::codex());
}

CodexHooks::State CodexHooks::state() {
    const auto found = m_files.stat(m_hooksFile, Links::follow);
    if (!m_isRead || found != m_hooksStat) {
        m_isRead = true;
        m_hooksStat = found;
        readHooks();
    }
    const bool areInstalled = m_hooksIn && m_scripts.areReady();
    return {areInstalled, !areInstalled && (m_hooksIn || m_hooksPartlyIn)};
}

void CodexHooks::install() {
    ConfigurationFile hooks(m_files, m_hooksFile);
    const auto old = hooks.read();
    const std::string text = ClaudeHooksInstaller::installing(old, commands(), HookSet::codex());
    throwIfFailed(m_support.create(), m_support.path());
    m_scripts.write();
    hooks.write(text, old);
    m_isRead = false;
}

bool CodexHooks::remove() {
    ConfigurationFile hooks(m_files, m_hooksFile);
    const auto old = hooks.read();
    if (!old) {
        return false;
    }
    const std::string text = ClaudeHooksInstaller::removing(*old, commands());
    if (ConfigurationText::parseOrThrow(text).members().empty()) {
        hooks.remove();
    } else {
        hooks.write(text, old);
    }
    m_isRead = false;
    return true;
}

} // namespace veslora
