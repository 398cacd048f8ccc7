// SPDX-License-Identifier: MIT
// One permission request as its alert shows it. It belongs to one request for its whole life: a new request
// gets a new one, so that its keys are unarmed again and nothing that was begun on one request can end on
// another.
#pragma once

#include "VesloraCore/Agents/ClaudePermissionRequest.h"
#include "VesloraUI/Claude/Monitors/AgentsModel.h"

#include <QObject>
#include <QQmlEngine>
#include <QString>

#include <optional>

namespace veslora {

class ClaudeRequestPresenter : public QObject, public QQmlParserStatus {
    Q_OBJECT
    QML_ELEMENT
    Q_INTERFACES(QQmlParserStatus)
    Q_PROPERTY(veslora::AgentsModel* agents MEMBER m_agents REQUIRED FINAL)
    /// Can't be changed once it stands.
    Q_PROPERTY(QString requestId MEMBER m_requestId WRITE setRequestId REQUIRED FINAL)
    /// Whether the alert has been on screen for long enough; false until its view knows better.
    Q_PROPERTY(bool isArmed MEMBER m_isArmed WRITE setArmed FINAL)
    /// Seconds since 1970, from the view's timeline.
    Q_PROPERTY(double date MEMBER m_date WRITE setDate REQUIRED FINAL)
    /// Whether all of the text can be seen as it is drawn. False until the view has proved it.
    Q_PROPERTY(bool isTextProven MEMBER m_isTextProven WRITE setTextProven FINAL)
    Q_PROPERTY(QString title READ title NOTIFY changed FINAL)
    Q_PROPERTY(QString sessionName READ sessionName NOTIFY changed FINAL)
    Q_PROPERTY(QString waitingText READ waitingText NOTIFY changed FINAL)
    Q_PROPERTY(QString text READ text NOTIFY changed FINAL)
    Q_PROPERTY(QString note READ note NOTIFY keysChanged FINAL)
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged FINAL)
    Q_PROPERTY(bool isDenyEnabled READ isDenyEnabled NOTIFY keysChanged FINAL)
    Q_PROPERTY(bool isAllowEnabled READ isAllowEnabled NOTIFY keysChanged FINAL)

  public:
    using QObject::QObject;

    void classBegin() override {}
    void componentComplete() override;

    void setRequestId(const QString& id);
    void setArmed(bool isArmed);
    void setDate(double date);
    void setTextProven(bool isTextProven);

    [[nodiscard]] QString title() const;
    [[nodiscard]] QString sessionName() const { return m_sessionName; }
    [[nodiscard]] QString waitingText() const;
    /// The whole text where it can be shown, otherwise its beginning.
    [[nodiscard]] QString text() const { return m_text; }
    /// What went wrong with the last answer, or why "Allow" stays dim for good; empty where neither is so.
    [[nodiscard]] QString note() const;
    [[nodiscard]] double progress() const { return m_progress; }
    [[nodiscard]] bool isDenyEnabled() const { return m_isArmed && m_isPending; }
    [[nodiscard]] bool isAllowEnabled() const { return m_isArmed && m_isPending && isShownInFull(); }

    Q_INVOKABLE void jump();
    Q_INVOKABLE void deny();
    Q_INVOKABLE void allow();

  signals:
    void changed();
    void progressChanged();
    void keysChanged();

  private:
    [[nodiscard]] bool isShownInFull() const { return m_isComplete && m_isTextProven; }
    void readAgents();
    void answer(ClaudeDecision decision);

    AgentsModel* m_agents = nullptr;
    QString m_requestId;
    double m_date = 0;
    bool m_isTextProven = false;
    bool m_isArmed = false;

    std::optional<ClaudePermissionRequest> m_request;
    QString m_sessionName;
    QString m_text;
    int m_others = 0;
    bool m_isComplete = false;
    bool m_isPending = false;
    bool m_hasFailed = false; ///< the last answer could not be written
    double m_progress = 1;
};

} // namespace veslora
