// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/HookScriptFiles.h"

#include "VesloraCore/HookScripts.h"
#include "VesloraCore/ShellQuote.h"
#include "VesloraUI/Claude/ConfigurationFile.h"
#include "VesloraUI/Claude/SupportDirectory.h"

#include <algorithm>
#include <tuple>

namespace veslora {

HookScriptFiles::HookScriptFiles(Files& files, SupportDirectory& support,
                                 std::span<const std::string_view> names)
    : m_files(files), m_support(support), m_names(names) {}

std::string HookScriptFiles::commandOf(std::string_view name) const {
    return shellQuoted(m_support.pathOf(name));
}

bool HookScriptFiles::areReady() const {
    return std::ranges::all_of(
        m_names, [this](std::string_view name) { return m_files.isExecutable(m_support.pathOf(name)); });
}

void HookScriptFiles::write() const {
    for (const std::string_view name : m_names) {
        const std::string path = m_support.pathOf(name);
        throwIfFailed(
            m_files.write(path, std::string(HookScripts::text(name)), {.mode = SupportDirectory::scriptMode}),
            path);
        throwIfFailed(m_files.setMode(path, SupportDirectory::scriptMode), path);
    }
}

bool HookScriptFiles::update() const {
    const bool isCurrent = std::ranges::all_of(m_names, [this](std::string_view name) {
        const ReadResult found = m_files.read(m_support.pathOf(name), {});
        return found.error == std::errc::no_such_file_or_directory ||
               (found && found.bytes == HookScripts::text(name));
    });
    if (isCurrent) {
        return false;
    }
    for (const std::string_view name : m_names) {
        std::ignore = m_files.write(m_support.pathOf(name), std::string(HookScripts::text(name)),
                                    {.mode = SupportDirectory::scriptMode});
    }
    return true;
}

} // namespace veslora
