// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Hooks/CodexHooks.h"

#include "VesloraCore/Agents/Hooks/CodexHookTrust.h"
#include "VesloraUI/Claude/Hooks/ConfigurationFile.h"
#include "VesloraUI/Claude/Hooks/FileError.h"
#include "VesloraUI/Claude/Spool/SupportDirectory.h"

#include <tuple>
#include <utility>

namespace veslora {

using ClaudeHooksInstaller::HookSet;

CodexHooks::CodexHooks(Files& files, SupportDirectory& support, std::string hooksFile)
    : AgentHooks(files, support, std::move(hooksFile), codexHookNames),
      m_trustFile(m_configuration.substr(0, m_configuration.rfind('/')) + "/config.toml") {}

AgentHooks::Found CodexHooks::find(std::optional<std::string_view> text) const {
    const bool areIn = ClaudeHooksInstaller::isInstalled(text, commands(), HookSet::codex());
    const bool areSomeIn = ClaudeHooksInstaller::isPartlyInstalled(text, commands(), HookSet::codex());
    return {.all = areIn, .any = areIn || areSomeIn};
}

void CodexHooks::noteConfiguration(std::optional<std::string_view> text) {
    const auto ours = commands();
    m_places = CodexHookTrust::placesOf(text.value_or(""), {ours.event, ours.permission.value_or("")});
    m_isTrustRead = false;
}

bool CodexHooks::areTrusted() {
    const auto stat = m_files.stat(m_trustFile, Links::follow);
    if (!m_isTrustRead || stat != m_trustStat) {
        m_trustStat = stat;
        m_isTrustRead = true;
        m_areTrusted = readTrust();
    }
    return m_areTrusted;
}

/// A file that can't be read says nothing against the hooks; one that is not there says that nobody was
/// asked.
bool CodexHooks::readTrust() const {
    const ReadResult read =
        m_files.read(m_trustFile, {.links = Links::follow, .cap = ConfigurationFile::cap});
    const bool isMissing = read.error == std::errc::no_such_file_or_directory;
    return (read.error && !isMissing) || CodexHookTrust::namesAll(read.bytes, m_configuration, m_places) ||
           CodexHookTrust::namesAll(read.bytes, m_files.resolve(m_configuration), m_places);
}

void CodexHooks::check() {
    ConfigurationFile hooks(m_files, m_configuration);
    std::ignore = ClaudeHooksInstaller::installing(hooks.read(), commands(), HookSet::codex());
}

void CodexHooks::install() {
    ConfigurationFile hooks(m_files, m_configuration);
    const bool hadOurs = ClaudeHooksInstaller::holdsAny(hooks.read(), commands());
    const std::string text = ClaudeHooksInstaller::installing(hooks.text(), commands(), HookSet::codex());
    FileError::throwIfFailed(m_support.create(), m_support.path());
    m_scripts.write();
    putIn(hooks, text, hadOurs);
}

bool CodexHooks::remove() {
    ConfigurationFile hooks(m_files, m_configuration);
    if (!hooks.read()) {
        return false;
    }
    const bool hadOurs = ClaudeHooksInstaller::holdsAny(hooks.text(), commands());
    takeOut(hooks, ClaudeHooksInstaller::removing(*hooks.text(), commands()), hadOurs);
    return true;
}

} // namespace veslora
