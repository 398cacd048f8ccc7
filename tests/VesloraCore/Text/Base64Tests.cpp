// SPDX-License-Identifier: MIT
#include "VesloraCore/Text/Base64.h"

#include <gtest/gtest.h>

using namespace veslora;

namespace {

// Written the slow way, as a witness.
std::string encoded(std::string_view bytes) {
    constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bits;
    for (const char byte : bytes) {
        for (int bit = 7; bit >= 0; --bit) {
            bits += (static_cast<unsigned char>(byte) >> bit & 1) != 0 ? '1' : '0';
        }
    }
    bits.resize((bits.size() + 5) / 6 * 6, '0');
    std::string text;
    for (std::size_t at = 0; at < bits.size(); at += 6) {
        text += alphabet[std::stoul(bits.substr(at, 6), nullptr, 2)];
    }
    text.resize((text.size() + 3) / 4 * 4, '=');
    return text;
}

} // namespace

TEST(Base64, DecodesEveryPadding) {
    EXPECT_EQ(Base64::decode(""), "");
    EXPECT_EQ(Base64::decode("Zg=="), "f");
    EXPECT_EQ(Base64::decode("Zm4="), "fn");
    EXPECT_EQ(Base64::decode("Zm9v"), "foo");
    EXPECT_EQ(Base64::decode("Zm9vYmFy"), "foobar");
    EXPECT_EQ(Base64::decode("+/+/"), "\xFB\xFF\xBF");
}

TEST(Base64, IgnoresTheUnusedBits) {
    EXPECT_EQ(Base64::decode("Zh=="), "f");
    EXPECT_EQ(Base64::decode("Zm5="), "fn");
}

TEST(Base64, RefusesEverythingElse) {
    for (const char* text : {"Z", "Zg", "Zg=", "Zm9vY", "Zg===", "====", "=", "Zg==Zg==", "Z=g=", "Zm9v\n",
                             "Zm 9v", "Zm9-", "Zm9_", "Zm9v\nZm9", "Zm\xC3\xA9"}) {
        EXPECT_EQ(Base64::decode(text), std::nullopt) << text;
    }
    EXPECT_EQ(Base64::decode(std::string_view("Zm\0v", 4)), std::nullopt);
}

TEST(Base64, BringsBackWhatWasEncoded) {
    std::string bytes;
    for (int length = 0; length < 600; ++length) {
        EXPECT_EQ(Base64::decode(encoded(bytes)), bytes) << length;
        bytes += static_cast<char>(length * 37 + length / 256);
    }
}
