// SPDX-License-Identifier: MIT
#include "VesloraLinux/LinuxPlatform.h"

#include "VesloraLinux/Audio/AlertPlayer.h"
#include "VesloraLinux/Audio/MetronomeEngine.h"
#include "VesloraLinux/Audio/OpenServerOutput.h"
#include "VesloraLinux/Audio/PulseOutput.h"
#include "VesloraLinux/Audio/SoundServers.h"
#include "VesloraLinux/DBus/DBusStatusMenu.h"
#include "VesloraLinux/DBus/InhibitingService.h"
#include "VesloraLinux/DBus/LinuxAppearance.h"
#include "VesloraLinux/DBus/LinuxDoNotDisturb.h"
#include "VesloraLinux/DBus/Login1Suspension.h"
#include "VesloraLinux/DBus/LoginManager.h"
#include "VesloraLinux/DBus/PackageKitInstaller.h"
#include "VesloraLinux/DBus/PowerAssertions.h"
#include "VesloraLinux/DBus/SessionBus.h"
#include "VesloraLinux/DBus/SpotifyOnBus.h"
#include "VesloraLinux/DBus/SpotifyPermission.h"
#include "VesloraLinux/DBus/SystemBus.h"
#include "VesloraLinux/DBus/TimerNotifier.h"
#include "VesloraLinux/System/AdapterProcessRunner.h"
#include "VesloraLinux/System/ArtworkLoader.h"
#include "VesloraLinux/System/FreedMemory.h"
#include "VesloraLinux/System/InotifyDirectoryWatcher.h"
#include "VesloraLinux/System/LinuxDirectories.h"
#include "VesloraLinux/System/LinuxScheduler.h"
#include "VesloraLinux/System/NoHaptics.h"
#include "VesloraLinux/System/PosixFiles.h"
#include "VesloraLinux/System/ProcProcesses.h"
#include "VesloraLinux/System/ProcSystemReadings.h"
#include "VesloraLinux/System/ProgramRunner.h"
#include "VesloraLinux/System/Tmux.h"
#include "VesloraLinux/System/XdgApplications.h"
#include "VesloraLinux/System/XdgAutostart.h"
#include "VesloraLinux/X11/X11WindowSystem.h"
#include "VesloraUI/Platform/Logs.h"

#include <QGuiApplication>

#include <malloc.h>

#include <optional>

namespace veslora {
namespace {

void setUnlessSet(const char* variable, const char* value) {
    if (!qEnvironmentVariableIsSet(variable)) {
        qputenv(variable, value);
    }
}

/// Asks each window system in turn whether it is the one that runs.
std::unique_ptr<WindowSystem> makeWindowSystem(Scheduler& scheduler) {
    if (X11WindowSystem::applies()) {
        return X11WindowSystem::make(scheduler, X11WindowSystem::formOfSession());
    }
    return nullptr;
}

/// Every way of keeping the machine awake, in the order in which they are asked: the desktop's own first.
/// `windowSystem` may be null.
std::vector<std::unique_ptr<Inhibitor>> makeInhibitors(SystemBus& systemBus, WindowSystem* windowSystem) {
    using Kind = InhibitingService::Kind;
    const auto bus = SessionBus::connection();
    std::vector<std::unique_ptr<Inhibitor>> ways;
    for (const Kind kind : {Kind::sessionManager, Kind::powerManagement, Kind::screenSaver}) {
        ways.push_back(std::make_unique<InhibitingService>(kind, bus));
    }
    ways.push_back(std::make_unique<LoginManager>(systemBus));
    if (windowSystem) {
        ways.push_back(windowSystem->makeDisplayInhibitor());
    }
    return ways;
}

/// Of an absolute path.
std::string parentOf(const std::string& path) {
    return path.substr(0, path.rfind('/'));
}

/// The parts of a list such as PATH; the fallback's where it is unset.
std::vector<std::string> listOf(const char* variable, const char* fallback = "") {
    const QString list = QString::fromLocal8Bit(qgetenv(variable));
    std::vector<std::string> parts;
    for (const QString& part :
         (list.isEmpty() ? QString::fromLatin1(fallback) : list).split(u':', Qt::SkipEmptyParts)) {
        parts.push_back(part.toStdString());
    }
    return parts;
}

XdgAutostart::Surroundings autostart(const std::string& configuration) {
    return {.configuration = configuration,
            .systemWide = listOf("XDG_CONFIG_DIRS", "/etc/xdg"),
            .desktops = listOf("XDG_CURRENT_DESKTOP"),
            .executables = listOf("PATH"),
            .executable = QCoreApplication::applicationFilePath().toStdString()};
}

void tellOf(const Directories& directories) {
    qCInfo(Logs::start, "folders: %s, %s, %s; agents: %s, %s", directories.support.c_str(),
           directories.runtime.c_str(), directories.configuration.c_str(), directories.claude.c_str(),
           directories.codex.c_str());
}

} // namespace

struct LinuxPlatform::Parts {
    Directories directories = LinuxDirectories::find(LinuxDirectories::processEnvironment);
    // Before the scheduler, which at its end waits for work in the background that reads files.
    PosixFiles files;
    LinuxScheduler scheduler;
    InotifyDirectoryWatcher directoryWatcher;
    ProcProcesses processes;
    ProcSystemReadings systemReadings;
    Tmux multiplexer{scheduler, processes};
    AlertPlayer sounds{scheduler, std::make_unique<PulseOutput>()};
    MetronomeEngine metronome{std::make_unique<OpenServerOutput>(soundServers())};
    MetronomeEngine metronomePreview{std::make_unique<OpenServerOutput>(soundServers())};
    NoHaptics haptics;
    DBusStatusMenu statusMenu{SessionBus::connection()};
    SystemBus systemBus{scheduler};
    Login1Suspension suspension{systemBus};
    TimerNotifier timerNotifier{SessionBus::connection()};
    SpotifyOnBus spotify{scheduler, SessionBus::connection()};
    AdapterProcessRunner mediaAdapter{scheduler, helper("veslora-media-adapter")};
    ArtworkLoader artwork{scheduler, helper("veslora-media-artwork")};
    XdgApplications apps;
    SpotifyPermission automation{SessionBus::connection()};
    LinuxAppearance appearance{SessionBus::connection(),
                               AppearanceFiles(files, directoryWatcher, parentOf(directories.configuration))};
    XdgAutostart loginItem{files, autostart(parentOf(directories.configuration))};
    PackageKitInstaller packages{scheduler, systemBus};
    ProgramRunner programs{scheduler};
    LinuxDoNotDisturb doNotDisturb{SessionBus::connection(), qEnvironmentVariable("XDG_CURRENT_DESKTOP")};
    FreedMemory memory{scheduler};
    std::unique_ptr<WindowSystem> windowSystem = makeWindowSystem(scheduler);
    PowerAssertions power{scheduler, makeInhibitors(systemBus, windowSystem.get())};
    /// Absent without a window system.
    std::optional<Platform> seams = refer();

  private:
    /// The path of an executable beside the program's own.
    [[nodiscard]] QString helper(const char* name) const {
        return QString::fromStdString(directories.executables) + QLatin1Char('/') + QLatin1String(name);
    }
    [[nodiscard]] std::optional<Platform> refer();
};

std::optional<Platform> LinuxPlatform::Parts::refer() {
    if (!windowSystem) {
        return std::nullopt;
    }
    return Platform{.directories = directories,
                    .scheduler = scheduler,
                    .files = files,
                    .directoryWatcher = directoryWatcher,
                    .processes = processes,
                    .hostApplications = windowSystem->hostApplications(),
                    .terminalMultiplexer = multiplexer,
                    .systemReadings = systemReadings,
                    .suspension = suspension,
                    .screens = windowSystem->screens(),
                    .screenWindows = windowSystem->screenWindows(),
                    .pointer = windowSystem->pointer(),
                    .scrollDevices = windowSystem->scrollDevices(),
                    .panel = windowSystem->panel(),
                    .frameClock = windowSystem->frameClock(),
                    .sounds = sounds,
                    .metronome = metronome,
                    .metronomePreview = metronomePreview,
                    .haptics = haptics,
                    .statusMenu = statusMenu,
                    .power = power,
                    .timerNotifier = timerNotifier,
                    .spotify = spotify,
                    .scripts = spotify,
                    .mediaAdapter = mediaAdapter,
                    .artwork = artwork,
                    .apps = apps,
                    .automation = automation,
                    .appearance = appearance,
                    .loginItem = loginItem,
                    .programs = programs,
                    .packages = packages,
                    .doNotDisturb = doNotDisturb,
                    .memory = memory};
}

void LinuxPlatform::prepareEnvironment() {
    // Wayland desktops are served through their X server, also where the session tells toolkits otherwise, as
    // it usually does in sway and Hyprland.
    if (const QByteArray wish = qgetenv("QT_QPA_PLATFORM"); wish.isEmpty() || wish.contains("wayland")) {
        qputenv("QT_QPA_PLATFORM", "xcb");
    }
    // Half the memory of the other renderer, and no graphics processor wakes up.
    setUnlessSet("QT_QUICK_BACKEND", "software");
    // Else the first part of Qt that looks for a bus would start one and wait for it.
    if (!SessionBus::isNamed(LinuxDirectories::processEnvironment)) {
        qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    }
}

void LinuxPlatform::giveBackLargeBlocks() {
    // Left to itself the allocator keeps blocks of up to 32 MB once it has seen one of them freed, and so one
    // event of 16 MB would add that to the program for as long as it runs.
    constexpr int threshold = 1 << 20;
    mallopt(M_MMAP_THRESHOLD, threshold);
}

bool LinuxPlatform::hasDisplay() {
    return qgetenv("QT_QPA_PLATFORM") != "xcb" || X11WindowSystem::hasServer();
}

std::unique_ptr<LinuxPlatform> LinuxPlatform::make() {
    qCInfo(Logs::start, "platform %s, scene graph %s", qUtf8Printable(QGuiApplication::platformName()),
           qgetenv("QT_QUICK_BACKEND").constData());
    SessionBus::tell();
    auto parts = std::make_unique<Parts>();
    tellOf(parts->directories);
    if (!parts->windowSystem) {
        qCWarning(Logs::start, "no window system that is known runs here");
    }
    return parts->seams ? std::unique_ptr<LinuxPlatform>(new LinuxPlatform(std::move(parts))) : nullptr;
}

LinuxPlatform::LinuxPlatform(std::unique_ptr<Parts> parts) : m_parts(std::move(parts)) {}
LinuxPlatform::~LinuxPlatform() = default;

const Platform& LinuxPlatform::seams() const {
    return *m_parts->seams;
}

} // namespace veslora
