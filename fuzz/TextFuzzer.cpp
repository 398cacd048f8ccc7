// SPDX-License-Identifier: MIT
// The small readers of dates, addresses and players' names.
#include "VesloraCore/Metronome/TimeSignature.h"
#include "VesloraCore/Music/NowPlaying.h"
#include "VesloraCore/Text/Iso8601.h"
#include "VesloraCore/Text/UrlText.h"
#include "fuzz/Fuzzing.h"

#include <algorithm>
#include <cmath>

using namespace veslora;
using fuzz::require;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = fuzz::textOf(data, size);
    if (const auto time = Iso8601::parse(text)) {
        require(std::isfinite(*time));
    }
    const std::string_view host = UrlText::host(text);
    require(host.empty() || text.find(host) != std::string_view::npos);
    const MusicSource source = MusicSource::from(text);
    require(source.isSpotify() || std::get<MusicSource::App>(source.kind).bundleID == text);
    const auto signature = TimeSignature::fromStoredValue(text);
    require(std::find(TimeSignature::all.begin(), TimeSignature::all.end(), signature) !=
            TimeSignature::all.end());
    return 0;
}
