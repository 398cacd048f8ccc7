// SPDX-License-Identifier: MIT
#include "VesloraCore/Text/SipHash.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace veslora {
namespace {

// The bytes 0 to 15, the lowest one first: the key of the published test vectors.
constexpr SipHash::Key vectorKey{0x0706050403020100, 0x0f0e0d0c0b0a0908};

std::string hexOf(std::uint64_t word) {
    std::string text;
    for (int i = 0; i < 8; ++i) {
        char byte[3];
        std::snprintf(byte, sizeof byte, "%02x", static_cast<unsigned>(word >> (8 * i) & 0xff));
        text += byte;
    }
    return text;
}

std::string hexOfVector(std::size_t length) {
    std::string text;
    for (std::size_t i = 0; i < length; ++i) {
        text += static_cast<char>(i);
    }
    const SipHash::Digest digest = SipHash::digest(vectorKey, text);
    return hexOf(digest.first) + hexOf(digest.second);
}

TEST(SipHash, GivesThePublishedDigests) {
    EXPECT_EQ(hexOfVector(0), "a3817f04ba25a8e66df67214c7550293");
    EXPECT_EQ(hexOfVector(1), "da87c1d86b99af44347659119b22fc45");
    EXPECT_EQ(hexOfVector(7), "a1f1ebbed8dbc153c0b84aa61ff08239");
    EXPECT_EQ(hexOfVector(8), "3b62a9ba6258f5610f83e264f31497b4");
    EXPECT_EQ(hexOfVector(15), "5493e99933b0a8117e08ec0f97cfc3d9");
    EXPECT_EQ(hexOfVector(16), "6ee2a4ca67b054bbfd3315bf85230577");
    EXPECT_EQ(hexOfVector(63), "5150d1772f50834a503e069a973fbd7c");
}

TEST(SipHash, EveryByteCounts) {
    const std::string text = "msg_0123456789|req_\xE9";
    for (std::size_t i = 0; i < text.size(); ++i) {
        std::string other = text;
        other[i] = static_cast<char>(other[i] ^ 0x80);
        EXPECT_NE(SipHash::digest(vectorKey, other), SipHash::digest(vectorKey, text)) << i;
    }
    EXPECT_NE(SipHash::digest(vectorKey, text + '\0'), SipHash::digest(vectorKey, text));
}

TEST(SipHash, BothHalvesOfTheKeyCount) {
    const SipHash::Digest digest = SipHash::digest({1, 2}, "message");
    EXPECT_NE(SipHash::digest({1, 3}, "message"), digest);
    EXPECT_NE(SipHash::digest({3, 2}, "message"), digest);
}

} // namespace
} // namespace veslora
