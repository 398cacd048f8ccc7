// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Hooks/ConfigurationFile.h"

#include "VesloraUI/Claude/Hooks/FileError.h"

namespace veslora {

ConfigurationFile::ConfigurationFile(Files& files, const std::string& path)
    : m_files(files), m_target(files.resolve(path)) {}

const std::optional<std::string>& ConfigurationFile::read() {
    ReadResult result = m_files.read(m_target, {.links = Links::refuse, .cap = cap});
    if (result.error == std::errc::no_such_file_or_directory) {
        m_text.reset();
    } else {
        FileError::throwIfFailed(result.error, m_target, FileError::Action::reading);
        m_text = std::move(result.bytes);
    }
    return m_text;
}

void ConfigurationFile::backUp() const {
    constexpr std::uint32_t forUserAlone = 0700;
    const auto found = m_files.stat(m_target, Links::refuse);
    // The access list is not copied, so what it gives to others must not fall to the group.
    const std::uint32_t mode = found ? found->mode & forUserAlone : std::uint32_t{0600};
    const std::string backup = m_target + ".veslora-backup";
    FileError::throwIfFailed(m_files.write(backup, *m_text, {.mode = mode, .sync = Sync::yes}), backup);
}

void ConfigurationFile::sweep() {
    m_files.sweepLeftovers(m_target);
}

void ConfigurationFile::write(const std::string& text) {
    const std::string folder = m_target.substr(0, m_target.rfind('/'));
    constexpr std::uint32_t newDirectoryMode = 0700;
    FileError::throwIfFailed(m_files.makeDirectory(folder, newDirectoryMode), folder);
    sweep();
    FileError::throwIfFailed(m_files.replaceIfUnchanged(m_target, m_text, text), m_target);
    m_text = text;
}

void ConfigurationFile::remove() {
    sweep();
    FileError::throwIfFailed(m_files.removeIfUnchanged(m_target, *m_text), m_target);
    m_text.reset();
}

} // namespace veslora
