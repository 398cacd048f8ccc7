// SPDX-License-Identifier: MIT
// Calls to players and to the bus itself. None waits: a player may be stopped in the middle of anything.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

#include <functional>

namespace veslora::PlayerCalls {

inline constexpr const char* path = "/org/mpris/MediaPlayer2";
inline constexpr const char* rootInterface = "org.mpris.MediaPlayer2";
inline constexpr const char* playerInterface = "org.mpris.MediaPlayer2.Player";
inline constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";

/// How long an answer may take.
inline constexpr int timeoutMilliseconds = 2000;

using Answered = std::function<void(const QDBusMessage& reply)>;

/// Sends a call and tells its reply or its error, unless `context` has gone by then. Nobody is started for
/// it.
void send(const QDBusConnection& bus, QDBusMessage call, QObject* context, Answered answered);

[[nodiscard]] QDBusMessage allProperties(const QString& service, const char* interface);
[[nodiscard]] QDBusMessage property(const QString& service, const char* name);
[[nodiscard]] QDBusMessage command(const QString& service, const char* method);
[[nodiscard]] QDBusMessage allNames();
[[nodiscard]] QDBusMessage ownerOf(const QString& name);

/// Whether a reply says that none has come in time.
[[nodiscard]] bool isTimeout(const QDBusMessage& reply);

} // namespace veslora::PlayerCalls
