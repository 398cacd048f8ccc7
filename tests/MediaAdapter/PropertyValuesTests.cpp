// SPDX-License-Identifier: MIT
#include "MediaAdapter/PropertyValues.h"

#include <QDBusObjectPath>
#include <QStringList>

#include <gtest/gtest.h>

#include <limits>

namespace veslora {
namespace {

Track track(const char* key, const QVariant& value) {
    return PropertyValues::track({{QLatin1String(key), value}});
}

TEST(PropertyValuesTests, ReadsATrack) {
    const Track track = PropertyValues::track(
        {{QStringLiteral("mpris:trackid"), QVariant::fromValue(QDBusObjectPath(QStringLiteral("/track/1")))},
         {QStringLiteral("xesam:title"), QStringLiteral("Title")},
         {QStringLiteral("xesam:artist"),
          QStringList{QStringLiteral("One"), QString(), QStringLiteral("Two")}},
         {QStringLiteral("xesam:album"), QStringLiteral("Album")},
         {QStringLiteral("mpris:artUrl"), QStringLiteral("file:///a.png")},
         {QStringLiteral("mpris:length"), qlonglong{200'500'000}}});
    EXPECT_EQ(track, (Track{"/track/1", "Title", "One, Two", "Album", "file:///a.png", 200.5}));
}

TEST(PropertyValuesTests, TakesTextForATrackIdAndForAnArtist) {
    EXPECT_EQ(track("mpris:trackid", QStringLiteral("spotify:track:1")).id, "spotify:track:1");
    EXPECT_EQ(track("xesam:artist", QStringLiteral("Somebody")).artist, "Somebody");
    EXPECT_EQ(track("xesam:artist", QVariantList{QStringLiteral("One"), 2}).artist, "One, 2");
}

TEST(PropertyValuesTests, ValuesOfWrongTypesAreMissing) {
    for (const char* key : {"mpris:trackid", "xesam:title", "xesam:artist", "xesam:album", "mpris:artUrl"}) {
        EXPECT_EQ(track(key, 17), Track{}) << key;
        EXPECT_EQ(track(key, QVariantMap()), Track{}) << key;
        EXPECT_EQ(track(key, QVariant()), Track{}) << key;
    }
    EXPECT_EQ(track("xesam:title", QStringList{QStringLiteral("Title")}), Track{});
    EXPECT_EQ(track("mpris:length", QStringLiteral("200")), Track{});
    EXPECT_EQ(track("mpris:length", true), Track{});
}

TEST(PropertyValuesTests, NoTrackHasNoId) {
    EXPECT_EQ(track("mpris:trackid", QStringLiteral("/org/mpris/MediaPlayer2/TrackList/NoTrack")).id, "");
}

TEST(PropertyValuesTests, LengthsThatCanNotBeAreUnknown) {
    EXPECT_EQ(track("mpris:length", quint64{3'000'000}).length, 3);
    EXPECT_EQ(track("mpris:length", 2.5e6).length, 2.5);
    for (const QVariant& length : {QVariant(0), QVariant(-5), QVariant(std::numeric_limits<qlonglong>::max()),
                                   QVariant(std::numeric_limits<double>::quiet_NaN()),
                                   QVariant(std::numeric_limits<double>::infinity())}) {
        EXPECT_EQ(track("mpris:length", length).length, std::nullopt) << length.toDouble();
    }
}

TEST(PropertyValuesTests, CutsTextAtACodePoint) {
    EXPECT_EQ(track("xesam:title", QString(1 << 20, QLatin1Char('x'))).title, std::string(4096, 'x'));
    const QString note = QString::fromUtf8("\U0001f3b5");
    EXPECT_EQ(track("xesam:title", note.repeated(5000)).title, note.repeated(4096).toStdString());
    EXPECT_EQ(track("xesam:artist", QStringList(100000, QStringLiteral("x"))).artist.size(), 4096U);
}

TEST(PropertyValuesTests, KnowsThreeStatuses) {
    EXPECT_EQ(PropertyValues::status(QStringLiteral("Playing")), PlaybackStatus::playing);
    EXPECT_EQ(PropertyValues::status(QStringLiteral("Paused")), PlaybackStatus::paused);
    EXPECT_EQ(PropertyValues::status(QStringLiteral("Stopped")), PlaybackStatus::stopped);
    EXPECT_EQ(PropertyValues::status(QStringLiteral("playing")), std::nullopt);
    EXPECT_EQ(PropertyValues::status(2), std::nullopt);
}

TEST(PropertyValuesTests, AFlagIsABooleanAndNothingElse) {
    EXPECT_EQ(PropertyValues::flag(false), false);
    EXPECT_EQ(PropertyValues::flag(1), std::nullopt);
    EXPECT_EQ(PropertyValues::flag(QStringLiteral("true")), std::nullopt);
}

} // namespace
} // namespace veslora
