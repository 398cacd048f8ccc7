// SPDX-License-Identifier: MIT
#include "UpdateFetcher/AppcastReader.h"

#include <QString>

#include <gtest/gtest.h>

#include <map>

namespace veslora {
namespace {

const QByteArray signature = QByteArray(86, 'A') + "==";

/// An enclosure whose attributes are `defaults`, but for those that are given.
QByteArray enclosure(const std::map<QByteArray, QByteArray>& changed = {}) {
    std::map<QByteArray, QByteArray> attributes{{"url", "https://example.org/veslora.deb"},
                                                {"length", "4096"},
                                                {"type", "application/vnd.debian.binary-package"},
                                                {"veslora:version", "0.2"},
                                                {"veslora:architecture", "amd64"},
                                                {"veslora:signature", signature}};
    for (const auto& [name, value] : changed) {
        attributes[name] = value;
    }
    QByteArray text = "<enclosure";
    for (const auto& [name, value] : attributes) {
        text += " " + name + "=\"" + value + "\"";
    }
    return text + "/>";
}

QByteArray feed(const QByteArray& items, const QByteArray& before = {}) {
    return before + "<rss version=\"2.0\" xmlns:veslora=\"urn:veslora:appcast\"><channel>" + items +
           "</channel></rss>";
}

std::vector<AppcastItem> itemsOf(const QByteArray& bytes) {
    const auto items = AppcastReader::read(bytes);
    EXPECT_TRUE(items) << bytes.toStdString();
    return items.value_or(std::vector<AppcastItem>());
}

TEST(AppcastReaderTests, ReadsWhatAReleaseSays) {
    const auto items =
        itemsOf(feed("<title>Veslora</title><item><title>Veslora 0.2</title><pubDate>Mon</pubDate>"
                     "<description>\n Quieter &amp; faster.\n&lt;b&gt; is text. \n</description>" +
                     enclosure() + "</item>"));
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items.front().version.text(), "0.2");
    EXPECT_EQ(items.front().notes, "Quieter & faster.\n<b> is text.");
    EXPECT_EQ(items.front().url, "https://example.org/veslora.deb");
    EXPECT_EQ(items.front().length, 4096);
    EXPECT_EQ(items.front().signature, signature.toStdString());
    EXPECT_EQ(items.front().kind, Appcast::debianPackage);
    EXPECT_EQ(items.front().architecture, "amd64");
}

TEST(AppcastReaderTests, AReleaseMayHaveSeveralPackages) {
    const auto items = itemsOf(feed("<item>" + enclosure() + enclosure({{"veslora:architecture", "arm64"}}) +
                                    "<description><![CDATA[<i>Notes]]></description></item><item>" +
                                    enclosure() + "</item>"));
    ASSERT_EQ(items.size(), 3U);
    EXPECT_EQ(items[1].architecture, "arm64");
    EXPECT_EQ(items[1].notes, "<i>Notes");
    EXPECT_EQ(items[2].notes, "");
}

TEST(AppcastReaderTests, LeavesOutWhatIsOfAnotherForm) {
    for (const auto& change :
         std::vector<std::pair<QByteArray, QByteArray>>{{"url", "http://example.org/veslora.deb"},
                                                        {"length", "many"},
                                                        {"length", "0"},
                                                        {"length", "999999999999999999999"},
                                                        {"veslora:version", "new"},
                                                        {"veslora:architecture", "../x"},
                                                        {"veslora:signature", "AAAA"}}) {
        EXPECT_TRUE(itemsOf(feed("<item>" + enclosure({change}) + "</item>")).empty())
            << change.second.toStdString();
    }
    EXPECT_TRUE(itemsOf(feed("<item/>")).empty());
    EXPECT_TRUE(itemsOf(feed("<group><item>" + enclosure() + "</item></group>")).empty());
    EXPECT_EQ(itemsOf(feed("<item><media><x/></media>" + enclosure() + "</item>")).size(), 1U);
}

TEST(AppcastReaderTests, AnotherNamespaceIsNotOurs) {
    const QByteArray other =
        "<rss xmlns:veslora=\"urn:another\"><channel><item>" + enclosure() + "</item></channel></rss>";
    EXPECT_TRUE(itemsOf(other).empty());
}

TEST(AppcastReaderTests, BrokenBytesAreNoFeed) {
    const QByteArray good = feed("<item>" + enclosure() + "</item>");
    ASSERT_TRUE(AppcastReader::read(good));
    for (const qsizetype length : {qsizetype{0}, qsizetype{10}, good.size() / 2, good.size() - 1}) {
        EXPECT_FALSE(AppcastReader::read(good.left(length))) << length;
    }
    EXPECT_FALSE(AppcastReader::read(good + good));
    EXPECT_FALSE(AppcastReader::read(good + "rest"));
    EXPECT_FALSE(AppcastReader::read("<feed/>"));
    EXPECT_FALSE(AppcastReader::read(feed("<item>&unknown;</item>")));
    EXPECT_FALSE(AppcastReader::read(feed("<item>\xff\xfe</item>")));
}

TEST(AppcastReaderTests, ADocumentTypeIsRefused) {
    const QByteArray items = "<item>" + enclosure() + "</item>";
    EXPECT_TRUE(AppcastReader::read(feed(items, "<?xml version=\"1.0\"?><!-- a -->")));
    EXPECT_FALSE(AppcastReader::read(feed(items, "<!DOCTYPE rss>")));
    EXPECT_FALSE(AppcastReader::read(feed(items, "<!DOCTYPE rss SYSTEM \"file:///etc/hostname\">")));
    EXPECT_FALSE(AppcastReader::read(
        feed("<item><description>&a;</description></item>", "<!DOCTYPE rss [<!ENTITY a \"b\">]>")));
}

TEST(AppcastReaderTests, IsBounded) {
    const QByteArray endless(20'000, 'n');
    const auto items =
        itemsOf(feed("<item><description>" + endless + "</description>" + enclosure() + "</item>"));
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items.front().notes, std::string(AppcastReader::longestNotes, 'n') + "\xe2\x80\xa6");
    const QByteArray pairs = QString::fromUcs4(U"\U0001F600").repeated(AppcastReader::longestNotes).toUtf8();
    const auto torn =
        itemsOf(feed("<item><description>n" + pairs + "</description>" + enclosure() + "</item>"));
    EXPECT_EQ(QString::fromStdString(torn.front().notes).size(), AppcastReader::longestNotes);
    EXPECT_EQ(itemsOf(feed(QByteArray("<item>" + enclosure() + "</item>").repeated(500))).size(),
              AppcastReader::mostItems);
    EXPECT_TRUE(
        itemsOf(feed(QByteArray("<x>").repeated(20'000) + QByteArray("</x>").repeated(20'000))).empty());
}

} // namespace
} // namespace veslora
