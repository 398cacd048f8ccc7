// SPDX-License-Identifier: MIT
#include "VesloraUI/Widgets/WidgetLibraryPresenter.h"

#include "VesloraUI/Widgets/WidgetTitle.h"

#include <algorithm>

namespace veslora {

namespace {

QString blurb(WidgetID id) {
    switch (id) {
    case WidgetID::clock:
        return WidgetLibraryPresenter::tr("The time and date.");
    case WidgetID::timer:
        return WidgetLibraryPresenter::tr("Countdown with a live activity beside the notch.");
    case WidgetID::meters:
        return WidgetLibraryPresenter::tr("CPU, memory and battery at a glance.");
    case WidgetID::music:
        return WidgetLibraryPresenter::tr("What's playing, with Spotify first.");
    case WidgetID::metronome:
        return WidgetLibraryPresenter::tr("A step-sequencer metronome with tap tempo.");
    case WidgetID::claude:
        return WidgetLibraryPresenter::tr("Your Claude Code and Codex sessions, and when they need you.");
    case WidgetID::claudeUsage:
        return WidgetLibraryPresenter::tr("Plan limits, context and today's tokens for Claude and Codex.");
    case WidgetID::keepAwake:
        return WidgetLibraryPresenter::tr("Stop your computer sleeping for a while, or while Claude works.");
    }
    return {};
}

} // namespace

void WidgetLibraryPresenter::start() {
    follow(m_rack, &RackModel::layoutChanged);
}

void WidgetLibraryPresenter::read() {
    std::vector<LibraryRow> rows;
    for (const WidgetID id : m_rack->layout().available()) {
        rows.push_back(rowOf(id));
    }
    m_rows.assign(std::move(rows));
}

WidgetSize WidgetLibraryPresenter::chosenSize(WidgetID id) const {
    const auto found = m_chosenSizes.find(id);
    return found == m_chosenSizes.end() ? defaultSize(id) : found->second;
}

LibraryRow WidgetLibraryPresenter::rowOf(WidgetID id) const {
    LibraryRow row{.id = QString::fromUtf8(rawValue(id)),
                   .title = shownTitle(id),
                   .blurb = blurb(id),
                   .size = units(chosenSize(id))};
    if (sizes(id).size() < 2) {
        row.onlySize = tr("%Ln unit(s)", nullptr, row.size);
    } else {
        std::ranges::transform(sizes(id), std::back_inserter(row.sizes), units);
    }
    return row;
}

QString WidgetLibraryPresenter::sizeHelp(int units) {
    return tr("%Ln unit(s) wide", nullptr, units);
}

void WidgetLibraryPresenter::choose(const QString& id, int units) {
    const auto widget = widgetIDFrom(id.toStdString());
    if (widget && std::ranges::find(sizes(*widget), units, veslora::units) != sizes(*widget).end()) {
        m_chosenSizes[*widget] = static_cast<WidgetSize>(units);
        read();
    }
}

void WidgetLibraryPresenter::add(const QString& id) {
    if (const auto widget = widgetIDFrom(id.toStdString())) {
        m_rack->add(*widget, chosenSize(*widget));
        // Last, as this takes the view away.
        m_rack->setShowingLibrary(false);
    }
}

} // namespace veslora
