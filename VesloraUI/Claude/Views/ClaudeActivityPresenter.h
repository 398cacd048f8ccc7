// SPDX-License-Identifier: MIT
// The agent of a closed island's activity: the one that has just finished, or the one that has worked the
// longest. What was shown last stays when there is none.
#pragma once

#include "VesloraUI/Claude/Monitors/AgentsModel.h"

#include <QColor>
#include <QObject>
#include <QQmlEngine>
#include <QString>

namespace veslora {

class ClaudeActivityPresenter : public QObject, public QQmlParserStatus {
    Q_OBJECT
    QML_ELEMENT
    Q_INTERFACES(QQmlParserStatus)
    Q_PROPERTY(veslora::AgentsModel* agents MEMBER m_agents REQUIRED FINAL)
    /// False once the view is on its way out: it then keeps what it showed.
    Q_PROPERTY(bool isLive MEMBER m_isLive FINAL)
    Q_PROPERTY(Kind kind MEMBER m_kind REQUIRED FINAL)
    /// Seconds since 1970, from the view's timeline; only a spinner asks for it.
    Q_PROPERTY(double date MEMBER m_date WRITE setDate FINAL)
    Q_PROPERTY(int agent READ agent NOTIFY agentChanged FINAL)
    Q_PROPERTY(QString spinner READ spinner NOTIFY spinnerChanged FINAL)
    Q_PROPERTY(double spinnerPeriod READ spinnerPeriod NOTIFY agentChanged FINAL)
    Q_PROPERTY(int spinnerSize READ spinnerSize NOTIFY agentChanged FINAL)
    /// Points below the middle, where the glyphs of a font stand too high.
    Q_PROPERTY(double spinnerOffset READ spinnerOffset NOTIFY agentChanged FINAL)
    Q_PROPERTY(QColor spinnerColor READ spinnerColor NOTIFY agentChanged FINAL)

  public:
    enum Kind { Finished, Working };
    Q_ENUM(Kind)

    using QObject::QObject;

    void classBegin() override {}
    void componentComplete() override;

    void setDate(double date);

    [[nodiscard]] int agent() const { return static_cast<int>(m_agent); }
    [[nodiscard]] QString spinner() const { return m_spinner; }
    [[nodiscard]] double spinnerPeriod() const;
    [[nodiscard]] int spinnerSize() const { return m_agent == AgentKind::claude ? 14 : 20; }
    [[nodiscard]] double spinnerOffset() const { return m_agent == AgentKind::claude ? 0 : 1.5; }
    [[nodiscard]] QColor spinnerColor() const;

  signals:
    void agentChanged();
    void spinnerChanged();

  private:
    void readAgents();
    void readSpinner();

    AgentsModel* m_agents = nullptr;
    bool m_isLive = true;
    Kind m_kind = Finished;
    double m_date = 0;
    AgentKind m_agent = AgentKind::claude;
    QString m_spinner;
};

} // namespace veslora
