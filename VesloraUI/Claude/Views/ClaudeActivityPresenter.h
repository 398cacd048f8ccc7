// SPDX-License-Identifier: MIT
// The agent of a closed island's activity: the one that has just finished, or the one that has worked the
// longest. What was shown last stays when there is none.
#pragma once

#include "VesloraUI/Claude/Monitors/AgentsModel.h"
#include "VesloraUI/Claude/Views/AgentGlyph.h"
#include "VesloraUI/Support/Presenter.h"

#include <QString>

namespace veslora {

class ClaudeActivityPresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(veslora::AgentsModel* agents MEMBER m_agents REQUIRED FINAL)
    /// False once the view is on its way out: it then keeps what it showed.
    Q_PROPERTY(bool isLive MEMBER m_isLive FINAL)
    Q_PROPERTY(Kind kind MEMBER m_kind REQUIRED FINAL)
    /// Seconds since 1970, from the view's timeline; only a spinner asks for it.
    Q_PROPERTY(double date MEMBER m_date WRITE setDate FINAL)
    Q_PROPERTY(veslora::AgentGlyph glyph READ glyph NOTIFY changed FINAL)
    Q_PROPERTY(QString spinner READ spinner NOTIFY changed FINAL)
    Q_PROPERTY(double spinnerPeriod READ spinnerPeriod NOTIFY changed FINAL)
    Q_PROPERTY(int spinnerSize READ spinnerSize NOTIFY changed FINAL)
    /// Points below the middle, where the glyphs of a font are too high.
    Q_PROPERTY(double spinnerOffset READ spinnerOffset NOTIFY changed FINAL)

  public:
    enum Kind { Finished, Working };
    Q_ENUM(Kind)

    using Presenter::Presenter;

    void setDate(double date);

    [[nodiscard]] AgentGlyph glyph() const { return AgentGlyph::of(*m_shown.agent); }
    [[nodiscard]] QString spinner() const { return m_shown.spinner; }
    [[nodiscard]] double spinnerPeriod() const { return m_shown.period; }
    [[nodiscard]] int spinnerSize() const { return m_shown.agent->spinner.size; }
    [[nodiscard]] double spinnerOffset() const { return m_shown.agent->spinner.offset; }

  protected:
    void start() override;
    void read() override;

  private:
    struct Shown {
        const AgentTraits* agent = &agentTraits.front();
        QString spinner;
        double period = agentTraits.front().spinner.period;
        bool operator==(const Shown&) const = default;
    };
    void showAgent(const AgentTraits& agent);

    AgentsModel* m_agents = nullptr;
    bool m_isLive = true;
    Kind m_kind = Finished;
    double m_date = 0;
    Shown m_shown;
};

} // namespace veslora
