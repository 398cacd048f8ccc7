// SPDX-License-Identifier: MIT
#include "VesloraCore/Text/SipHash.h"

#include <bit>
#include <cstddef>

namespace veslora::SipHash {

namespace {

constexpr std::size_t wordSize = 8;

/// Up to eight bytes as a number, the lowest one first.
std::uint64_t wordOf(std::string_view bytes) {
    std::uint64_t word = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        word |= std::uint64_t{static_cast<unsigned char>(bytes[i])} << (8 * i);
    }
    return word;
}

class State {
  public:
    // The constants spell "somepseudorandomlygeneratedbytes"; 0xee stands for a digest of 128 bits.
    explicit State(const Key& key)
        : m_v0(key.first ^ 0x736f6d6570736575), m_v1(key.second ^ 0x646f72616e646f6d ^ 0xee),
          m_v2(key.first ^ 0x6c7967656e657261), m_v3(key.second ^ 0x7465646279746573) {}

    void take(std::uint64_t word) {
        m_v3 ^= word;
        turn(2);
        m_v0 ^= word;
    }

    Digest finish() {
        m_v2 ^= 0xee;
        turn(4);
        const std::uint64_t first = folded();
        m_v1 ^= 0xdd;
        turn(4);
        return {first, folded()};
    }

  private:
    void turn(int rounds) {
        for (; rounds > 0; --rounds) {
            m_v0 += m_v1;
            m_v1 = std::rotl(m_v1, 13) ^ m_v0;
            m_v0 = std::rotl(m_v0, 32);
            m_v2 += m_v3;
            m_v3 = std::rotl(m_v3, 16) ^ m_v2;
            m_v0 += m_v3;
            m_v3 = std::rotl(m_v3, 21) ^ m_v0;
            m_v2 += m_v1;
            m_v1 = std::rotl(m_v1, 17) ^ m_v2;
            m_v2 = std::rotl(m_v2, 32);
        }
    }
    [[nodiscard]] std::uint64_t folded() const { return m_v0 ^ m_v1 ^ m_v2 ^ m_v3; }

    std::uint64_t m_v0;
    std::uint64_t m_v1;
    std::uint64_t m_v2;
    std::uint64_t m_v3;
};

} // namespace

Digest digest(const Key& key, std::string_view text) {
    State state(key);
    std::string_view rest = text;
    for (; rest.size() >= wordSize; rest.remove_prefix(wordSize)) {
        state.take(wordOf(rest.substr(0, wordSize)));
    }
    state.take(wordOf(rest) | std::uint64_t{text.size()} << 56);
    return state.finish();
}

} // namespace veslora::SipHash
