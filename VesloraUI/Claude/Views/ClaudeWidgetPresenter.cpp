// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Views/ClaudeWidgetPresenter.h"

#include "VesloraCore/Agents/ClaudeStatusText.h"
#include "VesloraCore/Text/VisibleText.h"
#include "VesloraUI/Claude/Views/AgentGlyph.h"
#include "VesloraUI/Style/VesloraStyle.h"
#include "VesloraUI/Support/ReadersWords.h"

#include <algorithm>

namespace veslora {

namespace {

bool isWorking(const ClaudeSessionSummary& session) {
    return std::holds_alternative<ClaudeStatus::Working>(session.status);
}

} // namespace

void ClaudeWidgetPresenter::start() {
    m_style = VesloraStyle::of(*qmlEngine(this));
    follow(m_agents, &AgentsModel::changed, &AgentsModel::hooksChanged);
    follow(m_style, &VesloraStyle::accentChanged);
}

void ClaudeWidgetPresenter::setDate(double date) {
    m_date = date;
    refresh();
}

void ClaudeWidgetPresenter::read() {
    readRows();
    show(m_shown, {.title = titleNow(),
                   .hooksNote = hooksNoteNow(),
                   .workingText = workingTextNow(),
                   .isEmpty = m_rows.rows().empty()});
}

void ClaudeWidgetPresenter::readRows() {
    const auto& sessions = m_agents->summaries();
    const bool showsMarks = std::ranges::any_of(
        sessions, [this](const auto& session) { return !m_agents->traitsOf(session.agent).isImplied; });
    std::vector<ClaudeSessionRow> rows;
    for (const ClaudeSessionSummary& session : sessions) {
        ClaudeSessionRow row = rowOf(session, showsMarks);
        // Two agents may use one identifier; a list of rows may not.
        if (std::ranges::find(rows, row.id, &ClaudeSessionRow::id) == rows.end()) {
            rows.push_back(std::move(row));
        }
    }
    m_rows.assign(std::move(rows));
}

ClaudeSessionRow ClaudeWidgetPresenter::rowOf(const ClaudeSessionSummary& session, bool showsMarks) const {
    const bool needsApproval = std::holds_alternative<ClaudeStatus::NeedsApproval>(session.status);
    const bool isFinished = std::holds_alternative<ClaudeStatus::Finished>(session.status);
    const AgentGlyph glyph = AgentGlyph::of(m_agents->traitsOf(session.agent));
    ClaudeSessionRow row;
    row.id = QString::fromStdString(session.id);
    row.name = QString::fromStdString(VisibleText::line(session.name));
    row.helpText = tr("Go to %1").arg(row.name);
    row.mark = showsMarks ? glyph.text : QString();
    row.markIsSymbol = glyph.isSymbol;
    row.markColor = glyph.color;
    row.label = QString::fromStdString(ClaudeStatusText::label(session.status, m_date, readersWords()));
    row.labelColor = needsApproval ? m_style->urgentColor()
                     : isFinished  ? m_style->accentColor()
                                   : VesloraStyle::textSecondary();
    row.lightColor = !ClaudeStatusText::isLit(session.status, m_date) ? VesloraStyle::unlitTick()
                     : needsApproval                                  ? m_style->urgentColor()
                                                                      : m_style->accentColor();
    if (m_isWide && isWorking(session) && session.activity) {
        row.activity = QString::fromStdString(VisibleText::line(*session.activity));
    }
    return row;
}

QString ClaudeWidgetPresenter::titleNow() const {
    const auto isNamed = [](const AgentMonitor* monitor) {
        return !monitor->traits().isImplied && (monitor->hooksInstalled() || !monitor->summaries().empty());
    };
    return std::ranges::any_of(m_agents->monitors(), isNamed) ? tr("Agents") : tr("Claude");
}

QString ClaudeWidgetPresenter::hooksNoteNow() const {
    if (m_agents->anyHooksInstalled()) {
        return {};
    }
    return m_isWide ? tr("No hooks · approvals off") : tr("No hooks");
}

QString ClaudeWidgetPresenter::workingTextNow() const {
    const auto working = std::ranges::count_if(m_agents->summaries(), isWorking);
    return m_isWide && working >= 1 ? tr("%Ln working", nullptr, static_cast<int>(working)) : QString();
}

void ClaudeWidgetPresenter::jump(const QString& sessionId) {
    m_agents->jump(sessionId.toStdString());
}

} // namespace veslora
