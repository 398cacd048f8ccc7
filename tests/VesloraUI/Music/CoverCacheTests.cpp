// SPDX-License-Identifier: MIT
#include "VesloraUI/Music/CoverCache.h"
#include "tests/VesloraUI/Fixtures/Covers.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

using test::cover;

std::string track(std::size_t number) {
    return "spotify:track:" + std::to_string(number);
}

TEST(CoverCache, TheTwentyFirstTakesTheOldestOnesPlace) {
    CoverCache cache;
    for (std::size_t number = 0; number < CoverCache::capacity; ++number) {
        cache.store(track(number), cover(Qt::red));
    }
    EXPECT_EQ(cache.size(), CoverCache::capacity);
    EXPECT_TRUE(cache.find(track(0))) << "a look does not make it younger";
    cache.store(track(20), cover(Qt::red));
    EXPECT_EQ(cache.size(), CoverCache::capacity);
    EXPECT_FALSE(cache.find(track(0)));
    EXPECT_TRUE(cache.find(track(1)));
    EXPECT_TRUE(cache.find(track(20)));
}

TEST(CoverCache, ACoverThatWasFetchedAgainIsHeldOnceAndIsTheYoungest) {
    CoverCache cache;
    cache.store(track(0), cover(Qt::red));
    cache.store(track(1), cover(Qt::red));
    cache.store(track(0), cover(Qt::blue));
    EXPECT_EQ(cache.size(), 2u);
    EXPECT_EQ(*cache.find(track(0)), cover(Qt::blue));
    for (std::size_t number = 2; number <= CoverCache::capacity; ++number) {
        cache.store(track(number), cover(Qt::red));
    }
    EXPECT_TRUE(cache.find(track(0)));
    EXPECT_FALSE(cache.find(track(1)));
}

} // namespace
} // namespace veslora
