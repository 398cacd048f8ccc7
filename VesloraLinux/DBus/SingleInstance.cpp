// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/SingleInstance.h"

#include <QDBusMessage>

#include <fcntl.h>
#include <singleinstanceadaptor.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <cstdio>

namespace veslora {
namespace {

const QString busName = QStringLiteral("org.veslora.Veslora");
const QString busPath = QStringLiteral("/org/veslora/Veslora");

/// The address of the socket in `directory`, by way of the opened directory: its own path may be longer than
/// an address can hold.
sockaddr_un socketAddress(const FileDescriptor& directory) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::snprintf(address.sun_path, sizeof address.sun_path, "/proc/self/fd/%d/socket", directory.value());
    return address;
}

FileDescriptor openDirectory(const std::string& path) {
    return FileDescriptor(open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
}

FileDescriptor makeSocket() {
    return FileDescriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
}

} // namespace

SingleInstance::SingleInstance(Files& files, std::string supportDirectory, std::optional<QDBusConnection> bus)
    : m_files(files), m_directory(std::move(supportDirectory)), m_bus(std::move(bus)) {
    new SingleInstanceAdaptor(this);
}

SingleInstance::~SingleInstance() {
    if (m_hasName) {
        m_bus->unregisterService(busName);
        m_bus->unregisterObject(busPath);
    }
    if (m_listener) {
        m_files.remove(m_directory + "/socket");
    }
}

bool SingleInstance::claim(std::function<void()> openSettings) {
    m_openSettings = std::move(openSettings);
    const Lock lock = takeLock();
    if (lock == Lock::held) {
        // Whichever way it goes, the other one runs; there is nothing better to do than to leave it alone.
        static_cast<void>(askOverBus() || askOverSocket());
        return false;
    }
    if (m_bus && !takeName()) {
        static_cast<void>(askOverBus());
        m_lock.close();
        return false;
    }
    if (lock == Lock::taken) {
        listen();
    }
    return true;
}

void SingleInstance::OpenSettings() {
    // The caller is answered first: opening a window for the first time takes a while.
    QMetaObject::invokeMethod(
        this, [this] { m_openSettings(); }, Qt::QueuedConnection);
}

SingleInstance::Lock SingleInstance::takeLock() {
    constexpr std::uint32_t privateMode = 0700;
    m_files.makeDirectory(m_directory, privateMode);
    constexpr int flags = O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY;
    FileDescriptor lock(open((m_directory + "/lock").c_str(), flags, 0600));
    if (!lock) {
        return Lock::unavailable;
    }
    // The lock goes with the descriptor, however the program ends.
    if (flock(lock.value(), LOCK_EX | LOCK_NB) != 0) {
        return errno == EWOULDBLOCK ? Lock::held : Lock::unavailable;
    }
    m_lock = std::move(lock);
    return Lock::taken;
}

bool SingleInstance::takeName() {
    m_bus->registerObject(busPath, this, QDBusConnection::ExportAdaptors);
    m_hasName = m_bus->registerService(busName);
    return m_hasName;
}

bool SingleInstance::askOverBus() {
    if (!m_bus) {
        return false;
    }
    QDBusMessage call =
        QDBusMessage::createMethodCall(busName, busPath, busName, QStringLiteral("OpenSettings"));
    call.setAutoStartService(false);
    // One that hangs must not hang the other.
    constexpr int patienceMilliseconds = 2000;
    return m_bus->call(call, QDBus::Block, patienceMilliseconds).type() == QDBusMessage::ReplyMessage;
}

bool SingleInstance::askOverSocket() {
    const FileDescriptor directory = openDirectory(m_directory);
    const FileDescriptor socket = makeSocket();
    const sockaddr_un address = socketAddress(directory);
    return ::connect(socket.value(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

/// The directory is private, so only our own user reaches the socket. To connect is all there is to say.
void SingleInstance::listen() {
    const FileDescriptor directory = openDirectory(m_directory);
    FileDescriptor socket = makeSocket();
    const sockaddr_un address = socketAddress(directory);
    // Left behind by one that was ended by force; nobody else listens while the lock is ours.
    m_files.remove(m_directory + "/socket");
    constexpr int mostWaiting = 8;
    if (bind(socket.value(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(socket.value(), mostWaiting) != 0) {
        return;
    }
    m_listener = std::move(socket);
    m_notifier = std::make_unique<QSocketNotifier>(m_listener.value(), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, this, &SingleInstance::acceptAll);
}

void SingleInstance::acceptAll() {
    bool wasAsked = false;
    while (const FileDescriptor asker{accept4(m_listener.value(), nullptr, nullptr, SOCK_CLOEXEC)}) {
        wasAsked = true;
    }
    if (wasAsked) {
        OpenSettings();
    }
}

} // namespace veslora
