// SPDX-License-Identifier: MIT
// The section of the settings in which Claude Code's hooks are put in, brought up to date and taken out.
#pragma once

#include "VesloraUI/Claude/AgentsModel.h"

#include <QObject>
#include <QQmlEngine>
#include <QString>

namespace veslora {

class ClaudeSettingsPresenter : public QObject, public QQmlParserStatus {
    Q_OBJECT
    QML_ELEMENT
    Q_INTERFACES(QQmlParserStatus)
    Q_PROPERTY(veslora::AgentsModel* agents MEMBER m_agents REQUIRED FINAL)
    Q_PROPERTY(QString statusText READ statusText NOTIFY changed FINAL)
    Q_PROPERTY(QString buttonText READ buttonText NOTIFY changed FINAL)
    /// Why the last press changed nothing; empty while there is nothing to say.
    Q_PROPERTY(QString errorText READ errorText NOTIFY changed FINAL)

  public:
    using QObject::QObject;

    void classBegin() override {}
    void componentComplete() override;

    [[nodiscard]] QString statusText() const;
    [[nodiscard]] QString buttonText() const;
    [[nodiscard]] QString errorText() const { return m_errorText; }

    /// Does what the button says.
    Q_INVOKABLE void press();

  signals:
    void changed();

  private:
    AgentsModel* m_agents = nullptr;
    QString m_errorText;
};

} // namespace veslora
