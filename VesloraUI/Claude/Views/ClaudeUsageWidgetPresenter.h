// SPDX-License-Identifier: MIT
// The usage widget, ready for display. It keeps no readings: at each tick and each change it works everything
// out again from the agents, and signals what has become different.
#pragma once

#include "VesloraCore/Agents/Usage/AgentUsageText.h"
#include "VesloraUI/Claude/Monitors/AgentsModel.h"
#include "VesloraUI/Claude/Views/UsageReading.h"
#include "VesloraUI/Support/Presenter.h"
#include "VesloraUI/Support/RowModel.h"

#include <QString>

#include <vector>

namespace veslora {

class ClaudeUsageWidgetPresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(veslora::AgentsModel* agents MEMBER m_agents REQUIRED FINAL)
    Q_PROPERTY(bool isWide MEMBER m_isWide WRITE setIsWide REQUIRED FINAL)
    /// Seconds since 1970, from the view's timeline.
    Q_PROPERTY(double date MEMBER m_date WRITE setDate REQUIRED FINAL)
    /// The agent that the widget speaks of, where its readers can't know that anyway.
    Q_PROPERTY(veslora::AgentGlyph glyph READ glyph NOTIFY changed FINAL)
    Q_PROPERTY(QString todayText READ todayText NOTIFY changed FINAL)
    /// Shown instead of all readings; empty where there are some.
    Q_PROPERTY(QString emptyText READ emptyText NOTIFY changed FINAL)
    /// The readings of one agent; empty while `lines` has some.
    Q_PROPERTY(QAbstractItemModel* rows READ rows CONSTANT FINAL)
    /// The limits of several agents, a line for each, above the one `context`.
    Q_PROPERTY(QAbstractItemModel* lines READ lines CONSTANT FINAL)
    Q_PROPERTY(bool showsLines READ showsLines NOTIFY changed FINAL)
    Q_PROPERTY(veslora::UsageReading context READ context NOTIFY changed FINAL)

  public:
    using Presenter::Presenter;

    void setIsWide(bool isWide);
    void setDate(double date);

    [[nodiscard]] AgentGlyph glyph() const { return m_shown.glyph; }
    [[nodiscard]] QString todayText() const { return m_shown.todayText; }
    [[nodiscard]] QString emptyText() const { return m_shown.emptyText; }
    [[nodiscard]] QAbstractItemModel* rows() { return &m_rows; }
    [[nodiscard]] QAbstractItemModel* lines() { return &m_lines; }
    [[nodiscard]] bool showsLines() const { return m_shown.showsLines; }
    [[nodiscard]] UsageReading context() const { return m_shown.context; }

  protected:
    void start() override;
    void read() override;

  private:
    struct Shown {
        AgentGlyph glyph;
        QString todayText;
        QString emptyText;
        bool showsLines = false;
        UsageReading context;
        bool operator==(const Shown&) const = default;
    };
    [[nodiscard]] AgentGlyph headerGlyph(const std::vector<AgentUsage>& shown) const;
    [[nodiscard]] QString noticeFor(const std::vector<AgentUsage>& shown) const;
    [[nodiscard]] std::vector<UsageReading> rowsOf(const AgentUsage& usage) const;
    [[nodiscard]] std::vector<UsageAgentLine> linesOf(const std::vector<AgentUsage>& shown) const;
    [[nodiscard]] QString text(const UsageDetailLine& detail) const;

    AgentsModel* m_agents = nullptr;
    bool m_isWide = false;
    double m_date = 0;
    Shown m_shown;
    RowModel<UsageReading> m_rows{"reading"};
    RowModel<UsageAgentLine> m_lines{"line"};
};

} // namespace veslora
