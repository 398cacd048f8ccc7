// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/IslandSettingsPresenter.h"

#include "VesloraUI/Island/ScreenChoice.h"
#include "VesloraUI/Platform/Screens.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "VesloraUI/Style/AccentChoice.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <iterator>
#include <string>

namespace veslora {

namespace {

constexpr std::array screenChoices{DisplayChoice::builtIn, DisplayChoice::main};

} // namespace

void IslandSettingsPresenter::start() {
    m_settings = &environment().settings();
    m_screens = &environment().screens();
    follow(m_settings, &Defaults::changed);
    follow(m_screens, &Screens::changed);
}

void IslandSettingsPresenter::read() {
    const ScreenChoice choice = ScreenChoice::of(*m_settings);
    const auto named = outputs();
    const auto output = std::ranges::find(named, choice.output);
    const auto general = std::ranges::find(screenChoices, choice.display) - screenChoices.begin();
    const bool isNamed = !choice.output.empty() && output != named.end();
    show(m_shown, {.screens = namesOf(named),
                   .screen = static_cast<int>(isNamed ? std::ssize(screenChoices) + (output - named.begin())
                                                      : general),
                   .accent = AccentChoice::placeOf(m_settings->stringValue(SettingsKeys::accent))});
}

std::vector<std::string> IslandSettingsPresenter::outputs() const {
    std::vector<std::string> names;
    const auto connected = m_screens->list();
    for (const ScreenInfo& screen : connected) {
        if (connected.size() > 1) {
            names.push_back(screen.name);
        }
    }
    const std::string chosen = ScreenChoice::of(*m_settings).output;
    if (!chosen.empty() && std::ranges::find(names, chosen) == names.end()) {
        names.push_back(chosen);
    }
    return names;
}

QList<QString> IslandSettingsPresenter::namesOf(const std::vector<std::string>& outputs) const {
    QList<QString> names;
    for (const DisplayChoice choice : screenChoices) {
        names << QCoreApplication::translate("Displays", displayName(choice).data());
    }
    const auto connected = m_screens->list();
    for (const std::string& output : outputs) {
        const QString name = QString::fromStdString(output);
        const bool isConnected = std::ranges::find(connected, output, &ScreenInfo::name) != connected.end();
        names << (isConnected ? name : tr("%1 (not connected)").arg(name));
    }
    return names;
}

QVariantList IslandSettingsPresenter::accents() {
    return AccentChoice::all();
}

void IslandSettingsPresenter::chooseScreen(int place) {
    const auto index = static_cast<std::size_t>(place);
    const auto named = outputs();
    if (index < screenChoices.size()) {
        m_settings->set(SettingsKeys::displayOutput, std::string());
        m_settings->set(SettingsKeys::displayChoice, rawValue(screenChoices[index]));
    } else if (index - screenChoices.size() < named.size()) {
        // The other choice stays, for while that screen is not connected.
        m_settings->set(SettingsKeys::displayOutput, named[index - screenChoices.size()]);
    }
}

void IslandSettingsPresenter::chooseAccent(int place) {
    if (const auto stored = AccentChoice::storedAt(place)) {
        m_settings->set(SettingsKeys::accent, *stored);
    }
}

} // namespace veslora
