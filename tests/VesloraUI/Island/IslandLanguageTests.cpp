// SPDX-License-Identifier: MIT
// The island in other languages: that every text of it is translated, that what its keys say has room, and
// that it is the same from either side.
#include "VesloraCore/Agents/Hooks/ClaudeActivity.h"
#include "VesloraCore/Agents/Usage/AgentUsage.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "VesloraUI/Support/ReadersWords.h"
#include "VesloraUI/Support/Translations.h"
#include "VesloraUI/Text/ProvenText.h"
#include "tests/VesloraUI/Fixtures/AnimationTime.h"
#include "tests/VesloraUI/Fixtures/SceneIsland.h"
#include "tests/VesloraUI/Fixtures/SpokenTexts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace veslora {
namespace {

constexpr double hour = 3'600;

/// What others say is in Greek.
const std::string greek = "όνομα";

ClaudeSessionSummary session(const std::string& id, ClaudeSessionStatus status, AgentKind kind) {
    return {id, greek + id, 10, std::move(status), std::nullopt, kind};
}

void putSessions(Scene& scene) {
    auto working = session("1", ClaudeStatus::Working{1}, AgentKind::claude);
    working.activity =
        ClaudeActivity::describe("Grep", *Json::parse(R"({"pattern": "όνομα"})"), readersWords());
    scene.claude.publish({working, session("2", ClaudeStatus::NeedsApproval{greek, 1}, AgentKind::claude)},
                         {});
    scene.codex.publish({session("3", ClaudeStatus::Finished{1}, AgentKind::codex),
                         session("4", ClaudeStatus::Idle{}, AgentKind::codex)},
                        {});
}

void putUsage(Scene& scene) {
    const Timestamp now = scene.platform.time.now();
    const CodexLimits limits{.fiveHour = ClaudeLimit{41, now + 3 * hour},
                             .week = ClaudeLimit{68, now + 90 * hour},
                             .receivedAt = now};
    const CodexContext context{.percent = 31, .window = 200'000, .receivedAt = now};
    scene.codex.usageMonitor.put(codexUsage(limits, context, {.output = 1'230'000}, now, readersWords()));
}

void play(Scene& scene) {
    scene.music.startObservingSpotify();
    scene.platform.spotify.tell(
        {{"Player State", "Playing"}, {"Name", greek}, {"Artist", greek}, {"Track ID", "1"}});
}

/// Something that the island may show.
struct View {
    std::string name;
    std::string widget; ///< alone in the rack, at both sizes; empty for one of the whole island
    std::function<void(Scene&)> prepare = [](Scene&) {};
};

std::vector<View> widgets() {
    return {
        {"clock", "clock"},
        {"idle timer", "timer"},
        {"timer", "timer", [](Scene& scene) { scene.timer.start(); }},
        {"paused timer", "timer",
         [](Scene& scene) {
             scene.timer.start();
             scene.timer.pause();
         }},
        {"meters", "meters"},
        {"meters with a battery", "meters",
         [](Scene& scene) {
             scene.platform.readings.power = BatteryReading{0.78, false, false, {}, 252};
         }},
        {"meters with a charger", "meters",
         [](Scene& scene) {
             scene.platform.readings.power = BatteryReading{0.78, true, true, 95, {}};
         }},
        {"no music", "music"},
        {"music", "music", play},
        {"metronome", "metronome"},
        {"running metronome", "metronome", [](Scene& scene) { scene.metronome.toggle(); }},
        {"no sessions", "claude"},
        {"sessions", "claude", putSessions},
        {"sessions with hooks", "claude",
         [](Scene& scene) {
             scene.claude.setHooks(true, false);
             putSessions(scene);
         }},
        {"no usage", "claudeUsage"},
        {"no usage with hooks", "claudeUsage", [](Scene& scene) { scene.claude.setHooks(true, false); }},
        {"usage", "claudeUsage", putUsage},
        {"awake as usual", "keepAwake"},
        {"awake", "keepAwake", [](Scene& scene) { scene.keepAwake.start({}); }},
        {"awake for an hour", "keepAwake", [](Scene& scene) { scene.keepAwake.start(hour); }},
        {"awake for agents", "keepAwake", [](Scene& scene) { scene.keepAwake.setWhileClaudeWorks(true); }},
    };
}

/// One of the island's states, prepared in a scene with an island.
struct State {
    std::string name;
    std::function<void(Scene&, SceneIsland&)> prepare;
};

void ask(Scene& scene, const std::string& text, AgentKind kind = AgentKind::claude) {
    auto request = FakeMonitor::request("r1", scene.platform.time.now(), text);
    request.agent = kind;
    request.cwd = "/" + greek;
    auto second = request;
    second.id = "r2";
    (kind == AgentKind::codex ? scene.codex : scene.claude).publish({}, {request, second});
}

std::vector<State> states() {
    return {
        {"request", [](Scene& scene, SceneIsland&) { ask(scene, greek); }},
        {"request of Codex", [](Scene& scene, SceneIsland&) { ask(scene, greek, AgentKind::codex); }},
        {"long request",
         [](Scene& scene, SceneIsland&) {
             std::string text;
             for (int i = 0; i < 200; ++i) {
                 text += greek + " ";
             }
             ask(scene, text);
         }},
        {"notice",
         [](Scene& scene, SceneIsland&) {
             scene.claude.publish(
                 {session("1", ClaudeStatus::NeedsApproval{"Claude needs your permission", 1},
                          AgentKind::claude),
                  session("2", ClaudeStatus::NeedsApproval{"", 2}, AgentKind::claude)},
                 {});
         }},
        {"finished",
         [](Scene& scene, SceneIsland&) {
             scene.claude.publish({session("1", ClaudeStatus::Finished{1}, AgentKind::claude)}, {});
         }},
        {"working",
         [](Scene& scene, SceneIsland&) {
             scene.claude.publish({session("1", ClaudeStatus::Working{1}, AgentKind::claude)}, {});
         }},
        {"timer", [](Scene& scene, SceneIsland&) { scene.timer.start(); }},
        {"finished timer",
         [](Scene& scene, SceneIsland&) {
             scene.timer.start();
             scene.platform.advance(hour * 12);
         }},
        {"metronome", [](Scene& scene, SceneIsland&) { scene.metronome.toggle(); }},
        {"music", [](Scene& scene, SceneIsland&) { play(scene); }},
        {"awake", [](Scene& scene, SceneIsland&) { scene.keepAwake.start(600); }},
        {"open", [](Scene&, SceneIsland& island) { island.model.setExpanded(true); }},
        {"edited",
         [](Scene& scene, SceneIsland& island) {
             island.model.setExpanded(true);
             scene.rack.enterEditing();
         }},
        {"library",
         [](Scene& scene, SceneIsland& island) {
             island.model.setExpanded(true);
             scene.rack.enterEditing();
             for (const WidgetID id : {WidgetID::clock, WidgetID::timer, WidgetID::music}) {
                 scene.rack.remove(id);
             }
             scene.rack.setShowingLibrary(true);
         }},
    };
}

bool isKey(const QQuickItem& item) {
    return item.inherits("veslora::KeyItem");
}

void collectTexts(const QQuickItem& item, std::vector<const QQuickItem*>& texts) {
    if (!item.isVisible()) {
        return;
    }
    if (item.inherits("QQuickText") && !item.property("text").toString().isEmpty()) {
        texts.push_back(&item);
    }
    for (const QQuickItem* child : item.childItems()) {
        collectTexts(*child, texts);
    }
}

void collectKeys(const QQuickItem& item, std::vector<const QQuickItem*>& keys) {
    if (!item.isVisible()) {
        return;
    }
    if (isKey(item)) {
        keys.push_back(&item);
    }
    for (const QQuickItem* child : item.childItems()) {
        collectKeys(*child, keys);
    }
}

QRectF placeOf(const QQuickItem& item) {
    return item.mapRectToScene(QRectF(0, 0, item.width(), item.height()));
}

/// That what every key says lies on it.
void expectKeysWhole(const Scene& scene, const std::string& when) {
    std::vector<const QQuickItem*> keys;
    collectKeys(*scene.window().contentItem(), keys);
    for (const QQuickItem* key : keys) {
        std::vector<const QQuickItem*> texts;
        collectTexts(*key, texts);
        for (const QQuickItem* text : texts) {
            const std::string what = when + ": " + text->property("text").toString().toStdString();
            EXPECT_LE(text->property("contentWidth").toDouble(), key->width()) << what;
            EXPECT_FALSE(text->property("truncated").toBool()) << what;
        }
    }
}

/// That no key lies on another or, where it belongs to a widget, beyond that.
void expectKeysApart(const Scene& scene, double width, const std::string& when) {
    std::vector<const QQuickItem*> keys;
    collectKeys(*scene.window().contentItem(), keys);
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const std::string what = when + ": " + keys[i]->property("text").toString().toStdString();
        const QRectF place = placeOf(*keys[i]);
        EXPECT_GE(place.left(), -0.5) << what;
        EXPECT_LE(place.right(), width + 0.5) << what;
        for (std::size_t j = i + 1; j < keys.size(); ++j) {
            EXPECT_FALSE(place.adjusted(0.5, 0.5, -0.5, -0.5).intersects(placeOf(*keys[j])))
                << what << " on " << keys[j]->property("text").toString().toStdString();
        }
    }
}

/// Shows each widget by itself, at both sizes.
class WidgetsInOtherLanguages : public ::testing::Test {
  protected:
    void show(const View& view, WidgetSize size, const std::function<void(Scene&, double)>& look) {
        const auto id = *widgetIDFrom(view.widget);
        Scene scene;
        view.prepare(scene);
        scene.settings.set(SettingsKeys::widgetLayout, view.widget + ":" + std::to_string(units(size)));
        RackModel rack(scene.settings, scene.platform.taps);
        const double room = width(id, size);
        scene.showRack(rack, {static_cast<int>(room), 112});
        scene.advance(3);
        look(scene, room);
        scene.close();
    }
    void showAll(const std::function<void(Scene&, double, const std::string&)>& look) {
        for (const View& view : widgets()) {
            for (const WidgetSize size : sizes(*widgetIDFrom(view.widget))) {
                const std::string when = view.name + " at " + std::to_string(units(size));
                show(view, size, [&](Scene& scene, double room) { look(scene, room, when); });
            }
        }
    }
};

TEST_F(WidgetsInOtherLanguages, EveryTextIsTranslated) {
    const PseudoTexts pseudo;
    showAll([](Scene& scene, double, const std::string& when) {
        EXPECT_FALSE(scene.texts().isEmpty()) << when;
        SpokenTexts(scene).expectTranslated(when);
    });
    const CatalogFile catalog("de");
    for (const auto& [context, source] : pseudo.asked()) {
        EXPECT_TRUE(catalog.has(context, source)) << context.toStdString() << ": " << source.toStdString();
    }
}

TEST_F(WidgetsInOtherLanguages, GermanKeysHaveRoom) {
    Translations german({"de"});
    german.install();
    showAll([](Scene& scene, double room, const std::string& when) {
        expectKeysWhole(scene, when);
        expectKeysApart(scene, room, when);
    });
}

TEST_F(WidgetsInOtherLanguages, GermanTextsAreNotCut) {
    Translations german({"de"});
    german.install();
    showAll([](Scene& scene, double, const std::string& when) {
        std::vector<const QQuickItem*> texts;
        collectTexts(*scene.window().contentItem(), texts);
        for (const QQuickItem* text : texts) {
            const QString shown = text->property("text").toString();
            // What others say may be of any length.
            if (!shown.contains(QString::fromStdString(greek))) {
                EXPECT_FALSE(text->property("truncated").toBool()) << when << ": " << shown.toStdString();
            }
        }
    });
}

/// Shows the whole island in each of its states.
class IslandInOtherLanguages : public ::testing::Test {
  protected:
    IslandInOtherLanguages() { time.install(); }

    /// Lets everything come to rest.
    void settle(Scene& scene) {
        for (int frame = 0; frame < 60; ++frame) {
            time.advance(50);
        }
        scene.advance(1);
    }
    void show(const State& state, const std::function<void(Scene&)>& look) {
        Scene scene;
        SceneIsland island(scene);
        island.show();
        state.prepare(scene, island);
        island.refresh();
        settle(scene);
        ASSERT_EQ(island.outline().width(), island.model.islandWidth()) << state.name;
        ASSERT_FALSE(island.hasLeaving()) << state.name;
        look(scene);
    }

    testing::AnimationTime time;
};

TEST_F(IslandInOtherLanguages, EveryTextIsTranslated) {
    const PseudoTexts pseudo;
    for (const State& state : states()) {
        show(state, [&](Scene& scene) { SpokenTexts(scene).expectTranslated(state.name); });
    }
    const CatalogFile catalog("de");
    for (const auto& [context, source] : pseudo.asked()) {
        EXPECT_TRUE(catalog.has(context, source)) << context.toStdString() << ": " << source.toStdString();
    }
}

TEST_F(IslandInOtherLanguages, AKeyIsAsWideAsItsText) {
    const PseudoTexts pseudo;
    for (const State& state : states()) {
        if (state.name != "open" && state.name != "edited") {
            show(state, [&](Scene& scene) { expectKeysWhole(scene, state.name); });
        }
    }
}

TEST_F(IslandInOtherLanguages, GermanKeysHaveRoom) {
    Translations german({"de"});
    german.install();
    for (const State& state : states()) {
        show(state, [&](Scene& scene) { expectKeysWhole(scene, state.name); });
    }
}

TEST_F(IslandInOtherLanguages, AWingHasRoomForTheWord) {
    const PseudoTexts pseudo;
    Scene scene;
    SceneIsland island(scene);
    island.show();
    scene.claude.publish({session("1", ClaudeStatus::Finished{1}, AgentKind::claude)}, {});
    settle(scene);
    const auto* done = scene.itemWith("text", pseudo.inPseudo("DONE"));
    ASSERT_TRUE(done);
    EXPECT_FALSE(done->property("truncated").toBool());
    EXPECT_LE(placeOf(*done).right(), placeOf(island.outline()).right());
}

/// Where everything is between left and right, in words. Up and down some of it dances to the music.
void addPlaces(const QQuickItem& item, std::vector<std::string>& places) {
    const QRectF place = placeOf(item);
    // Without the number that each engine gives a type.
    const std::string type = QString(item.metaObject()->className()).section(u'_', 0, 0).toStdString();
    places.push_back(type + " at " + std::to_string(place.x()) + ", as wide as " +
                     std::to_string(place.width()));
    for (const QQuickItem* child : item.childItems()) {
        addPlaces(*child, places);
    }
}

TEST_F(IslandInOtherLanguages, ItIsTheSameFromEitherSide) {
    for (const State& state : states()) {
        std::vector<std::string> places[2];
        for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
            // The same words both times: only the direction differs.
            const PseudoTexts pseudo(Qt::RightToLeft);
            QGuiApplication::setLayoutDirection(direction);
            show(state, [&](Scene& scene) {
                addPlaces(*scene.window().contentItem(), places[direction == Qt::RightToLeft ? 1 : 0]);
            });
        }
        EXPECT_GT(places[0].size(), 3U) << state.name;
        ASSERT_EQ(places[0].size(), places[1].size()) << state.name;
        for (std::size_t i = 0; i < places[0].size(); ++i) {
            EXPECT_EQ(places[0][i], places[1][i]) << state.name;
        }
    }
}

TEST_F(IslandInOtherLanguages, ACommandIsDrawnTheSameInEveryLanguage) {
    const std::string command = R"(rm -rf "build dir" && echo done > log (1); ls *.txt)";
    std::vector<QString> texts;
    std::vector<QImage> pictures;
    const auto look = [&](Scene& scene) {
        const auto* body = scene.itemWith("shownText", QString::fromStdString(command));
        ASSERT_TRUE(body);
        EXPECT_TRUE(body->property("isProven").toBool());
        texts.push_back(body->property("shownText").toString());
        pictures.push_back(scene.picture().copy(placeOf(*body).toAlignedRect()));
    };
    const State state{"request", [&](Scene& scene, SceneIsland&) { ask(scene, command); }};
    show(state, look);
    {
        const PseudoTexts pseudo(Qt::RightToLeft);
        show(state, look);
    }
    ASSERT_EQ(pictures.size(), 2U);
    EXPECT_EQ(texts[0], texts[1]);
    EXPECT_EQ(pictures[0], pictures[1]);
}

} // namespace
} // namespace veslora
