// SPDX-License-Identifier: MIT
#include "VesloraCore/ByteSearch.h"

#include "VesloraCore/ByteBlock.h"

namespace veslora::ByteSearch {

// OPTIMIZATION: compares the first and the last byte of the literal at eight places at once and the rest only
// where both fit. Over transcripts that reads PENDING.
std::size_t find(std::string_view bytes, std::string_view literal, std::size_t from) {
    const std::size_t span = literal.size() - 1;
    const std::uint64_t first = ByteBlock::repeated(literal.front());
    const std::uint64_t last = ByteBlock::repeated(literal.back());
    std::size_t at = from;
    while (at + span + ByteBlock::size <= bytes.size()) {
        const std::uint64_t differs =
            (ByteBlock::load(bytes.data() + at) ^ first) | (ByteBlock::load(bytes.data() + at + span) ^ last);
        const std::uint64_t fits = ByteBlock::zeros(differs);
        if (fits == 0) {
            at += ByteBlock::size;
            continue;
        }
        at += ByteBlock::first(fits);
        if (bytes.compare(at, literal.size(), literal) == 0)
            return at;
        ++at;
    }
    return bytes.find(literal, at);
}

std::size_t findLast(std::string_view bytes, char byte, std::size_t end) {
    const std::uint64_t wanted = ByteBlock::repeated(byte);
    while (end >= ByteBlock::size &&
           ByteBlock::zeros(ByteBlock::load(bytes.data() + end - ByteBlock::size) ^ wanted) == 0)
        end -= ByteBlock::size;
    while (end > 0 && bytes[end - 1] != byte)
        --end;
    return end == 0 ? std::string_view::npos : end - 1;
}

} // namespace veslora::ByteSearch
