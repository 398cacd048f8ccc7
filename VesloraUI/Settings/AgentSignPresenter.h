// SPDX-License-Identifier: MIT
// Whether one agent's hooks are heard: the last thing they told, or what is missing; and a made-up prompt, by
// which the user sees it without the agent.
#pragma once

#include "VesloraUI/Claude/Monitors/AgentsModel.h"
#include "VesloraUI/Support/Presenter.h"

#include <QString>

namespace veslora {

class AgentSignPresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(veslora::AgentsModel* agents MEMBER m_agents REQUIRED FINAL)
    /// One of the model's `kinds`.
    Q_PROPERTY(int agent MEMBER m_agent REQUIRED FINAL)
    /// Empty while no hooks are installed.
    Q_PROPERTY(QString signText READ signText NOTIFY changed FINAL)
    /// Something has to be done before anything can be heard.
    Q_PROPERTY(bool isMissing READ isMissing NOTIFY changed FINAL)
    Q_PROPERTY(bool canTry READ canTry NOTIFY changed FINAL)
    /// What became of the last trial, or is to be done for it; empty before the first.
    Q_PROPERTY(QString trialText READ trialText NOTIFY changed FINAL)

  public:
    using Presenter::Presenter;

    [[nodiscard]] QString signText() const { return m_shown.signText; }
    [[nodiscard]] bool isMissing() const { return m_shown.isMissing; }
    [[nodiscard]] bool canTry() const { return m_shown.canTry; }
    [[nodiscard]] QString trialText() const { return m_shown.trialText; }

    /// Files a made-up prompt, unless one waits already. It goes with this, if nobody has answered it by
    /// then.
    Q_INVOKABLE void tryIt();

  protected:
    void start() override;
    void read() override;

  private:
    struct Shown {
        QString signText;
        bool isMissing = false;
        bool canTry = false;
        QString trialText;
        bool operator==(const Shown&) const = default;
    };
    /// Null while nothing is known of that agent.
    [[nodiscard]] AgentMonitor* monitor() const;
    void trialEnded(HookTrialResult result);

    AgentsModel* m_agents = nullptr;
    int m_agent = 0;
    Task m_trial;
    QString m_trialText;
    Shown m_shown;
};

} // namespace veslora
