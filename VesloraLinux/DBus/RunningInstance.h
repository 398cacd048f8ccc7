// SPDX-License-Identifier: MIT
// The other end of `SingleInstance`: asks the program that runs for something, over the bus or else by the
// socket in the support directory, and waits until it was done. Needs no display, and for the bus alone a
// QCoreApplication; blocks the thread that asks, but never longer than its patience.
#pragma once

#include "VesloraCore/Island/CommandLine.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <chrono>
#include <optional>
#include <string>

namespace veslora {

class RunningInstance {
  public:
    struct Patience {
        std::chrono::milliseconds answer{5000}; ///< until it answers
        std::chrono::milliseconds end{10000};   ///< until one that was told to quit is gone
    };

    enum class Result {
        done,
        failed,    ///< it could not do it, and may have said why
        notThere,  ///< none runs
        silent,    ///< one runs, and did not answer in time
        strange,   ///< what answers is not a Veslora of this kind
        stillThere ///< it was told to quit, and was not gone in time
    };
    struct Answer {
        Result result = Result::notThere;
        std::string text; ///< what was asked for, or what it said; nothing that a terminal would obey
    };

    /// Without a bus only the socket is tried, which needs nothing of the toolkit's.
    RunningInstance(std::string supportDirectory, std::optional<QDBusConnection> bus, Patience patience);
    RunningInstance(std::string supportDirectory, std::optional<QDBusConnection> bus)
        : RunningInstance(std::move(supportDirectory), std::move(bus), Patience()) {}

    /// The text of a question must not have an end of a line in it.
    [[nodiscard]] Answer ask(const CommandLine::Ask& question);

    /// One sentence for the user about an answer that is not `done`, without a line end.
    [[nodiscard]] static std::string explain(const Answer& answer, const Words& words = {});

  private:
    [[nodiscard]] Answer askOverBus(const CommandLine::Ask& question);
    [[nodiscard]] Answer errorOverBus(const QDBusMessage& reply, Command command) const;
    [[nodiscard]] bool isOnBus(const QString& name) const;
    [[nodiscard]] bool leavesBus(const QString& name);
    [[nodiscard]] Answer askOverSocket(const CommandLine::Ask& question) const;

    std::string m_directory;
    std::optional<QDBusConnection> m_bus;
    Patience m_patience;
};

} // namespace veslora
