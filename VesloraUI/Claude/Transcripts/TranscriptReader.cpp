// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Transcripts/TranscriptReader.h"

#include "VesloraCore/Text/ByteSearch.h"
#include "VesloraCore/Text/Utf8.h"

#include <algorithm>
#include <cstring>

namespace veslora {

namespace {

// Small enough to lie in the processor's cache between reading and searching.
constexpr std::size_t chunk = std::size_t{256} << 10;

void handOver(std::string_view line, const TranscriptReader::OnLine& onLine) {
    if (Utf8::isValid(line)) {
        onLine(line);
    } else {
        onLine(Utf8::repaired(line));
    }
}

void list(Files& files, const std::string& folder, Timestamp since, int level, TranscriptListing& found) {
    found.directories.push_back(folder);
    for (const std::string& name : files.list(folder).value_or(std::vector<std::string>())) {
        const std::string path = folder + "/" + name;
        const auto stat = name.starts_with('.') ? std::nullopt : files.stat(path, Links::refuse);
        if (stat && stat->isDirectory && level + 1 < TranscriptReader::deepestLevel) {
            list(files, path, since, level + 1, found);
        } else if (stat && TranscriptReader::isTranscript(name, *stat, since)) {
            found.transcripts.push_back({path, *stat});
        }
    }
}

} // namespace

TranscriptReader::TranscriptReader(Files& files, std::vector<std::string_view> markers,
                                   const std::atomic<bool>* isCancelled)
    : m_files(files), m_markers(std::move(markers)), m_isCancelled(isCancelled) {}

TranscriptListing TranscriptReader::transcripts(Files& files, const std::string& folder, Timestamp since,
                                                int level) {
    TranscriptListing found;
    list(files, folder, since, level, found);
    std::ranges::sort(found.transcripts, {}, &Transcript::path);
    return found;
}

std::optional<TranscriptPosition> TranscriptReader::usageLines(const std::string& path,
                                                               const std::optional<TranscriptPosition>& from,
                                                               const OnLine& onLine) {
    m_file = m_files.open(path);
    const auto stat = m_file ? m_file->stat() : std::nullopt;
    if (!stat) {
        return std::nullopt;
    }
    const auto size = static_cast<std::uint64_t>(std::max<std::int64_t>(stat->size, 0));
    const bool isSameFile = from && (!from->file || from->file == stat->inode);
    std::uint64_t offset = isSameFile ? from->offset : 0;
    if (offset > size) {
        offset = 0;
    }
    if (offset < size) {
        // A little growth needs little room.
        m_buffer.resize(std::max(m_buffer.size(),
                                 static_cast<std::size_t>(std::min<std::uint64_t>(chunk, size - offset))));
        offset = readFrom(offset, size, onLine);
    }
    m_file.reset();
    return TranscriptPosition{offset, stat->inode};
}

/// Reads behind the first `place` bytes of the buffer what is at `offset`. How many bytes there were.
std::size_t TranscriptReader::readInto(std::size_t place, std::uint64_t offset, std::uint64_t size) {
    if (offset >= size || (m_isCancelled != nullptr && m_isCancelled->load(std::memory_order_relaxed))) {
        return 0;
    }
    const auto wanted =
        static_cast<std::size_t>(std::min<std::uint64_t>(m_buffer.size() - place, size - offset));
    return m_file->read(m_buffer.data() + place, wanted, offset);
}

/// Takes the whole lines of [offset, size). Where the first one begins that has no end yet.
std::uint64_t TranscriptReader::readFrom(std::uint64_t offset, std::uint64_t size, const OnLine& onLine) {
    std::size_t carry = 0; // bytes of a line that began before, at the front of the buffer
    while (const std::size_t count = readInto(carry, offset + carry, size)) {
        const std::string_view text(m_buffer.data(), carry + count);
        const std::size_t end = ByteSearch::findLast(text, '\n', text.size());
        if (end != std::string_view::npos) {
            takeLines(text.substr(0, end), onLine);
            offset += end + 1;
            carry = text.size() - end - 1;
            std::memmove(m_buffer.data(), m_buffer.data() + end + 1, carry);
        } else if (carry += count; carry == m_buffer.size()) {
            const auto line = stepOverLongLine(offset, size);
            if (!line) {
                break;
            }
            takeLongLine(offset, *line, onLine);
            offset = line->end;
            carry = 0;
        }
    }
    return offset;
}

/// A line that is longer than the buffer, which it fills: looks for its end and for a marker without keeping
/// any of it. Nothing when it has no end yet.
std::optional<TranscriptReader::LongLine> TranscriptReader::stepOverLongLine(std::uint64_t start,
                                                                             std::uint64_t size) {
    std::size_t overlap = 0; // so many bytes that a marker across two reads is found
    for (const std::string_view marker : m_markers) {
        overlap = std::max(overlap, marker.size() - 1);
    }
    overlap = std::min(overlap, m_buffer.size() / 2);
    LongLine line;
    std::size_t length = m_buffer.size();
    std::uint64_t offset = start + length;
    line.isOfInterest = holdsMarker({m_buffer.data(), length});
    while (true) {
        std::memmove(m_buffer.data(), m_buffer.data() + length - overlap, overlap);
        const std::size_t count = readInto(overlap, offset, size);
        if (count == 0) {
            return std::nullopt;
        }
        const std::string_view text(m_buffer.data(), overlap + count);
        const std::size_t end = text.find('\n', overlap);
        line.isOfInterest = line.isOfInterest || holdsMarker(text.substr(0, end));
        if (end != std::string_view::npos) {
            line.end = offset + (end - overlap) + 1;
            return line;
        }
        length = text.size();
        offset += count;
    }
}

void TranscriptReader::takeLongLine(std::uint64_t start, const LongLine& line, const OnLine& onLine) {
    const std::uint64_t length = line.end - 1 - start;
    if (!line.isOfInterest || length > longestLine) {
        return;
    }
    std::string text(static_cast<std::size_t>(length), '\0');
    std::size_t got = 0;
    while (const std::size_t count = m_file->read(text.data() + got, text.size() - got, start + got)) {
        got += count;
    }
    if (got == text.size()) {
        handOver(text, onLine);
    }
}

/// `lines` ends where its last line does, before the line end.
void TranscriptReader::takeLines(std::string_view lines, const OnLine& onLine) const {
    std::vector<std::size_t> found(m_markers.size(), 0);
    std::size_t at = 0;
    while ((at = nextMarker(lines, at, found)) != std::string_view::npos) {
        const std::size_t before = ByteSearch::findLast(lines, '\n', at);
        const std::size_t start = before == std::string_view::npos ? 0 : before + 1;
        const std::size_t end = std::min(lines.find('\n', at), lines.size());
        handOver(lines.substr(start, end - start), onLine);
        at = end;
    }
}

/// The first place of any marker at or after `from`. `found` remembers where each of them was last seen.
std::size_t TranscriptReader::nextMarker(std::string_view bytes, std::size_t from,
                                         std::vector<std::size_t>& found) const {
    std::size_t nearest = std::string_view::npos;
    for (std::size_t i = 0; i < m_markers.size(); ++i) {
        if (found[i] != std::string_view::npos && (found[i] < from || from == 0)) {
            found[i] = ByteSearch::find(bytes, m_markers[i], from);
        }
        nearest = std::min(nearest, found[i]);
    }
    return nearest;
}

bool TranscriptReader::holdsMarker(std::string_view bytes) const {
    return std::ranges::any_of(m_markers, [bytes](std::string_view marker) {
        return ByteSearch::find(bytes, marker) != std::string_view::npos;
    });
}

} // namespace veslora
