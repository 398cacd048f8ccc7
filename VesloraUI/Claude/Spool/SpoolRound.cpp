// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Spool/SpoolRound.h"

#include "VesloraCore/Text/TerminalText.h"
#include "VesloraUI/Platform/Logs.h"

#include <algorithm>
#include <new>
#include <stdexcept>
#include <string_view>
#include <tuple>
#include <utility>

namespace veslora {

namespace {

constexpr std::string_view suffix = ".json";
constexpr std::string_view leftoverPrefix = "tmp.";

/// Somebody else may have given the file its name.
std::string plain(const std::string& name) {
    constexpr std::size_t longest = 100;
    return TerminalText::withoutControls(name.substr(0, longest));
}

void tellOfReading(const SpoolFile& file) {
    if (file.content.error) {
        qCWarning(Logs::spool, "can't read %s: %s", plain(file.name).c_str(),
                  file.content.error.message().c_str());
    }
}

} // namespace

SpoolRound::SpoolRound(std::unique_ptr<Folder> folder, UnderstandSpoolFile understand, Stuck stuck,
                       std::optional<Timestamp> sweepBefore)
    : m_folder(std::move(folder)), m_understand(std::move(understand)), m_stuck(std::move(stuck)),
      m_sweepBefore(sweepBefore) {}

bool SpoolRound::find(std::size_t most) {
    const auto names = m_folder->listSome(most + 1).value_or(std::vector<std::string>());
    m_isFound = names.size() <= most;
    if (m_isFound) {
        find(names);
    } else {
        qCInfo(Logs::spool, "more than %zu files lie in a spool: they are read aside", most);
    }
    return m_isFound;
}

void SpoolRound::findAll() {
    try {
        m_isFound = true;
        find(m_folder->list().value_or(std::vector<std::string>()));
    } catch (const std::bad_alloc&) {
        qCWarning(Logs::spool, "a spool holds more names than memory");
        // As a folder that can't be listed.
        m_left.clear();
    }
}

void SpoolRound::find(const std::vector<std::string>& names) {
    const Stuck stuckBefore = std::exchange(m_stuck, {});
    for (const std::string& name : names) {
        if (m_isCancelled) {
            return;
        }
        if (!name.ends_with(suffix)) {
            sweep(name);
            continue;
        }
        const auto found = m_folder->stat(name);
        const auto stuck = stuckBefore.find(name);
        if (found && stuck != stuckBefore.end() && stuck->second == found->modifiedNanoseconds) {
            m_stuck.insert(*stuck);
        } else if (found) {
            m_left.push_back({found->modifiedNanoseconds, name, found->modified});
        }
    }
    std::ranges::sort(m_left, {}, [](const Entry& entry) { return std::tie(entry.nanoseconds, entry.name); });
}

void SpoolRound::sweep(const std::string& name) {
    if (!m_sweepBefore || !name.starts_with(leftoverPrefix)) {
        return;
    }
    const auto found = m_folder->stat(name);
    if (found && found->modified < *m_sweepBefore) {
        m_folder->remove(name);
    }
}

void SpoolRound::read(const SpoolPortion& portion) {
    if (!m_isFound) {
        findAll();
    }
    std::size_t bytes = 0;
    for (std::size_t count = 0; count < portion.files && bytes < portion.bytes; ++count) {
        if (m_left.empty() || m_isCancelled) {
            return;
        }
        auto news = understandNext(portion.longest, bytes);
        if (!news) {
            return;
        }
        m_understood.push_back({std::move(m_left.front()), std::move(*news)});
        m_left.pop_front();
    }
}

std::optional<SpoolNews> SpoolRound::understandNext(std::size_t longest, std::size_t& bytes) {
    SpoolFile file{m_left.front().name, m_left.front().time, {}};
    try {
        file.content = m_folder->read(file.name, {.cap = longest});
        bytes += file.content.bytes.size();
        if (file.content.error == std::errc::file_too_large && longest < payloadCap) {
            return std::nullopt;
        }
        // Somebody else took it, and knows what it said.
        if (file.content.error == std::errc::no_such_file_or_directory) {
            return SpoolNews();
        }
        tellOfReading(file);
        return m_understand(file);
    } catch (const std::bad_alloc&) {
        // As below.
    } catch (const std::length_error&) {
        // A file that asks for more memory than there is ends nothing but itself.
    }
    file.content = {{}, std::make_error_code(std::errc::not_enough_memory)};
    tellOfReading(file);
    return m_understand(file);
}

void SpoolRound::takeIn() {
    for (const Understood& understood : std::exchange(m_understood, {})) {
        if (understood.news) {
            understood.news();
        }
        const std::error_code error = m_folder->remove(understood.entry.name);
        if (error && error != std::errc::no_such_file_or_directory) {
            qCWarning(Logs::spool, "can't remove %s: %s", plain(understood.entry.name).c_str(),
                      error.message().c_str());
            m_stuck[understood.entry.name] = understood.entry.nanoseconds;
        }
    }
}

} // namespace veslora
