// SPDX-License-Identifier: MIT
#include "VesloraCore/Updates/UpdateMessages.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

using UpdateMessages::parseAnswer;
using UpdateMessages::parseQuestion;
using UpdateMessages::print;

AppcastItem item() {
    return {.version = *ReleaseVersion::parse("0.2"),
            .notes = "Quieter.\n\"Faster\" \xe2\x9c\x93",
            .url = "https://example.org/veslora.deb",
            .length = 4096,
            .signature = std::string(86, 'A') + "==",
            .kind = std::string(Appcast::debianPackage),
            .architecture = "amd64"};
}

TEST(UpdateMessagesTests, AQuestionComesBackAsItWas) {
    const UpdateQuestion feed = FeedQuestion{.feed = "https://example.org/feed.xml",
                                             .key = "key",
                                             .version = "0.1",
                                             .kind = std::string(Appcast::debianPackage),
                                             .architecture = "amd64"};
    EXPECT_EQ(parseQuestion(print(feed)), feed);
    for (const auto job : {PackageQuestion::Job::download, PackageQuestion::Job::verify}) {
        PackageQuestion package{
            .job = job, .key = "key", .folder = "/home/anna/.cache/Veslora", .item = item()};
        package.item.notes.clear();
        EXPECT_EQ(parseQuestion(print(UpdateQuestion(package))), UpdateQuestion(package));
    }
}

TEST(UpdateMessagesTests, AnAnswerComesBackAsItWas) {
    for (const UpdateAnswer& answer :
         {UpdateAnswer(NothingNewer{}), UpdateAnswer(PackageReady{}), UpdateAnswer(item()),
          UpdateAnswer(UpdateFailure::badSignature), UpdateAnswer(UpdateFailure::helper)}) {
        const std::string line = print(answer);
        EXPECT_EQ(line.find('\n'), line.size() - 1) << line;
        EXPECT_EQ(parseAnswer(line), answer) << line;
    }
}

TEST(UpdateMessagesTests, NothingElseIsAQuestionOrAnAnswer) {
    for (const std::string text :
         {"", "{}", "[]", "null", "{\"job\":\"dance\"}", "{\"result\":\"dance\"}", "{\"result\":\"failed\"}",
          "{\"result\":\"failed\",\"reason\":\"dance\"}", "{\"result\":\"offer\"}", "{\"job\":\"check\"}",
          "{\"job\":\"download\"}", "{\"result\":\"nothingNewer\""}) {
        EXPECT_FALSE(parseQuestion(text)) << text;
        EXPECT_FALSE(parseAnswer(text)) << text;
    }
    EXPECT_FALSE(
        parseQuestion(print(UpdateQuestion(FeedQuestion{.feed = "http://example.org/", .version = "1"}))));
    EXPECT_FALSE(
        parseQuestion(print(UpdateQuestion(FeedQuestion{.feed = "https://example.org/", .version = "x"}))));
    PackageQuestion relative{.folder = "Veslora", .item = item()};
    EXPECT_FALSE(parseQuestion(print(UpdateQuestion(relative))));
}

TEST(UpdateMessagesTests, AnItemThatLacksSomethingIsNone) {
    EXPECT_TRUE(UpdateMessages::isSound(item()));
    const auto without = [](const auto& change) {
        AppcastItem changed = item();
        change(changed);
        return changed;
    };
    for (const AppcastItem& bad : {
             without([](AppcastItem& each) { each.url = "http://example.org/veslora.deb"; }),
             without([](AppcastItem& each) { each.url = "https://" + std::string(3000, 'a'); }),
             without([](AppcastItem& each) { each.url.clear(); }),
             without([](AppcastItem& each) { each.length = 0; }),
             without([](AppcastItem& each) { each.length = -1; }),
             without([](AppcastItem& each) { each.length = AppcastItem::largestPackage + 1; }),
             without([](AppcastItem& each) { each.signature = "AAAA"; }),
             without([](AppcastItem& each) { each.signature.clear(); }),
             without([](AppcastItem& each) { each.architecture = "../amd64"; }),
             without([](AppcastItem& each) { each.architecture.clear(); }),
             without([](AppcastItem& each) { each.version = {}; }),
         }) {
        EXPECT_FALSE(UpdateMessages::isSound(bad));
        EXPECT_FALSE(parseAnswer(print(UpdateAnswer(bad))));
    }
}

TEST(UpdateMessagesTests, EveryFailureHasAWordOfItsOwn) {
    for (int place = 0; place <= static_cast<int>(UpdateFailure::helper); ++place) {
        const auto failure = static_cast<UpdateFailure>(place);
        EXPECT_EQ(updateFailureFrom(rawValue(failure)), failure);
    }
    EXPECT_FALSE(updateFailureFrom(""));
    EXPECT_FALSE(updateFailureFrom("dance"));
}

} // namespace
} // namespace veslora
