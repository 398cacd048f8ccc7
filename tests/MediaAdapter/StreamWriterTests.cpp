// SPDX-License-Identifier: MIT
#include "MediaAdapter/StreamWriter.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

Json json(std::string_view text) {
    return Json::parse(text).value();
}

TEST(StreamWriterTests, BeginsWithAWholeLineEvenOfNothing) {
    StreamWriter writer;
    EXPECT_EQ(writer.lineTo(json("{}")), "{\"diff\":false,\"payload\":{},\"type\":\"data\"}\n");
}

TEST(StreamWriterTests, ThenSaysOnlyWhatIsDifferent) {
    StreamWriter writer;
    EXPECT_EQ(writer.lineTo(json(R"({"title":"One","album":"A"})")),
              "{\"diff\":false,\"payload\":{\"album\":\"A\",\"title\":\"One\"},\"type\":\"data\"}\n");
    EXPECT_EQ(writer.lineTo(json(R"({"title":"Two","album":"A"})")),
              "{\"diff\":true,\"payload\":{\"title\":\"Two\"},\"type\":\"data\"}\n");
}

TEST(StreamWriterTests, SaysNothingTwice) {
    StreamWriter writer;
    (void)writer.lineTo(json(R"({"title":"One"})"));
    EXPECT_EQ(writer.lineTo(json(R"({"title":"One"})")), std::nullopt);
}

TEST(StreamWriterTests, SaysNullForWhatWentAwayAndOnlyOnce) {
    StreamWriter writer;
    (void)writer.lineTo(json(R"({"title":"One","artworkData":"QUJD"})"));
    EXPECT_EQ(writer.lineTo(json(R"({"title":"One"})")),
              "{\"diff\":true,\"payload\":{\"artworkData\":null},\"type\":\"data\"}\n");
    EXPECT_EQ(writer.lineTo(json(R"({"title":"One"})")), std::nullopt);
}

TEST(StreamWriterTests, IsWholeAfterNothingIsLeft) {
    StreamWriter writer;
    (void)writer.lineTo(json(R"({"title":"One"})"));
    EXPECT_EQ(writer.lineTo(json("{}")), "{\"diff\":false,\"payload\":{},\"type\":\"data\"}\n");
    EXPECT_EQ(writer.lineTo(json(R"({"title":"One"})")),
              "{\"diff\":true,\"payload\":{\"title\":\"One\"},\"type\":\"data\"}\n");
}

} // namespace
} // namespace veslora
