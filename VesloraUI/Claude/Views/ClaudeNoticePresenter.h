// SPDX-License-Identifier: MIT
// The first session that waits in its terminal, as its notice shows it. What was shown last stays when
// nothing waits.
#pragma once

#include "VesloraUI/Claude/Monitors/AgentsModel.h"
#include "VesloraUI/Support/Presenter.h"

#include <QString>

namespace veslora {

class ClaudeNoticePresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(veslora::AgentsModel* agents MEMBER m_agents REQUIRED FINAL)
    /// False once the view is on its way out: it then keeps what it showed.
    Q_PROPERTY(bool isLive MEMBER m_isLive FINAL)
    Q_PROPERTY(QString name READ name NOTIFY changed FINAL)
    Q_PROPERTY(QString message READ message NOTIFY changed FINAL)
    Q_PROPERTY(QString moreText READ moreText NOTIFY changed FINAL)

  public:
    using Presenter::Presenter;

    [[nodiscard]] QString name() const { return m_shown.name; }
    [[nodiscard]] QString message() const { return m_shown.message; }
    /// How many more sessions wait, as in "+2"; empty where none does.
    [[nodiscard]] QString moreText() const {
        return m_shown.more >= 1 ? QStringLiteral("+%1").arg(m_shown.more) : QString();
    }

    Q_INVOKABLE void jump();
    Q_INVOKABLE void dismiss();

  protected:
    void start() override;
    void read() override;

  private:
    struct Shown {
        QString name;
        QString message;
        int more = 0; ///< sessions that wait besides
        bool operator==(const Shown&) const = default;
    };

    AgentsModel* m_agents = nullptr;
    bool m_isLive = true;
    std::string m_sessionId;
    Shown m_shown;
};

} // namespace veslora
