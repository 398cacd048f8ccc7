// SPDX-License-Identifier: MIT
// Looks at many bytes of a text at once. Pure functions, any thread.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace veslora::ByteBlock {

inline constexpr std::size_t size = 16;

/// Sixteen bytes that are compared at once: the compiler makes the processor's own wide operations of it.
using Block = std::uint8_t __attribute__((vector_size(size)));
/// All bits of a byte are set where something holds.
using Flags = std::int8_t __attribute__((vector_size(size)));

inline Block load(const char* bytes) {
    Block block;
    std::memcpy(&block, bytes, size);
    return block;
}

inline Block repeated(char byte) {
    return Block{} + static_cast<std::uint8_t>(byte);
}

inline Flags equal(const Block& block, const Block& other) {
    return block == other;
}

/// The place of the first flagged byte; `size` where none is.
inline std::size_t first(const Flags& flags) {
    std::uint64_t words[size / 8];
    std::memcpy(words, &flags, size);
    for (std::size_t i = 0; i < size / 8; ++i) {
        if (words[i] != 0) {
            const int bit = std::endian::native == std::endian::little ? std::countr_zero(words[i])
                                                                       : std::countl_zero(words[i]);
            return i * 8 + static_cast<std::size_t>(bit) / 8;
        }
    }
    return size;
}

inline bool any(const Flags& flags) {
    std::uint64_t words[size / 8];
    std::memcpy(words, &flags, size);
    return (words[0] | words[1]) != 0;
}

} // namespace veslora::ByteBlock
