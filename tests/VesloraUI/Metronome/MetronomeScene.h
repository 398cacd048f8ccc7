// SPDX-License-Identifier: MIT
// A metronome on a machine whose time a test moves, with a player that remembers every beat.
#pragma once

#include "VesloraUI/Metronome/MetronomeModel.h"
#include "tests/VesloraUI/Fixtures/FakePlatform.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace veslora {

class MetronomeScene : public testing::Test {
  protected:
    MetronomeScene() { make(); }
    void make() {
        metronome.reset();
        metronome = std::make_unique<MetronomeModel>(
            settings, MetronomeModel::Seams{platform.time, player, platform.sleep});
        metronome->onChange = [this] { ++changes; };
    }
    /// The samples of all that was queued.
    [[nodiscard]] std::vector<std::int64_t> times() const {
        std::vector<std::int64_t> samples;
        for (const FakeMetronomePlayer::Hit& hit : player.hits) {
            samples.push_back(hit.atSample);
        }
        return samples;
    }
    /// Samples from each queued beat to the next.
    [[nodiscard]] std::vector<std::int64_t> gaps() const {
        std::vector<std::int64_t> all = times();
        std::vector<std::int64_t> between;
        for (std::size_t index = 1; index < all.size(); ++index) {
            between.push_back(all[index] - all[index - 1]);
        }
        return between;
    }
    /// Which of the queued beats are accents, as in "A..A".
    [[nodiscard]] std::string accents() const {
        std::string text;
        for (const FakeMetronomePlayer::Hit& hit : player.hits) {
            text += hit.accent ? 'A' : '.';
        }
        return text;
    }
    [[nodiscard]] std::string stored(std::string_view key) const {
        return settings.stringValue(key).value_or("");
    }

    FakePlatform platform;
    FakeDefaults settings{platform};
    FakeMetronomePlayer& player = platform.beats;
    int changes = 0;
    std::unique_ptr<MetronomeModel> metronome;
};

} // namespace veslora
