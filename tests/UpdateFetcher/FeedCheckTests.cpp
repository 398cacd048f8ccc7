// SPDX-License-Identifier: MIT
// What the helper finds in a feed, and what it makes of one that is broken, forged, out of reach or without
// an end.
#include "UpdateFetcher/FeedCheck.h"
#include "tests/UpdateFetcher/ReleaseServer.h"
#include "tests/VesloraLinux/Support/Waiting.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

class FeedCheckTests : public ::testing::Test {
  protected:
    /// A release of that version in the feed that is asked.
    AppcastItem publish(const std::string& version) {
        AppcastItem item = server.itemFor(version, "a package");
        server.putSigned("feed.xml", testing::ReleaseServer::feedOf(item));
        return item;
    }
    std::optional<UpdateAnswer> ask(const std::string& name = "feed.xml", int limit = 20'000) {
        return server.ask(server.question(server.web().secure(name)), limit);
    }
    /// What a failure answers.
    static std::optional<UpdateAnswer> failure(UpdateFailure why) { return why; }

    testing::CoreApplication application;
    testing::ReleaseServer server;
};

TEST_F(FeedCheckTests, FindsANewerRelease) {
    const AppcastItem item = publish("0.2.0");
    EXPECT_EQ(ask(), std::optional<UpdateAnswer>(item));
    server.putSigned("around-feed.xml", "");
    server.web().put("around-feed.xml.sig", server.signatureOf(testing::ReleaseServer::feedOf(item)));
    EXPECT_EQ(ask("around-feed.xml"), std::optional<UpdateAnswer>(item)) << "a redirect on https is followed";
}

TEST_F(FeedCheckTests, AnOlderAndTheSameVersionAreNoUpdate) {
    for (const std::string version : {"0.1.0", "0.1", "0.0.9", "0.1.0~rc1", "0"}) {
        publish(version);
        EXPECT_EQ(ask(), std::optional<UpdateAnswer>(NothingNewer{})) << version;
    }
}

TEST_F(FeedCheckTests, NoFeed) {
    EXPECT_EQ(ask("elsewhere.xml"), failure(UpdateFailure::missing));
    publish("0.2.0");
    server.web().put("broken-feed.xml", testing::ReleaseServer::feedOf(server.itemFor("0.2.0", "a package")));
    EXPECT_EQ(ask("broken-feed.xml"), failure(UpdateFailure::missing)) << "an error's page is no feed";
}

TEST_F(FeedCheckTests, NoNetwork) {
    EXPECT_EQ(server.ask(server.question("https://localhost:1/feed.xml")),
              failure(UpdateFailure::unreachable));
    EXPECT_EQ(server.ask(server.question("https://nowhere.invalid/feed.xml")),
              failure(UpdateFailure::unreachable));
}

TEST_F(FeedCheckTests, AServerThatNobodyVouchesFor) {
    publish("0.2.0");
    server.trustTheWorld();
    EXPECT_EQ(ask(), failure(UpdateFailure::insecure));
}

TEST_F(FeedCheckTests, TheInstalledHelperTrustsNoServerOfATest) {
    publish("0.2.0");
    server.askTheRealOne();
    EXPECT_EQ(ask(), failure(UpdateFailure::insecure));
}

TEST_F(FeedCheckTests, AFeedThatIsNotSigned) {
    const std::string feed = testing::ReleaseServer::feedOf(publish("0.2.0"));
    for (const std::string& signature :
         {std::string(), std::string("AAAA"), server.signatureOf(feed + " "),
          std::string(86, 'A') + "==", server.signatureOf(feed).substr(4), std::string(300, 'A')}) {
        server.web().put("feed.xml.sig", signature);
        EXPECT_EQ(ask(), failure(UpdateFailure::badSignature)) << signature;
    }
    server.web().remove("feed.xml.sig");
    EXPECT_EQ(ask(), failure(UpdateFailure::badSignature));
    server.putSigned("feed.xml", feed);
    server.web().put("feed.xml", feed + "\n");
    EXPECT_EQ(ask(), failure(UpdateFailure::badSignature)) << "one byte more";
    server.putSigned("feed.xml", feed);
    FeedQuestion other = server.question(server.web().secure("feed.xml"));
    other.key = testing::ReleaseServer().key();
    EXPECT_EQ(server.ask(other), failure(UpdateFailure::badSignature)) << "another's key";
    other.key = "no key";
    EXPECT_EQ(server.ask(other), failure(UpdateFailure::badSignature));
}

TEST_F(FeedCheckTests, ATruncatedFeed) {
    publish("0.2.0");
    server.putSigned("short-feed.xml", testing::ReleaseServer::feedOf(server.itemFor("0.2.0", "a package")));
    EXPECT_EQ(ask("short-feed.xml"), failure(UpdateFailure::incomplete));
}

TEST_F(FeedCheckTests, AHugeFeed) {
    const std::string feed = testing::ReleaseServer::feedOf(publish("0.2.0"));
    server.putSigned("feed.xml", feed + std::string((1 << 20) - feed.size(), ' '));
    EXPECT_TRUE(std::holds_alternative<AppcastItem>(ask().value_or(NothingNewer{}))) << "as long as may be";
    server.putSigned("feed.xml", feed + std::string((1 << 20) - feed.size() + 1, ' '));
    EXPECT_EQ(ask(), failure(UpdateFailure::tooLarge));
    server.web().put("endless-feed.xml", "");
    EXPECT_EQ(ask("endless-feed.xml"), failure(UpdateFailure::tooLarge));
}

TEST_F(FeedCheckTests, ARedirectOffHttps) {
    publish("0.2.0");
    EXPECT_EQ(ask("off-feed.xml"), failure(UpdateFailure::insecure));
    EXPECT_EQ(ask("loop-feed.xml"), failure(UpdateFailure::missing));
    EXPECT_EQ(server.ask(server.question(server.web().plain("feed.xml"))), std::nullopt) << "never asked for";
}

TEST_F(FeedCheckTests, AServerThatHangs) {
    server.web().put("hang-feed.xml", testing::ReleaseServer::feedOf(publish("0.2.0")));
    EXPECT_EQ(ask("hang-feed.xml", 300), failure(UpdateFailure::slow));
}

TEST_F(FeedCheckTests, WhatIsSaidToBePackedIsNotUnpacked) {
    server.putSigned("zipped-feed.xml", testing::ReleaseServer::feedOf(publish("0.2.0")));
    EXPECT_TRUE(std::holds_alternative<AppcastItem>(ask("zipped-feed.xml").value_or(NothingNewer{})));
}

TEST_F(FeedCheckTests, SignedBytesThatAreNoFeed) {
    const std::string bomb = "<!DOCTYPE rss [<!ENTITY a 'aaaaaaaaaa'><!ENTITY b '&a;&a;&a;&a;&a;&a;&a;&a;'>"
                             "<!ENTITY c '&b;&b;&b;&b;&b;&b;&b;&b;'>]><rss><channel><item><description>&c;"
                             "</description></item></channel></rss>";
    for (const std::string& feed : {bomb, std::string("no xml"), std::string(), std::string(100, '\0'),
                                    std::string("<html><body/></html>"), std::string("<rss><channel>")}) {
        server.putSigned("feed.xml", feed);
        EXPECT_EQ(ask(), failure(UpdateFailure::unreadable)) << feed;
    }
}

TEST_F(FeedCheckTests, AFeedWithNothingForThisMachine) {
    AppcastItem item = server.itemFor("0.2.0", "a package");
    item.architecture = "arm64";
    server.putSigned("feed.xml", testing::ReleaseServer::feedOf(item));
    EXPECT_EQ(ask(), failure(UpdateFailure::noPackage));
    server.putSigned("feed.xml", "<rss><channel/></rss>");
    EXPECT_EQ(ask(), failure(UpdateFailure::noPackage));
}

} // namespace
} // namespace veslora
