// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/Usage/AgentUsage.h"
#include "VesloraCore/Agents/Usage/AgentUsageChoice.h"
#include "VesloraCore/Agents/Usage/AgentUsageText.h"

#include <gmock/gmock.h>

#include <limits>

using namespace veslora;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr Timestamp now = 1'700'000'000;
constexpr double hour = 3'600;

ClaudeStatusSnapshot snapshot(Timestamp receivedAt) {
    ClaudeStatusSnapshot made;
    made.sessionId = "s";
    made.receivedAt = receivedAt;
    return made;
}

std::string contextTextOf(std::optional<std::string> model, std::optional<std::int64_t> size) {
    auto context = snapshot(now);
    context.model = std::move(model);
    context.contextSize = size;
    return claudeUsage({}, context, {}, now).contextDetail;
}

UsageDetailLine detailOf(std::optional<Timestamp> resetsAt) {
    return AgentUsageText::detail(ClaudeLimit{5, resetsAt}, false, now, now);
}

} // namespace

TEST(AgentUsage, OfClaudeComesFromTwoReadings) {
    auto limits = snapshot(now - 10);
    limits.fiveHour = ClaudeLimit{40, now + 5};
    limits.week = ClaudeLimit{60, {}};
    limits.contextPercent = 99;
    auto context = snapshot(now - 5);
    context.model = "Opus";
    context.contextSize = 200'000;
    context.contextPercent = 31;
    context.fiveHour = ClaudeLimit{1, {}};
    AgentUsage expected;
    expected.agent = AgentKind::claude;
    expected.fiveHour = limits.fiveHour;
    expected.week = limits.week;
    expected.limitsAt = now - 10;
    expected.contextPercent = 31;
    expected.contextDetail = "Opus · of 200K";
    expected.contextAt = now - 5;
    expected.today = 10;
    EXPECT_EQ(claudeUsage(limits, context, {1, 2, 3, 4}, now), expected);
}

TEST(AgentUsage, OfCodexComesFromTwoReadings) {
    AgentUsage expected;
    expected.agent = AgentKind::codex;
    expected.fiveHour = ClaudeLimit{40, now + 5};
    expected.limitsAt = now - 10;
    expected.contextPercent = 55;
    expected.contextDetail = "of 272K";
    expected.contextAt = now - 5;
    expected.today = 10;
    EXPECT_EQ(codexUsage(CodexLimits{expected.fiveHour, {}, now - 10}, CodexContext{55, 272'000, now - 5},
                         {1, 2, 3, 4}, now),
              expected);
}

TEST(AgentUsage, WithoutReadingsOnlyTokensAreKnown) {
    AgentUsage expected;
    expected.today = 7;
    EXPECT_EQ(claudeUsage({}, {}, {7, 0, 0, 0}, now), expected);
    expected.agent = AgentKind::codex;
    EXPECT_EQ(codexUsage({}, {}, {7, 0, 0, 0}, now), expected);
    EXPECT_FALSE(expected.lastActivity());
}

TEST(AgentUsage, TellsThatThePlanHasNoLimits) {
    auto limits = snapshot(now);
    limits.limitsAvailable = false;
    EXPECT_FALSE(claudeUsage(limits, {}, {}, now).limitsAvailable);
}

TEST(AgentUsage, AReadingIsStaleAfterAQuarterOfAnHour) {
    const auto staleOf = [](double age) {
        const auto claude = claudeUsage(snapshot(now - age), snapshot(now - age), {}, now);
        const auto codex =
            codexUsage(CodexLimits{{}, {}, now - age}, CodexContext{5, 10, now - age}, {}, now);
        EXPECT_EQ(claude.contextStale, claude.limitsStale);
        EXPECT_EQ(codex.limitsStale, claude.limitsStale);
        EXPECT_EQ(codex.contextStale, claude.limitsStale);
        return claude.limitsStale;
    };
    EXPECT_FALSE(staleOf(-hour));
    EXPECT_FALSE(staleOf(900));
    EXPECT_TRUE(staleOf(901));
    // Each by its own age.
    const auto mixed = claudeUsage(snapshot(now - 901), snapshot(now), {}, now);
    EXPECT_TRUE(mixed.limitsStale);
    EXPECT_FALSE(mixed.contextStale);
}

TEST(AgentUsage, TheContextNamesTheModelAndItsWindow) {
    EXPECT_EQ(contextTextOf("Opus", 200'000), "Opus · of 200K");
    EXPECT_EQ(contextTextOf("Opus", {}), "Opus");
    EXPECT_EQ(contextTextOf({}, 1'000'000), "of 1M");
    EXPECT_EQ(contextTextOf({}, {}), "");
    EXPECT_EQ(contextTextOf("Opus", -1), "Opus · of -1");
}

TEST(AgentUsage, TokensOfTheDayRestAtTheEnd) {
    constexpr auto most = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(claudeUsage({}, {}, {most, most, 0, 0}, now).today, most);
    EXPECT_EQ(codexUsage({}, {}, {most, most, 0, 0}, now).today, most);
}

TEST(AgentUsage, LastActivityIsTheLaterReading) {
    AgentUsage usage;
    EXPECT_FALSE(usage.lastActivity());
    usage.limitsAt = 5;
    EXPECT_EQ(usage.lastActivity(), 5);
    usage.contextAt = 9;
    EXPECT_EQ(usage.lastActivity(), 9);
    usage.limitsAt = 10;
    EXPECT_EQ(usage.lastActivity(), 10);
    usage.limitsAt.reset();
    usage.contextAt = -3;
    EXPECT_EQ(usage.lastActivity(), -3);
}

TEST(AgentUsageChoice, TheLatestComesFirst) {
    const auto pick = [](std::optional<Timestamp> claude, std::optional<Timestamp> codex) {
        return AgentUsageChoice::pick({{AgentKind::claude, claude}, {AgentKind::codex, codex}});
    };
    EXPECT_THAT(pick({}, {}), IsEmpty());
    EXPECT_THAT(pick(1, {}), ElementsAre(AgentKind::claude));
    EXPECT_THAT(pick({}, 1), ElementsAre(AgentKind::codex));
    EXPECT_THAT(pick(2, 1), ElementsAre(AgentKind::claude, AgentKind::codex));
    EXPECT_THAT(pick(1, 2), ElementsAre(AgentKind::codex, AgentKind::claude));
    EXPECT_THAT(pick(2, 2), ElementsAre(AgentKind::claude, AgentKind::codex));
}

TEST(AgentUsageChoice, ShowsOnlyAgentsThatWereReadOf) {
    AgentUsage claude;
    AgentUsage codex;
    codex.agent = AgentKind::codex;
    EXPECT_THAT(AgentUsageChoice::shown({}), IsEmpty());
    EXPECT_THAT(AgentUsageChoice::shown({claude, codex}), IsEmpty());
    codex.contextAt = 5;
    EXPECT_THAT(AgentUsageChoice::shown({claude, codex}), ElementsAre(codex));
    claude.limitsAt = 5;
    EXPECT_THAT(AgentUsageChoice::shown({claude, codex}), ElementsAre(claude, codex));
    codex.limitsAt = 6;
    EXPECT_THAT(AgentUsageChoice::shown({claude, codex}), ElementsAre(codex, claude));
    EXPECT_THAT(AgentUsageChoice::shown({claude}), ElementsAre(claude));
}

TEST(AgentUsageChoice, TokensOfAllAgentsCount) {
    AgentUsage one;
    one.today = 3;
    AgentUsage other;
    other.agent = AgentKind::codex;
    other.today = 4;
    EXPECT_EQ(AgentUsageChoice::today({}), 0);
    EXPECT_EQ(AgentUsageChoice::today({one, other}), 7);
    one.today = other.today = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(AgentUsageChoice::today({one, other}), one.today);
    one.today = other.today = std::numeric_limits<std::int64_t>::min();
    EXPECT_EQ(AgentUsageChoice::today({one, other}), one.today);
}

TEST(AgentUsageText, AShareIsRoundedToAWhole) {
    using AgentUsageText::percent;
    EXPECT_EQ(percent({}), "—");
    EXPECT_EQ(percent(0), "0%");
    EXPECT_EQ(percent(-0.0), "0%");
    EXPECT_EQ(percent(0.49), "0%");
    EXPECT_EQ(percent(41.5), "42%");
    EXPECT_EQ(percent(42.5), "43%");
    EXPECT_EQ(percent(99.5), "100%");
    EXPECT_EQ(percent(100), "100%");
    EXPECT_EQ(percent(1e300), "100%");
    EXPECT_EQ(percent(-5), "0%");
    EXPECT_EQ(percent(std::numeric_limits<double>::quiet_NaN()), "0%");
}

TEST(AgentUsageText, ALimitSaysWhenItResets) {
    EXPECT_EQ(detailOf(now + 23 * hour), UsageDetailLine(UsageDetail::ResetsAt{now + 23 * hour}));
    EXPECT_EQ(detailOf(now + 25 * hour), UsageDetailLine(UsageDetail::ResetsOn{now + 25 * hour}));
    EXPECT_EQ(detailOf(now + 86'399), UsageDetailLine(UsageDetail::ResetsAt{now + 86'399}));
    EXPECT_EQ(detailOf(now + 86'400), UsageDetailLine(UsageDetail::ResetsOn{now + 86'400}));
    EXPECT_EQ(detailOf(now - hour), UsageDetailLine(UsageDetail::ResetsAt{now - hour}));
    EXPECT_EQ(detailOf({}), UsageDetailLine(UsageDetail::Plain{""}));
}

TEST(AgentUsageText, AResetThatNoCalendarShowsIsUnknown) {
    for (const double reset : {1e300, -1e300, 253'402'300'800.0, std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(detailOf(reset), UsageDetailLine(UsageDetail::Plain{""})) << reset;
    }
}

TEST(AgentUsageText, AnOldReadingSaysOfWhenItIs) {
    using AgentUsageText::detail;
    const ClaudeLimit limit{5, now + hour};
    EXPECT_EQ(detail(limit, true, now - 901, now), UsageDetailLine(UsageDetail::AsOf{now - 901}));
    EXPECT_EQ(detail({}, true, now - 901, now), UsageDetailLine(UsageDetail::AsOf{now - 901}));
    EXPECT_EQ(detail(limit, true, {}, now), UsageDetailLine(UsageDetail::ResetsAt{now + hour}));
    EXPECT_EQ(detail({}, false, now, now), UsageDetailLine(UsageDetail::Unknown{}));
}

TEST(AgentUsageText, WithoutPlanLimitsThatIsAllThereIsToSay) {
    AgentUsage usage;
    usage.limitsAvailable = false;
    usage.limitsAt = now - 901;
    usage.limitsStale = true;
    EXPECT_EQ(AgentUsageText::limitDetail(usage, ClaudeLimit{5, now + 5}, now),
              UsageDetailLine(UsageDetail::NoPlanLimits{}));
    usage.limitsAvailable = true;
    EXPECT_EQ(AgentUsageText::limitDetail(usage, ClaudeLimit{5, now + 5}, now),
              UsageDetailLine(UsageDetail::AsOf{now - 901}));
}

TEST(AgentUsageText, TheContextSaysWhatItIsOf) {
    AgentUsage usage;
    usage.contextDetail = "of 200K";
    EXPECT_EQ(AgentUsageText::contextDetail(usage), UsageDetailLine(UsageDetail::Unknown{}));
    usage.contextAt = now - 901;
    EXPECT_EQ(AgentUsageText::contextDetail(usage), UsageDetailLine(UsageDetail::Plain{"of 200K"}));
    usage.contextStale = true;
    EXPECT_EQ(AgentUsageText::contextDetail(usage), UsageDetailLine(UsageDetail::AsOf{now - 901}));
}
