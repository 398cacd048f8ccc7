// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/ConfigurationFile.h"

namespace veslora {

void throwIfFailed(const std::error_code& error, const std::string& path) {
    if (error) {
        throw std::system_error(error, path);
    }
}

ConfigurationFile::ConfigurationFile(Files& files, const std::string& path)
    : m_files(files), m_target(files.resolve(path)) {}

std::optional<std::string> ConfigurationFile::read() {
    m_asRead = m_files.stat(m_target, Links::follow);
    ReadResult result = m_files.read(m_target, {.links = Links::follow, .cap = cap});
    if (result.error == std::errc::no_such_file_or_directory) {
        return std::nullopt;
    }
    throwIfFailed(result.error, m_target);
    return std::move(result.bytes);
}

std::optional<FileStat> ConfigurationFile::unchanged() const {
    const auto found = m_files.stat(m_target, Links::follow);
    if (found != m_asRead) {
        throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again), m_target);
    }
    return found;
}

void ConfigurationFile::write(const std::string& text, const std::optional<std::string>& old) const {
    const auto found = unchanged();
    const auto mode = found ? std::optional(found->mode) : std::nullopt;
    if (old) {
        const std::string backup = m_target + ".veslora-backup";
        throwIfFailed(m_files.write(backup, *old, {.mode = mode, .sync = Sync::yes}), backup);
    }
    const auto slash = m_target.rfind('/');
    constexpr std::uint32_t newDirectoryMode = 0700;
    throwIfFailed(m_files.makeDirectory(m_target.substr(0, slash), newDirectoryMode), m_target);
    throwIfFailed(m_files.write(m_target, text, {.sync = Sync::yes}), m_target);
}

void ConfigurationFile::remove() const {
    unchanged();
    throwIfFailed(m_files.remove(m_target), m_target);
}

} // namespace veslora
