// SPDX-License-Identifier: MIT
#include "Veslora/VesloraApp.h"

#include "Veslora/AppDelegate.h"
#include "Veslora/Asking.h"
#include "Veslora/HooksWords.h"
#include "Veslora/Report.h"
#include "Veslora/SettingsWords.h"
#include "Veslora/Successor.h"
#include "Veslora/Terminal.h"
#include "VesloraCore/Island/CommandLine.h"
#include "VesloraCore/Overloaded.h"
#include "VesloraLinux/DBus/RunningInstance.h"
#include "VesloraLinux/DBus/SessionBus.h"
#include "VesloraLinux/DBus/SingleInstance.h"
#include "VesloraLinux/LinuxPlatform.h"
#include "VesloraLinux/System/PosixFiles.h"
#include "VesloraLinux/System/ServiceLife.h"
#include "VesloraLinux/System/ServiceManager.h"
#include "VesloraLinux/System/Signals.h"
#include "VesloraLinux/System/SupportLock.h"
#include "VesloraUI/Platform/Logs.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "VesloraUI/Support/Translations.h"

#include <QGuiApplication>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace veslora::VesloraApp {

namespace {

using namespace std::chrono_literals;

using Terminal::print;
using Terminal::refuse;

/// Beyond all that a process can end with: another version is to be started in this one's place.
constexpr int makesWay = 0x100;

/// As a process of its own, which needs nothing but the bus, the socket or the files.
int fromOutside(int argc, char** argv, Translations& translations, const std::function<int()>& work) {
    // Else the toolkit complains of a shell without a locale; the language was read from it before.
    qputenv("LC_ALL", "C.UTF-8");
    const QCoreApplication application(argc, argv);
    translations.install();
    return work();
}

/// As a process of its own too, with a display where there is one.
int reportFault(int argc, char** argv, const Words& words) {
    LinuxPlatform::prepareEnvironment();
    qputenv("LC_ALL", "C.UTF-8");
    std::unique_ptr<QCoreApplication> application;
    if (LinuxPlatform::hasDisplay()) {
        application = std::make_unique<QGuiApplication>(argc, argv);
    } else {
        application = std::make_unique<QCoreApplication>(argc, argv);
    }
    const auto answer = Asking::ask({Command::status}, words);
    const bool isRunning = answer.result == RunningInstance::Result::done;
    return print(text(gatherReport(isRunning ? std::optional(answer.text) : std::nullopt)));
}

/// To the program that runs already. A manager that has started this one as a service besides hears that it
/// did what it was for, and does not start it again.
int giveWay(const RunningInstance::Answer& answer, const ServiceManager& manager, const Words& words) {
    if (answer.result == RunningInstance::Result::done) {
        manager.tell("READY=1");
    }
    return Asking::report(answer, words);
}

int runDelegate(LinuxPlatform& platform, SingleInstance& instance, const ServiceManager& manager,
                const Words& words) {
    Defaults settings(platform.seams().files, platform.seams().directoryWatcher,
                      platform.seams().directories.configuration);
    settings.paceWrites(platform.seams().scheduler);
    SettingsKeys::registerDefaults(settings);
    AppDelegate delegate(platform.seams(), settings);
    if (!instance.claim([&delegate](const CommandLine::Ask& ask) { return delegate.perform(ask); })) {
        return giveWay(Asking::ask({Command::settings}, words), manager, words);
    }
    const Signals signalWatch([] { QCoreApplication::quit(); });
    delegate.applicationDidFinishLaunching();
    ServiceLife life(platform.seams().scheduler, manager.watchdogInterval(),
                     [&manager](std::string_view lines) { return manager.tell(lines); });
    const int status = QCoreApplication::exec();
    qCInfo(Logs::start, "ends with status %d", status);
    if (!delegate.makesWay()) {
        life.stop();
    }
    delegate.applicationWillTerminate();
    return delegate.makesWay() ? makesWay : status;
}

int refuseWithoutDisplay(const Words& words) {
    return refuse(
        words.translate("CommandLine", "Veslora needs an X server, or a Wayland desktop with XWayland."));
}

int runWith(SupportLock lock, int argc, char** argv, const ServiceManager& manager,
            Translations& translations) {
    // A session's manager would start it again with an option of the toolkit's, besides the session's own
    // list of what to start, and so open the settings at each login.
    QCoreApplication::setAttribute(Qt::AA_DisableSessionManager);
    const QGuiApplication application(argc, argv);
    translations.install();
    QCoreApplication::setApplicationName(QStringLiteral("Veslora"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VESLORA_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.veslora.Veslora"));
    // Closing the settings window is no reason to go.
    QGuiApplication::setQuitOnLastWindowClosed(false);

    const auto platform = LinuxPlatform::make();
    if (!platform) {
        return refuseWithoutDisplay(translations.words());
    }
    SingleInstance instance(platform->seams().scheduler, std::move(lock), SessionBus::connection());
    return runDelegate(*platform, instance, manager, translations.words());
}

int start(int argc, char** argv, Translations& translations) {
    qCInfo(Logs::start, "Veslora %s with Qt %s", VESLORA_VERSION, qVersion());
    const ServiceManager manager = ServiceManager::fromEnvironment();
    LinuxPlatform::prepareEnvironment();
    LinuxPlatform::giveBackLargeBlocks();
    const Words words = translations.words();
    if (!LinuxPlatform::hasDisplay()) {
        return refuseWithoutDisplay(words);
    }
    const std::string support = Asking::supportDirectory();
    PosixFiles files;
    // The program that has the lock listens beside it, but for one that has only just begun or is about to
    // end.
    const auto deadline = std::chrono::steady_clock::now() + 5s;
    while (std::chrono::steady_clock::now() < deadline) {
        auto attempt = SupportLock::take(files, support);
        if (auto* lock = std::get_if<SupportLock>(&attempt)) {
            return runWith(std::move(*lock), argc, argv, manager, translations);
        }
        if (const auto* why = std::get_if<SupportLock::Unusable>(&attempt)) {
            return refuse(Asking::unusable(*why, words));
        }
        const auto answer = RunningInstance(support, std::nullopt).ask({Command::settings});
        if (answer.result != RunningInstance::Result::notThere) {
            return giveWay(answer, manager, words);
        }
        std::this_thread::sleep_for(20ms);
    }
    return Asking::report({RunningInstance::Result::silent, {}}, words);
}

/// With the versions that take over from it.
int startForGood(int argc, char** argv, Translations& translations) {
    Successor successor(argc, argv);
    const int status = start(argc, argv, translations);
    return status == makesWay ? refuse(successor.become()) : status;
}

int refuseWord(const CommandLine::Wrong& wrong, const Words& words) {
    std::fputs(CommandLine::usage(words).c_str(), stderr);
    if (wrong.isLength) {
        std::fputs(CommandLine::lengthUsage(words).c_str(), stderr);
    }
    return 2;
}

} // namespace

int run(int argc, char** argv) {
    const std::vector<std::string_view> arguments(argv + std::min(argc, 1), argv + argc);
    // Before anything changes what the environment says of it.
    Translations translations;
    const Words words = translations.words();
    const auto outside = [&](const std::function<int()>& work) {
        return fromOutside(argc, argv, translations, work);
    };
    // Before anything that needs a display, a home or a bus.
    return std::visit(Overloaded{
                          [&](CommandLine::Start request) {
                              if (request.isVerbose) {
                                  Logs::beVerbose();
                              }
                              return startForGood(argc, argv, translations);
                          },
                          [&](CommandLine::Help) {
                              return print(CommandLine::usage(words) + CommandLine::explanation(words));
                          },
                          [](CommandLine::Version) { return print("Veslora " VESLORA_VERSION "\n"); },
                          [&](CommandLine::Report) { return reportFault(argc, argv, words); },
                          [&](const CommandLine::Ask& request) {
                              return outside(
                                  [&] { return Asking::report(Asking::ask(request, words), words); });
                          },
                          [&](const CommandLine::Get& request) {
                              return outside([&] { return SettingsWords::get(request, words); });
                          },
                          [&](const CommandLine::Set& request) {
                              return outside([&] { return SettingsWords::set(request, words); });
                          },
                          [&](const CommandLine::Export& request) {
                              return outside([&] { return SettingsWords::exportThem(request, words); });
                          },
                          [&](const CommandLine::Import& request) {
                              return outside([&] { return SettingsWords::import(request, words); });
                          },
                          [&](const CommandLine::Hooks& request) {
                              return outside([&] { return HooksWords::run(request, words); });
                          },
                          [&](CommandLine::Wrong wrong) { return refuseWord(wrong, words); },
                      },
                      CommandLine::parse(arguments));
}

} // namespace veslora::VesloraApp
