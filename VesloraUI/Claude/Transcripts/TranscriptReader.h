// SPDX-License-Identifier: MIT
// Finds the agents' transcripts and reads on in them from where it stopped before. A transcript is a file of
// lines, some of megabytes, to which its agent appends; only the few lines that hold a marker are of
// interest. Nothing here touches shared state: a reader may be made and used on any thread.
#pragma once

#include "VesloraUI/Platform/Files.h"

#include <atomic>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veslora {

/// How far a transcript was read.
struct TranscriptPosition {
    std::uint64_t offset = 0;          ///< bytes; everything before it was taken as whole lines
    std::optional<std::uint64_t> file; ///< the inode that the offset belongs to
    bool operator==(const TranscriptPosition&) const = default;
};

struct Transcript {
    std::string path;
    FileStat stat;
};

/// What a look at a folder of transcripts found.
struct TranscriptListing {
    std::vector<std::string> directories; ///< the folder itself and every one in it that may hold transcripts
    std::vector<Transcript> transcripts;  ///< sorted by path
};

class TranscriptReader {
  public:
    /// Files lie at most that deep: 1 is directly in the folder.
    static constexpr int deepestLevel = 5;
    /// A longer line is passed over: nothing that an agent counts is told in so many bytes.
    static constexpr std::uint64_t longestLine = std::uint64_t{64} << 20;

    using OnLine = std::function<void(std::string_view line)>;

    /// `markers` are at least two bytes each; a line without any of them is of no interest. `isCancelled`, if
    /// given, ends a reading early once it is set; the position then stays behind.
    TranscriptReader(Files& files, std::vector<std::string_view> markers,
                     const std::atomic<bool>* isCancelled = nullptr);

    /// Whether a file of that name, or path, can be a transcript.
    [[nodiscard]] static bool isTranscriptName(std::string_view name) { return name.ends_with(".jsonl"); }
    /// A transcript that was changed at or after `since`, given its stat, links refused.
    [[nodiscard]] static bool isTranscript(std::string_view name, const FileStat& stat, Timestamp since) {
        return isTranscriptName(name) && stat.isOurFile() && stat.modified >= since;
    }

    /// The transcripts below `folder`, which lies `level` levels below the outermost one, and
    /// were changed at or after `since`. Hidden names, links and what can't be listed are passed over.
    [[nodiscard]] static TranscriptListing transcripts(Files& files, const std::string& folder,
                                                       Timestamp since, int level = 0);

    /// Calls `onLine` with each whole line of interest after `from`, as valid UTF-8 without its line end. A
    /// file that was replaced or cut is read from its start. A last line without its end is left for the next
    /// time. Gives the new position, or nothing if the file can't be opened.
    [[nodiscard]] std::optional<TranscriptPosition>
    usageLines(const std::string& path, const std::optional<TranscriptPosition>& from, const OnLine& onLine);

  private:
    struct LongLine {
        std::uint64_t end = 0; ///< just after its line end
        bool isOfInterest = false;
    };
    [[nodiscard]] std::uint64_t readFrom(std::uint64_t offset, std::uint64_t size, const OnLine& onLine);
    [[nodiscard]] std::optional<LongLine> stepOverLongLine(std::uint64_t start, std::uint64_t size);
    void takeLongLine(std::uint64_t start, const LongLine& line, const OnLine& onLine);
    void takeLines(std::string_view lines, const OnLine& onLine) const;
    [[nodiscard]] std::size_t nextMarker(std::string_view bytes, std::size_t from,
                                         std::vector<std::size_t>& found) const;
    [[nodiscard]] bool holdsMarker(std::string_view bytes) const;
    [[nodiscard]] std::size_t readInto(std::size_t place, std::uint64_t offset, std::uint64_t size);

    Files& m_files;
    std::vector<std::string_view> m_markers;
    const std::atomic<bool>* m_isCancelled;
    std::unique_ptr<FileReader> m_file;
    std::vector<char> m_buffer;
};

} // namespace veslora
