// SPDX-License-Identifier: MIT
// An agent that nobody knows: a row of traits and a source of its own are all that it takes to be listed, to
// be answered, and to be named and drawn wherever agents are.
#include "VesloraUI/Claude/Monitors/HookedAgentMonitor.h"
#include "VesloraUI/Style/VesloraStyle.h"
#include "tests/VesloraUI/Fixtures/FakeJudge.h"
#include "tests/VesloraUI/Fixtures/Scene.h"
#include "tests/support/FixedCalendar.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto scribe = static_cast<AgentKind>(agentTraits.size());

constexpr AgentTraits scribeTraits{
    .kind = scribe,
    .rawValue = "scribe",
    .name = "Scribe",
    .fullName = "Scribe CLI",
    .glyph = "S:",
    .color = AgentColor{10, 200, 30},
    .spinner = {[](Timestamp /*date*/) -> std::string_view { return "✶"; }, 0.25, 16, 0},
    .hookNames = {.agent = "Scribe",
                  .spool = "scribe-spool",
                  .answers = "scribe-answers",
                  .event = "scribe-hook.sh",
                  .permission = "scribe-permission.sh",
                  .madeMarker = "scribe-made"},
    .hookTexts = {.title = "Scribe: hooks", .detail = "Adds one hook.", .footer = "Nothing else."},
};

/// Has one session. A file of its spool holds what the session asks to write; its name is the request's.
class ScribeSource final : public AgentSource {
  public:
    explicit ScribeSource(const Scheduler& scheduler) : m_scheduler(scheduler) {}

    [[nodiscard]] UnderstandSpoolFile reader(AgentAnswers& /*answers*/) override {
        return [this](const SpoolFile& file) -> SpoolNews {
            ClaudePermissionRequest request;
            request.id = file.name.substr(0, file.name.find('.'));
            request.sessionId = "draft-1";
            request.tool = "Write";
            request.text = file.content.bytes;
            request.receivedAt = file.time;
            request.agent = scribe;
            return [this, request] { m_new.push_back(request); };
        };
    }
    [[nodiscard]] Requests readSessions() override {
        m_waits = m_waits || !m_new.empty();
        return std::exchange(m_new, {});
    }
    [[nodiscard]] std::vector<RequestEnd> endedByNews(const Requests& /*open*/) override { return {}; }
    [[nodiscard]] std::vector<RequestEnd> overtaken(const Requests& /*open*/) const override { return {}; }
    [[nodiscard]] std::vector<ClaudeSessionSummary> sessions() const override {
        const ClaudeSessionStatus waiting = ClaudeStatus::NeedsApproval{"Wants to use Write", m_start};
        const ClaudeSessionStatus working = ClaudeStatus::Working{m_start};
        return {{"draft-1", "draft", 0, m_waits ? waiting : working, std::nullopt, scribe}};
    }
    [[nodiscard]] SessionPlace placeOf(const ClaudeSessionSummary& /*session*/) const override { return {}; }
    [[nodiscard]] std::function<void()> answered(const std::string& /*sessionId*/) override {
        m_waits = false;
        return [this] { m_waits = true; };
    }
    void markSeen(const std::string& /*sessionId*/) override {}
    void dismissApproval(const std::string& /*sessionId*/) override { m_waits = false; }

  private:
    const Scheduler& m_scheduler;
    Timestamp m_start = m_scheduler.now();
    Requests m_new;
    bool m_waits = false;
};

class ScribeHooks final : public AgentHooks {
  public:
    ScribeHooks(Files& files, SupportDirectory& support)
        : AgentHooks(files, support, "/home/me/.scribe", scribeTraits.hookNames) {}
    void check() override {}
    void install() override {}
    bool remove() override { return false; }

  private:
    [[nodiscard]] Found find(std::optional<std::string_view> /*text*/) const override { return {}; }
};

class ThirdAgentTest : public testing::Test {
  protected:
    ThirdAgentTest() { monitor.start(); }
    void TearDown() override { scene.close(); }

    void ask(const std::string& id, const std::string& text) {
        scene.platform.disk.put(support.pathOf("scribe-spool/" + id + ".json"), text);
        monitor.refresh();
    }
    [[nodiscard]] std::optional<std::string> answerOf(const std::string& id) const {
        return scene.platform.disk.text(support.pathOf("scribe-answers/" + id));
    }
    [[nodiscard]] bool waits() const { return !agents.waitingForApproval().empty(); }
    void show(const QString& file, QVariantMap properties, QSize size = {520, 200}) {
        properties.insert("agents", QVariant::fromValue(&agents));
        scene.show(file, properties, size);
    }
    [[nodiscard]] QColor colorOf(const QString& text) const {
        const QQuickItem* item = scene.itemWith("text", text);
        EXPECT_NE(item, nullptr) << text.toStdString();
        return item ? item->property("color").value<QColor>() : QColor();
    }

    FakeJudge judge;
    Scene scene;
    SupportDirectory support{scene.platform.disk, scene.platform.paths.support, scene.platform.paths.runtime};
    AgentMonitorSeams seams{scene.platform.paths,       scene.platform.time,     scene.platform.disk,
                            scene.platform.watches,     scene.platform.tasks,    scene.platform.hosts,
                            scene.platform.multiplexer, scene.platform.programs, test::fixedCalendar()};
    HookedAgentMonitor monitor{{scribeTraits,
                                std::make_unique<ScribeSource>(seams.scheduler),
                                std::make_unique<ScribeHooks>(seams.files, support),
                                nullptr,
                                {}},
                               seams,
                               support,
                               scene.settings};
    AgentsModel agents{{&scene.claude, &scene.codex, &monitor}};
    const QColor color{10, 200, 30};
};

TEST_F(ThirdAgentTest, IsListedBesideTheOthers) {
    scene.claude.publish({FakeMonitor::session("s1", ClaudeStatus::Idle{})}, {});
    ASSERT_EQ(agents.summaries().size(), 2U);
    EXPECT_EQ(agents.summaries().front().name, "draft") << "what works comes before what rests";
    EXPECT_EQ(agents.traitsOf(scribe).name, "Scribe");
    EXPECT_EQ(agents.kinds(), QList<int>({0, 1, 2}));
    EXPECT_EQ(agents.usages().size(), 2U) << "nothing tells of its usage";
}

TEST_F(ThirdAgentTest, IsAnsweredAsEveryAgentIs) {
    ask("r1", "write chapter one");
    ask("r2", "write chapter two");
    ASSERT_EQ(agents.pendingRequests().size(), 2U);
    EXPECT_TRUE(waits());
    EXPECT_EQ(agents.answer("r1", ClaudeDecision::allow), AnswerOutcome::given);
    EXPECT_EQ(answerOf("r1"), "allow");
    EXPECT_FALSE(waits());
    scene.platform.advance(1);
    EXPECT_TRUE(waits()) << "no script has come for the answer";
    EXPECT_THAT(scene.claude.answered, IsEmpty());
    scene.platform.advance(19);
    EXPECT_THAT(agents.pendingRequests(), IsEmpty()) << "twenty seconds, as for every agent";
    EXPECT_FALSE(answerOf("r2"));
}

TEST_F(ThirdAgentTest, StandsInTheListWithItsNameAndItsMark) {
    show("Claude/Views/ClaudeWidget.qml", {{"isWide", true}}, {230, 112});
    EXPECT_THAT(scene.texts(), Contains("Agents"));
    EXPECT_THAT(scene.texts(), Contains("draft"));
    EXPECT_EQ(colorOf("S:"), color);
}

TEST_F(ThirdAgentTest, IsNamedByItsRequest) {
    ask("r1", "write chapter one");
    show("Claude/Views/ClaudeRequestAlert.qml", {{"judge", QVariant::fromValue(&judge)}, {"requestId", "r1"}},
         {472, 86});
    EXPECT_THAT(scene.texts(),
                ElementsAre("Approve · Scribe", "draft", "write chapter one", "Jump", "Deny", "Allow"));
    scene.press("Deny");
    EXPECT_EQ(answerOf("r1"), "deny");
}

TEST_F(ThirdAgentTest, IsDrawnBesideTheNotch) {
    show("Claude/Views/ClaudeWorkingActivityView.qml",
         {{"notchWidth", 200}, {"notchHeight", 32}, {"wingWidth", 50}}, {300, 32});
    EXPECT_EQ(colorOf("S:"), color);
    EXPECT_EQ(colorOf("✶"), color);
    EXPECT_TRUE(scene.shows("Scribe CLI"));
}

TEST_F(ThirdAgentTest, HasASectionInTheSettings) {
    show("Settings/ClaudeSettings.qml", {}, {520, 900});
    EXPECT_THAT(scene.texts(), Contains("Scribe: hooks"));
    EXPECT_THAT(scene.texts(), Contains("Adds one hook."));
    EXPECT_THAT(scene.texts(), Contains("Nothing else."));
    const QStringList texts = scene.texts();
    EXPECT_LT(texts.indexOf("Codex: hooks"), texts.indexOf("Scribe: hooks"));
}

} // namespace
} // namespace veslora
