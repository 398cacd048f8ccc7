// SPDX-License-Identifier: MIT
#include "MediaAdapter/PropertyValues.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QStringList>

#include <algorithm>
#include <array>

namespace veslora::PropertyValues {
namespace {

/// What is said where there is no track.
const QString noTrack = QStringLiteral("/org/mpris/MediaPlayer2/TrackList/NoTrack");

std::string cut(const QString& text) {
    QString beginning;
    int count = 0;
    for (qsizetype at = 0; at < text.size() && count < longestText; ++count) {
        const bool isPair =
            text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
        const qsizetype length = isPair ? 2 : 1;
        beginning += text.sliced(at, length);
        at += length;
    }
    return beginning.toStdString();
}

std::optional<double> number(const QVariant& value) {
    constexpr std::array types{QMetaType::Short,    QMetaType::UShort,    QMetaType::Int,   QMetaType::UInt,
                               QMetaType::LongLong, QMetaType::ULongLong, QMetaType::Double};
    const bool isNumber = std::ranges::find(types, value.typeId()) != types.end();
    return isNumber ? std::optional(value.toDouble()) : std::nullopt;
}

/// One text or a list of them.
QStringList texts(const QVariant& value) {
    const bool isList = value.typeId() == QMetaType::QStringList || value.typeId() == QMetaType::QVariantList;
    if (isList || value.typeId() == QMetaType::QString) {
        return value.toStringList();
    }
    return {};
}

std::string joined(const QVariant& value) {
    QStringList names = texts(value).mid(0, longestText);
    names.removeAll(QString());
    return cut(names.join(QStringLiteral(", ")));
}

} // namespace

std::optional<bool> flag(const QVariant& value) {
    return value.typeId() == QMetaType::Bool ? std::optional(value.toBool()) : std::nullopt;
}

std::optional<std::string> text(const QVariant& value) {
    if (value.metaType() == QMetaType::fromType<QDBusObjectPath>()) {
        return cut(value.value<QDBusObjectPath>().path());
    }
    return value.typeId() == QMetaType::QString ? std::optional(cut(value.toString())) : std::nullopt;
}

std::optional<double> seconds(const QVariant& value) {
    constexpr double microseconds = 1e6;
    const std::optional<double> count = number(value);
    return count ? std::optional(*count / microseconds) : std::nullopt;
}

QVariantMap map(const QVariant& value) {
    if (value.metaType() != QMetaType::fromType<QDBusArgument>()) {
        return value.typeId() == QMetaType::QVariantMap ? value.toMap() : QVariantMap();
    }
    const auto argument = value.value<QDBusArgument>();
    return argument.currentSignature() == QLatin1String("a{sv}") ? qdbus_cast<QVariantMap>(argument)
                                                                 : QVariantMap();
}

Track track(const QVariantMap& metadata) {
    const auto textAt = [&metadata](const char* key) {
        return text(metadata.value(QLatin1String(key))).value_or(std::string());
    };
    Track track;
    track.id = textAt("mpris:trackid");
    if (track.id == noTrack.toStdString()) {
        track.id.clear();
    }
    track.title = textAt("xesam:title");
    track.artist = joined(metadata.value(QStringLiteral("xesam:artist")));
    track.album = textAt("xesam:album");
    track.artUrl = textAt("mpris:artUrl");
    track.length = seconds(metadata.value(QStringLiteral("mpris:length")));
    if (track.length && !(*track.length > 0 && *track.length <= longestTrack)) {
        track.length.reset();
    }
    return track;
}

std::optional<PlaybackStatus> status(const QVariant& value) {
    const QString word = value.typeId() == QMetaType::QString ? value.toString() : QString();
    if (word == QLatin1String("Playing")) {
        return PlaybackStatus::playing;
    }
    if (word == QLatin1String("Paused")) {
        return PlaybackStatus::paused;
    }
    return word == QLatin1String("Stopped") ? std::optional(PlaybackStatus::stopped) : std::nullopt;
}

} // namespace veslora::PropertyValues
