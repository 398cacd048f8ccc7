// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/XdgAutostart.h"

#include "VesloraLinux/System/AutostartEntry.h"
#include "VesloraUI/Platform/Files.h"

#include <algorithm>
#include <utility>

namespace veslora {
namespace {

constexpr std::size_t cap = std::size_t{64} << 10;
const std::string name = "/autostart/org.veslora.Veslora.desktop";

/// The text of an entry, nothing for one that is not there.
struct Entry {
    std::optional<std::string> text;
    std::error_code error;
};

Entry read(Files& files, const std::string& path, Owners owners) {
    ReadResult result = files.read(path, {.links = Links::follow, .owners = owners, .cap = cap});
    if (result.error == std::errc::no_such_file_or_directory) {
        return {};
    }
    return result ? Entry{std::move(result.bytes), {}} : Entry{{}, result.error};
}

} // namespace

XdgAutostart::XdgAutostart(Files& files, Surroundings surroundings)
    : m_files(files), m_surroundings(std::move(surroundings)) {}

std::string XdgAutostart::place() const {
    return m_surroundings.configuration + name;
}

std::optional<std::string> XdgAutostart::systemsEntry() const {
    for (const std::string& folder : m_surroundings.systemWide) {
        if (auto entry = read(m_files, folder + name, Owners::anyone).text) {
            return entry;
        }
    }
    return std::nullopt;
}

bool XdgAutostart::starts(const std::string& entry) const {
    const std::string program = AutostartEntry::programOf(entry);
    if (!AutostartEntry::isOn(entry, m_surroundings.desktops)) {
        return false;
    }
    if (program.find('/') != std::string::npos) {
        return m_files.isExecutable(program);
    }
    return std::ranges::any_of(m_surroundings.executables, [&](const std::string& folder) {
        return m_files.isExecutable(folder + "/" + program);
    });
}

bool XdgAutostart::isEnabled() {
    const Entry users = read(m_files, place(), Owners::ours);
    if (users.error) {
        return false;
    }
    const auto entry = users.text ? users.text : systemsEntry();
    return entry && starts(*entry);
}

std::error_code XdgAutostart::enable() {
    const Entry users = read(m_files, place(), Owners::ours);
    if (users.error || isEnabled()) {
        return users.error;
    }
    const std::string executable = program();
    return put(users.text, users.text ? AutostartEntry::turnedOn(*users.text, executable)
                                      : AutostartEntry::make(executable));
}

std::error_code XdgAutostart::disable() {
    const Entry users = read(m_files, place(), Owners::ours);
    if (users.error || !isEnabled()) {
        return users.error;
    }
    const auto systems = systemsEntry();
    if (!systems && users.text == AutostartEntry::make(program())) {
        return m_files.removeIfUnchanged(m_files.resolve(place()), *users.text);
    }
    // Another program may have taken either away since it was found to start something.
    return put(users.text, AutostartEntry::turnedOff(users.text.value_or(systems.value_or(""))));
}

std::string XdgAutostart::program() const {
    const std::string& own = m_surroundings.executable;
    for (const std::string& folder : m_surroundings.executables) {
        std::string path = folder + own.substr(own.rfind('/'));
        if (m_files.resolve(path) == own) {
            return path;
        }
    }
    return own;
}

std::error_code XdgAutostart::put(const std::optional<std::string>& before, const std::string& entry) {
    constexpr std::uint32_t mode = 0700;
    const std::string path = m_files.resolve(place());
    if (const auto error = m_files.makeDirectory(path.substr(0, path.rfind('/')), mode)) {
        return error;
    }
    return m_files.replaceIfUnchanged(path, before, entry);
}

} // namespace veslora
