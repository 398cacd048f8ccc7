// SPDX-License-Identifier: MIT
// Putting the hooks into real files and taking them out again by a program that is killed again and again.
#include "VesloraCore/Agents/Hooks/SupportNames.h"
#include "VesloraCore/Text/Json.h"
#include "VesloraLinux/System/PosixFiles.h"
#include "VesloraUI/Claude/Hooks/ClaudeHooks.h"
#include "VesloraUI/Claude/Hooks/CodexHooks.h"
#include "VesloraUI/Claude/Spool/SupportDirectory.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <optional>
#include <random>
#include <set>

namespace veslora {
namespace {

using testing::TemporaryFolder;

/// In memory where there is such a place, since a disk would be waited for most of the time.
std::filesystem::path quickPlace() {
    const std::filesystem::path memory = "/dev/shm";
    return access(memory.c_str(), W_OK) == 0 ? memory : std::filesystem::temp_directory_path();
}

/// Both agents' configurations, in a home of their own.
class KilledInstallTests : public ::testing::Test {
  protected:
    KilledInstallTests() {
        std::filesystem::create_directories(home.path("claude"));
        std::filesystem::create_directories(home.path("bin"));
        home.put("bin/json-value", "ELF");
        home.put("claude/settings.json", before);
    }

    void install() {
        claude.install();
        codex.install();
    }
    void remove() {
        claude.remove();
        codex.remove();
    }

    /// Installs and removes until it is killed at some point within the first moments. Nothing of the test's
    /// own frame runs in the child but this.
    void runAndKill(useconds_t after) {
        const pid_t child = fork();
        if (child == 0) {
            while (true) {
                try {
                    install();
                    remove();
                } catch (...) {
                    _exit(1);
                }
            }
        }
        ASSERT_GT(child, 0);
        usleep(after);
        kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status)) << "an install failed";
    }

    /// Microseconds, of the quickest of some.
    useconds_t durationOfARound() {
        auto quickest = std::chrono::steady_clock::duration::max();
        for (int round = 0; round < 10; ++round) {
            const auto start = std::chrono::steady_clock::now();
            install();
            remove();
            quickest = std::min(quickest, std::chrono::steady_clock::now() - start);
        }
        return static_cast<useconds_t>(
            std::chrono::duration_cast<std::chrono::microseconds>(quickest).count());
    }

    [[nodiscard]] std::optional<std::string> textOf(const std::string& name) const {
        return std::filesystem::exists(home.path(name)) ? std::optional(home.bytesOf(name)) : std::nullopt;
    }
    [[nodiscard]] std::set<std::string> leftovers() const {
        std::set<std::string> found;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(home.path())) {
            const std::string name = entry.path().filename().string();
            if (name.starts_with(".veslora-tmp.") || name.find("veslora-kept") != std::string::npos) {
                found.insert(name);
            }
        }
        return found;
    }

    const std::string before =
        "{\n  \"model\" : \"opus\",\n  \"statusLine\" : {\n    \"command\" : \"mine\",\n"
        "    \"refreshInterval\" : 5,\n    \"type\" : \"command\"\n  }\n}\n";
    TemporaryFolder home{quickPlace()};
    PosixFiles files;
    SupportDirectory support{files, home.path("support"), home.path("support")};
    ClaudeHooks claude{files, support, home.path("claude/settings.json"), home.path("bin")};
    CodexHooks codex{files, support, home.path("codex/hooks.json")};
};

TEST_F(KilledInstallTests, TheUsersFilesAreWholeAtEveryMoment) {
    install();
    const auto claudeInstalled = textOf("claude/settings.json");
    const auto codexInstalled = textOf("codex/hooks.json");
    remove();
    EXPECT_EQ(textOf("claude/settings.json"), before);
    EXPECT_EQ(textOf("codex/hooks.json"), std::nullopt);
    std::mt19937 random(20270115);
    std::uniform_int_distribution<useconds_t> moments(0, durationOfARound() * 3 / 2);
    int foundOld = 0;
    int foundNew = 0;
    int foundLeftovers = 0;
    // On a busy machine few kills fall between the making of a file and its rename, so there are more rounds
    // until one has.
    constexpr int rounds = 300;
    constexpr int most = 20 * rounds;
    for (int round = 0; round < rounds || (foundLeftovers == 0 && round < most); ++round) {
        runAndKill(moments(random));
        const auto settings = textOf("claude/settings.json");
        const auto hooks = textOf("codex/hooks.json");
        foundOld += settings == before ? 1 : 0;
        foundNew += settings == claudeInstalled ? 1 : 0;
        foundLeftovers += leftovers().empty() ? 0 : 1;
        ASSERT_TRUE(settings == before || settings == claudeInstalled) << "round " << round;
        ASSERT_TRUE(!hooks || hooks == codexInstalled) << "round " << round;
        ASSERT_EQ(textOf("claude/settings.json.veslora-backup"), before) << "round " << round;
    }
    // Else the kills did not fall where they were meant to.
    EXPECT_GT(foundOld, 10);
    EXPECT_GT(foundNew, 10);
    EXPECT_GT(foundLeftovers, 0);
    install();
    EXPECT_EQ(leftovers(), std::set<std::string>());
    EXPECT_TRUE(claude.state().areInstalled);
    remove();
    EXPECT_EQ(textOf("claude/settings.json"), before);
    EXPECT_EQ(textOf("codex/hooks.json"), std::nullopt);
}

} // namespace
} // namespace veslora
