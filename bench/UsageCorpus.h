// SPDX-License-Identifier: MIT
// Makes transcripts of the shape that those of a heavy user have: few large ones, most bytes in lines that
// don't tell of usage, several lines for one message.
#pragma once

#include "VesloraCore/Agents/Usage/ClaudeTokenTotals.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace veslora::bench {

struct CorpusShape {
    std::size_t files = 3142;
    double todayShare = 1;          ///< of the files; the others were last written on earlier days
    bool doRepeatsAgree = false;    ///< whether all lines of a message tell the same counts
    std::uint64_t bytesPerFile = 0; ///< the same for all; 0 for sizes as they are in the wild
};

struct Corpus {
    std::vector<std::string> files;
    std::vector<std::string> todayFiles;
    std::uint64_t bytes = 0;
    std::uint64_t todayBytes = 0;
    ClaudeTokenTotals today; ///< by the last line of each message
};

/// Writes below `projects`, in UTC days; the same shape gives the same bytes but for the dates.
[[nodiscard]] Corpus makeCorpus(const std::string& projects, const CorpusShape& shape);

/// Sets which files were written today, without writing any of them.
void touch(Corpus& corpus, double todayShare);

/// A line that counts `output` tokens of a message of its own, dated now.
[[nodiscard]] std::string freshLine(const std::string& message, std::int64_t output);

/// Takes files out of the page cache. False where the system does not let us.
bool evict(const std::vector<std::string>& files);

} // namespace veslora::bench
