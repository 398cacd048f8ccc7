// SPDX-License-Identifier: MIT
#include "VesloraLinux/Audio/Mixer.h"
#include "tests/VesloraLinux/Audio/AllocationGuard.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <limits>
#include <thread>

namespace veslora {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

Samples sound(std::vector<float> samples) {
    return std::make_shared<const std::vector<float>>(std::move(samples));
}

Samples constant(std::size_t length, float value) {
    return sound(std::vector<float>(length, value));
}

/// The next `count` samples, rendered in blocks of `block`.
std::vector<float> render(Mixer& mixer, std::size_t count, std::size_t block = 7) {
    std::vector<float> samples(count, 99.0F);
    for (std::size_t done = 0; done < count; done += block) {
        mixer.render(std::span(samples).subspan(done, std::min(block, count - done)));
    }
    return samples;
}

TEST(Mixer, IsSilentWithoutSounds) {
    Mixer mixer;
    EXPECT_TRUE(mixer.isSilent());
    EXPECT_THAT(render(mixer, 20), Each(0.0F));
    EXPECT_EQ(mixer.position(), 20);
    EXPECT_EQ(mixer.reclaim(), 0U);
}

TEST(Mixer, StartsEverySoundOnItsSample) {
    // Whatever the size of a block: a start may be its first sample, its last, or far ahead.
    for (const std::size_t block : {1U, 2U, 7U, 10U, 64U, 1000U}) {
        Mixer mixer;
        const std::int64_t starts[] = {0, 6, 7, 13, 20, 63, 64, 500, 999};
        std::vector<float> expected(1000);
        for (const std::int64_t start : starts) {
            ASSERT_TRUE(mixer.schedule(sound({0.25F, 0.125F}), start));
            expected[static_cast<std::size_t>(start)] += 0.25F;
            if (start < 999) {
                expected[static_cast<std::size_t>(start) + 1] += 0.125F;
            }
        }
        EXPECT_EQ(render(mixer, 1000, block), expected) << block;
        EXPECT_FALSE(mixer.isSilent());
        EXPECT_EQ(render(mixer, 1, 1), std::vector{0.125F});
        EXPECT_TRUE(mixer.isSilent());
    }
}

TEST(Mixer, KeepsTheBeatOverALongTime) {
    // Ten minutes at 137 beats a minute, each at its own rounded sample: nothing adds up to a drift.
    Mixer mixer;
    const Samples click = sound({0.5F});
    std::vector<float> block(4801);
    std::int64_t beat = 0;
    std::int64_t heard = 0;
    std::int64_t wrong = 0;
    const auto sampleOf = [](std::int64_t index) {
        return static_cast<std::int64_t>(std::llround(static_cast<double>(index) * 60 * 48000 / 137));
    };
    while (mixer.position() < std::int64_t{600} * 48000) {
        const std::int64_t start = mixer.position();
        while (sampleOf(beat) < start + 10000) {
            ASSERT_TRUE(mixer.schedule(click, sampleOf(beat)));
            ++beat;
        }
        mixer.render(block);
        for (auto found = std::ranges::find(block, 0.5F); found != block.end();
             found = std::find(found + 1, block.end(), 0.5F)) {
            wrong += start + (found - block.begin()) == sampleOf(heard) ? 0 : 1;
            ++heard;
        }
    }
    EXPECT_GT(heard, 1369);
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(mixer.missed(), 0U);
}

TEST(Mixer, AddsUpSoundsThatOverlap) {
    Mixer mixer;
    ASSERT_TRUE(mixer.schedule(constant(4, 0.25F), 1));
    ASSERT_TRUE(mixer.schedule(constant(4, 0.5F), 3));
    EXPECT_THAT(render(mixer, 8, 3), ElementsAre(0, 0.25F, 0.25F, 0.75F, 0.75F, 0.5F, 0.5F, 0));
}

TEST(Mixer, WithoutAStartASoundBeginsAtOnceAndWhole) {
    Mixer mixer;
    render(mixer, 100);
    ASSERT_TRUE(mixer.schedule(sound({0.1F, 0.2F, 0.3F})));
    render(mixer, 0);
    EXPECT_THAT(render(mixer, 4), ElementsAre(0.1F, 0.2F, 0.3F, 0));
}

TEST(Mixer, ALateSoundGoesOnFromWhereItWouldBe) {
    Mixer mixer;
    render(mixer, 100);
    ASSERT_TRUE(mixer.schedule(sound({0.1F, 0.2F, 0.3F, 0.4F}), 98));
    EXPECT_THAT(render(mixer, 3), ElementsAre(0.3F, 0.4F, 0));
    EXPECT_EQ(mixer.missed(), 0U);
    EXPECT_EQ(mixer.reclaim(), 0U);
}

TEST(Mixer, ASoundThatIsOverAlreadyIsDroppedAndCounted) {
    Mixer mixer;
    render(mixer, 100);
    ASSERT_TRUE(mixer.schedule(constant(4, 0.5F), 96));
    ASSERT_TRUE(mixer.schedule(constant(4, 0.5F), std::numeric_limits<std::int64_t>::min()));
    EXPECT_THAT(render(mixer, 3), Each(0.0F));
    EXPECT_EQ(mixer.missed(), 2U);
    EXPECT_EQ(mixer.reclaim(), 0U);
    EXPECT_TRUE(mixer.isSilent());
}

TEST(Mixer, ALateSoundThatMustNotBeIsDroppedAndCounted) {
    Mixer mixer;
    render(mixer, 100);
    ASSERT_TRUE(mixer.schedule(constant(4, 0.5F), 99, Mixer::Late::dropped));
    ASSERT_TRUE(mixer.schedule(constant(1, 0.25F), 101, Mixer::Late::dropped));
    EXPECT_THAT(render(mixer, 3), ElementsAre(0, 0.25F, 0));
    EXPECT_EQ(mixer.missed(), 1U);
    EXPECT_EQ(mixer.reclaim(), 0U);
    EXPECT_TRUE(mixer.isSilent());
}

TEST(Mixer, AStartBeyondAllTimeNeverComes) {
    Mixer mixer;
    ASSERT_TRUE(mixer.schedule(constant(4, 0.5F), std::numeric_limits<std::int64_t>::max()));
    EXPECT_THAT(render(mixer, 100), Each(0.0F));
    EXPECT_EQ(mixer.reclaim(), 1U);
    EXPECT_FALSE(mixer.isSilent());
}

TEST(Mixer, NoSamplesAreNoSound) {
    Mixer mixer;
    EXPECT_TRUE(mixer.schedule(nullptr, 0));
    EXPECT_TRUE(mixer.schedule(sound({}), 0));
    EXPECT_EQ(mixer.reclaim(), 0U);
    EXPECT_TRUE(mixer.isSilent());
}

TEST(Mixer, RefusesWhatIsTooManyAndTakesMoreOnceSomeEnded) {
    Mixer mixer;
    const Samples one = constant(10, 0.01F);
    for (std::size_t count = 0; count < Mixer::capacity; ++count) {
        ASSERT_TRUE(mixer.schedule(one, count < 3 ? 0 : 50));
    }
    EXPECT_FALSE(mixer.schedule(one, 0));
    EXPECT_FALSE(mixer.schedule(one));
    EXPECT_EQ(one.use_count(), 1 + static_cast<std::ptrdiff_t>(Mixer::capacity));
    render(mixer, 20);
    EXPECT_EQ(mixer.reclaim(), Mixer::capacity - 3);
    for (int count = 0; count < 3; ++count) {
        EXPECT_TRUE(mixer.schedule(one, 50));
    }
    EXPECT_FALSE(mixer.schedule(one, 50));
    // All of them are heard together, so that none was lost.
    EXPECT_NEAR(render(mixer, 40, 40).back(), 0.01F * Mixer::capacity, 1e-5F);
}

TEST(Mixer, FreesOnlyWhenTheMainThreadAsks) {
    Mixer mixer;
    Samples samples = constant(3, 0.5F);
    const std::weak_ptr<const std::vector<float>> watched = samples;
    ASSERT_TRUE(mixer.schedule(samples));
    samples.reset();
    render(mixer, 10);
    EXPECT_TRUE(mixer.isSilent());
    EXPECT_FALSE(watched.expired());
    EXPECT_EQ(mixer.reclaim(), 0U);
    EXPECT_TRUE(watched.expired());
}

TEST(Mixer, BendsWhatWouldBeTooLoud) {
    Mixer mixer;
    ASSERT_TRUE(mixer.schedule(sound({0.8F, 0.8F, -0.8F, 0.8F, 1e30F})));
    ASSERT_TRUE(mixer.schedule(sound({0.0F, 0.1F, -0.8F, 100.0F, 1e30F})));
    const std::vector<float> samples = render(mixer, 5);
    EXPECT_EQ(samples[0], 0.8F);
    EXPECT_GT(samples[1], 0.85F);
    EXPECT_LT(samples[1], 0.9F);
    EXPECT_NEAR(samples[2], -0.96F, 1e-5F);
    EXPECT_GT(samples[3], 0.999F);
    EXPECT_LT(samples[3], 1);
    EXPECT_LT(samples[4], 1);
}

TEST(Mixer, ANewVolumeIsReachedWithoutAStep) {
    Mixer mixer;
    ASSERT_TRUE(mixer.schedule(constant(1000, 0.5F)));
    render(mixer, 10);
    mixer.setVolume(0.5F);
    const std::vector<float> block = render(mixer, 100, 100);
    for (std::size_t index = 1; index < block.size(); ++index) {
        ASSERT_NEAR(block[index - 1] - block[index], 0.0025F, 1e-5F);
    }
    EXPECT_THAT(render(mixer, 20), Each(0.25F));
    mixer.setVolume(7);
    render(mixer, 10, 10);
    EXPECT_THAT(render(mixer, 20), Each(0.5F));
    for (const float bad : {-1.0F, 0.0F, std::numeric_limits<float>::quiet_NaN()}) {
        mixer.setVolume(1);
        render(mixer, 10, 10);
        mixer.setVolume(bad);
        render(mixer, 10, 10);
        EXPECT_THAT(render(mixer, 20), Each(0.0F));
    }
}

TEST(Mixer, TheFirstBlockHasItsVolumeFromItsStart) {
    Mixer mixer;
    mixer.setVolume(0.5F);
    ASSERT_TRUE(mixer.schedule(constant(100, 0.5F), 0));
    EXPECT_THAT(render(mixer, 100, 100), Each(0.25F));
}

TEST(AllocationGuard, CountsWhatItsThreadAllocates) {
    std::size_t counted = 0;
    {
        const testing::AllocationGuard guard;
        const std::vector<float> samples(100);
        counted = guard.count();
    }
    EXPECT_EQ(counted, 1U);
}

TEST(Mixer, RendersWithoutTouchingTheHeap) {
    Mixer mixer;
    std::vector<float> block(480);
    std::vector<Samples> sounds;
    for (std::size_t count = 0; count < Mixer::capacity; ++count) {
        sounds.push_back(constant(100 + count, 0.1F));
        ASSERT_TRUE(mixer.schedule(sounds.back(), static_cast<std::int64_t>(count) * 50));
    }
    sounds.clear();
    std::size_t counted = 0;
    for (int round = 0; round < 20; ++round) {
        const testing::AllocationGuard guard;
        mixer.render(block);
        counted += guard.count();
    }
    EXPECT_EQ(counted, 0U);
    EXPECT_TRUE(mixer.isSilent());
    EXPECT_EQ(mixer.reclaim(), 0U);
}

/// A sound that knows on which thread it was freed.
Samples watchedSound(std::size_t length, std::atomic<int>& freedElsewhere, std::thread::id home) {
    return {new std::vector<float>(length, 0.01F),
            [&freedElsewhere, home](const std::vector<float>* samples) {
                freedElsewhere += std::this_thread::get_id() == home ? 0 : 1;
                delete samples;
            }};
}

TEST(Mixer, TwoThreadsShareItAndNothingIsLost) {
    constexpr int count = 20000;
    constexpr std::size_t length = 32;
    Mixer mixer;
    std::atomic<bool> isOver = false;
    std::atomic<int> freedElsewhere = 0;
    std::size_t allocations = 0;
    double heard = 0;
    std::thread audio([&] {
        std::vector<float> block(61);
        const testing::AllocationGuard guard;
        for (bool isLast = false; !isLast;) {
            isLast = isOver && mixer.isSilent();
            mixer.render(block);
            for (const float sample : block) {
                heard += static_cast<double>(sample);
            }
        }
        allocations = guard.count();
    });
    for (int scheduled = 0; scheduled < count;) {
        if (mixer.schedule(watchedSound(length, freedElsewhere, std::this_thread::get_id()))) {
            ++scheduled;
        } else {
            std::this_thread::yield();
        }
    }
    isOver = true;
    audio.join();
    EXPECT_EQ(mixer.reclaim(), 0U);
    EXPECT_EQ(mixer.missed(), 0U);
    EXPECT_EQ(freedElsewhere, 0);
    EXPECT_EQ(allocations, 0U);
    EXPECT_NEAR(heard, count * length * 0.01, 1);
}

} // namespace
} // namespace veslora
