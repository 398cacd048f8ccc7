// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/LinuxDirectories.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <map>

namespace veslora {
namespace {

Directories findWith(const std::map<std::string, std::string>& variables) {
    return LinuxDirectories::find([&variables](const std::string& name) -> std::optional<std::string> {
        const auto found = variables.find(name);
        return found != variables.end() ? std::optional(found->second) : std::nullopt;
    });
}

TEST(LinuxDirectoriesTests, KeepsToTheUsualPlacesBelowTheHome) {
    const Directories found = findWith({{"HOME", "/home/anna"}});
    EXPECT_EQ(found.home, "/home/anna");
    EXPECT_EQ(found.support, "/home/anna/.local/share/Veslora");
    EXPECT_EQ(found.runtime, found.support);
    EXPECT_EQ(found.configuration, "/home/anna/.config/Veslora");
    EXPECT_EQ(found.cache, "/home/anna/.cache/Veslora");
    EXPECT_EQ(found.claude, "/home/anna/.claude");
    EXPECT_EQ(found.codex, "/home/anna/.codex");
}

TEST(LinuxDirectoriesTests, FollowsTheVariables) {
    const testing::TemporaryFolder runtime;
    const Directories found = findWith({{"HOME", "/home/anna/"},
                                        {"XDG_DATA_HOME", "/data/"},
                                        {"XDG_CONFIG_HOME", "/config"},
                                        {"XDG_RUNTIME_DIR", runtime.path()},
                                        {"XDG_CACHE_HOME", "/cache"},
                                        {"CLAUDE_CONFIG_DIR", "/agents/claude"},
                                        {"CODEX_HOME", "/agents/codex"}});
    EXPECT_EQ(found.home, "/home/anna");
    EXPECT_EQ(found.support, "/data/Veslora");
    EXPECT_EQ(found.configuration, "/config/Veslora");
    EXPECT_EQ(found.cache, "/cache/Veslora");
    EXPECT_EQ(found.runtime, runtime.path("veslora"));
    EXPECT_EQ(found.claude, "/agents/claude");
    EXPECT_EQ(found.codex, "/agents/codex");
}

TEST(LinuxDirectoriesTests, TakesEmptyAndRelativeValuesAsUnset) {
    for (const char* value : {"", "relative/path", "./x"}) {
        const Directories found = findWith({{"HOME", "/home/anna"},
                                            {"XDG_DATA_HOME", value},
                                            {"XDG_CONFIG_HOME", value},
                                            {"XDG_RUNTIME_DIR", value},
                                            {"CLAUDE_CONFIG_DIR", value},
                                            {"CODEX_HOME", value}});
        EXPECT_EQ(found, findWith({{"HOME", "/home/anna"}}));
    }
}

TEST(LinuxDirectoriesTests, UsesNoRuntimeDirectoryThatIsMissingOrAnothersOwn) {
    const testing::TemporaryFolder runtime;
    const Directories missing = findWith({{"HOME", "/home/anna"}, {"XDG_RUNTIME_DIR", runtime.path("none")}});
    EXPECT_EQ(missing.runtime, missing.support);
    const std::string foreign = geteuid() == 0 ? runtime.path() : "/etc";
    if (geteuid() == 0) {
        ASSERT_EQ(chown(foreign.c_str(), 65534, 65534), 0);
    }
    const Directories others = findWith({{"HOME", "/home/anna"}, {"XDG_RUNTIME_DIR", foreign}});
    EXPECT_EQ(others.runtime, others.support);
}

TEST(LinuxDirectoriesTests, FindsTheUsersHomeWithoutAVariable) {
    EXPECT_EQ(findWith({}).home.front(), '/');
    EXPECT_EQ(findWith({{"HOME", "relative"}}).home, findWith({}).home);
}

TEST(LinuxDirectoriesTests, FindsTheHelpersBesideTheProgram) {
    EXPECT_EQ(findWith({}).executables, VESLORA_BINARIES);
}

} // namespace
} // namespace veslora
