// SPDX-License-Identifier: MIT
// Runs programs without a shell, and waits for none of them. Main thread only.
#pragma once

#include "VesloraLinux/System/ChildProcesses.h"
#include "VesloraUI/Platform/ProgramRunning.h"
#include "VesloraUI/Platform/Scheduler.h"

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

namespace veslora {

class ProgramRunner final : public ProgramRunning {
  public:
    enum class WhenCancelled { runsOn, ends };

    struct Command {
        QString program; ///< found along PATH unless it is a path
        QStringList arguments;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        std::string input;
        double limit = 0; ///< seconds
        WhenCancelled whenCancelled = WhenCancelled::ends;
    };

    explicit ProgramRunner(Scheduler& scheduler) : m_scheduler(scheduler) {}

    [[nodiscard]] Task run(const std::vector<std::string>& arguments, const std::string& input, double limit,
                           std::function<void(const Result&)> done) override;
    /// A program that prints more than anybody asks for is ended.
    [[nodiscard]] Task run(const Command& command, std::function<void(const Result&)> done);

    /// How many run now.
    [[nodiscard]] qsizetype count() const { return m_running.count(); }

  private:
    Scheduler& m_scheduler;
    ChildProcesses m_running;
};

} // namespace veslora
