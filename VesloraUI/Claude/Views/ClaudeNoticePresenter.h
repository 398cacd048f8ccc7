// SPDX-License-Identifier: MIT
// The first session that waits in its terminal, as its notice shows it. What was shown last stays when
// nothing waits.
#pragma once

#include "VesloraUI/Claude/Monitors/AgentsModel.h"

#include <QObject>
#include <QQmlEngine>
#include <QString>

namespace veslora {

class ClaudeNoticePresenter : public QObject, public QQmlParserStatus {
    Q_OBJECT
    QML_ELEMENT
    Q_INTERFACES(QQmlParserStatus)
    Q_PROPERTY(veslora::AgentsModel* agents MEMBER m_agents REQUIRED FINAL)
    /// False once the view is on its way out: it then keeps what it showed.
    Q_PROPERTY(bool isLive MEMBER m_isLive FINAL)
    Q_PROPERTY(QString name READ name NOTIFY changed FINAL)
    Q_PROPERTY(QString message READ message NOTIFY changed FINAL)
    Q_PROPERTY(QString moreText READ moreText NOTIFY changed FINAL)

  public:
    using QObject::QObject;

    void classBegin() override {}
    void componentComplete() override;

    [[nodiscard]] QString name() const { return m_name; }
    [[nodiscard]] QString message() const { return m_message; }
    /// How many more sessions wait, as in "+2"; empty where none does.
    [[nodiscard]] QString moreText() const {
        return m_more >= 1 ? QStringLiteral("+%1").arg(m_more) : QString();
    }

    Q_INVOKABLE void jump();
    Q_INVOKABLE void dismiss();

  signals:
    void changed();

  private:
    void readAgents();

    AgentsModel* m_agents = nullptr;
    bool m_isLive = true;
    std::string m_sessionId;
    QString m_name;
    QString m_message;
    int m_more = 0;
};

} // namespace veslora
