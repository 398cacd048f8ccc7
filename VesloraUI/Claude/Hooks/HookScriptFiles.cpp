// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Hooks/HookScriptFiles.h"

#include "VesloraCore/Agents/Hooks/HookScripts.h"
#include "VesloraCore/Text/ShellQuote.h"
#include "VesloraUI/Claude/Hooks/FileError.h"
#include "VesloraUI/Claude/Spool/SupportDirectory.h"
#include "VesloraUI/Platform/Logs.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace veslora {

HookScriptFiles::HookScriptFiles(const SupportDirectory& support, std::vector<std::string_view> names)
    : m_support(support), m_names(std::move(names)) {}

std::string HookScriptFiles::commandOf(std::string_view name) const {
    return shellQuoted(m_support.pathOf(name));
}

bool HookScriptFiles::areReady() const {
    const OpenedFolder folder = m_support.open();
    return folder && std::ranges::all_of(m_names, [&folder](std::string_view name) {
               return folder->isExecutable(std::string(name));
           });
}

void HookScriptFiles::write() const {
    const OpenedFolder folder = m_support.open();
    FileError::throwIfFailed(folder.error, m_support.path());
    for (const std::string_view name : m_names) {
        FileError::throwIfFailed(writeOne(*folder.folder, name), m_support.pathOf(name));
    }
}

std::error_code HookScriptFiles::writeOne(Folder& folder, std::string_view name) {
    return folder.write(std::string(name), std::string(HookScripts::text(name)),
                        {.mode = SupportDirectory::scriptMode});
}

bool HookScriptFiles::update() const {
    const OpenedFolder folder = m_support.open();
    if (!folder) {
        return false;
    }
    const bool isCurrent = std::ranges::all_of(m_names, [&folder](std::string_view name) {
        const ReadResult found = folder->read(std::string(name), {});
        return found.error == std::errc::no_such_file_or_directory ||
               (found && found.bytes == HookScripts::text(name));
    });
    if (isCurrent) {
        return false;
    }
    for (const std::string_view name : m_names) {
        if (const std::error_code error = writeOne(*folder.folder, name)) {
            qCWarning(Logs::hooks, "can't write %s: %s", m_support.pathOf(name).c_str(),
                      error.message().c_str());
        } else {
            qCInfo(Logs::hooks, "wrote %s again", m_support.pathOf(name).c_str());
        }
    }
    return true;
}

} // namespace veslora
