// SPDX-License-Identifier: MIT
// What a monitor of an agent, and the usage widget, see of that agent's use of tokens. Main thread only.
#pragma once

#include "VesloraCore/Agents/Usage/AgentUsage.h"

#include <QObject>

namespace veslora {

class AgentUsageMonitor : public QObject {
    Q_OBJECT

  public:
    /// The readings as of now, in the form that views show.
    [[nodiscard]] virtual AgentUsage usage() const = 0;

    /// Begins the first read of today's transcripts, in the background. Called once.
    virtual void loadToday() = 0;
    /// Follows what has grown since.
    virtual void refresh() = 0;

  signals:
    /// Something that `usage` tells is different now.
    void changed();
};

} // namespace veslora
