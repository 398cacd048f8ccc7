// SPDX-License-Identifier: MIT
// The section of the settings in which one agent's hooks are put in, brought up to date and taken out.
#pragma once

#include "VesloraUI/Claude/Monitors/AgentsModel.h"
#include "VesloraUI/Support/Presenter.h"

#include <QString>

namespace veslora {

class AgentHooksPresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(veslora::AgentsModel* agents MEMBER m_agents REQUIRED FINAL)
    /// One of the model's `kinds`.
    Q_PROPERTY(int agent MEMBER m_agent REQUIRED FINAL)
    Q_PROPERTY(QString title READ title NOTIFY changed FINAL)
    Q_PROPERTY(QString detail READ detail NOTIFY changed FINAL)
    Q_PROPERTY(QString footer READ footer NOTIFY changed FINAL)
    Q_PROPERTY(QString statusText READ statusText NOTIFY changed FINAL)
    Q_PROPERTY(QString buttonText READ buttonText NOTIFY changed FINAL)
    /// Why the last press changed nothing; empty while there is nothing to say.
    Q_PROPERTY(QString errorText READ errorText NOTIFY changed FINAL)

  public:
    using Presenter::Presenter;

    [[nodiscard]] QString title() const { return m_shown.title; }
    [[nodiscard]] QString detail() const { return m_shown.detail; }
    [[nodiscard]] QString footer() const { return m_shown.footer; }
    [[nodiscard]] QString statusText() const { return m_shown.statusText; }
    [[nodiscard]] QString buttonText() const { return m_shown.buttonText; }
    [[nodiscard]] QString errorText() const { return m_shown.errorText; }

    /// Does what the button says.
    Q_INVOKABLE void press();

  protected:
    void start() override;
    void read() override;

  private:
    /// All empty while nothing is known of that agent.
    struct Shown {
        QString title;
        QString detail;
        QString footer;
        QString statusText;
        QString buttonText;
        QString errorText;
        bool operator==(const Shown&) const = default;
    };
    /// Null while nothing is known of that agent.
    [[nodiscard]] AgentMonitor* monitor() const;
    [[nodiscard]] QString textOf(const char* AgentHookTexts::*text) const;

    AgentsModel* m_agents = nullptr;
    int m_agent = 0;
    QString m_errorText;
    Shown m_shown;
};

} // namespace veslora
