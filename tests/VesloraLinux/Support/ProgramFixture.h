// SPDX-License-Identifier: MIT
// The program itself as a process, run with nothing in its environment but what a test gives, in a home of
// the test's own.
#pragma once

#include "tests/VesloraLinux/Support/Patience.h"
#include "tests/VesloraLinux/Support/PrivateDisplay.h"
#include "tests/VesloraLinux/Support/Program.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace veslora::testing {

class ProgramFixture : public ::testing::Test {
  protected:
    struct Ended {
        int status = -1;
        std::string out;
        std::string error;
    };
    /// What a sanitizer is told, as `env` takes it; none of it means anything to the program.
    [[nodiscard]] static std::vector<std::string> sanitizers() {
        std::vector<std::string> variables;
        for (const char* name : {"ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS", "TSAN_OPTIONS"}) {
            if (const char* value = getenv(name)) {
                variables.push_back(std::string(name) + "=" + value);
            }
        }
        return variables;
    }
    /// Runs the program with nothing in its environment but what is given.
    [[nodiscard]] Ended run(const std::vector<std::string>& words,
                            const std::vector<std::string>& environment) const {
        const std::string own = std::to_string(++runs);
        std::vector<std::string> command{
            "sh",
            "-c",
            R"(exec "$@" >")" + folder.path("out" + own) + R"(" 2>")" + folder.path("error" + own) + '"',
            "sh",
            "env",
            "-i"};
        std::ranges::copy(sanitizers(), std::back_inserter(command));
        command.insert(command.end(), environment.begin(), environment.end());
        command.emplace_back(VESLORA_BINARIES "/veslora");
        command.insert(command.end(), words.begin(), words.end());
        const int status = Program(command).wait().value_or(-1);
        return {status, folder.bytesOf("out" + own), folder.bytesOf("error" + own)};
    }

    TemporaryFolder folder;

  private:
    mutable std::atomic<int> runs = 0;
};

/// With a display, and with a bus or without one.
class RunningProgramFixture : public ProgramFixture, public ::testing::WithParamInterface<bool> {
  protected:
    RunningProgramFixture() {
        if (GetParam()) {
            bus = std::make_unique<Program>(std::vector<std::string>{"dbus-daemon", "--session", "--nofork",
                                                                     "--nopidfile", "--print-address=3"},
                                            3);
            busAddress = bus->nextLine();
        }
    }

    [[nodiscard]] std::vector<std::string> shell() const {
        return {"HOME=" + home, "XDG_RUNTIME_DIR=" + folder.path(), "DBUS_SESSION_BUS_ADDRESS=" + busAddress};
    }
    [[nodiscard]] std::vector<std::string> session() const {
        auto variables = shell();
        variables.insert(variables.end(), {"DISPLAY=" + display.name(), "QT_QPA_PLATFORM=xcb",
                                           "DBUS_SYSTEM_BUS_ADDRESS=disabled:", "LANG=C.UTF-8"});
        variables.insert(variables.end(), more.begin(), more.end());
        return variables;
    }
    void start() {
        std::vector<std::string> command{"env", "-i"};
        std::ranges::copy(sanitizers(), std::back_inserter(command));
        const auto variables = session();
        command.insert(command.end(), variables.begin(), variables.end());
        command.emplace_back(VESLORA_BINARIES "/veslora");
        program = std::make_unique<Program>(command);
        ASSERT_TRUE(becomesTrue([&] { return ask("status").status == 0; }));
    }
    [[nodiscard]] Ended ask(const std::string& word) const { return run({word}, shell()); }
    void expectDone(const std::string& word, const std::string& other) const {
        const Ended ended = run({word, other}, shell());
        EXPECT_EQ(ended.status, 0) << word << " " << other << ": " << ended.error;
        EXPECT_THAT(ended.out + ended.error, ::testing::IsEmpty());
    }
    [[nodiscard]] std::string status() const { return ask("status").out; }
    void expectDone(const std::string& word) const {
        const Ended ended = ask(word);
        EXPECT_EQ(ended.status, 0) << word << ": " << ended.error;
        EXPECT_THAT(ended.out, ::testing::IsEmpty());
        EXPECT_THAT(ended.error, ::testing::IsEmpty());
    }

    std::string home = folder.path("home");
    std::vector<std::string> more; ///< variables of the session besides
    std::string busAddress = "disabled:";
    std::unique_ptr<Program> bus;
    PrivateDisplay display{"800x600"};
    std::unique_ptr<Program> program;
};

} // namespace veslora::testing
