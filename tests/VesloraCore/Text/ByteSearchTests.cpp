// SPDX-License-Identifier: MIT
#include "VesloraCore/Text/ByteSearch.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace veslora {
namespace {

TEST(ByteSearch, FindsTheFirstPlace) {
    EXPECT_EQ(ByteSearch::find("a \"usage\" and \"usage\"", "\"usage\""), 2U);
    EXPECT_EQ(ByteSearch::find("a \"usage\" and \"usage\"", "\"usage\"", 3), 14U);
}

TEST(ByteSearch, FindsNothingWhereNothingIs) {
    EXPECT_EQ(ByteSearch::find("", "\"usage\""), std::string_view::npos);
    EXPECT_EQ(ByteSearch::find("\"usage", "\"usage\""), std::string_view::npos);
    EXPECT_EQ(ByteSearch::find("\"usage\"", "\"usage\"", 1), std::string_view::npos);
    EXPECT_EQ(ByteSearch::find("\"usage\"", "\"usage\"", 7), std::string_view::npos);
}

// The bytes are so few kinds that near misses, and overlapping ones, come at every distance.
TEST(ByteSearch, AgreesWithThePlainSearchAtEveryPlaceAndLength) {
    std::mt19937 random(1);
    for (int round = 0; round < 20'000; ++round) {
        std::string bytes(random() % 60, 'a');
        for (char& byte : bytes) {
            byte = "ab\"\0\xFF"[random() % 5];
        }
        std::string literal(2 + random() % 9, 'a');
        for (char& byte : literal) {
            byte = "ab\"\0\xFF"[random() % 5];
        }
        if (bytes.size() > literal.size() && round % 2 == 0) {
            bytes.replace(random() % (bytes.size() - literal.size()), literal.size(), literal);
        }
        const std::size_t from = random() % (bytes.size() + 1);
        ASSERT_EQ(ByteSearch::find(bytes, literal, from), bytes.find(literal, from))
            << "round " << round << ", from " << from;
    }
}

TEST(ByteSearch, FindsTheLastPlaceOfAByte) {
    EXPECT_EQ(ByteSearch::findLast("", 'x', 0), std::string_view::npos);
    std::mt19937 random(2);
    for (int round = 0; round < 20'000; ++round) {
        std::string bytes(random() % 60, 'a');
        for (char& byte : bytes) {
            byte = "aaaaaaa\n"[random() % 8];
        }
        const std::size_t end = random() % (bytes.size() + 1);
        const std::size_t expected = end == 0 ? std::string::npos : bytes.rfind('\n', end - 1);
        ASSERT_EQ(ByteSearch::findLast(bytes, '\n', end), expected) << "round " << round << ", end " << end;
    }
}

} // namespace
} // namespace veslora
