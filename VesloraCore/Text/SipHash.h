// SPDX-License-Identifier: MIT
// SipHash-2-4 with 128 bits (Aumasson, Bernstein): digests of text that others may choose. Nobody who doesn't
// know the key can find texts whose digests have anything in common. Pure functions, any thread.
#pragma once

#include <cstdint>
#include <string_view>

namespace veslora::SipHash {

/// A secret; random, unless nobody can gain by knowing it.
struct Key {
    std::uint64_t first = 0;
    std::uint64_t second = 0;
    bool operator==(const Key&) const = default;
};

struct Digest {
    std::uint64_t first = 0;
    std::uint64_t second = 0;
    bool operator==(const Digest&) const = default;
};

[[nodiscard]] Digest digest(const Key& key, std::string_view text);

} // namespace veslora::SipHash
