// SPDX-License-Identifier: MIT
// What the settings store says of itself: one line for each failure, and never a value.
#include "VesloraUI/Store/Defaults.h"
#include "tests/support/FakeDirectoryWatcher.h"
#include "tests/support/FaultInjectingFiles.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/MemoryFiles.h"
#include "tests/support/OneLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::LogRecorder;
using testing::noLineWith;
using ::testing::Not;

const std::string directory = "/home/user/.config/Veslora";
const std::string path = directory + "/settings.json";
/// Stands for whatever a user may have chosen.
const std::string marker = "heliotrope";

/// Exactly one line, of the category, about the path and with the reason, that holds no value.
auto oneLine(const std::string& about, std::errc reason) {
    return AllOf(testing::oneLine("veslora.settings", about, reason), noLineWith(marker));
}

class DefaultsLinesTests : public ::testing::Test {
  protected:
    /// One failure of each kind that the store lives with.
    void makeEveryFailure() {
        memory.put(path, R"({"word": 7})");
        Defaults store(files, watcher, directory);
        store.registerDefaults({{"word", "lime"}});
        files.writeError = std::errc::no_space_on_device;
        store.set("word", marker);
        files.readError = std::errc::io_error;
        watcher.fire(directory);
        files.readError.reset();
        memory.put(path, marker);
        watcher.fire(directory);
        store.set("other", marker);
        files.writeError.reset();
    }

    MemoryFiles memory;
    FaultInjectingFiles files{memory};
    FakeDirectoryWatcher watcher;
};

TEST_F(DefaultsLinesTests, AFileThatCannotBeReadIsToldOfOnceUntilItComesBack) {
    memory.put(path, R"({"word": ")" + marker + R"("})");
    const LogRecorder recorder;
    Defaults store(files, watcher, directory);
    files.readError = std::errc::io_error;
    for (int look = 0; look < 3; ++look) {
        watcher.fire(directory);
    }
    EXPECT_THAT(recorder.warnings(), oneLine(path, std::errc::io_error));
    files.readError.reset();
    watcher.fire(directory);
    files.readError = std::errc::io_error;
    watcher.fire(directory);
    EXPECT_EQ(recorder.warnings().size(), 2U);
}

TEST_F(DefaultsLinesTests, EveryOperationThatFailsInASaveLeavesOneLine) {
    memory.put(path, "{}");
    Defaults store(files, watcher, directory);
    const LogRecorder recorder;
    // Reading it again, making its folder, following its links, which can't fail, and writing it.
    constexpr int operations = 4;
    for (int failing = 1; failing <= operations; ++failing) {
        const std::size_t before = recorder.warnings().size();
        files.failOperation(failing, std::errc::no_space_on_device);
        store.set("word", marker + std::to_string(failing));
        EXPECT_LE(recorder.warnings().size(), before + 1) << failing;
    }
    const std::string reason = std::make_error_code(std::errc::no_space_on_device).message();
    const auto says = [](const std::string& text) { return Field(&LogRecorder::Line::text, text); };
    EXPECT_THAT(recorder.warnings(), ElementsAre(says("can't read " + path + ": " + reason),
                                                 says("can't make " + directory + ": " + reason),
                                                 says("can't write " + path + ": " + reason)));
}

TEST_F(DefaultsLinesTests, ADirectoryThatCannotBeMadeIsToldOf) {
    const LogRecorder recorder;
    files.writeError = std::errc::read_only_file_system;
    const Defaults store(files, watcher, directory);
    EXPECT_THAT(recorder.warnings(), oneLine(directory, std::errc::read_only_file_system));
}

TEST_F(DefaultsLinesTests, ADamagedFileIsToldOfAndWhereItWentTo) {
    memory.put(path, marker + " {");
    const LogRecorder recorder;
    Defaults store(files, watcher, directory);
    EXPECT_EQ(recorder.warnings().size(), 1U);
    store.set("flag", true);
    EXPECT_EQ(recorder.warnings().size(), 1U);
    EXPECT_THAT(recorder.decisions(),
                ElementsAre(Field(&LogRecorder::Line::text, HasSubstr(path + ".damaged"))));
    EXPECT_THAT(recorder.lines(),
                Not(::testing::Contains(Field(&LogRecorder::Line::text, HasSubstr(marker)))));
}

TEST_F(DefaultsLinesTests, AValueOfAnotherTypeIsNamedByItsKeyAlone) {
    memory.put(path, R"({"count": ")" + marker + R"("})");
    const LogRecorder recorder;
    Defaults store(files, watcher, directory);
    store.registerDefaults({{"count", 7}});
    EXPECT_THAT(recorder.warnings(),
                ElementsAre(Field(&LogRecorder::Line::text,
                                  AllOf(HasSubstr("count"), HasSubstr(path), Not(HasSubstr(marker))))));
}

TEST_F(DefaultsLinesTests, AMissingFileIsNoFailure) {
    const LogRecorder recorder;
    const Defaults store(files, watcher, directory);
    EXPECT_THAT(recorder.warnings(), IsEmpty());
}

TEST_F(DefaultsLinesTests, NoneOfItIsPrintedUnasked) {
    const LogRecorder silent(LogRecorder::Categories::byDefault);
    makeEveryFailure();
    EXPECT_THAT(silent.lines(), IsEmpty());
}

TEST_F(DefaultsLinesTests, NoLineEverHoldsAValue) {
    const LogRecorder recorder;
    makeEveryFailure();
    EXPECT_FALSE(recorder.warnings().empty());
    EXPECT_THAT(recorder.lines(),
                Not(::testing::Contains(Field(&LogRecorder::Line::text, HasSubstr(marker)))));
}

} // namespace
} // namespace veslora
