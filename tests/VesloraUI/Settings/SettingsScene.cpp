// SPDX-License-Identifier: MIT
#include "tests/VesloraUI/Settings/SettingsScene.h"

#include "VesloraUI/Store/SettingsKeys.h"
#include "VesloraUI/Style/Views.h"

#include <QTest>

#include <algorithm>
#include <stdexcept>

namespace veslora {

namespace {

void collect(QAccessibleInterface* node, std::vector<QAccessibleInterface*>& parts) {
    if (!node || node->state().invisible) {
        return;
    }
    parts.push_back(node);
    for (int i = 0; i < node->childCount(); ++i) {
        collect(node->child(i), parts);
    }
}

QString inWords(const QAccessibleInterface& part) {
    const QAccessible::State state = part.state();
    return QStringLiteral("%1 %2%3%4")
        .arg(part.text(QAccessible::Name), part.text(QAccessible::Description),
             state.checked ? QStringLiteral(" checked") : QString(),
             state.selected ? QStringLiteral(" selected") : QString());
}

QQuickItem* flickableBelow(const QQuickItem& item) {
    for (QQuickItem* child : item.childItems()) {
        QQuickItem* const found = child->inherits("QQuickFlickable") ? child : flickableBelow(*child);
        if (found) {
            return found;
        }
    }
    return nullptr;
}

} // namespace

SettingsScene::SettingsScene(const QString& tab, int height) {
    auto view = createView(engine, "Settings/SettingsView.qml", settingsParts.properties);
    view->setProperty("height", height);
    showWindow(std::unique_ptr<QQuickWindow>(qobject_cast<QQuickWindow*>(view.release())));
    window().requestActivate();
    advance(0);
    if (tab != "General") {
        press(tab);
        advance(0);
    }
}

SettingsScene::~SettingsScene() {
    close();
}

std::vector<QAccessibleInterface*> SettingsScene::parts() const {
    std::vector<QAccessibleInterface*> parts;
    collect(QAccessible::queryAccessibleInterface(&window()), parts);
    return parts;
}

QAccessibleInterface* SettingsScene::part(const QString& name) const {
    const auto all = parts();
    const auto found = std::ranges::find_if(
        all, [&](const QAccessibleInterface* each) { return each->text(QAccessible::Name) == name; });
    return found == all.end() ? nullptr : *found;
}

std::vector<QAccessibleInterface*> SettingsScene::controls() const {
    auto controls = parts();
    std::erase_if(controls, [](QAccessibleInterface* each) {
        // Of text Qt says that it takes the focus.
        return each->role() == QAccessible::StaticText || !each->actionInterface() ||
               each->actionInterface()->actionNames().isEmpty();
    });
    return controls;
}

bool SettingsScene::act(QAccessibleInterface& control, const QString& action) {
    QAccessibleActionInterface* const actions = control.actionInterface();
    if (!actions || !actions->actionNames().contains(action)) {
        return false;
    }
    actions->doAction(action);
    return true;
}

void SettingsScene::click(const QAccessibleInterface& control) {
    QTest::mouseClick(&window(), Qt::LeftButton, {}, window().mapFromGlobal(control.rect().center()));
}

void SettingsScene::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(&window(), key, modifiers);
    advance(0);
}

void SettingsScene::focus(const QString& name) {
    constexpr int mostStops = 50;
    for (int stops = 0; focused() != name; ++stops) {
        if (stops == mostStops) {
            throw std::runtime_error("no control has the name " + name.toStdString());
        }
        key(Qt::Key_Tab);
    }
}

QString SettingsScene::focused() const {
    auto* const node = QAccessible::queryAccessibleInterface(window().activeFocusItem());
    return node ? node->text(QAccessible::Name) : QString();
}

QString SettingsScene::selectedTab() const {
    for (const auto* each : parts()) {
        if (each->role() == QAccessible::PageTab && each->state().selected) {
            return each->text(QAccessible::Name);
        }
    }
    return {};
}

QQuickItem& SettingsScene::page() const {
    QQuickItem* const page = flickableBelow(*window().contentItem());
    Q_ASSERT(page);
    return *page;
}

QStringList SettingsScene::state() const {
    QStringList state = texts();
    for (const auto* each : parts()) {
        state << inWords(*each);
    }
    for (const std::string_view key :
         {SettingsKeys::timerNotifications, SettingsKeys::claudeApprovalAlerts,
          SettingsKeys::claudeAnswerFromIsland, SettingsKeys::claudeApprovalSound,
          SettingsKeys::claudeFinishedActivity, SettingsKeys::claudeWorkingActivity,
          SettingsKeys::followDoNotDisturb, SettingsKeys::keepAwakeDisplay,
          SettingsKeys::keepAwakeWhileClaude, SettingsKeys::keepAwakeLiveActivity,
          SettingsKeys::musicShowOtherApps, SettingsKeys::musicLiveActivity, SettingsKeys::metronomeAccent}) {
        state << QString::fromUtf8(key) + (settings.boolValue(key) ? " on" : " off");
    }
    for (const std::string_view key :
         {SettingsKeys::timerSound, SettingsKeys::liveActivityPriority, SettingsKeys::metronomeSound}) {
        state << QString::fromStdString(settings.stringValue(key).value_or(""));
    }
    state << QString::number(settings.doubleValue(SettingsKeys::metronomeVolume));
    for (const auto& sound : platform.sound.played) {
        state << "played " + QString::fromStdString(sound);
    }
    state << (claude.hooksInstalled() ? "Claude's hooks are in" : "Claude's hooks are out")
          << (codex.hooksInstalled() ? "Codex's hooks are in" : "Codex's hooks are out")
          << (platform.login.isOn ? "starts at login" : "is started by hand")
          << QStringLiteral("%1 checks, automatic %2")
                 .arg(platform.updates.checks)
                 .arg(platform.updates.isAutomatic)
          << QStringLiteral("quit %1 times").arg(quits.count());
    return state;
}

} // namespace veslora
