// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/FreedMemory.h"
#include "tests/support/ManualScheduler.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstddef>
#include <fstream>
#include <memory>
#include <vector>

namespace veslora {
namespace {

/// How many bytes of this process are in memory.
std::size_t residentBytes() {
    std::ifstream statistics("/proc/self/statm");
    std::size_t size = 0;
    std::size_t resident = 0;
    statistics >> size >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

TEST(FreedMemoryTests, ReleasesOnceForAllThatEndedMeanwhile) {
    ManualScheduler time;
    int releases = 0;
    FreedMemory memory(time, [&] { ++releases; });
    memory.releaseSoon();
    time.advance(FreedMemory::delay - 1);
    memory.releaseSoon();
    time.advance(FreedMemory::delay - 1);
    EXPECT_EQ(releases, 0) << "something else has ended meanwhile";
    time.advance(1);
    EXPECT_EQ(releases, 1);
    time.advance(100 * FreedMemory::delay);
    EXPECT_EQ(releases, 1);
    EXPECT_EQ(time.pending(), 0U) << "nothing wakes a program at rest";
}

TEST(FreedMemoryTests, GivesBackTheGapsBetweenWhatIsInUse) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the allocator is the sanitizer's";
#endif
    constexpr std::size_t block = 16 << 10;
    constexpr std::size_t count = 2048;
    std::vector<std::unique_ptr<std::vector<char>>> blocks;
    for (std::size_t place = 0; place < count; ++place) {
        blocks.push_back(std::make_unique<std::vector<char>>(block, 'x'));
    }
    for (std::size_t place = 0; place < count; ++place) {
        // What is kept holds on to the memory that lies before it.
        if (place % 16 != 0) {
            blocks[place].reset();
        }
    }
    const std::size_t before = residentBytes();
    ManualScheduler time;
    FreedMemory memory(time);
    memory.releaseSoon();
    time.advance(FreedMemory::delay);
    EXPECT_LT(residentBytes() + block * count / 2, before);
    EXPECT_EQ(blocks.front()->back(), 'x');
}

} // namespace
} // namespace veslora
