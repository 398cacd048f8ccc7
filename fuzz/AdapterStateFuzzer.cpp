// SPDX-License-Identifier: MIT
// The media adapter's stream. The first byte says how it is cut into pieces, which must make no difference to
// its lines. A line that is refused changes nothing, and whatever was taken can be read.
#include "VesloraCore/Music/AdapterState.h"
#include "VesloraCore/Music/LineBuffer.h"
#include "VesloraCore/Music/OrphanedAdapters.h"
#include "VesloraCore/Text/Utf8.h"
#include "fuzz/Fuzzing.h"

#include <algorithm>
#include <cmath>

using namespace veslora;
using fuzz::require;

namespace {

constexpr std::size_t limit = 4096;

std::vector<std::string> linesOf(std::string_view stream, std::size_t piece) {
    LineBuffer buffer(limit);
    std::vector<std::string> lines;
    while (!stream.empty()) {
        for (std::string& line : buffer.append(stream.substr(0, piece))) {
            lines.push_back(std::move(line));
        }
        stream.remove_prefix(std::min(piece, stream.size()));
    }
    return lines;
}

void checkReads(const AdapterState& state) {
    constexpr Timestamp now = 1'800'000'000;
    if (const auto track = state.nowPlaying(now)) {
        require(!track->title.empty());
        require(std::isfinite(track->duration) && std::isfinite(track->position) &&
                std::isfinite(track->readAt));
        require(track->source.isSpotify() == state.isOfSpotify());
    }
    const auto artwork = state.artwork();
    require(!artwork || artwork->size() / 3 <= state.artworkText()->size() / 4);
    static_cast<void>(state.controls());
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string_view stream = fuzz::textOf(data + 1, size - 1);
    const std::vector<std::string> lines = linesOf(stream, stream.size() + 1);
    require(lines == linesOf(stream, std::size_t{data[0]} + 1));
    AdapterState state;
    for (const std::string& line : lines) {
        require(Utf8::isValid(line) && line.find('\n') == std::string::npos);
        const AdapterState before = state;
        require(state.apply(line) || state == before);
        require(state.payload.isObject());
        checkReads(state);
    }
    for (const std::int32_t pid : orphanedAdapters(stream, "/a")) {
        require(pid > 0);
    }
    return 0;
}
