// SPDX-License-Identifier: MIT
// Keeps the media adapter running while somebody needs it: one that ends is started again, after a wait that
// grows with each failure. Main thread only.
#pragma once

#include "VesloraUI/Platform/AdapterProcess.h"
#include "VesloraUI/Platform/Scheduler.h"

namespace veslora {

class AdapterSupervisor {
  public:
    static constexpr double longestWait = 30; ///< seconds before another start
    static constexpr double healthyRun = 30;  ///< seconds after which an end is no failure

    /// Starts nothing yet.
    AdapterSupervisor(Scheduler& scheduler, AdapterProcess& adapter, AdapterProcess::LineHandler onLine);
    ~AdapterSupervisor();
    AdapterSupervisor(const AdapterSupervisor&) = delete;
    AdapterSupervisor& operator=(const AdapterSupervisor&) = delete;

    [[nodiscard]] bool isNeeded() const { return m_isNeeded; }
    /// Starts the adapter, or stops it for good.
    void setNeeded(bool isNeeded);

  private:
    void start();
    void ended();

    Scheduler& m_scheduler;
    AdapterProcess& m_adapter;
    AdapterProcess::LineHandler m_onLine;
    bool m_isNeeded = false;
    int m_failures = 0;     ///< in a row, as far as they lengthen the wait
    double m_startedAt = 0; ///< by the steady clock; of no meaning before the first start
    Task m_restartTask;
};

} // namespace veslora
