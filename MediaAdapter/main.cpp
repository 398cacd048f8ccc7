// SPDX-License-Identifier: MIT
// veslora-media-adapter stream: reports what plays on this desktop as lines of JSON on standard output, until
// its parent ends, the reader closes the pipe, or the bus goes. veslora-media-adapter send N: tells the
// reported player to play or pause (2), or to go to the next (4) or previous (5) track. Ends with 0 once the
// player has done so, with 1 if that failed and with 2 for any other words.
#include "MediaAdapter/Logs.h"
#include "MediaAdapter/MediaStream.h"
#include "MediaAdapter/PlayerCommand.h"

#include <QCoreApplication>
#include <QDBusError>
#include <QFileInfo>

#include <malloc.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <string>
#include <string_view>

namespace {

using veslora::ChosenPlayerFile;
using veslora::MediaStream;
using veslora::PlayerCommand;

constexpr int failure = 1;
constexpr int usage = 2;
/// No command takes longer, be the bus itself stopped.
constexpr unsigned longestCommandSeconds = 5;

veslora::Timestamp now() {
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

/// Without it the parent's death would leave us running. A parent that was gone before that could be asked
/// for is found by having another one; the pipe tells of one that went even earlier.
bool endsWithParent(pid_t parent) {
    return prctl(PR_SET_PDEATHSIG, SIGTERM) == 0 && getppid() == parent;
}

/// Whether there is a bus to connect to; the bus's library would start one otherwise.
bool isBusNamed() {
    const QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    if (!address.isEmpty()) {
        return !address.startsWith("disabled:");
    }
    struct stat status {};
    const QByteArray socket = qgetenv("XDG_RUNTIME_DIR") + "/bus";
    return socket.startsWith('/') && stat(socket.constData(), &status) == 0 && S_ISSOCK(status.st_mode);
}

ChosenPlayerFile chosenPlayer() {
    return ChosenPlayerFile(qgetenv("XDG_RUNTIME_DIR").toStdString());
}

/// OPTIMIZATION: gives large blocks back as soon as they are free. After fifty titles of a megabyte that is 5
/// MB less.
void keepNoLargeBlocks() {
    constexpr int large = 128 * 1024;
    mallopt(M_MMAP_THRESHOLD, large);
}

int stream(const QDBusConnection& bus) {
    // A reader that has gone is told by the failing write.
    std::signal(SIGPIPE, SIG_IGN);
    const QString folder = QFileInfo(QStringLiteral("/proc/self/exe")).canonicalPath();
    MediaStream stream(
        {bus, STDOUT_FILENO, folder + QStringLiteral("/veslora-media-artwork"), chosenPlayer(), now});
    QObject::connect(&stream, &MediaStream::closed, [] { QCoreApplication::exit(0); });
    QObject::connect(&stream, &MediaStream::disconnected, [] { QCoreApplication::exit(failure); });
    return QCoreApplication::exec();
}

int send(const QDBusConnection& bus, PlayerCommand::Kind kind) {
    PlayerCommand command(kind, bus, chosenPlayer());
    QObject::connect(&command, &PlayerCommand::done,
                     [](bool isDone) { QCoreApplication::exit(isDone ? 0 : failure); });
    return QCoreApplication::exec();
}

int run(int& count, char** arguments, std::optional<PlayerCommand::Kind> kind) {
    // The toolkit's own loop does, and another library less is loaded.
    qputenv("QT_NO_GLIB", "1");
    const QCoreApplication application(count, arguments);
    if (!isBusNamed()) {
        qCWarning(veslora::Logs::media, "there is no session bus");
        return failure;
    }
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        qCWarning(veslora::Logs::media, "connecting to the session bus failed: %s",
                  qUtf8Printable(bus.lastError().message()));
        return failure;
    }
    return kind ? send(bus, *kind) : stream(bus);
}

} // namespace

int main(int count, char** arguments) {
    const pid_t parent = getppid();
    const std::string_view word = count > 1 ? arguments[1] : "";
    if (word == "stream" && count == 2) {
        keepNoLargeBlocks();
        return endsWithParent(parent) ? run(count, arguments, std::nullopt) : failure;
    }
    const auto kind = word == "send" && count == 3 ? PlayerCommand::from(arguments[2]) : std::nullopt;
    if (!kind) {
        std::fputs("usage: veslora-media-adapter stream | send 2|4|5\n", stderr);
        return usage;
    }
    alarm(longestCommandSeconds);
    return run(count, arguments, kind);
}
