// SPDX-License-Identifier: MIT
// Every setting that the window offers, changed by the keyboard alone and by accessible actions alone.
#include "VesloraUI/Store/SettingsKeys.h"
#include "tests/VesloraUI/Settings/SettingsScene.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <set>

namespace veslora {
namespace {

using namespace SettingsKeys;

const QStringList tabs{"General", "Island", "Timer", "Music", "Metronome", "Agents", "Keep Awake"};

/// All that the window has a row for. The island itself changes the others.
const std::set<std::string_view> offered{hideInFullscreen,
                                         displayChoice,
                                         accent,
                                         hoverDelay,
                                         widgetSpacingAutomatic,
                                         widgetSpacing,
                                         liveActivityPriority,
                                         timerSound,
                                         timerNotifications,
                                         musicShowOtherApps,
                                         musicLiveActivity,
                                         metronomeSound,
                                         metronomeVolume,
                                         metronomeAccent,
                                         claudeApprovalAlerts,
                                         claudeAnswerFromIsland,
                                         claudeApprovalSound,
                                         claudeFinishedActivity,
                                         claudeWorkingActivity,
                                         followDoNotDisturb,
                                         alertsPausedUntil,
                                         keepAwakeDisplay,
                                         keepAwakeWhileClaude,
                                         keepAwakeLiveActivity};

std::map<std::string_view, std::string> valuesOf(const Defaults& settings) {
    std::map<std::string_view, std::string> values;
    for (const std::string_view key : offered) {
        values[key] = settings.stringValue(key).value_or("") + " " +
                      std::to_string(settings.doubleValue(key)) + " " +
                      std::to_string(settings.boolValue(key));
    }
    return values;
}

class SettingsWorked : public testing::Test {
  protected:
    using Work = std::function<void(SettingsScene&, QAccessibleInterface&)>;

    /// Has each control of each tab worked, and tells which settings have changed by it.
    static std::set<std::string_view> changedBy(const Work& work) {
        std::set<std::string_view> changed;
        for (const QString& tab : tabs) {
            const auto count = SettingsScene(tab).controls().size();
            for (std::size_t place = static_cast<std::size_t>(tabs.size()); place < count; ++place) {
                // In a window of its own, so that one control does not undo what another did.
                SettingsScene scene(tab);
                const auto before = valuesOf(scene.settings);
                work(scene, *scene.controls().at(place));
                scene.advance(0);
                for (const auto& [key, value] : valuesOf(scene.settings)) {
                    if (before.at(key) != value) {
                        changed.insert(key);
                    }
                }
            }
        }
        return changed;
    }

    /// How often Tab has to be pressed until the control has the focus; it must come to it.
    static void goTo(SettingsScene& scene, const QAccessibleInterface& control) {
        const auto isThere = [&] {
            const auto* item = scene.window().activeFocusItem();
            return item && QAccessible::queryAccessibleInterface(const_cast<QQuickItem*>(item)) == &control;
        };
        constexpr int mostStops = 60;
        for (int stops = 0; stops < mostStops && !isThere(); ++stops) {
            scene.key(Qt::Key_Tab);
        }
        EXPECT_TRUE(isThere()) << control.text(QAccessible::Name).toStdString() << " is not reached";
    }

    static void workByKeys(SettingsScene& scene, QAccessibleInterface& control) {
        const auto role = control.role();
        if (role == QAccessible::RadioButton) {
            // One stop for all of them: arrows go from one to the next.
            if (control.state().checked) {
                goTo(scene, control);
                scene.key(Qt::Key_Right);
            }
            return;
        }
        goTo(scene, control);
        if (role == QAccessible::Slider) {
            scene.key(Qt::Key_Left);
        } else if (role == QAccessible::ComboBox) {
            scene.key(Qt::Key_Space);
            scene.key(Qt::Key_Down);
            scene.key(Qt::Key_Return);
        } else if (control.text(QAccessible::Name) != "Quit Veslora") {
            scene.key(Qt::Key_Space);
        }
    }

    static void workByActions(SettingsScene& scene, QAccessibleInterface& control) {
        const QString press = QAccessibleActionInterface::pressAction();
        const auto role = control.role();
        if (role == QAccessible::Slider) {
            EXPECT_TRUE(SettingsScene::act(control, QAccessibleActionInterface::decreaseAction()));
        } else if (role == QAccessible::ComboBox) {
            const QString now = control.text(QAccessible::Description);
            EXPECT_TRUE(SettingsScene::act(control, press));
            scene.advance(0);
            const auto parts = scene.parts();
            const auto other = std::ranges::find_if(parts, [](QAccessibleInterface* part) {
                return part->role() == QAccessible::ListItem && !part->state().selected;
            });
            ASSERT_NE(other, parts.end()) << now.toStdString();
            EXPECT_TRUE(SettingsScene::act(**other, press));
        } else if (role == QAccessible::CheckBox) {
            EXPECT_TRUE(SettingsScene::act(control, QAccessibleActionInterface::toggleAction()));
        } else if (control.text(QAccessible::Name) != "Quit Veslora") {
            EXPECT_TRUE(SettingsScene::act(control, press));
        }
    }
};

TEST_F(SettingsWorked, ByTheKeyboardAlone) {
    EXPECT_THAT(changedBy(workByKeys), testing::ContainerEq(offered));
}

TEST_F(SettingsWorked, ByAccessibleActionsAlone) {
    EXPECT_THAT(changedBy(workByActions), testing::ContainerEq(offered));
}

} // namespace
} // namespace veslora
