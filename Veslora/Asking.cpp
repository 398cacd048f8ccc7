// SPDX-License-Identifier: MIT
#include "Veslora/Asking.h"

#include "Veslora/Terminal.h"
#include "VesloraCore/Agents/AgentTraits.h"
#include "VesloraLinux/DBus/SessionBus.h"
#include "VesloraLinux/System/LinuxDirectories.h"
#include "VesloraLinux/System/PosixFiles.h"
#include "VesloraLinux/System/SupportLock.h"
#include "VesloraUI/Claude/Hooks/HooksCommand.h"
#include "VesloraUI/Claude/Hooks/KnownHooks.h"
#include "VesloraUI/Claude/Spool/SupportDirectory.h"
#include "VesloraUI/Settings/SettingsCommand.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"

#include <unistd.h>

#include <chrono>
#include <csignal>
#include <optional>
#include <thread>
#include <utility>
#include <variant>

namespace veslora::Asking {

namespace {

using namespace std::chrono_literals;
using Answer = RunningInstance::Answer;
using Result = RunningInstance::Result;

/// Made beforehand: a signal's handler may not.
std::string& lineOfSilentBus() {
    static std::string line;
    return line;
}

void giveUpOnBus(int) {
    const std::string& line = lineOfSilentBus();
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, line.data(), line.size());
    _exit(1);
}

/// Connecting to a bus that hangs has no time limit of its own; every call over it has one.
std::optional<QDBusConnection> connectInTime(const Words& words) {
    constexpr unsigned seconds = 5;
    lineOfSilentBus() = words.translate("CommandLine", "The session bus does not answer.") + "\n";
    std::signal(SIGALRM, giveUpOnBus);
    alarm(seconds);
    auto bus = SessionBus::connection();
    alarm(0);
    return bus;
}

Directories directories() {
    return LinuxDirectories::find(LinuxDirectories::processEnvironment);
}

bool changesSomething(Command command) {
    return command != Command::exportSettings && command != Command::hooksStatus;
}

CommandOutcome performOnHooks(const CommandLine::Ask& question, Files& files) {
    const Directories places = directories();
    SupportDirectory support(files, places.support, places.runtime);
    const AgentKind kind = agentKindOf(question.text).value_or(AgentKind::claude);
    const auto hooks = makeAgentHooks(kind, files, support, places);
    return HooksCommand::perform(question.command, *hooks, traitsOf(kind));
}

CommandOutcome performHere(const CommandLine::Ask& question, Files& files) {
    const bool isExport = question.command == Command::exportSettings;
    if (!isExport && question.command != Command::importSettings) {
        return performOnHooks(question, files);
    }
    Defaults settings(files, directories().configuration);
    SettingsKeys::registerDefaults(settings);
    return isExport ? SettingsCommand::exported(settings) : SettingsCommand::import(settings, question.text);
}

Answer doHere(const CommandLine::Ask& question, Files& files) {
    const CommandOutcome outcome = performHere(question, files);
    return {outcome.isDone ? Result::done : Result::failed, outcome.text};
}

/// Absent while another process has the lock that it takes.
std::optional<Answer> doWithout(const CommandLine::Ask& question, const Words& words) {
    PosixFiles files;
    if (!changesSomething(question.command)) {
        return doHere(question, files);
    }
    const auto attempt = SupportLock::take(files, supportDirectory());
    if (const auto* why = std::get_if<SupportLock::Unusable>(&attempt)) {
        return Answer{Result::failed, unusable(*why, words)};
    }
    return std::holds_alternative<SupportLock>(attempt) ? std::optional(doHere(question, files))
                                                        : std::nullopt;
}

} // namespace

std::string supportDirectory() {
    return directories().support;
}

std::string unusable(const SupportLock::Unusable& why, const Words& words) {
    const std::string pattern = words.translate("CommandLine", "Veslora can't use its folder %1: %2.");
    return Words::filled(pattern, {supportDirectory(), words.translate("SupportLock", why.reason.c_str())});
}

Answer ask(const CommandLine::Ask& question, const Words& words) {
    return RunningInstance(supportDirectory(), connectInTime(words)).ask(question);
}

Answer askOrDo(const CommandLine::Ask& question, const Words& words) {
    constexpr auto patience = 5s;
    const auto deadline = std::chrono::steady_clock::now() + patience;
    const auto bus = connectInTime(words);
    while (true) {
        Answer answer = RunningInstance(supportDirectory(), bus).ask(question);
        if (auto done = answer.result == Result::notThere ? doWithout(question, words) : std::nullopt) {
            return *std::move(done);
        }
        // One that is asked by too many at once is silent without a wait.
        const bool isBusy = answer.result == Result::notThere || answer.result == Result::silent;
        if (!isBusy) {
            return answer;
        }
        if (std::chrono::steady_clock::now() > deadline) {
            return {Result::silent, {}};
        }
        std::this_thread::sleep_for(20ms);
    }
}

int report(const Answer& answer, const Words& words) {
    if (answer.result != Result::done) {
        return Terminal::refuse(RunningInstance::explain(answer, words));
    }
    return answer.text.empty() ? 0 : Terminal::print(answer.text + "\n");
}

} // namespace veslora::Asking
