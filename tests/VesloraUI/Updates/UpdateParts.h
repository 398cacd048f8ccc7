// SPDX-License-Identifier: MIT
// An updater on fakes: a helper that answers, and an installer that ends, when a test says so.
#pragma once

#include "VesloraUI/Store/SettingsKeys.h"
#include "VesloraUI/Updates/AppcastUpdater.h"
#include "tests/VesloraUI/Fixtures/FakePlatform.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace veslora {

class UpdateParts {
  public:
    UpdateParts(FakePlatform& machine, Defaults& store) : platform(machine), settings(store) { restart(); }

    /// As at the program's next start, with the settings that were kept.
    void restart() {
        updates = std::make_unique<AppcastUpdater>(
            AppcastUpdater::Build{.feed = "https://example.org/feed.xml",
                                  .key = "key",
                                  .version = "0.1.0",
                                  .architecture = "amd64",
                                  .helper = "/opt/veslora/veslora-updates",
                                  .folder = folder},
            AppcastUpdater::Seams{platform.time, platform.disk, platform.programs, platform.installer},
            settings);
        QObject::connect(updates.get(), &AppcastUpdater::wantsToShow,
                         [this](bool isAskedFor) { shown.push_back(isAskedFor); });
    }

    /// A release as the helper tells of it.
    [[nodiscard]] static AppcastItem item(const std::string& version, const std::string& notes = "Quieter.") {
        return {.version = *ReleaseVersion::parse(version),
                .notes = notes,
                .url = "https://example.org/veslora.deb",
                .length = 1000,
                .signature = std::string(86, 'A') + "==",
                .kind = std::string(Appcast::debianPackage),
                .architecture = "amd64"};
    }

    /// How often the helper was asked.
    [[nodiscard]] std::size_t asked() const { return platform.programs.runs.size(); }
    /// The last thing that it was asked.
    [[nodiscard]] UpdateQuestion question() const {
        const auto& last = platform.programs.runs.back();
        EXPECT_EQ(last.arguments, std::vector<std::string>{"/opt/veslora/veslora-updates"});
        return UpdateMessages::parseQuestion(last.input).value();
    }
    void answer(const UpdateAnswer& what) { endHelper({true, UpdateMessages::print(what)}); }
    /// Ends the helper in any way.
    void endHelper(const ProgramRunning::Result& result) { platform.programs.end(asked() - 1, result); }

    [[nodiscard]] AppcastUpdater::Step step() const { return updates->state().step; }

    /// To the offer of a version.
    void offer(const std::string& version, const std::string& notes = "Quieter.") {
        updates->checkForUpdates();
        answer(item(version, notes));
    }

    static constexpr const char* folder = "/home/me/.cache/Veslora/updates";
    static constexpr const char* package = "/home/me/.cache/Veslora/updates/veslora_0.2.0_amd64.deb";

    FakePlatform& platform;
    Defaults& settings;
    std::unique_ptr<AppcastUpdater> updates;
    std::vector<bool> shown; ///< each wish to show something, with whether it was asked for
};

} // namespace veslora
