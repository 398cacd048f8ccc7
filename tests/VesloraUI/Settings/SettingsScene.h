// SPDX-License-Identifier: MIT
// The settings window with all its pages on fakes, operated by a pointer, by keys, or by what a screen reader
// offers.
#pragma once

#include "tests/VesloraUI/Settings/SettingsParts.h"

#include <QAccessible>
#include <QSignalSpy>

#include <vector>

namespace veslora {

class SettingsScene : public Scene {
  public:
    /// Opens the window on the page of that tab, tall enough that nothing scrolls unless a height is given.
    explicit SettingsScene(const QString& tab = "General", int height = 1000);
    ~SettingsScene();
    SettingsScene(const SettingsScene&) = delete;
    SettingsScene& operator=(const SettingsScene&) = delete;

    /// The parts of the accessible tree that can be seen, in its order.
    [[nodiscard]] std::vector<QAccessibleInterface*> parts() const;
    /// The first of a name; null for none.
    [[nodiscard]] QAccessibleInterface* part(const QString& name) const;
    /// Those that offer to do something, in the order in which they are read.
    [[nodiscard]] std::vector<QAccessibleInterface*> controls() const;
    /// Does what a control offers by that name; false if it does not offer it.
    static bool act(QAccessibleInterface& control, const QString& action);
    void click(const QAccessibleInterface& control);

    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    /// Goes on by Tab to what has that accessible name; throws if nothing on the page has it.
    void focus(const QString& name);
    /// The accessible name of what has the focus; empty for nothing that has a name.
    [[nodiscard]] QString focused() const;
    /// The name of the tab whose page shows.
    [[nodiscard]] QString selectedTab() const;
    /// What scrolls.
    [[nodiscard]] QQuickItem& page() const;

    /// All that a control may change: what shows, what is stored, what was asked of agents and machine.
    [[nodiscard]] QStringList state() const;

    SettingsParts settingsParts{*this};
    QSignalSpy quits{&engine, &QQmlEngine::quit};
};

} // namespace veslora
