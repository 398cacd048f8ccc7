// SPDX-License-Identifier: MIT
// Each sound that is not heard leaves exactly one line, and none unasked.
#include "VesloraLinux/Audio/Mixer.h"
#include "VesloraLinux/Audio/PulseOutput.h"
#include "tests/VesloraLinux/Support/SoundServer.h"
#include "tests/VesloraLinux/Support/Waiting.h"
#include "tests/support/OneLine.h"

#include <gtest/gtest.h>

#include <optional>

namespace veslora {
namespace {

using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::LogRecorder;
using testing::oneLine;
using testing::waitUntil;

class SoundFailuresTests : public ::testing::Test {
  protected:
    void play(const PulseOptions& options) {
        Mixer mixer;
        PulseOutput output(options);
        std::optional<AudioEnd> end;
        output.start(mixer, [&end](AudioEnd how) { end = how; });
        EXPECT_TRUE(waitUntil([&] { return end.has_value(); }));
        EXPECT_EQ(end, AudioEnd::failed);
    }

    testing::CoreApplication application;
    testing::SoundEnvironment environment;
};

TEST_F(SoundFailuresTests, AServerThatIsNotThere) {
    const LogRecorder recorder;
    play({.server = "unix:" + environment.folder().path("none")});
    EXPECT_THAT(recorder.warnings(), oneLine("veslora.audio", "no sound", "Connection refused"));
}

TEST_F(SoundFailuresTests, AServerThatMakesNoProgress) {
    const LogRecorder recorder;
    play({.server = "unix:" + environment.folder().path("none"), .patience = std::chrono::milliseconds(-1)});
    EXPECT_EQ(recorder.warnings().size(), 1U);
}

TEST_F(SoundFailuresTests, AMachineWithoutTheLibraryIsAnInformation) {
    const LogRecorder recorder;
    play({.library = "libnothing.so.0"});
    EXPECT_THAT(recorder.warnings(), IsEmpty());
    EXPECT_THAT(recorder.decisions(),
                ElementsAre(Field(&LogRecorder::Line::text, HasSubstr("libnothing.so.0"))));
}

TEST_F(SoundFailuresTests, ALibraryOfAnotherKind) {
    const LogRecorder recorder;
    play({.library = "libc.so.6"});
    EXPECT_THAT(recorder.warnings(), oneLine("veslora.audio", "a function is missing", "pa_mainloop_new"));
}

TEST_F(SoundFailuresTests, AServerThatIsReachedIsTold) {
    const testing::PulseServer server(environment);
    const LogRecorder recorder;
    Mixer mixer;
    PulseOutput output({.server = server.address()});
    std::optional<AudioEnd> end;
    output.start(mixer, [&end](AudioEnd how) { end = how; });
    EXPECT_TRUE(waitUntil([&] { return end.has_value(); }));
    EXPECT_THAT(recorder.warnings(), IsEmpty());
    EXPECT_THAT(recorder.decisions(),
                ElementsAre(Field(&LogRecorder::Line::text, HasSubstr("reached the sound server"))));
}

TEST_F(SoundFailuresTests, NoneOfThemIsPrintedUnasked) {
    const LogRecorder silent(LogRecorder::Categories::byDefault);
    play({.server = "unix:" + environment.folder().path("none")});
    play({.library = "libc.so.6"});
    EXPECT_THAT(silent.lines(), IsEmpty());
}

} // namespace
} // namespace veslora
