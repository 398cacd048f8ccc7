// SPDX-License-Identifier: MIT
// Loads covers by the helper that fetches and shrinks them: a process for each, so that neither TLS nor a
// decoder that meets a broken picture is ever part of the program. Main thread only.
#pragma once

#include "VesloraLinux/System/ChildProcesses.h"
#include "VesloraUI/Platform/ArtworkLoading.h"
#include "VesloraUI/Platform/Scheduler.h"

#include <QString>

#include <functional>
#include <memory>

namespace veslora {

class ArtworkLoader final : public ArtworkLoading {
  public:
    /// Seconds after which a helper that has printed nothing is ended.
    static constexpr double timeLimit = 8;
    /// Covers that are loaded at one time; what comes on top of them gets none.
    static constexpr int mostAtOnce = 4;

    /// `program` is the helper's path.
    ArtworkLoader(Scheduler& scheduler, QString program)
        : m_scheduler(scheduler), m_program(std::move(program)) {}
    ArtworkLoader(const ArtworkLoader&) = delete;
    ArtworkLoader& operator=(const ArtworkLoader&) = delete;
    /// Ends what still runs, and nobody hears of it.
    ~ArtworkLoader() override = default;

    [[nodiscard]] Task load(const QUrl& url, std::function<void(const QImage&)> done) override;

  private:
    struct Load {
        Task step; ///< the process's time, then the decoding
        QImage image;
        std::shared_ptr<TaskState> listener = std::make_shared<TaskState>();
    };
    void run(const std::shared_ptr<Load>& load, const QByteArray& address);
    void decode(const std::shared_ptr<Load>& load, const QByteArray& file);
    static void finish(Load& load);

    Scheduler& m_scheduler;
    QString m_program;
    ChildProcesses m_running; ///< a helper each
};

} // namespace veslora
