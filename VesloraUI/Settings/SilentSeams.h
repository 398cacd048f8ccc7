// SPDX-License-Identifier: MIT
// A machine that does nothing: what stands behind an island that is only looked at, so that nothing of it is
// heard, felt, kept awake, started or controlled.
#pragma once

#include "VesloraUI/Platform/AdapterProcess.h"
#include "VesloraUI/Platform/AppOpening.h"
#include "VesloraUI/Platform/ArtworkLoading.h"
#include "VesloraUI/Platform/HapticPerforming.h"
#include "VesloraUI/Platform/MetronomePlaying.h"
#include "VesloraUI/Platform/PowerAsserting.h"
#include "VesloraUI/Platform/ScriptRunning.h"
#include "VesloraUI/Platform/SoundPlaying.h"
#include "VesloraUI/Platform/SpotifyNotifications.h"
#include "VesloraUI/Platform/Suspension.h"
#include "VesloraUI/Platform/SystemReadings.h"

namespace veslora {

struct SilentMetronome final : MetronomePlaying {
    [[nodiscard]] std::optional<std::int64_t> currentSample() const override { return std::nullopt; }
    [[nodiscard]] double sampleRate() const override { return 48000; }
    [[nodiscard]] std::int64_t outputLatency() const override { return 0; }
    [[nodiscard]] StartResult start() override { return MetronomeError::engineFailed; }
    void stop() override {}
    void schedule(MetronomeSound /*sound*/, bool /*accent*/, std::int64_t /*atSample*/) override {}
    void setVolume(float /*volume*/) override {}
};

struct SilentSounds final : SoundPlaying {
    void play(const std::string& /*name*/) override {}
};

struct SilentHaptics final : HapticPerforming {
    void perform(HapticPattern /*pattern*/) override {}
};

struct SilentPower final : PowerAsserting {
    void apply(const std::optional<KeepAwakeHold>& /*hold*/) override {}
};

struct SilentSpotify final : SpotifyNotifications {
    void start() override {}
};

/// No script is ever answered.
struct SilentScripts final : ScriptRunning {
    [[nodiscard]] Task run(const std::string& /*script*/,
                           std::function<void(const Result&)> /*done*/) override {
        return {};
    }
};

struct SilentAdapter final : AdapterProcess {
    [[nodiscard]] bool start(LineHandler /*onLine*/, ExitHandler /*onExit*/) override { return false; }
    void stop() override {}
    void send(AdapterCommand /*command*/) override {}
};

/// No cover ever comes.
struct SilentArtwork final : ArtworkLoading {
    [[nodiscard]] Task load(const QUrl& /*url*/, std::function<void(const QImage&)> /*done*/) override {
        return {};
    }
};

struct SilentApps final : AppOpening {
    void open(const std::string& /*bundleID*/) override {}
};

struct SilentReadings final : SystemReadings {
    [[nodiscard]] std::optional<std::uint64_t> physicalMemory() override { return std::nullopt; }
    [[nodiscard]] std::optional<CPUTicks> ticks() override { return std::nullopt; }
    [[nodiscard]] std::optional<MemoryPages> memoryPages() override { return std::nullopt; }
    [[nodiscard]] std::optional<BatteryReading> battery() override { return std::nullopt; }
    [[nodiscard]] std::optional<DiskCapacity> disk() override { return std::nullopt; }
};

/// All of them, for as long as models live on them.
struct SilentSeams {
    SilentMetronome metronome;
    SilentSounds sounds;
    SilentHaptics haptics;
    SilentPower power;
    SilentSpotify spotify;
    SilentScripts scripts;
    SilentAdapter adapter;
    SilentArtwork artwork;
    SilentApps apps;
    SilentReadings readings;
    Suspension suspension;
};

} // namespace veslora
