// SPDX-License-Identifier: MIT
// The section of the settings in which one agent's hooks are put in, brought up to date and taken out.
#pragma once

#include "VesloraUI/Claude/Monitors/AgentsModel.h"

#include <QObject>
#include <QQmlEngine>
#include <QString>

#include <system_error>

namespace veslora {

class FileError;

class AgentHooksPresenter : public QObject, public QQmlParserStatus {
    Q_OBJECT
    QML_ELEMENT
    Q_INTERFACES(QQmlParserStatus)
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
    using QObject::QObject;

    void classBegin() override {}
    void componentComplete() override;

    [[nodiscard]] QString title() const { return textOf(&AgentHookTexts::title); }
    [[nodiscard]] QString detail() const { return textOf(&AgentHookTexts::detail); }
    [[nodiscard]] QString footer() const { return textOf(&AgentHookTexts::footer); }
    [[nodiscard]] QString statusText() const;
    [[nodiscard]] QString buttonText() const;
    [[nodiscard]] QString errorText() const { return m_errorText; }

    /// Does what the button says.
    Q_INVOKABLE void press();

  signals:
    void changed();

  private:
    /// Null while nothing is known of that agent.
    [[nodiscard]] AgentMonitor* monitor() const;
    [[nodiscard]] QString textOf(const char* AgentHookTexts::*text) const;
    [[nodiscard]] static QString textOf(const FileError& error);
    [[nodiscard]] static QString reasonOf(const std::error_code& error);

    AgentsModel* m_agents = nullptr;
    int m_agent = 0;
    QString m_errorText;
};

} // namespace veslora
