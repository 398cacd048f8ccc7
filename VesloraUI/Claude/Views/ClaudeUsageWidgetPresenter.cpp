// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Views/ClaudeUsageWidgetPresenter.h"

#include "VesloraCore/Agents/Usage/AgentUsageChoice.h"
#include "VesloraCore/Agents/Usage/ClaudeUsageText.h"
#include "VesloraCore/Text/VisibleText.h"
#include "VesloraUI/Support/LocalTime.h"
#include "VesloraUI/Support/ReadersWords.h"

#include <QDateTime>
#include <QLocale>

#include <algorithm>
#include <iterator>

namespace veslora {

namespace {

QDateTime localDate(Timestamp time) {
    // The dates of files and lines may be anything; those that no calendar shows are held to one that does.
    constexpr double farthest = 250'000'000'000;
    const double held = std::clamp(time, -farthest, farthest);
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(held * 1000));
}

QString shortWeekday(Timestamp time) {
    return QLocale().dayName(localDate(time).date().dayOfWeek(), QLocale::ShortFormat);
}

UsageReading reading(const QString& label, std::optional<double> percent) {
    UsageReading made;
    made.id = label;
    made.label = label;
    made.fraction = percent.value_or(0) / 100;
    made.percent = QString::fromStdString(AgentUsageText::percent(percent));
    return made;
}

// A plan without limits has no figure for them, whatever was read.
UsageReading limitReading(const QString& label, const AgentUsage& usage,
                          const std::optional<ClaudeLimit>& limit) {
    UsageReading made =
        reading(label, limit && usage.limitsAvailable ? std::optional(limit->percent) : std::nullopt);
    made.isStale = usage.limitsStale;
    return made;
}

UsageReading contextReading(const AgentUsage& usage) {
    UsageReading made = reading(ClaudeUsageWidgetPresenter::tr("CTX"), usage.contextPercent);
    made.isStale = usage.contextStale;
    return made;
}

UsageAgentLine lineOf(const AgentUsage& usage, const AgentTraits& traits) {
    return {QString::fromUtf8(traits.rawValue), AgentGlyph::of(traits),
            limitReading(ClaudeUsageWidgetPresenter::tr("5H"), usage, usage.fiveHour),
            limitReading(ClaudeUsageWidgetPresenter::tr("WK"), usage, usage.week), usage.limitsStale};
}

} // namespace

void ClaudeUsageWidgetPresenter::start() {
    follow(m_agents, &AgentsModel::usageChanged, &AgentsModel::hooksChanged);
}

void ClaudeUsageWidgetPresenter::setIsWide(bool isWide) {
    m_isWide = isWide;
    refresh();
}

void ClaudeUsageWidgetPresenter::setDate(double date) {
    m_date = date;
    refresh();
}

void ClaudeUsageWidgetPresenter::read() {
    const auto usages = m_agents->usages();
    const auto shown = AgentUsageChoice::shown(usages);
    const bool showsLines = m_isWide && shown.size() > 1;
    const auto tokens = ClaudeUsageText::tokens(AgentUsageChoice::today(usages), readersWords());
    show(m_shown, {.glyph = headerGlyph(shown),
                   .todayText = tr("Today %1").arg(QString::fromStdString(tokens)),
                   .emptyText = noticeFor(shown),
                   .showsLines = showsLines,
                   .context = showsLines ? contextReading(shown.front()) : m_shown.context});
    m_lines.assign(showsLines ? linesOf(shown) : std::vector<UsageAgentLine>());
    m_rows.assign(shown.empty() || showsLines ? std::vector<UsageReading>() : rowsOf(shown.front()));
}

std::vector<UsageAgentLine> ClaudeUsageWidgetPresenter::linesOf(const std::vector<AgentUsage>& shown) const {
    std::vector<UsageAgentLine> lines;
    std::ranges::transform(shown, std::back_inserter(lines), [this](const AgentUsage& usage) {
        return lineOf(usage, m_agents->traitsOf(usage.agent));
    });
    return lines;
}

AgentGlyph ClaudeUsageWidgetPresenter::headerGlyph(const std::vector<AgentUsage>& shown) const {
    if (shown.empty()) {
        return {};
    }
    const AgentTraits& traits = m_agents->traitsOf(shown.front().agent);
    const bool isAlone = shown.size() == 1;
    return !m_isWide || (isAlone && !traits.isImplied) ? AgentGlyph::of(traits) : AgentGlyph();
}

QString ClaudeUsageWidgetPresenter::noticeFor(const std::vector<AgentUsage>& shown) const {
    if (!shown.empty()) {
        return {};
    }
    return m_agents->anyHooksInstalled() ? tr("No data yet") : tr("Install in Settings");
}

std::vector<UsageReading> ClaudeUsageWidgetPresenter::rowsOf(const AgentUsage& usage) const {
    std::vector<UsageReading> rows = {limitReading(tr("5H"), usage, usage.fiveHour),
                                      limitReading(m_isWide ? tr("WEEK") : tr("WK"), usage, usage.week),
                                      contextReading(usage)};
    rows[0].detail = text(AgentUsageText::limitDetail(usage, usage.fiveHour, m_date));
    rows[1].detail = text(AgentUsageText::limitDetail(usage, usage.week, m_date));
    rows[2].detail = text(AgentUsageText::contextDetail(usage));
    return rows;
}

QString ClaudeUsageWidgetPresenter::text(const UsageDetailLine& detail) const {
    struct Texts {
        QString operator()(const UsageDetail::Unknown& /*none*/) const { return QStringLiteral("—"); }
        QString operator()(const UsageDetail::NoPlanLimits& /*none*/) const { return tr("No plan limits"); }
        QString operator()(const UsageDetail::AsOf& old) const {
            return tr("as of %1").arg(LocalTime::shortTime(old.at));
        }
        QString operator()(const UsageDetail::ResetsAt& reset) const {
            return tr("resets %1").arg(LocalTime::shortTime(reset.at));
        }
        QString operator()(const UsageDetail::ResetsOn& reset) const {
            return tr("resets %1").arg(shortWeekday(reset.at));
        }
        QString operator()(const UsageDetail::Plain& plain) const {
            return QString::fromStdString(VisibleText::line(plain.text));
        }
    };
    return std::visit(Texts(), detail);
}

} // namespace veslora
