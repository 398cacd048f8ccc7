// SPDX-License-Identifier: MIT
// Looks at eight bytes of a text in one step. Pure functions, any thread.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace veslora::ByteBlock {

inline constexpr std::size_t size = 8;
inline constexpr std::uint64_t lowBits = 0x0101010101010101;
inline constexpr std::uint64_t highBits = 0x8080808080808080;

/// Eight bytes, the first one lowest, whatever the machine's own order.
inline std::uint64_t load(const char* bytes) {
    std::uint64_t block = 0;
    std::memcpy(&block, bytes, size);
    return std::endian::native == std::endian::little ? block : __builtin_bswap64(block);
}

/// A block of eight times the same byte.
constexpr std::uint64_t repeated(char byte) {
    return lowBits * static_cast<unsigned char>(byte);
}

/// The high bit of every byte that is zero. Above the first such byte bits may be set that should not be:
/// only the first one, or that there is none, is certain.
constexpr std::uint64_t zeros(std::uint64_t block) {
    return (block - lowBits) & ~block & highBits;
}

/// The same for bytes below `limit`, which is at most 128.
constexpr std::uint64_t below(std::uint64_t block, unsigned char limit) {
    return (block - lowBits * limit) & ~block & highBits;
}

/// The place of the first flagged byte; `flags` is not 0.
constexpr std::size_t first(std::uint64_t flags) {
    return static_cast<std::size_t>(std::countr_zero(flags)) / 8;
}

} // namespace veslora::ByteBlock
