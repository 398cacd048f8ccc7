// SPDX-License-Identifier: MIT
// One permission request as its alert shows it. It belongs to one request for its whole life: a new request
// gets a new one, so that its keys are unarmed again and nothing that was begun on one request can end on
// another.
#pragma once

#include "VesloraCore/Agents/ClaudePermissionRequest.h"
#include "VesloraUI/Claude/Monitors/AgentsModel.h"
#include "VesloraUI/Support/Presenter.h"

#include <QString>

#include <optional>

namespace veslora {

class ClaudeRequestPresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(veslora::AgentsModel* agents MEMBER m_agents REQUIRED FINAL)
    /// Can't be changed any more once it is set.
    Q_PROPERTY(QString requestId MEMBER m_requestId WRITE setRequestId REQUIRED FINAL)
    /// Whether the alert has been on screen for long enough; false until its view knows better.
    Q_PROPERTY(bool isArmed READ isArmed WRITE setArmed NOTIFY changed FINAL)
    /// Seconds since 1970, from the view's timeline.
    Q_PROPERTY(double date MEMBER m_date WRITE setDate REQUIRED FINAL)
    /// Whether all of the text can be seen as it is drawn. False until the view has proved it.
    Q_PROPERTY(bool isTextProven READ isTextProven WRITE setTextProven NOTIFY changed FINAL)
    Q_PROPERTY(QString title READ title NOTIFY changed FINAL)
    Q_PROPERTY(QString sessionName READ sessionName NOTIFY changed FINAL)
    Q_PROPERTY(QString waitingText READ waitingText NOTIFY changed FINAL)
    Q_PROPERTY(QString text READ text NOTIFY changed FINAL)
    /// All of it in a sentence: who asks, for what, how long there is to answer, and by which keys.
    Q_PROPERTY(QString spokenText READ spokenText NOTIFY changed FINAL)
    Q_PROPERTY(QString note READ note NOTIFY changed FINAL)
    Q_PROPERTY(double progress READ progress NOTIFY changed FINAL)
    Q_PROPERTY(bool isDenyEnabled READ isDenyEnabled NOTIFY changed FINAL)
    Q_PROPERTY(bool isAllowEnabled READ isAllowEnabled NOTIFY changed FINAL)

  public:
    using Presenter::Presenter;

    void setRequestId(const QString& id);
    void setArmed(bool isArmed);
    void setDate(double date);
    void setTextProven(bool isTextProven);

    [[nodiscard]] bool isArmed() const { return m_shown.isArmed; }
    [[nodiscard]] bool isTextProven() const { return m_shown.isTextProven; }
    [[nodiscard]] QString title() const;
    [[nodiscard]] QString sessionName() const { return m_shown.sessionName; }
    [[nodiscard]] QString waitingText() const;
    /// The whole text where it can be shown, otherwise its beginning.
    [[nodiscard]] QString text() const { return m_shown.text; }
    [[nodiscard]] QString spokenText() const;
    /// What went wrong with the last answer, or why "Allow" stays dim for good; empty where neither is so.
    [[nodiscard]] QString note() const;
    [[nodiscard]] double progress() const { return m_shown.progress; }
    [[nodiscard]] bool isDenyEnabled() const { return m_shown.isArmed && m_shown.isPending; }
    [[nodiscard]] bool isAllowEnabled() const { return isDenyEnabled() && isShownInFull(); }

    Q_INVOKABLE void jump();
    Q_INVOKABLE void deny();
    Q_INVOKABLE void allow();

  protected:
    void start() override;
    void read() override;

  private:
    struct Shown {
        QString sessionName;
        QString text;
        int seconds = 0;         ///< that there were to answer when the request came to show
        int others = 0;          ///< requests that wait besides
        bool isComplete = false; ///< `text` is all of the request's
        bool isTextProven = false;
        bool isArmed = false;
        bool isPending = false;
        bool hasFailed = false; ///< the last answer could not be written
        double progress = 1;
        bool operator==(const Shown&) const = default;
    };
    [[nodiscard]] bool isShownInFull() const { return m_shown.isComplete && m_shown.isTextProven; }
    void take(const ClaudePermissionRequest& request, Shown& shown);
    [[nodiscard]] QString sessionNameNow() const;
    [[nodiscard]] double progressNow() const;
    void answer(ClaudeDecision decision);

    AgentsModel* m_agents = nullptr;
    QString m_requestId;
    double m_date = 0;
    std::optional<ClaudePermissionRequest> m_request;
    Shown m_shown;
};

} // namespace veslora
